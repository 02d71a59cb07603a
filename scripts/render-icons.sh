#!/usr/bin/env bash
# Renders the PNG sizes of the icons from their SVG sources under data/icons.
# The PNGs are committed, so building needs no SVG renderer; run this after
# changing an SVG (needs rsvg-convert: apt-get install librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")/../data/icons"

render() { # <svg> <name> <sizes...>
  local svg=$1 name=$2
  shift 2
  for size in "$@"; do
    mkdir -p "png/${size}"
    rsvg-convert -w "$size" -h "$size" "$svg" -o "png/${size}/${name}.png"
  done
}

render org.tessary.Tessary.svg org.tessary.Tessary 16 22 24 32 48 64 128 256
render tessary-tray.svg tessary-tray 16 22 24 32 48
