#!/usr/bin/env bash
# Builds the Debian package of Tessary from a Release build and checks it
# (tests/package/check_deb.sh). Prints the package's path last.
# Install it with: sudo apt install ./build/release/tessary_<version>_<arch>.deb
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh

build=${TESSARY_PACKAGE_BUILD:-build/release}
launcher=()
if command -v ccache >/dev/null; then
  export CCACHE_BASEDIR=$PWD
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
# A build folder that exists keeps its choice of tests and benchmarks, so an
# existing Release build of the suite is reused as it is.
options=()
[ -f "$build/CMakeCache.txt" ] || options=(-DTESSARY_BUILD_TESTS=OFF -DTESSARY_BUILD_BENCH=OFF)
cmake -S . -B "$build" -G Ninja "${launcher[@]}" -DCMAKE_BUILD_TYPE=Release -DTESSARY_SANITIZE=OFF \
  "${options[@]}" >/dev/null
cmake --build "$build" -j "$(nproc)"

rm -f "$build"/tessary_*.deb
(cd "$build" && cpack -G DEB >/dev/null)
deb=$(echo "$build"/tessary_*.deb)
tests/package/check_deb.sh "$deb" || [ $? -eq 77 ]
echo "$deb"
