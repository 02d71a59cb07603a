#!/usr/bin/env bash
# Starts or stops the test X session: an X server with two RandR monitors of
# different sizes side by side (1920x1080 primary, 1440x900 to its right) and a
# window manager with a configuration that binds none of Tessary's keys:
# openbox (the default), xfwm4 (over its own settings bus), mutter or i3
# (tiling). xfwm4 and mutter see only monitors backed by a RandR output, which
# Xvfb has one of: their sessions run on Xorg's dummy driver.
#   xsession.sh start <display-number> <state-dir> [openbox|xfwm4|mutter|i3]
#   xsession.sh stop  <display-number> <state-dir>
set -euo pipefail
action=$1 num=$2 dir=$3 wm=${4:-openbox}
here=$(cd "$(dirname "$0")" && pwd)
export DISPLAY=":$num"

# Running and not yet a zombie: whoever adopted it may not reap it soon.
alive() { grep -q '^State:[[:space:]]*[^Z[:space:]]' "/proc/$1/status" 2>/dev/null; }

stop() {
  for name in wm dbus xserver; do
    if [ -f "$dir/$name.pid" ]; then
      pid=$(cat "$dir/$name.pid")
      kill "$pid" 2>/dev/null || true
      # A server still shutting down would answer the next start's probe.
      for _ in $(seq 100); do alive "$pid" || break; sleep 0.02; done
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
  mutter)
    # mutter reads its settings from a key file of this session: its own edge
    # tiling on, as GNOME has it, the Super key and every key binding off.
    local settings="$dir/config/glib-2.0/settings"
    rm -rf "$dir/config"
    mkdir -p "$settings"
    cp "$here/mutter/monitors.xml" "$dir/config/"
    {
      printf "[org/gnome/mutter]\nedge-tiling=true\noverlay-key=''\n"
      for schema in org.gnome.desktop.wm.keybindings org.gnome.mutter.keybindings; do
        echo "[${schema//.//}]"
        gsettings list-keys "$schema" | sed 's/$/=@as []/'
      done
    } >"$settings/keyfile"
    local bus
    bus=$(dbus-daemon --session --fork --print-address=1 --print-pid=1)
    export DBUS_SESSION_BUS_ADDRESS=${bus%%$'\n'*}
    echo "${bus##*$'\n'}" >"$dir/dbus.pid"
    XDG_CONFIG_HOME="$dir/config" GSETTINGS_BACKEND=keyfile NO_AT_BRIDGE=1 \
      mutter --x11 --replace --sm-disable >"$dir/wm.log" 2>&1 &
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

start_xvfb() {
  Xvfb "$DISPLAY" -noreset -nolisten tcp -screen 0 3360x1080x24 >"$dir/xserver.log" 2>&1 &
  echo $! >"$dir/xserver.pid"
  wait_for 200 xdpyinfo || { echo "Xvfb did not start"; cat "$dir/xserver.log"; exit 1; }
  # A server that has just started may still refuse RandR requests.
  wait_for 20 xrandr --setmonitor LEFT 1920/508x1080/286+0+0 screen || { echo "RandR refused the monitors"; exit 1; }
  wait_for 20 xrandr --setmonitor RIGHT 1440/381x900/238+1920+0 none || { echo "RandR refused the monitors"; exit 1; }
}

start_xorg() {
  # An empty configuration folder keeps the machine's input and GPU drivers out.
  mkdir -p "$dir/xorg.conf.d"
  Xorg "$DISPLAY" -noreset -nolisten tcp -novtswitch -sharevts -config "$here/xorg-dummy.conf" \
    -configdir "$dir/xorg.conf.d" -logfile "$dir/xserver.log" >/dev/null 2>&1 &
  echo $! >"$dir/xserver.pid"
  wait_for 200 xdpyinfo || { echo "Xorg did not start"; cat "$dir/xserver.log"; exit 1; }
  xrandr --newmode 1440x900 106.50 1440 1528 1672 1904 900 903 909 934 -hsync +vsync
  xrandr --addmode DUMMY1 1440x900
  xrandr --output DUMMY0 --mode 1920x1080 --pos 0x0 --primary \
    --output DUMMY1 --mode 1440x900 --pos 1920x0 || { echo "RandR refused the monitors"; exit 1; }
}

case $action in
start)
  mkdir -p "$dir"
  stop
  case $wm in xfwm4 | mutter) start_xorg ;; *) start_xvfb ;; esac
  start_wm
  wait_for 200 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' \
    || { echo "$wm did not start"; cat "$dir/wm.log"; exit 1; }
  echo "test X session on $DISPLAY under $wm: $(xrandr --listmonitors | tr '\n' ' ')"
  ;;
stop)
  stop
  ;;
*)
  echo "usage: $0 start|stop <display-number> <state-dir> [openbox|xfwm4|mutter|i3]" >&2
  exit 2
  ;;
esac
