#!/usr/bin/env python3
"""Opens the reports the tool writes with readers that are not ours.

For every report in src/zelkora/document/testdata/, `zelkora report` writes
DOCX, RTF and HTML; then
  - python-docx reads the DOCX: its headings, the sub- and superscript runs,
    the grade-symbol runs in the symbol font, the tables and their cells, the
    header and footer with their page fields;
  - LibreOffice (headless) converts each file to PDF, and pdftotext must find
    every line of the report's plain text in it (blanks aside, the grade
    symbols as their letters), the page footer "第 1 页 共 N 页" and the
    program's name in the header; pdffonts must list the symbol font as
    embedded where the report has a symbol (DOCX). (HTML's page numbers are
    in @page margin boxes, which browsers print and LibreOffice does not.)
Prints what it checked and how long each step took; exits 1 on the first
failure.

usage: check_documents.py BUILD_DIR [--keep DIR]
"""
import os
import re
import subprocess
import sys
import tempfile
import time

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


def check_docx(path, plain):
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
    if PROGRAM not in head:
        fail(f"{path}: the header lacks the program: {head!r}")
    footer_xml = section.footer._element.xml
    if "PAGE" not in footer_xml or "NUMPAGES" not in footer_xml:
        fail(f"{path}: the footer has no page fields")
    return len(d.paragraphs), len(d.tables), len(symbols), len(d.inline_shapes)


def header_footer_text(d, footer=True):
    s = d.sections[0]
    parts = [s.header] + ([s.footer] if footer else [])
    return "".join(p.text for part in parts for p in part.paragraphs)


def to_pdf(path, outdir):
    start = time.monotonic()
    env = dict(os.environ, HOME=os.path.join(outdir, "lo-home"))
    run(["soffice", "--headless", "--norestore", "--convert-to", "pdf", "--outdir", outdir, path],
        env=env, timeout=240)
    pdf = os.path.join(outdir, os.path.splitext(os.path.basename(path))[0] + ".pdf")
    if not os.path.exists(pdf):
        fail(f"LibreOffice made no PDF of {path}")
        return None, 0
    return pdf, time.monotonic() - start


def check_pdf(pdf, plain, want_symbol_font, want_footer=True):
    text = run(["pdftotext", "-enc", "UTF-8", pdf, "-"]).stdout
    flat = squeeze(text)
    missing = [p for p in expected_pieces(plain) if p not in flat]
    if missing:
        fail(f"{pdf}: {len(missing)} pieces missing from the PDF's text, first {missing[:3]}")
    pages = int(re.search(r"Pages:\s+(\d+)", run(["pdfinfo", pdf]).stdout).group(1))
    if want_footer and f"第1页共{pages}页" not in flat:
        fail(f"{pdf}: no footer 第 1 页 共 {pages} 页")
    if PROGRAM not in flat:
        fail(f"{pdf}: the header's program name is not in the text")
    fonts = run(["pdffonts", pdf]).stdout
    if want_symbol_font:
        line = next((l for l in fonts.splitlines() if GRADE_FONT.replace(" ", "") in l.replace(" ", "")), None)
        if not line or " yes " not in line:
            fail(f"{pdf}: the symbol font is not embedded:\n{fonts}")
    return pages


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
            summary = ""
            if fmt == "docx":
                paragraphs, tables, symbols, pictures = check_docx(target, plain)
                summary = f"python-docx: {paragraphs} paragraphs, {tables} tables, {symbols} symbol runs"
            pdf_dir = os.path.join(out, fmt)
            os.makedirs(pdf_dir, exist_ok=True)
            pdf, took = to_pdf(target, pdf_dir)
            if pdf:
                # HTML numbers its pages in @page margin boxes, which browsers
                # print and LibreOffice's import does not.
                pages = check_pdf(pdf, plain, want_symbol_font=has_symbol and fmt == "docx",
                                  want_footer=fmt != "html")
                summary += f"; LibreOffice: {pages} pages in {took:.1f} s"
            print(f"{stem}.{fmt}: written in {written * 1000:.0f} ms (tool run); {summary}")
    if failures:
        print(f"{len(failures)} failures")
        return 1
    print(f"documents: {len(reports)} reports x 3 formats opened and checked")
    return 0


if __name__ == "__main__":
    sys.exit(main())
