#!/usr/bin/env bash
# Takes the screenshots under docs/screenshots/: starts a private X session
# (Xvfb, openbox, a compositor when xcompmgr is installed) with a fresh home
# holding a few applications, files and snippets, starts Tessary in it and
# runs every scene in scripts/screenshots.d/*.sh in name order. A scene is a
# bash fragment that uses the helpers below; add a file to add scenes.
#   scripts/screenshots.sh [path to the tessary binary]
# Needs xvfb, openbox, xdotool and imagemagick's import. SCREENSHOT_DISPLAY
# picks the display number (default 187).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
tessary=${1:-$root/build/test/src/app/tessary}
export DISPLAY=":${SCREENSHOT_DISPLAY:-187}"
out="$root/docs/screenshots"
[ -x "$tessary" ] || { echo "no tessary binary at $tessary (build first, or pass its path)" >&2; exit 1; }
command -v import >/dev/null || { echo "imagemagick's import is needed" >&2; exit 1; }
mkdir -p "$out"

session=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$session"
}
trap cleanup EXIT

wait_for() { # <tries of 50 ms> <command...>
  local tries=$1; shift
  for _ in $(seq "$tries"); do "$@" >/dev/null 2>&1 && return 0; sleep 0.05; done
  return 1
}

# --- the session -------------------------------------------------------------
Xvfb "$DISPLAY" -noreset -nolisten tcp -screen 0 1440x900x24 >"$session/xvfb.log" 2>&1 &
pids+=($!)
wait_for 200 xdpyinfo || { echo "Xvfb did not start on $DISPLAY" >&2; exit 1; }
xsetroot -solid '#3b6e8f' 2>/dev/null || true
openbox --sm-disable --config-file "$root/tests/x11/session/openbox-rc.xml" >"$session/openbox.log" 2>&1 &
pids+=($!)
wait_for 200 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'
if command -v xcompmgr >/dev/null; then
  xcompmgr -n >"$session/xcompmgr.log" 2>&1 &
  pids+=($!)
fi

# --- the home ----------------------------------------------------------------
export HOME="$session/home"
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_STATE_HOME XDG_CACHE_HOME
apps="$HOME/.local/share/applications"
mkdir -p "$apps" "$HOME/Documents" "$HOME/.local/share/Tessary"
desktop_entry() { # <file name> <Name> <Icon> <Exec>
  printf '[Desktop Entry]\nType=Application\nName=%s\nIcon=%s\nExec=%s\n' "$2" "$3" "$4" >"$apps/$1.desktop"
}
desktop_entry text-editor "Text Editor" accessories-text-editor "true"
desktop_entry terminal "Terminal" utilities-terminal "xterm"
desktop_entry calculator "Calculator" accessories-calculator "true"
desktop_entry web-browser "Web Browser" web-browser "true"
desktop_entry image-viewer "Image Viewer" image-x-generic "true"
printf 'Quarterly numbers\n' >"$HOME/Documents/Quarterly report.txt"
printf '%%PDF-1.4\n' >"$HOME/Documents/Travel plans.pdf"
cat >"$HOME/.local/share/Tessary/snippets.json" <<'JSON'
[{"id":"6F1C5D3A-2B7E-4C11-9D2A-0B8E4F3A1C77","name":"Email signature","keyword":"sig","text":"Best regards,\nAlex"},
{"id":"0A4E2B9C-8D31-4F6A-B5C2-7E1D9F0A3B45","name":"Meeting link","keyword":"meet","text":"https://meet.example.org/team"}]
JSON

QT_LOGGING_RULES="tessary.app.info=true" "$tessary" >"$session/tessary.log" 2>&1 &
pids+=($!)
wait_for 400 grep -q "ready at" "$session/tessary.log" || { cat "$session/tessary.log" >&2; exit 1; }
# The start-up toast goes first.
sleep 5.5

# --- helpers for scenes ------------------------------------------------------
# Presses keys as xdotool names them (ctrl+alt+space, Return, Down …).
send_keys() { xdotool key --delay 40 "$@"; }
# Types text into whatever has the keyboard.
type_text() { xdotool type --delay 30 "$1"; }
# Tessary's topmost visible window (a panel) as "x y width height", or nothing.
panel_geometry() {
  local id
  for id in $(xdotool search --onlyvisible --class tessary 2>/dev/null); do
    xwininfo -id "$id" | awk '/Absolute upper-left X/{x=$4} /Absolute upper-left Y/{y=$4}
      /Width:/{w=$2} /Height:/{h=$2} END{if (w > 300 && h > 50) print x, y, w, h}'
  done | tail -1
}
# Waits until a panel of Tessary is shown.
wait_for_panel() {
  local i
  for i in $(seq 100); do [ -n "$(panel_geometry)" ] && return 0; sleep 0.05; done
  echo "no panel appeared" >&2
  return 1
}
# Opens the launcher with the default shortcut and types `query`.
open_launcher() { send_keys ctrl+alt+space; wait_for_panel; [ -z "${1:-}" ] || type_text "$1"; sleep 0.6; }
# Closes whatever panel is open.
close_panel() { send_keys Escape; sleep 0.3; }
# Writes docs/screenshots/<name>.png: the shown panel with a margin of desktop
# around it, or the whole screen when no panel is shown.
capture() {
  local name=$1 geometry margin=40
  geometry=$(panel_geometry)
  if [ -n "$geometry" ]; then
    read -r x y w h <<<"$geometry"
    import -window root -crop "$((w + 2 * margin))x$((h + 2 * margin))+$((x - margin))+$((y - margin))" +repage \
      "$out/$name.png"
  else
    import -window root "$out/$name.png"
  fi
  echo "wrote docs/screenshots/$name.png"
}

for scene in "$root"/scripts/screenshots.d/*.sh; do
  [ -e "$scene" ] || continue
  # shellcheck source=/dev/null
  source "$scene"
done
