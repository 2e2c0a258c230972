#!/usr/bin/python3
"""Builds the project's font of the four steel-grade symbols.

    tools/font/make_grade_font.py [OUT.ttf]     (default resources/fonts/zelkora-grade.ttf)

Runs on Debian's python3-fontforge (or `fontforge -lang=py -script`). Every
outline is described below as numbers; the file is the same byte for byte on
every run (fixed time stamps, no FontForge table of its own).

The symbols as structural drawings write them, each on the advance of a digit
of a Latin text font, from a little below the baseline to about the height of
a capital:

    U+E000  HPB300  an oval with one vertical stroke through it
    U+E001  HRB335  the same, with a short horizontal stroke at its foot
    U+E002  HRB400  an oval with two vertical strokes through it and a foot stroke
    U+E003  HRB500  the same as HRB400, with a head stroke too
"""

import os
import sys

import fontforge

EM = 1000
ASCENT = 800
DESCENT = 200
ADVANCE = 600  # a digit's advance in a Latin text font
SPACE_ADVANCE = 280
VERSION = "1.000"
# The file's time stamps (created, modified): 2026-01-01 00:00:00 UTC, whatever
# the clock or the environment say, so that a rebuild gives the same bytes.
FONT_EPOCH = 1767225600

FAMILY = "Zelkora Grade"
POSTSCRIPT_NAME = "ZelkoraGrade-Regular"
COPYRIGHT = "Copyright (c) 2026 the Zelkora developers. The project's own font, part of Zelkora."
LICENCE = "Part of Zelkora: the same terms as the Zelkora library it ships with."

# ---- The outlines ----------------------------------------------------------
# The oval: its centre and its outer and inner half-axes (the ring between
# them is the drawn line, a little thicker at the sides than at top and foot).
OVAL_CENTRE = (300, 330)
OVAL_OUTER = (228, 260)  # x 72..528, y 70..590
OVAL_INNER = (164, 204)  # the line 64 thick at the sides, 56 at top and foot


# Strokes as closed outlines, each a list of corner points, clockwise.
def box(x0, y0, x1, y1):
    return [(x0, y0), (x0, y1), (x1, y1), (x1, y0)]


# The vertical strokes reach a little past the oval: to the height of a
# capital and below the baseline; the bars at foot and head end them.
STROKE_LOW, STROKE_HIGH = -30, 690
BAR = 50  # the thickness of a foot or head bar
ONE_VERTICAL = [box(268, STROKE_LOW, 332, STROKE_HIGH)]
TWO_VERTICALS = [box(222, STROKE_LOW, 274, STROKE_HIGH), box(326, STROKE_LOW, 378, STROKE_HIGH)]
SHORT_FOOT = [box(200, STROKE_LOW, 400, STROKE_LOW + BAR)]
WIDE_FOOT = [box(168, STROKE_LOW, 432, STROKE_LOW + BAR)]
WIDE_HEAD = [box(168, STROKE_HIGH - BAR, 432, STROKE_HIGH)]

GLYPHS = [
    # code point, glyph name, the grade it writes, its strokes (the oval is in every one)
    (0xE000, "uniE000", "HPB300", ONE_VERTICAL),
    (0xE001, "uniE001", "HRB335", ONE_VERTICAL + SHORT_FOOT),
    (0xE002, "uniE002", "HRB400", TWO_VERTICALS + WIDE_FOOT),
    (0xE003, "uniE003", "HRB500", TWO_VERTICALS + WIDE_FOOT + WIDE_HEAD),
]

# .notdef: a hollow box.
NOTDEF_OUTER = box(60, 0, 440, 700)
NOTDEF_INNER = list(reversed(box(110, 50, 390, 650)))

# A quarter of an ellipse as a cubic Bézier: the control points lie this far
# along the tangents, as a fraction of the half-axis.
KAPPA = 0.5522847498


def ellipse(centre, half_axes, clockwise):
    """The ellipse as a closed contour: a start point and four cubic segments."""
    cx, cy = centre
    rx, ry = half_axes
    k = KAPPA
    # counter-clockwise from the right-hand end: right, top, left, foot
    ends = [(cx + rx, cy), (cx, cy + ry), (cx - rx, cy), (cx, cy - ry)]
    tangents = [(0, ry * k), (-rx * k, 0), (0, -ry * k), (rx * k, 0)]
    if clockwise:
        ends = [ends[0]] + ends[:0:-1]
        tangents = [(-tx, -ty) for tx, ty in [tangents[0]] + tangents[:0:-1]]
    segments = []
    for i in range(4):
        p0, p1 = ends[i], ends[(i + 1) % 4]
        t0, t1 = tangents[i], tangents[(i + 1) % 4]
        segments.append(((p0[0] + t0[0], p0[1] + t0[1]), (p1[0] - t1[0], p1[1] - t1[1]), p1))
    return ends[0], segments


def draw_polygon(pen, points):
    pen.moveTo(points[0])
    for point in points[1:]:
        pen.lineTo(point)
    pen.closePath()


def draw_ellipse(pen, centre, half_axes, clockwise):
    start, segments = ellipse(centre, half_axes, clockwise)
    pen.moveTo(start)
    for c1, c2, end in segments:
        pen.curveTo(c1, c2, end)
    pen.closePath()


def finish_outline(glyph):
    """Union of the parts, outer contours clockwise, on whole units, in a fixed order.

    Stops the build when FontForge's validation finds a fault in the result
    (open or crossing contours, a wrong direction, missing extrema, ...).
    """
    glyph.removeOverlap()
    glyph.correctDirection()
    glyph.addExtrema()
    glyph.round()
    glyph.canonicalContours()
    glyph.canonicalStart()
    problems = glyph.validate(True)
    if problems:
        raise SystemExit(f"make_grade_font: {glyph.glyphname}: FontForge validation flags {problems:#x}")


def add_symbol(font, code, name, strokes):
    glyph = font.createChar(code, name)
    pen = glyph.glyphPen()
    draw_ellipse(pen, OVAL_CENTRE, OVAL_OUTER, clockwise=True)
    draw_ellipse(pen, OVAL_CENTRE, OVAL_INNER, clockwise=False)  # the hollow
    for outline in strokes:
        draw_polygon(pen, outline)
    pen = None  # the pen writes its contours into the glyph when released
    finish_outline(glyph)
    glyph.width = ADVANCE


def add_notdef_and_space(font):
    notdef = font.createChar(-1, ".notdef")
    pen = notdef.glyphPen()
    draw_polygon(pen, NOTDEF_OUTER)
    draw_polygon(pen, NOTDEF_INNER)
    pen = None
    finish_outline(notdef)
    notdef.width = ADVANCE
    space = font.createChar(0x20, "space")
    space.width = SPACE_ADVANCE


def set_names(font):
    font.familyname = FAMILY
    font.fullname = FAMILY
    font.fontname = POSTSCRIPT_NAME
    font.weight = "Regular"
    font.version = VERSION
    font.copyright = COPYRIGHT
    lang = "English (US)"
    font.appendSFNTName(lang, "Family", FAMILY)
    font.appendSFNTName(lang, "SubFamily", "Regular")
    font.appendSFNTName(lang, "Fullname", FAMILY)
    font.appendSFNTName(lang, "UniqueID", f"{FAMILY} {VERSION}")
    font.appendSFNTName(lang, "Version", f"Version {VERSION}")
    font.appendSFNTName(lang, "License", LICENCE)
    font.appendSFNTName(lang, "Descriptor", "The steel-grade symbols HPB300, HRB335, HRB400 and HRB500 at U+E000 to U+E003.")


def set_metrics(font):
    font.em = EM
    font.ascent = ASCENT
    font.descent = DESCENT
    for prefix in ("hhea_", "os2_typo", "os2_win"):
        setattr(font, prefix + "ascent_add", False)
        setattr(font, prefix + "descent_add", False)
    font.hhea_ascent = font.os2_typoascent = font.os2_winascent = 900
    font.hhea_descent = font.os2_typodescent = -200
    font.os2_windescent = 200
    font.hhea_linegap = font.os2_typolinegap = 0
    font.os2_capheight = 700
    font.os2_xheight = 500


def set_os2(font):
    font.os2_version = 4
    font.os2_vendor = "ZELK"
    font.os2_weight = 400
    font.os2_width = 5
    font.os2_stylemap = 0x40  # REGULAR
    font.os2_fstype = 0  # installable embedding: PDF and DOCX writers may embed it
    # Unicode ranges: bit 0 Basic Latin (the space), bit 60 the Private Use Area.
    font.os2_unicoderanges = (1 << 0, 1 << (60 - 32), 0, 0)
    # Code pages: bit 0 Latin 1 (1252), bit 18 Chinese simplified (936).
    font.os2_codepages = ((1 << 0) | (1 << 18), 0)


def build(out_path):
    os.environ["SOURCE_DATE_EPOCH"] = str(FONT_EPOCH)  # FontForge stamps 'head' with it
    font = fontforge.font()
    font.encoding = "UnicodeFull"
    set_metrics(font)
    set_names(font)
    set_os2(font)
    add_notdef_and_space(font)
    for code, name, _grade, strokes in GLYPHS:
        add_symbol(font, code, name, strokes)
    font.generate(out_path, flags=("opentype", "no-FFTM-table", "omit-instructions"))
    font.close()


def main(argv):
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    out_path = argv[1] if len(argv) > 1 else os.path.join(root, "resources", "fonts", "zelkora-grade.ttf")
    os.makedirs(os.path.dirname(os.path.abspath(out_path)), exist_ok=True)
    build(out_path)
    print(out_path)


if __name__ == "__main__":
    main(sys.argv)
