#!/usr/bin/python3
"""Checks that the checked-in font is what tools/font/make_grade_font.py makes.

    tools/font/check_grade_font.py [FONT.ttf]   (default resources/fonts/zelkora-grade.ttf)

Builds the font again into a temporary folder (python3-fontforge, no display
needed) and compares the two files byte for byte; the build is reproducible,
so any difference means the source and the file went apart. On a difference
it names the tables that differ and exits with 1: run `make font` and commit
the file.
"""

import os
import struct
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import make_grade_font  # noqa: E402  (after the path is set)


def tables(data):
    """The sfnt tables of a TrueType file, tag to bytes (empty for no font)."""
    if len(data) < 12:
        return {}
    (count,) = struct.unpack_from(">H", data, 4)
    result = {}
    for i in range(count):
        entry = 12 + 16 * i
        if entry + 16 > len(data):
            break
        tag, _checksum, offset, length = struct.unpack_from(">4sIII", data, entry)
        result[tag.decode("latin-1")] = data[offset : offset + length]
    return result


def differing_tables(expected, actual):
    a, b = tables(expected), tables(actual)
    return sorted(tag for tag in set(a) | set(b) if a.get(tag) != b.get(tag))


def main(argv):
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    shipped_path = argv[1] if len(argv) > 1 else os.path.join(root, "resources", "fonts", "zelkora-grade.ttf")
    try:
        with open(shipped_path, "rb") as f:
            shipped = f.read()
    except OSError as error:
        print(f"check_grade_font: {error}", file=sys.stderr)
        return 1
    with tempfile.TemporaryDirectory() as folder:
        rebuilt_path = os.path.join(folder, "zelkora-grade.ttf")
        make_grade_font.build(rebuilt_path)
        with open(rebuilt_path, "rb") as f:
            rebuilt = f.read()
    if shipped == rebuilt:
        print(f"check_grade_font: {shipped_path} is what the script makes ({len(shipped)} bytes)")
        return 0
    names = ", ".join(differing_tables(rebuilt, shipped)) or "the file's frame"
    print(
        f"check_grade_font: {shipped_path} differs from what tools/font/make_grade_font.py makes"
        f" (tables: {names}); run `make font` and commit the file",
        file=sys.stderr,
    )
    return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv))
