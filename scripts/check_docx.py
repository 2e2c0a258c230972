#!/usr/bin/python3
"""Reads a DOCX with python-docx (python3-docx), a reader that is not ours,
prints what it finds and checks what every report file must have.

    scripts/check_docx.py report.docx [--quiet]

Printed: each paragraph with its style and its runs (marked **bold**,
^{superscript}, _{subscript}), each table with its cells, the page header
and footer, the pictures. Checked (exit status 1 on a failure): the file
opens; the footer carries the PAGE and NUMPAGES fields; the heading styles
have outline levels; every picture's image is in the package; an embedded
font, once its first 32 bytes are restored with its key, is a TrueType file.
"""
import re
import sys

import docx
from docx.oxml.ns import qn

failures = []


def check(condition, message):
    if not condition:
        failures.append(message)


def marked(run):
    text = run.text
    if run.font.superscript:
        text = "^{" + text + "}"
    if run.font.subscript:
        text = "_{" + text + "}"
    if run.bold:
        text = "**" + text + "**"
    return text


def paragraph_line(paragraph):
    return "".join(marked(run) for run in paragraph.runs)


def field_instructions(part_element):
    return [t.text.strip() for t in part_element.iter(qn("w:instrText"))]


def check_font(document):
    for part in document.part.package.iter_parts():
        if not str(part.partname).endswith(".odttf"):
            continue
        fonts = [p for p in document.part.package.iter_parts()
                 if str(p.partname) == "/word/fontTable.xml"]
        key = re.search(rb'w:fontKey="\{([0-9A-Fa-f-]+)\}"', fonts[0].blob).group(1)
        digits = key.replace(b"-", b"").decode()
        key_bytes = bytes(int(digits[i:i + 2], 16) for i in range(30, -2, -2))
        data = bytearray(part.blob)
        for i in range(min(32, len(data))):
            data[i] ^= key_bytes[i % 16]
        check(bytes(data[:4]) in (b"\x00\x01\x00\x00", b"true", b"OTTO"),
              "the embedded font is no TrueType file once restored")
        print(f"embedded font: {part.partname}, {len(data)} bytes, "
              f"starts {bytes(data[:4]).hex()}")


def main():
    arguments = [a for a in sys.argv[1:] if not a.startswith("--")]
    if len(arguments) != 1:
        print(__doc__)
        return 2
    path = arguments[0]
    quiet = "--quiet" in sys.argv
    document = docx.Document(path)
    body = document.element.body
    tables = iter(document.tables)
    paragraphs = iter(document.paragraphs)
    for child in body.iterchildren():
        if child.tag == qn("w:p"):
            paragraph = next(paragraphs)
            if not quiet:
                print(f"[{paragraph.style.name}] {paragraph_line(paragraph)}")
        elif child.tag == qn("w:tbl"):
            table = next(tables)
            header = table.rows[0]._tr.trPr is not None and \
                table.rows[0]._tr.trPr.find(qn("w:tblHeader")) is not None
            if not quiet:
                print(f"<table {len(table.rows)}x{len(table.columns)}"
                      f"{' header' if header else ''}>")
                for row in table.rows:
                    cells = [paragraph_line(c.paragraphs[0]) for c in row.cells]
                    print("  | " + " | ".join(cells) + " |")
    section = document.sections[0]
    header = " / ".join(p.text for p in section.header.paragraphs)
    footer_fields = field_instructions(section.footer._element)
    footer = " ".join(p.text for p in section.footer.paragraphs)
    print(f"header: {header}")
    print(f"footer: {footer}  fields {footer_fields}")
    check("PAGE" in footer_fields and "NUMPAGES" in footer_fields,
          "the footer lacks the PAGE and NUMPAGES fields")
    for level in (1, 2, 3):
        style = document.styles[f"Heading {level}"]
        outline = style.element.find(qn("w:pPr")).find(qn("w:outlineLvl"))
        check(outline is not None and outline.get(qn("w:val")) == str(level - 1),
              f"Heading {level} has no outline level {level - 1}")
    pictures = document.inline_shapes
    for shape in pictures:
        blip = shape._inline.find(".//" + qn("a:blip"))
        part = document.part.related_parts.get(blip.get(qn("r:embed")))
        check(part is not None and len(part.blob) > 0, "a picture without its image")
    print(f"pictures: {len(pictures)}")
    print(f"page: {section.page_width.mm:.0f} x {section.page_height.mm:.0f} mm, margins "
          f"{section.top_margin.mm:.0f}/{section.bottom_margin.mm:.0f}/"
          f"{section.left_margin.mm:.0f}/{section.right_margin.mm:.0f} mm")
    check_font(document)
    for failure in failures:
        print("FAILED: " + failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
