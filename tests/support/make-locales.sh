#!/usr/bin/env bash
# Compiles the locales that the locale-dependent tests run under into $1, for
# LOCPATH: no root needed, and nothing on the machine changes. Existing ones
# are kept, so only the first run pays.
set -euo pipefail
dir=$1
shift
mkdir -p "$dir"
for locale in "$@"; do
  [ -e "$dir/$locale.UTF-8/LC_NUMERIC" ] && continue
  localedef -i "$locale" -f UTF-8 "$dir/$locale.UTF-8"
done
