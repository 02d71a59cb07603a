#!/usr/bin/env bash
# How often the settings file is rewritten while the user types 40 characters
# (25 ms apart) into a web search's name in the settings window, and 1 s
# after, on a private X server with openbox and a fresh home. The typed text
# must be in the file at the end.
#   bench/settings/typing_writes.sh [path to tessary] [display-number]
set -euo pipefail
cd "$(dirname "$0")/../.."
bin=${1:-build/test/src/app/tessary}
export DISPLAY=":${2:-79}"
home=$(mktemp -d)
pids=()
trap 'kill "${pids[@]}" 2>/dev/null || true; rm -rf "$home"' EXIT
Xvfb "$DISPLAY" -noreset -nolisten tcp -screen 0 1024x768x24 >/dev/null 2>&1 & pids+=($!)
sleep 1
openbox --sm-disable --config-file tests/x11/session/openbox-rc.xml >/dev/null 2>&1 & pids+=($!)
sleep 0.5
HOME=$home "$bin" >/dev/null 2>&1 & pids+=($!)
sleep 5
# A second start shows the settings with the keyboard on the tab bar: the
# Launcher tab, then past its recorder, two toggles and the first keyword.
HOME=$home "$bin"
sleep 1
xdotool key --delay 80 ctrl+Tab ctrl+Tab ctrl+Tab Tab Tab Tab Tab Tab
sleep 0.5
conf=$home/.config/Tessary/Tessary.conf
python3 - "$conf" >"$home/versions" <<'PY' &
import os, sys, time
seen = set()
end = time.time() + 3.5
while time.time() < end:
    try:
        st = os.stat(sys.argv[1])
        seen.add((st.st_ino, st.st_mtime_ns))
    except FileNotFoundError:
        pass
    time.sleep(0.002)
print(len(seen))
PY
watcher=$!
sleep 0.3
xdotool type --delay 25 "abcdefghijklmnopqrstuvwxyzabcdefghijklmn"
wait "$watcher"
# Tab selected the field's text: the typed text replaced "Google".
grep -q 'name\\":\\"abcdefghijklmnopqrstuvwxyzabcdefghijklmn\\"' "$conf" || { echo "the typed text is not in $conf" >&2; exit 1; }
echo "settings file versions while typing 40 characters and 1 s after: $(cat "$home/versions")"
