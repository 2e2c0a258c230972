#!/usr/bin/python3
"""Checks report files written by write_rtf and write_html with readers that
are not ours.

  scripts/check_rtf_html.py report.rtf report.html --expect 计算书 --expect "A s"

Each HTML file must parse with its tags nested (html.parser) and its <body>
must be well-formed XML. Then LibreOffice converts every file to PDF (one
soffice run) and each --expect text must be in what pdftotext reads from it
(blanks ignored); an RTF file's pages must carry the footer "第 1 页 共 N 页"
with its page fields filled in. Exit status 1 on any failure, with the
reasons on stderr.
"""
import argparse
import html.parser
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

VOID = {"area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta", "source",
        "track", "wbr"}


class Nesting(html.parser.HTMLParser):
    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.open, self.errors = [], []

    def handle_starttag(self, tag, attrs):
        if tag not in VOID:
            self.open.append(tag)

    def handle_startendtag(self, tag, attrs):
        pass

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            self.errors.append(f"</{tag}> closes {self.open[-1:] or 'nothing'}")
        else:
            self.open.pop()


def check_html(path):
    text = path.read_text(encoding="utf-8")
    parser = Nesting()
    parser.feed(text)
    parser.close()
    errors = parser.errors + ([f"unclosed {parser.open}"] if parser.open else [])
    body = re.search(r"<body>.*</body>", text, re.S)
    if not body:
        errors.append("no <body>")
    else:
        try:
            ET.fromstring(body.group(0))
        except ET.ParseError as error:
            errors.append(f"body is no XML: {error}")
    return [f"{path}: {e}" for e in errors]


def check_with_libreoffice(paths, expected):
    errors = []
    with tempfile.TemporaryDirectory() as out:
        # Copies named by their place, so that a.rtf and a.html give two PDFs.
        copies = [pathlib.Path(out) / f"{i}{path.suffix}" for i, path in enumerate(paths)]
        for path, copy in zip(paths, copies):
            shutil.copyfile(path, copy)
        subprocess.run(["soffice", "--headless", f"-env:UserInstallation=file://{out}/profile",
                        "--convert-to", "pdf", "--outdir", out, *map(str, copies)],
                       check=True, capture_output=True, timeout=180)
        for path, copy in zip(paths, copies):
            pdf = copy.with_suffix(".pdf")
            if not pdf.exists():
                errors.append(f"{path}: LibreOffice made no PDF")
                continue
            shown = subprocess.run(["pdftotext", "-layout", str(pdf), "-"], check=True,
                                   capture_output=True, text=True).stdout
            shown = re.sub(r"\s+", "", shown)
            if path.suffix.lower() == ".rtf" and not re.search(r"第1页共[1-9]\d*页", shown):
                errors.append(f"{path}: no footer with page numbers")
            for line in expected:
                if re.sub(r"\s+", "", line) not in shown:
                    errors.append(f"{path}: the PDF does not show {line!r}")
    return errors


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("files", nargs="+", type=pathlib.Path)
    parser.add_argument("--expect", action="append", default=[], help="a text every file shows")
    args = parser.parse_args()
    errors = []
    for path in args.files:
        if path.suffix.lower() in (".html", ".htm"):
            errors += check_html(path)
    errors += check_with_libreoffice(args.files, args.expect)
    for error in errors:
        print(error, file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
