#!/usr/bin/env bash
# Starts or stops the test X session: Xvfb with two RandR monitors of different
# sizes side by side (1920x1080 primary, 1440x900 to its right) and openbox
# with a configuration that binds none of Tessary's keys.
#   xsession.sh start <display-number> <state-dir>
#   xsession.sh stop  <display-number> <state-dir>
set -euo pipefail
action=$1 num=$2 dir=$3
here=$(cd "$(dirname "$0")" && pwd)
export DISPLAY=":$num"

stop() {
  for name in openbox xvfb; do
    if [ -f "$dir/$name.pid" ]; then
      pid=$(cat "$dir/$name.pid")
      kill "$pid" 2>/dev/null || true
      # A server still shutting down would answer the next start's probe.
      for _ in $(seq 100); do kill -0 "$pid" 2>/dev/null || break; sleep 0.02; done
      rm -f "$dir/$name.pid"
    fi
  done
  # Stray clients of the session (xclip keeps a process per selection it owns).
  pkill -f "xclip.*-display :$num" 2>/dev/null || true
  rm -f "/tmp/.X$num-lock" "/tmp/.X11-unix/X$num" 2>/dev/null || true
}

wait_for() { # <tries> <command...>
  local tries=$1; shift
  for _ in $(seq "$tries"); do "$@" >/dev/null 2>&1 && return 0; sleep 0.05; done
  return 1
}

case $action in
start)
  mkdir -p "$dir"
  stop
  Xvfb "$DISPLAY" -noreset -nolisten tcp -screen 0 3360x1080x24 >"$dir/xvfb.log" 2>&1 &
  echo $! >"$dir/xvfb.pid"
  wait_for 200 xdpyinfo || { echo "Xvfb did not start"; cat "$dir/xvfb.log"; exit 1; }
  xrandr --setmonitor LEFT 1920/508x1080/286+0+0 screen
  xrandr --setmonitor RIGHT 1440/381x900/238+1920+0 none
  openbox --sm-disable --config-file "$here/openbox-rc.xml" >"$dir/openbox.log" 2>&1 &
  echo $! >"$dir/openbox.pid"
  wait_for 200 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' \
    || { echo "openbox did not start"; cat "$dir/openbox.log"; exit 1; }
  echo "test X session on $DISPLAY: $(xrandr --listmonitors | tr '\n' ' ')"
  ;;
stop)
  stop
  ;;
*)
  echo "usage: $0 start|stop <display-number> <state-dir>" >&2
  exit 2
  ;;
esac
