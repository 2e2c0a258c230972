#!/bin/sh
# Renders the icon zelkora.svg as the PNG sizes the package installs
# (48, 128 and 256 pixels) with librsvg's rsvg-convert; run once after a
# change of the SVG and commit the PNGs.
set -eu
cd "$(dirname "$0")"
for size in 48 128 256; do
  rsvg-convert -w "$size" -h "$size" zelkora.svg -o "zelkora-$size.png"
done
