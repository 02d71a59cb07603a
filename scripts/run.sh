#!/usr/bin/env bash
# Installs what Tessary needs, builds it (Release) and starts it in the
# user's X11 session. Arguments go to tessary (e.g. --show clipboard).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh

build=${TESSARY_RUN_BUILD:-build/release}
launcher=()
if command -v ccache >/dev/null; then
  export CCACHE_BASEDIR=$PWD
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" -G Ninja "${launcher[@]}" -DCMAKE_BUILD_TYPE=Release \
  -DTESSARY_BUILD_TESTS=OFF -DTESSARY_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target tessary

if [ -z "${DISPLAY:-}" ]; then
  cat >&2 <<EOT
Tessary is built ($build/src/app/tessary) but cannot start: there is no X11
display here (DISPLAY is not set). Run this script from a terminal inside
your desktop session, or try Tessary in a nested X server:

  sudo apt-get install xserver-xephyr openbox
  Xephyr :5 -screen 1280x800 &
  DISPLAY=:5 openbox &
  DISPLAY=:5 $0
EOT
  exit 1
fi

echo "Starting Tessary on $DISPLAY (log: \${XDG_STATE_HOME:-~/.local/state}/Tessary/Tessary.log)"
exec "$build/src/app/tessary" "$@"
