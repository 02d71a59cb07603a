#!/usr/bin/env bash
# Starts or stops the test X session: Xvfb with two RandR monitors of different
# sizes side by side (1920x1080 primary, 1440x900 to its right) and a window
# manager with a configuration that binds none of Tessary's keys:
# openbox (the default), xfwm4 (over its own settings bus) or i3 (tiling).
#   xsession.sh start <display-number> <state-dir> [openbox|xfwm4|i3]
#   xsession.sh stop  <display-number> <state-dir>
set -euo pipefail
action=$1 num=$2 dir=$3 wm=${4:-openbox}
here=$(cd "$(dirname "$0")" && pwd)
export DISPLAY=":$num"

stop() {
  for name in wm dbus xvfb; do
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

start_wm() {
  case $wm in
  openbox)
    openbox --sm-disable --config-file "$here/openbox-rc.xml" >"$dir/wm.log" 2>&1 &
    ;;
  xfwm4)
    # xfwm4 reads its settings and key bindings from xfconfd, which the bus
    # starts on demand with the bus's environment: only this session's
    # configuration is visible to it, never the system's default bindings.
    rm -rf "$dir/config"
    local bus
    bus=$(XDG_CONFIG_DIRS="$here/xfwm4" XDG_CONFIG_HOME="$dir/config" \
      dbus-daemon --session --fork --print-address=1 --print-pid=1)
    export DBUS_SESSION_BUS_ADDRESS=${bus%%$'\n'*}
    echo "${bus##*$'\n'}" >"$dir/dbus.pid"
    NO_AT_BRIDGE=1 xfwm4 --compositor=off --sm-client-disable >"$dir/wm.log" 2>&1 &
    ;;
  i3)
    i3 -c "$here/i3-config" >"$dir/wm.log" 2>&1 &
    ;;
  *)
    echo "unknown window manager: $wm" >&2
    exit 2
    ;;
  esac
  echo $! >"$dir/wm.pid"
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
  start_wm
  wait_for 200 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' \
    || { echo "$wm did not start"; cat "$dir/wm.log"; exit 1; }
  echo "test X session on $DISPLAY under $wm: $(xrandr --listmonitors | tr '\n' ' ')"
  ;;
stop)
  stop
  ;;
*)
  echo "usage: $0 start|stop <display-number> <state-dir> [openbox|xfwm4|i3]" >&2
  exit 2
  ;;
esac
