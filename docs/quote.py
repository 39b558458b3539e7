#!/usr/bin/env python3
"""Fills the quoted parts of the pages from the files that they quote.

Run from the top of the tree: docs/quote.py [--check]. A quoted part of a page stands between

    <!-- quote: PATH, PART -->  and  <!-- end of quote -->

with PART the text between two lines `//! [PART]` or `#! [PART]` of the file; without it, the whole file. Markdown is
quoted as it is, any other file as a code block. --check changes nothing, and fails when a page is not current.
"""
import pathlib
import re
import sys
import textwrap

QUOTE = re.compile(r"(<!-- quote: ([^ ,]+)(?:, ([^>]+))? -->\n).*?(<!-- end of quote -->)", re.S)
LANGUAGES = {".js": "js", ".cpp": "cpp", ".h": "cpp", ".cmake": "cmake", "CMakeLists.txt": "cmake", ".sh": "sh", ".txt": ""}


def part_of(path, part):
    text = pathlib.Path(path).read_text(encoding="utf-8")
    if part:
        pieces = re.split(r"^[ ]*(?://|#)! \[" + re.escape(part) + r"\]\n", text, flags=re.M)
        if len(pieces) != 3:
            sys.exit(f"{path}: part '{part}' has {len(pieces) - 1} marks, not 2")
        text = textwrap.dedent(pieces[1])
    return re.sub(r"^[ ]*(?://|#)! \[[^\]]+\]\n", "", text, flags=re.M)


def filled(match):
    start, path, part, end = match.groups()
    text = part_of(path, part)
    if not path.endswith(".md"):
        name = pathlib.Path(path)
        language = LANGUAGES.get(name.name, LANGUAGES.get(name.suffix, ""))
        text = f"```{language}\n{text}```\n"
    return f"{start}{text}{end}"


def main():
    stale = []
    for page in sorted(pathlib.Path("docs").glob("*.md")):
        text = page.read_text(encoding="utf-8")
        current = QUOTE.sub(filled, text)
        if current != text:
            stale.append(str(page))
            if "--check" not in sys.argv:
                page.write_text(current, encoding="utf-8")
    if "--check" in sys.argv and stale:
        sys.exit("not current; docs/quote.py fills them: " + " ".join(stale))


if __name__ == "__main__":
    main()
