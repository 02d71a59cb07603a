#!/usr/bin/env bash
# Runs the launcher's focus and type-ahead test in a test X session of its own
# under another window manager; for xfwm4 with its focus-stealing prevention
# on. Exits 77 (skipped) when the session script or the machine lacks it.
#   launcher_under_wm.sh <window manager> <display number> <state dir> <e2e test binary>
set -euo pipefail
wm=$1 num=$2 dir=$3 binary=$4
session="$(cd "$(dirname "$0")/../x11/session" && pwd)/xsession.sh"
if ! grep -q "^  $wm)" "$session" || ! command -v "$wm" >/dev/null; then
  echo "skipped: the test X session offers no $wm"
  exit 77
fi
trap '"$session" stop "$num" "$dir"' EXIT
"$session" start "$num" "$dir" "$wm"
if [ "$wm" = xfwm4 ]; then
  # The settings bus of this session is the one xfwm4 was started with.
  bus=$(tr '\0' '\n' <"/proc/$(cat "$dir/wm.pid")/environ" | sed -n 's/^DBUS_SESSION_BUS_ADDRESS=//p')
  export DBUS_SESSION_BUS_ADDRESS=$bus
  xfconf-query -c xfwm4 -p /general/prevent_focus_stealing -n -t bool -s true
  [ "$(xfconf-query -c xfwm4 -p /general/prevent_focus_stealing)" = true ]
fi
DISPLAY=":$num" QT_QPA_PLATFORM=xcb "$binary" --gtest_filter='Launcher.keysTypedRightAfterTheHotKey*'
