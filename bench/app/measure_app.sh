#!/usr/bin/env bash
# Measures the running tray application on a private X session (Xvfb with two
# monitors + openbox, as in the tests), each time with a fresh home:
#   - time from process start to "shortcuts registered and clipboard watched"
#     with a 1,000-entry history (median of several starts);
#   - CPU ticks and wake-ups (context switches of all threads) while idle;
#   - RSS and PSS after start and after recording 1,000 copied texts.
# An empty Qt tray application (tessary_bench_empty_tray, next to the binary's
# build) is started the same way as a yardstick when it has been built.
# Usage: bench/app/measure_app.sh [tessary binary] [display number] [idle seconds]
# Build a Release binary first: scripts/run.sh does, or
#   cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release && cmake --build build/release --target tessary
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
binary=$(realpath "${1:-$root/build/release/src/app/tessary}")
display=${2:-97}
idle_seconds=${3:-60}
starts=${TESSARY_BENCH_STARTS:-9}
yardstick=$(dirname "$binary")/../../bench/app/tessary_bench_empty_tray
work=$(mktemp -d)
export DISPLAY=":$display"
pid=""

cleanup() {
  [ -n "$pid" ] && kill "$pid" 2>/dev/null || true
  "$root/tests/x11/session/xsession.sh" stop "$display" "$work/xsession" >/dev/null 2>&1 || true
  rm -rf "$work"
}
trap cleanup EXIT

[ -x "$binary" ] || { echo "no tessary binary at $binary" >&2; exit 1; }
"$root/tests/x11/session/xsession.sh" start "$display" "$work/xsession" >/dev/null

fresh_home() { # <dir>: an empty home; Tessary's files are looked up under it
  rm -rf "$1"; mkdir -p "$1/.local/share/Tessary" "$1/.config/Tessary"
}

write_settings() { # <home> <clipboardMax>
  local json="{\\\"shortcuts\\\":{},\\\"disabled\\\":[],\\\"gap\\\":0,\\\"dragSnap\\\":true,\\\"clipboardEnabled\\\":true,\\\"clipboardMax\\\":$2,\\\"clipboardRetentionDays\\\":30,\\\"clipboardExcluded\\\":[],\\\"launcherFiles\\\":true,\\\"launcherSystem\\\":true,\\\"webSearches\\\":[]}"
  printf '[General]\ntessary.settings.v1="@ByteArray(%s)"\n' "$json" >"$1/.config/Tessary/Tessary.conf"
}

write_history() { # <home> <entries>
  python3 - "$1/.local/share/Tessary/clipboard.json" "$2" <<'PY'
import hashlib, json, sys, uuid
path, count = sys.argv[1], int(sys.argv[2])
items = []
for i in range(count):
    text = f"history entry {i}: " + "lorem ipsum dolor sit amet " * 3
    items.append({"date": 817000000.0 - i, "hash": hashlib.sha256(b"text" + text.encode()).hexdigest(),
                  "id": str(uuid.uuid4()).upper(), "kind": "text", "pinned": False, "pixelHeight": 0,
                  "pixelWidth": 0, "sourceApp": "xterm", "text": text})
json.dump(items, open(path, "w"), separators=(",", ":"))
PY
}

start_tessary() { # <home> [program]; sets pid, waits until ready, prints "wall-ms cpu-ms" from exec to ready
  local home=$1 program=${2:-$binary} log=$1/stderr.log t0 ready cpu
  t0=$(date +%s%N)
  HOME=$home XDG_CONFIG_HOME= XDG_DATA_HOME= XDG_STATE_HOME= QT_LOGGING_RULES="tessary.app.info=true" \
    "$program" 2>"$log" &
  pid=$!
  for _ in $(seq 400); do
    ready=$(sed -n 's/.*ready at \([0-9]*\) ms.*/\1/p' "$log")
    cpu=$(sed -n 's/.*after \([0-9]*\) ms of CPU.*/\1/p' "$log")
    [ -n "$ready" ] && { echo "$(( ready - t0 / 1000000 )) $cpu"; return 0; }
    sleep 0.025
  done
  echo "tessary did not become ready:" >&2; cat "$log" >&2; exit 1
}

stop_tessary() { kill "$pid"; wait "$pid" 2>/dev/null || true; pid=""; }

memory() { # prints "RSS_MB PSS_MB"
  awk '/^Rss:/{r=$2} /^Pss:/{p=$2} END{printf "%.1f %.1f\n", r/1024, p/1024}' "/proc/$pid/smaps_rollup"
}

cpu_ticks() { awk '{print $14 + $15}' "/proc/$pid/stat"; }

switches() {
  cat /proc/"$pid"/task/*/status 2>/dev/null | awk '/ctxt_switches/{s+=$2} END{print s}'
}

median() { sort -n | awk '{v[NR]=$1} END{print v[int((NR+1)/2)]}'; }

echo "tessary: $binary"
echo "machine: $(nproc) CPUs, load $(cut -d' ' -f1-3 /proc/loadavg)"

# Start-up with a 1,000-entry history.
home=$work/home-startup
fresh_home "$home"; write_history "$home" 1000
: >"$work/startups"
for _ in $(seq "$starts"); do
  start_tessary "$home" >>"$work/startups"
  stop_tessary
done
echo "start-up to shortcuts registered + clipboard watched (1,000-entry history), $starts starts:"
echo "  wall clock: median $(cut -d' ' -f1 "$work/startups" | median) ms ($(cut -d' ' -f1 "$work/startups" | sort -n | tr '\n' ' ')ms)"
echo "  CPU used by then: median $(cut -d' ' -f2 "$work/startups" | median) ms (less sensitive to other load on the machine)"

if [ -x "$yardstick" ]; then
  home=$work/home-yardstick
  fresh_home "$home"
  : >"$work/yardstick"
  for _ in $(seq "$starts"); do
    start_tessary "$home" "$yardstick" >>"$work/yardstick"
    stop_tessary
  done
  echo "  empty Qt tray application, same conditions: wall median $(cut -d' ' -f1 "$work/yardstick" | median) ms, CPU median $(cut -d' ' -f2 "$work/yardstick" | median) ms"
fi

# Idle, then 1,000 copies.
home=$work/home-idle
fresh_home "$home"; write_settings "$home" 1000
start_tessary "$home" >/dev/null
# Let the start-up's background work (application scan) finish first.
sleep 5
read -r rss pss < <(memory)
echo "after start: RSS ${rss} MB, PSS ${pss} MB"
ticks0=$(cpu_ticks); switches0=$(switches)
sleep "$idle_seconds"
ticks1=$(cpu_ticks); switches1=$(switches)
echo "idle ${idle_seconds} s: $(( ticks1 - ticks0 )) CPU ticks ($(getconf CLK_TCK)/s), wake-ups $(awk -v d=$(( switches1 - switches0 )) -v s="$idle_seconds" 'BEGIN{printf "%.2f", d/s}')/s"

for i in $(seq 1000); do
  printf 'copied text number %d' "$i" | xclip -selection clipboard -i
done
sleep 2
recorded=$(python3 -c 'import json,sys; print(len(json.load(open(sys.argv[1]))))' "$home/.local/share/Tessary/clipboard.json")
read -r rss pss < <(memory)
echo "after 1,000 copies ($recorded entries recorded): RSS ${rss} MB, PSS ${pss} MB"
stop_tessary
