#!/usr/bin/env bash
# Installs what is missing, builds everything (warnings are errors,
# AddressSanitizer on, UndefinedBehaviorSanitizer in the product's code),
# checks formatting and runs every test headless, including the X11 tests on a
# private Xvfb session and the saved fuzzing corpora; runs clazy over src/,
# then the suite again in a Release build.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
scripts/check-format.sh

build=${TESSARY_TEST_BUILD:-build/test}
launcher=()
if command -v ccache >/dev/null; then
  # Paths relative to the checkout let worktrees share one cache.
  export CCACHE_BASEDIR=$PWD
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" -G Ninja "${launcher[@]}" -DCMAKE_BUILD_TYPE=Debug -DTESSARY_WERROR=ON -DTESSARY_SANITIZE=ON -DTESSARY_TEST_DISPLAY="${TESSARY_TEST_DISPLAY:-73}" >/dev/null
cmake --build "$build" -j "$(nproc)"

export ASAN_OPTIONS="detect_leaks=1:detect_stack_use_after_return=1:abort_on_error=0:strict_string_checks=1:suppressions=$PWD/tests/support/asan.supp"
export LSAN_OPTIONS="suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

# Qt-specific mistakes, checked while the suite runs: both mostly wait.
scripts/clazy.sh "$build" >"$build/clazy.log" 2>&1 &
clazy=$!
ctest --test-dir "$build" -j "$(nproc)" --output-on-failure -LE alone "$@"
wait "$clazy" || { cat "$build/clazy.log"; exit 1; }
cat "$build/clazy.log"
# The file indexers run at idle priority: their tests wait for idle cores.
ctest --test-dir "$build" --output-on-failure -L alone "$@"

# The same suite optimised and without sanitizers: some faults show only there.
# Its own folder: scripts/run.sh configures build/release without tests.
release=${TESSARY_RELEASE_BUILD:-build/test-release}
cmake -S . -B "$release" -G Ninja "${launcher[@]}" -DCMAKE_BUILD_TYPE=Release -DTESSARY_WERROR=ON -DTESSARY_BUILD_TESTS=ON -DTESSARY_BUILD_BENCH=OFF -DTESSARY_TEST_DISPLAY="${TESSARY_TEST_DISPLAY:-73}" >/dev/null
cmake --build "$release" -j "$(nproc)"
ctest --test-dir "$release" -j "$(nproc)" --output-on-failure "$@"
