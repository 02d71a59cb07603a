#!/usr/bin/env bash
# Checks a Tessary .deb as a user's machine would meet it: unpacked into a
# scratch folder, its desktop entry and AppStream metadata validate, lintian
# finds no errors, and the unpacked program answers --version and
# --selftest --json (the latter on $DISPLAY).
# Exit 0: all passed; 77: the files passed but the program lacks an option
# checked here (said why); anything else: a failure.
set -euo pipefail

deb=${1:?usage: check_deb.sh PACKAGE.deb}
app_id=org.tessary.Tessary

fail() {
  echo "FAIL: $*" >&2
  exit 1
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
root=$scratch/root
dpkg-deb -x "$deb" "$root"
version=$(dpkg-deb -f "$deb" Version)

# Dependencies were derived from the binary, not written by hand.
dpkg-deb -f "$deb" Depends | grep -q 'libqt6widgets6' || fail "Depends lacks the Qt libraries: $(dpkg-deb -f "$deb" Depends)"

desktop-file-validate "$root/usr/share/applications/$app_id.desktop" || fail "desktop-file-validate"
appstreamcli validate --no-net "$root/usr/share/metainfo/$app_id.metainfo.xml" || fail "appstreamcli validate"
for size in 16x16 32x32 48x48 128x128 256x256 scalable; do
  compgen -G "$root/usr/share/icons/hicolor/$size/apps/$app_id.*" >/dev/null || fail "no $size application icon"
done

# A version bump updates every place that names the version.
grep -q "<release version=\"$version\"" "$root/usr/share/metainfo/$app_id.metainfo.xml" ||
  fail "the metainfo's releases do not name $version"
zcat "$root/usr/share/doc/tessary/changelog.gz" | head -1 | grep -qF "tessary ($version)" ||
  fail "the changelog's latest entry is not $version"

lintian --fail-on error "$deb" || fail "lintian reports errors"

bin=$root/usr/bin/tessary
export HOME=$scratch/home XDG_RUNTIME_DIR=$scratch/runtime
mkdir -p "$HOME" -m 700 "$XDG_RUNTIME_DIR"

# Without a display a program that does not know an option starts its tray
# start-up, finds no display and stops: its --help then lists nothing.
help=$(env -u DISPLAY timeout 10 "$bin" --help 2>&1 || true)
if ! grep -q -- '--version' <<<"$help"; then
  echo "SKIP: the packaged tessary has no --version yet"
  exit 77
fi
answer=$(env -u DISPLAY timeout 10 "$bin" --version) || fail "tessary --version failed"
grep -qF "$version" <<<"$answer" || fail "tessary --version says \"$answer\", the package is $version"

if ! grep -q -- '--selftest' <<<"$help" || ! grep -q -- '--json' <<<"$help"; then
  echo "SKIP: the packaged tessary has no --selftest --json yet"
  exit 77
fi
[ -n "${DISPLAY:-}" ] || fail "tessary --selftest --json needs DISPLAY"
status=0
timeout 120 "$bin" --selftest --json >"$scratch/selftest.json" || status=$?
perl -MJSON::PP -e 'local $/; decode_json(<STDIN>)' <"$scratch/selftest.json" ||
  fail "tessary --selftest --json printed no JSON: $(head -c 500 "$scratch/selftest.json")"
[ "$status" -eq 0 ] || fail "tessary --selftest --json exited $status: $(cat "$scratch/selftest.json")"
echo "PASS: $deb"
