#!/usr/bin/env bash
# The main thread's longest stall while a 40-megapixel picture, a 1 MB text
# and 200 texts at 20 per second are copied, on a private test X session.
# Builds the program in build/bench (Release) when needed.
#   bench/clipboard/main_thread_stall.sh [display-number]
set -euo pipefail
cd "$(dirname "$0")/../.."
num=${1:-77}
build=${TESSARY_BENCH_BUILD:-build/bench}
state=$(mktemp -d)
trap 'tests/x11/session/xsession.sh stop "$num" "$state"; rm -rf "$state"' EXIT

if [ ! -f "$build/build.ninja" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTESSARY_BUILD_TESTS=OFF >/dev/null
fi
cmake --build "$build" --target tessary_bench_main_thread_stall >/dev/null
tests/x11/session/xsession.sh start "$num" "$state" >/dev/null
export DISPLAY=":$num" QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$state/runtime
mkdir -m 700 -p "$XDG_RUNTIME_DIR"
"$build/bench/clipboard/tessary_bench_main_thread_stall"
