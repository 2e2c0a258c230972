#!/bin/sh
# Renders the icon zelkora.svg as the PNG sizes the package installs
# (48, 128 and 256 pixels) and as the Windows program's icon
# (win32desk/zelkora-desk.ico: 16, 24, 32, 48 and 256 pixels, each a PNG
# in the icon file) with librsvg's rsvg-convert; run once after a change of
# the SVG and commit what it wrote.
set -eu
cd "$(dirname "$0")"
for size in 48 128 256; do
  rsvg-convert -w "$size" -h "$size" zelkora.svg -o "zelkora-$size.png"
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for size in 16 24 32 48 256; do
  rsvg-convert -w "$size" -h "$size" zelkora.svg -o "$work/$size.png"
done
# An icon file: its header, a directory entry an image, then the images.
python3 - "$work" ../../../win32desk/zelkora-desk.ico <<'PY'
import struct, sys
work, out = sys.argv[1], sys.argv[2]
sizes = [16, 24, 32, 48, 256]
images = [open(f"{work}/{s}.png", "rb").read() for s in sizes]
head = struct.pack("<HHH", 0, 1, len(images))
offset = len(head) + 16 * len(images)
entries = b""
for size, data in zip(sizes, images):
    side = size % 256  # 0 stands for 256
    entries += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(data), offset)
    offset += len(data)
with open(out, "wb") as f:
    f.write(head + entries + b"".join(images))
PY
