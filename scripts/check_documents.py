#!/usr/bin/env python3
"""Opens the reports the tool writes with readers that are not ours.

For every report in src/zelkora/document/testdata/, `zelkora report` writes
DOCX, RTF and HTML; then
  - python-docx reads the DOCX: its headings, the sub- and superscript runs,
    the grade-symbol runs in the symbol font, the tables and their cells, the
    header and footer with their page fields;
  - LibreOffice (headless) converts the DOCX and the RTF to PDF, Chromium
    (headless) prints the HTML to PDF, and pdftotext must find every line of
    the report's plain text in it (blanks aside, the grade symbols as their
    letters), the page footer "第 1 页 共 N 页" and the program's name in the
    header; pdffonts must list the symbol font as embedded where the report
    has a symbol (DOCX and HTML carry the font; RTF names it, and is read
    with the font installed, as the installer leaves it).
Then a dozen hostile reports (markers cut and crossed, controls, lone
surrogates, symbols) are written in every format: python-docx must open each
Word file, LibreOffice convert each Word and RTF file, each HTML body parse as
XML. Prints what it checked and how long each step took; exits 1 after all
checks when one failed.

usage: check_documents.py BUILD_DIR [--keep DIR]
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as ET

import docx  # python3-docx
from docx.oxml.ns import qn

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TESTDATA = os.path.join(ROOT, "src", "zelkora", "document", "testdata")
GRADE_FONT = "Zelkora Grade"
PROGRAM = "计算书检查"  # in no report's text, so found only in the page header
failures = []


def fail(what):
    failures.append(what)
    print("FAIL:", what)


def squeeze(text):
    """Text without blanks, the grade symbols as their letters."""
    text = "".join(chr(ord("A") + ord(c) - 0xE000) if "\ue000" <= c <= "\ue003" else c for c in text)
    return re.sub(r"\s+", "", text)


def run(args, **kw):
    return subprocess.run(args, check=True, capture_output=True, text=True, **kw)


def expected_pieces(plain):
    """The pieces of the plain text a reader must show: each line's stretches
    between runs of two blanks (a table's cells), the rule left out."""
    pieces = []
    for line in plain.splitlines():
        for piece in re.split(r" {2,}", line.strip()):
            piece = piece.replace("_", "")  # the signature's lines are drawn, not typed
            if piece and not set(piece) <= {"─"}:
                pieces.append(squeeze(piece))
    return pieces


LABEL = re.compile(r"^(\(\d+\)|（[一二三四五六七八九十百]+）|[一二三四五六七八九十百]+、)(.+)$")


def found(piece, flat):
    """Whether the piece is in the text; a heading's label may stand apart
    from its words (a reader's order of runs in two fonts)."""
    if piece in flat:
        return True
    label = LABEL.match(piece)
    return bool(label) and label.group(1) in flat and label.group(2) in flat


def check_docx(path, plain, program=PROGRAM):
    d = docx.Document(path)
    styles = [p.style.name for p in d.paragraphs]
    if not any(s.startswith("Heading 1") or s == "Heading1" for s in styles):
        fail(f"{path}: no paragraph in a level-1 heading style ({sorted(set(styles))})")
    runs = [r for p in d.paragraphs for r in p.runs]
    for t in d.tables:
        for row in t.rows:
            for cell in row.cells:
                for p in cell.paragraphs:
                    runs.extend(p.runs)
    text = squeeze("".join(r.text for r in runs))
    if "mm_up(" in "".join(r.text for r in runs) or "_ub(" in "".join(r.text for r in runs):
        fail(f"{path}: markup left in the text")
    if "mm_up(2)up_" in plain or "mm2" in plain:
        if not any(r.font.superscript for r in runs):
            fail(f"{path}: no superscript run")
    if not any(r.font.subscript for r in runs):
        fail(f"{path}: no subscript run")
    symbols = [r for r in runs if any("\ue000" <= c <= "\ue003" for c in r.text)]
    for r in symbols:
        fonts = r._r.rPr.find(qn("w:rFonts")) if r._r.rPr is not None else None
        names = {fonts.get(qn(a)) for a in ("w:ascii", "w:hAnsi", "w:eastAsia", "w:cs")} if fonts is not None else set()
        if GRADE_FONT not in names:
            fail(f"{path}: the symbol {r.text!r} is not in {GRADE_FONT} ({names})")
            break
    missing = [p for p in expected_pieces(plain) if p not in text and p not in squeeze(header_footer_text(d))]
    if missing:
        fail(f"{path}: {len(missing)} pieces of the report missing, first {missing[:3]}")
    section = d.sections[0]
    head = squeeze(header_footer_text(d, footer=False))
    if program not in head:
        fail(f"{path}: the header lacks the program: {head!r}")
    footer_xml = section.footer._element.xml
    if "PAGE" not in footer_xml or "NUMPAGES" not in footer_xml:
        fail(f"{path}: the footer has no page fields")
    return len(d.paragraphs), len(d.tables), len(symbols), len(d.inline_shapes)


def header_footer_text(d, footer=True):
    s = d.sections[0]
    parts = [s.header] + ([s.footer] if footer else [])
    return "".join(p.text for part in parts for p in part.paragraphs)


def to_pdf(path, outdir, font_installed=False):
    """LibreOffice's PDF of a file; `font_installed`: with the grade font in
    the user's fonts, as the installer puts it (an RTF file names the font
    and cannot carry it)."""
    start = time.monotonic()
    home = os.path.join(outdir, "lo-home")
    if font_installed:
        fonts = os.path.join(home, ".fonts")
        os.makedirs(fonts, exist_ok=True)
        shutil.copy(os.path.join(ROOT, "resources", "fonts", "zelkora-grade.ttf"), fonts)
    env = dict(os.environ, HOME=home)
    run(["soffice", "--headless", "--norestore", "--convert-to", "pdf", "--outdir", outdir, path],
        env=env, timeout=240)
    pdf = os.path.join(outdir, os.path.splitext(os.path.basename(path))[0] + ".pdf")
    if not os.path.exists(pdf):
        fail(f"LibreOffice made no PDF of {path}")
        return None, 0
    return pdf, time.monotonic() - start


def check_html(path):
    """The HTML's body is well-formed XML too (void elements closed, numeric
    references only), so any reader, however strict, takes it."""
    text = open(path, encoding="utf-8").read()
    body = re.search(r"<body>.*</body>", text, re.S)
    if not body:
        fail(f"{path}: no <body>")
        return
    try:
        ET.fromstring(body.group(0))
    except ET.ParseError as error:
        fail(f"{path}: the body is no XML: {error}")


def to_pdf_in_browser(path, outdir):
    """A browser's print of an HTML file (Chromium headless, without its own
    page header and footer: the file's @page boxes carry them)."""
    start = time.monotonic()
    pdf = os.path.join(outdir, os.path.splitext(os.path.basename(path))[0] + ".pdf")
    run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--no-pdf-header-footer",
         f"--user-data-dir={os.path.join(outdir, 'chromium-profile')}",
         f"--print-to-pdf={pdf}", "file://" + os.path.abspath(path)], timeout=120)
    if not os.path.exists(pdf):
        fail(f"Chromium made no PDF of {path}")
        return None, 0
    return pdf, time.monotonic() - start


def check_pdf(pdf, plain, want_symbol_font, program=PROGRAM):
    text = run(["pdftotext", "-layout", "-enc", "UTF-8", pdf, "-"]).stdout
    flat = squeeze(text)
    missing = [p for p in expected_pieces(plain) if not found(p, flat)]
    if missing:
        fail(f"{pdf}: {len(missing)} pieces missing from the PDF's text, first {missing[:3]}")
    pages = int(re.search(r"Pages:\s+(\d+)", run(["pdfinfo", pdf]).stdout).group(1))
    if f"第1页共{pages}页" not in flat:
        fail(f"{pdf}: no footer 第 1 页 共 {pages} 页")
    if program not in flat:
        fail(f"{pdf}: the header's program name is not in the text")
    fonts = run(["pdffonts", pdf]).stdout
    if want_symbol_font:
        line = next((l for l in fonts.splitlines() if GRADE_FONT.replace(" ", "") in l.replace(" ", "")), None)
        if not line or " yes " not in line:
            fail(f"{pdf}: the symbol font is not embedded:\n{fonts}")
    return pages


def check_desktop(build, tool, out):
    """The beam's report as the desktop program exports it: its Word file
    (with the section's figure) through python-docx and LibreOffice, its own
    PDF through poppler. The lines are the sample beam report's, its date
    aside (the program calculates today)."""
    desk = os.path.join(build, "zelkora-desk")
    if not os.path.exists(desk):
        print("desktop: not built (no Qt), not checked")
        return
    folder = os.path.join(out, "desk")
    os.makedirs(folder, exist_ok=True)
    script = os.path.join(folder, "export.txt")
    docx_file, pdf_file = os.path.join(folder, "beam.docx"), os.path.join(folder, "beam.pdf")
    with open(script, "w", encoding="utf-8") as f:
        f.write(f"menu 基本构件\nmenu 梁配筋\ncalculate\nexport docx {docx_file}\nexport pdf {pdf_file}\n")
    # A user of their own: the menu opens as a new user's does.
    settings = os.path.join(tempfile.mkdtemp(prefix="zk-desk-"), "settings.ini")
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen", ZELKORA_SETTINGS=settings)
    run([desk, "--script", script, "--quit"], env=env, timeout=120)
    source = os.path.join(TESTDATA, "beam_report.txt")
    plain = run([tool, "report", source, "--to", "text", "-"]).stdout
    plain = "\n".join(l for l in plain.splitlines() if "日期：" not in l)
    program = "梁配筋计算"
    paragraphs, tables, symbols, pictures = check_docx(docx_file, plain, program)
    if pictures < 1:
        fail(f"{docx_file}: the section's figure is missing")
    pdf, took = to_pdf(docx_file, os.path.join(folder, "lo"))
    pages = check_pdf(pdf, plain, want_symbol_font=True, program=program) if pdf else 0
    own = check_pdf(pdf_file, plain, want_symbol_font=True, program=program)
    print(f"desktop: beam.docx {paragraphs} paragraphs, {pictures} figure, LibreOffice {pages} pages "
          f"in {took:.1f} s; beam.pdf {own} pages")


def random_report(rng):
    """Hostile report lines: markers cut and crossed, labels, padded columns,
    controls, lone surrogates, grade symbols, long lines, in UTF-16 so any
    unit can be written."""
    pieces = ["_bb(", ")bb_", "_ub(", ")ub_", "_up(", ")up_", "一、", "（一）", "(1)", "  ", "    ",
              "\u3000", "\r\n", "\n", "\r", "────────", "＝", "|", "&", "<", ">", "\"", "{", "}",
              "\\", "\x01", "\x0b", "\x7f", "\ue000", "\ue002", "\ue003", "f", "A", "12.5", "mm",
              "混凝土", "工程名称：", "计算日期：", "\U0001d400", "\ufffe", "\ufdd0"]
    units = []
    for _ in range(rng.randrange(0, 400)):
        if rng.random() < 0.03:
            units.append(rng.choice([0xD800, 0xDBFF, 0xDC00, 0xDFFF]))  # a lone surrogate
        else:
            units.extend(int.from_bytes(b, "little") for b in
                         (lambda e: [e[i:i + 2] for i in range(0, len(e), 2)])(rng.choice(pieces).encode("utf-16-le")))
    return b"\xff\xfe" + b"".join(u.to_bytes(2, "little") for u in units)


def check_random_reports(tool, out, count=12):
    """Hostile reports written in every format: python-docx opens each Word
    file, LibreOffice converts each Word and RTF file, each HTML body parses
    as XML. A refused file is a failure."""
    import random
    rng = random.Random(20261126)
    folder = os.path.join(out, "random")
    os.makedirs(folder, exist_ok=True)
    files = []
    for n in range(count):
        source = os.path.join(folder, f"r{n}.txt")
        with open(source, "wb") as f:
            f.write(random_report(rng))
        for fmt in ("docx", "rtf", "html"):
            target = os.path.join(folder, f"r{n}.{fmt}")
            run([tool, "report", source, "--to", fmt, target, "--program", PROGRAM])
            files.append(target)
    for target in files:
        if target.endswith(".docx"):
            try:
                docx.Document(target)
            except Exception as error:  # python-docx refuses the file
                fail(f"{target}: python-docx refuses it: {error}")
        elif target.endswith(".html"):
            check_html(target)
    start = time.monotonic()
    env = dict(os.environ, HOME=os.path.join(folder, "lo-home"))
    for fmt in ("docx", "rtf"):  # apart: a report's two files share a stem
        pdf_dir = os.path.join(folder, fmt)
        batch = [t for t in files if t.endswith("." + fmt)]
        run(["soffice", "--headless", "--norestore", "--convert-to", "pdf", "--outdir", pdf_dir] + batch,
            env=env, timeout=600)
        for target in batch:
            stem = os.path.splitext(os.path.basename(target))[0]
            if not os.path.exists(os.path.join(pdf_dir, stem + ".pdf")):
                fail(f"{target}: LibreOffice made no PDF of it")
    print(f"random: {count} hostile reports x 3 formats written and opened "
          f"(LibreOffice {time.monotonic() - start:.1f} s)")


def main():
    if len(sys.argv) < 2:
        print(__doc__)
        return 2
    build = sys.argv[1]
    keep = sys.argv[sys.argv.index("--keep") + 1] if "--keep" in sys.argv else None
    tool = os.path.join(build, "zelkora")
    out = keep or tempfile.mkdtemp(prefix="zk-documents-")
    os.makedirs(out, exist_ok=True)
    reports = sorted(f for f in os.listdir(TESTDATA) if f.endswith(".txt"))
    for name in reports:
        source = os.path.join(TESTDATA, name)
        stem = os.path.splitext(name)[0]
        plain = run([tool, "report", source, "--to", "text", "-", "--program", PROGRAM]).stdout
        has_symbol = any("\ue000" <= c <= "\ue003" for c in open(source, encoding="utf-8").read())
        for fmt in ("docx", "rtf", "html"):
            target = os.path.join(out, f"{stem}.{fmt}")
            start = time.monotonic()
            run([tool, "report", source, "--to", fmt, target, "--program", PROGRAM])
            written = time.monotonic() - start
            summary = []
            if fmt == "docx":
                paragraphs, tables, symbols, pictures = check_docx(target, plain)
                summary.append(f"python-docx: {paragraphs} paragraphs, {tables} tables, {symbols} symbol runs")
            pdf_dir = os.path.join(out, fmt)
            os.makedirs(pdf_dir, exist_ok=True)
            # HTML is for a browser: LibreOffice's import reads little of its
            # CSS (no @page boxes, where the page numbers are).
            reader = "Chromium" if fmt == "html" else "LibreOffice"
            if fmt == "html":
                check_html(target)
                pdf, took = to_pdf_in_browser(target, pdf_dir)
            else:
                pdf, took = to_pdf(target, pdf_dir, font_installed=fmt == "rtf")
            if pdf:
                pages = check_pdf(pdf, plain, want_symbol_font=has_symbol)
                summary.append(f"{reader}: {pages} pages in {took:.1f} s")
            print(f"{stem}.{fmt}: written in {written * 1000:.0f} ms (tool run); " + "; ".join(summary))
    check_random_reports(tool, out)
    check_desktop(build, tool, out)
    if failures:
        print(f"{len(failures)} failures")
        return 1
    print(f"documents: {len(reports)} reports x 3 formats opened and checked")
    return 0


if __name__ == "__main__":
    sys.exit(main())
