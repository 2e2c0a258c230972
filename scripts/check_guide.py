#!/usr/bin/env python3
"""Checks that the code of a guide is the code of its example, word for word.

The guide's excerpts begin at the line

    <!-- excerpts: ... -->

(the text before it, with code of its own, is not checked; a guide without
the line is refused). From there on every fenced code block, but for shell
commands (```sh), follows a line naming where it comes from:

    <!-- from: examples/column_form/main.cpp#form -->

that is, the region of the file (path from the repository's root) between
the lines holding "[guide:form]" and "[/guide:form]" (those lines left out),
or, without "#name", the whole file. The block must equal the region, but
for line endings and the blank lines around it. Exits 1 naming each block
that differs, 0 when all agree.

    check_guide.py docs/programmers-guide.md
"""
import pathlib
import re
import sys

FROM = re.compile(r"^<!-- from: (\S+?)(?:#([\w-]+))? -->$")


def region(path, name):
    """The lines of `path` between the markers of `name`; None without them."""
    lines = path.read_text(encoding="utf-8").replace("\r\n", "\n").split("\n")
    if name is None:
        return lines
    starts = [i for i, line in enumerate(lines) if f"[guide:{name}]" in line]
    ends = [i for i, line in enumerate(lines) if f"[/guide:{name}]" in line]
    if len(starts) != 1 or len(ends) != 1 or ends[0] < starts[0]:
        return None
    return lines[starts[0] + 1 : ends[0]]


def trimmed(lines):
    while lines and not lines[0].strip():
        lines = lines[1:]
    while lines and not lines[-1].strip():
        lines = lines[:-1]
    return lines


def blocks(text):
    """(line number, source line or None, language, lines) of each block."""
    lines = text.split("\n")
    i = 0
    while i < len(lines):
        fence = re.match(r"^```(\w*)$", lines[i])
        if fence:
            start = i
            i += 1
            while i < len(lines) and lines[i] != "```":
                i += 1
            source = lines[start - 1] if start > 0 else ""
            yield start + 1, source, fence.group(1), lines[start + 1 : i]
        i += 1


EXCERPTS = re.compile(r"^<!-- excerpts: .* -->$", re.MULTILINE)


def problems(guide):
    root = guide.resolve().parent.parent
    text = guide.read_text(encoding="utf-8")
    start = EXCERPTS.search(text)
    if not start:
        yield f"{guide}: no <!-- excerpts: ... --> line before the example's code"
        return
    skipped = text.count("\n", 0, start.start())
    for number, source, language, code in blocks(text[start.start() :]):
        number += skipped
        if language == "sh":
            continue
        found = FROM.match(source)
        if not found:
            yield f"{guide}:{number}: a code block without <!-- from: ... --> before it"
            continue
        path = root / found.group(1)
        if not path.is_file():
            yield f"{guide}:{number}: {found.group(1)} does not exist"
            continue
        expected = region(path, found.group(2))
        if expected is None:
            yield f"{guide}:{number}: {found.group(1)} has no single region {found.group(2)}"
        elif trimmed(expected) != trimmed(code):
            yield f"{guide}:{number}: the block is not {found.group(1)}#{found.group(2)} word for word"


def main(argv):
    if len(argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    found = list(problems(pathlib.Path(argv[1])))
    for problem in found:
        print(problem, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
