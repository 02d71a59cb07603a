#!/usr/bin/env bash
# Fuzzes every target under fuzz/ for a given time each, starting from its
# saved corpus, in a clang build with libFuzzer (build/fuzz). Crashes are
# written to build/fuzz/findings/<target>; with --save, the inputs that add
# coverage are merged back into fuzz/corpus/<target>.
#   bench/fuzz.sh [seconds-per-target=600] [--save] [target...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-600}; shift || true
save=0
if [ "${1:-}" = --save ]; then save=1; shift; fi
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=($(ls fuzz/corpus))
build=${TESSARY_FUZZ_BUILD:-build/fuzz}
# Targets fuzzed at the same time; each uses one core.
parallel=${TESSARY_FUZZ_PARALLEL:-1}

if [ ! -f "$build/build.ninja" ]; then
  CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSARY_FUZZ=ON \
    -DTESSARY_BUILD_TESTS=OFF -DTESSARY_BUILD_BENCH=OFF >/dev/null
fi
cmake --build "$build" --target "${targets[@]/%/_fuzzer}"

export ASAN_OPTIONS="detect_leaks=1:detect_stack_use_after_return=1:suppressions=$PWD/tests/support/asan.supp"
export LSAN_OPTIONS="suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
fuzz() {
  local target=$1 work=$build/corpus/$1 findings=$build/findings/$1 log=$build/$1.log result=ok
  mkdir -p "$work" "$findings"
  "$build/fuzz/${target}_fuzzer" -max_total_time="$seconds" -artifact_prefix="$findings/" -max_len=65536 \
    -timeout=10 -rss_limit_mb=4096 "$work" "fuzz/corpus/$target" >"$log" 2>&1 || result="FAILED (see $log and $findings)"
  local runs cov
  runs=$(grep -ao '#[0-9]\+' "$log" | tail -1 | tr -d '#')
  cov=$(grep -ao 'cov: [0-9]\+' "$log" | tail -1)
  echo "$target: ${seconds}s, ${runs:-0} runs, $cov, $result"
  if [ $save = 1 ]; then
    "$build/fuzz/${target}_fuzzer" -merge=1 "fuzz/corpus/$target" "$work" >/dev/null 2>&1
  fi
  [ "$result" = ok ]
}

status=0 running=()
for target in "${targets[@]}"; do
  fuzz "$target" &
  running+=($!)
  if [ ${#running[@]} -ge "$parallel" ]; then
    wait "${running[0]}" || status=1
    running=("${running[@]:1}")
  fi
done
for job in "${running[@]}"; do wait "$job" || status=1; done
exit $status
