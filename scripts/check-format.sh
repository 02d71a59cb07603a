#!/usr/bin/env bash
# Fails when a C++ file differs from what clang-format makes of it.
set -euo pipefail
cd "$(dirname "$0")/.."
files=$(git ls-files -co --exclude-standard -- '*.cpp' '*.h' '*.mm')
[ -z "$files" ] && exit 0
if ! echo "$files" | xargs clang-format --dry-run --Werror 2>/tmp/tessary-format.log; then
  grep 'error:' /tmp/tessary-format.log | head -20
  echo "clang-format: files above need 'clang-format -i'"
  exit 1
fi
