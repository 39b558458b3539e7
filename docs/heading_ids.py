#!/usr/bin/env python3
"""Doxygen's input filter for pages: gives headings the ids that sites of repositories give them, so that one link to a
heading works on both. An id starts with the page's name, since Doxygen's ids are global.

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
        print(line)


if __name__ == "__main__":
    main()
