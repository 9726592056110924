#!/usr/bin/env python3
"""Checks what the pages of the project say of its sources:  references.py DOCUMENT...

A file in backticks, `host/main.cpp`, must be there, and so must the target of a link, with the heading that it names. A
function in backticks, `renderTunnel()`, must occur in a source. A fenced block marked `cpp` right behind a line that ends in a
file and a colon, `host/main.cpp`:, must stand in that file; a line "..." in it stands for lines that are left out.
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FILE = re.compile(r"`((?:RsvpLer|platform|host|tests|docs|scripts|cmake|\.ci)/[\w./-]*)`")
FUNCTION = re.compile(r"`(?:\w+::)*(\w+)\(\)`")
LINK = re.compile(r"\]\((?!\w+:)([^)#]*)(?:#([^)]*))?\)")
QUOTE = re.compile(r"`([\w./-]+)`:\n\n```cpp\n(.*?)^```$", re.MULTILINE | re.DOTALL)
BLOCK = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)


def sources():
    return "\n".join(path.read_text() for room in ("RsvpLer", "platform", "host", "tests")
                     for path in sorted((ROOT / room).rglob("*")) if path.suffix in (".h", ".cpp"))


def anchors(text):
    """The names by which the headings of a page can be linked to."""
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")
            for heading in re.findall(r"^#+ (.*)$", BLOCK.sub("", text), re.MULTILINE)}


def occurs(quote, text):
    """Whether the parts of the quote stand in the text one after the other."""
    at = 0
    for part in re.split(r"^ *\.\.\.\n", quote, flags=re.MULTILINE):
        found = text.find(part, at)
        if found < 0 or (found > 0 and text[found - 1] != "\n"):
            return False
        at = found + len(part)
    return True


def defects(page, text, all_sources, root=ROOT):
    prose = BLOCK.sub("", text)
    for name in FILE.findall(prose):
        if not (root / name).exists():
            yield f"there is no {name}"
    for name in FUNCTION.findall(prose):
        if not re.search(rf"\b{name}\(", all_sources):
            yield f"no source has {name}()"
    for target, anchor in LINK.findall(prose):
        linked = page.parent / target if target else page
        if not linked.exists():
            yield f"a link leads to {target}, which isn't there"
        elif anchor and anchor not in anchors(linked.read_text()):
            yield f"{target or page.name} has no heading {anchor}"
    for name, quote in QUOTE.findall(text):
        if not (root / name).is_file() or not occurs(quote, (root / name).read_text()):
            yield f"this doesn't stand in {name}:\n{quote}"


def main(documents):
    all_sources = sources()
    failed = False
    for document in map(Path, documents):
        for defect in defects(document.resolve(), document.read_text(), all_sources):
            print(f"{document}: {defect}")
            failed = True
    return 1 if failed or not documents else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
