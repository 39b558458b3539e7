#!/usr/bin/env python3
"""Doxygen's input filter for pages. Gives each heading the id that repository sites give it, preceded by the page's
name, since Doxygen's ids are global, and changes the links to match. So one link works on such sites and in the
reference. Emphasis in tables becomes HTML, since Doxygen leaves the stars when a letter or a dot stands beside them. A
link to a source file becomes plain text: the site holds no sources but the headers.

docs/heading_ids.py PAGE
"""
import pathlib
import re
import sys


def heading_id(page, title):
    return page + "-" + re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")


def main():
    path = pathlib.Path(sys.argv[1])
    page = path.stem.lower()
    in_code = False
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("```"):
            in_code = not in_code
        heading = re.fullmatch(r"(##+) ([^{]*)", line)
        if heading and not in_code:
            line = f"{heading[1]} {heading[2]} {{#{heading_id(page, heading[2])}}}"
        line = re.sub(r"\]\((?:(\w+)\.md)?#([^)]+)\)", lambda m: f"](#{(m[1] or page).lower()}-{m[2]})", line)
        line = re.sub(r"\[([^\]]+)\]\((?:\.\./)?[\w/]+\.c(?:pp)?\)", r"\1", line)
        if line.startswith("|"):
            parts = line.split("`")
            parts[::2] = [re.sub(r"\*([^\s*|](?:[^*|]*[^\s*|])?)\*", r"<em>\1</em>", part) for part in parts[::2]]
            line = "`".join(parts)
        print(line)


if __name__ == "__main__":
    main()
