#!/usr/bin/env bash
# End-to-end clipboard capture on a private test X session (Xvfb + openbox):
# copy -> entry latency over 50 copies, then 1,000 copies at ten per second
# (about 100 s). Builds the program in build/bench (Release) when needed.
#   bench/clipboard/x11_capture.sh [display-number] [latency|rate|all]
set -euo pipefail
cd "$(dirname "$0")/../.."
num=${1:-76} what=${2:-all}
build=${TESSARY_BENCH_BUILD:-build/bench}
state=$(mktemp -d)
trap 'tests/x11/session/xsession.sh stop "$num" "$state"; rm -rf "$state"' EXIT

if [ ! -f "$build/build.ninja" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTESSARY_BUILD_TESTS=OFF >/dev/null
fi
cmake --build "$build" --target tessary_bench_x11_capture >/dev/null
program=$build/bench/clipboard/tessary_bench_x11_capture

tests/x11/session/xsession.sh start "$num" "$state" >/dev/null
export DISPLAY=":$num" QT_QPA_PLATFORM=xcb
export XDG_RUNTIME_DIR=$state/runtime
mkdir -m 700 -p "$XDG_RUNTIME_DIR"
status=0
if [ "$what" = latency ] || [ "$what" = all ]; then
  echo "== one copy at a time (50 copies)"
  "$program" latency 50 || status=1
fi
if [ "$what" = rate ] || [ "$what" = all ]; then
  echo "== 1,000 copies at ten per second"
  "$program" rate 1000 10 || status=1
fi
exit $status
