#!/usr/bin/env bash
# Renders the PNG sizes of the icons from their SVG sources under data/icons.
# The PNGs are committed, so building needs no SVG renderer; run this after
# changing an SVG (needs rsvg-convert and ImageMagick: apt-get install
# librsvg2-bin imagemagick).
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
# The tray symbol is drawn on whole pixels twice: on a 16 grid (16, 32, 48)
# and on a 22 grid (22, and 24 with a one-pixel margin), so no size is blurred.
render tessary-tray.svg tessary-tray 16 32 48
render tessary-tray-22.svg tessary-tray 22
convert png/22/tessary-tray.png -background none -gravity center -extent 24x24 png/24/tessary-tray.png
