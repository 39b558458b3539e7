#!/usr/bin/python3
"""Makes the description of the programming interface, zan-api.json, and the C header, zan_c.h, from the public headers.

api.py           writes both into the tree
api.py FOLDER    writes both into a folder
api.py --check   status 1, after printing the differences, when those in the tree are not current, or when the table of
                 docs/windows.md does not list exactly what C cannot call

Needs the Debian packages python3-clang-14 and binutils.
"""
import difflib
import json
import re
import sys
from pathlib import Path

import c_header
import headers
from headers import ROOT

JSON, C_HEADER, PAGE = "tools/api/zan-api.json", "include/zan/zan_c.h", "docs/windows.md"


def _add_layouts_for_32_bit(description, header):
    """Adds size32 and offset32 where pointers of 32 bits change them. Read from the C header, which needs no C library,
    only the compiler's own headers."""
    compiler = next(Path("/usr/lib").glob("llvm-*/lib/clang/*/include"))
    options = ["-xc", "-std=c11", "-ffreestanding", "--target=wasm32", f"-isystem{compiler}"]
    types = {cursor.spelling: cursor.type for cursor in headers.parse("zan_c.c", header, options).get_children()
             if cursor.kind == headers.CursorKind.STRUCT_DECL}
    for record in description["records"]:
        if not (name := c_header.c_name(record)):
            continue
        record["cName"] = name
        if types[name].get_size() != record["size"]:
            record["size32"], record["align32"] = types[name].get_size(), types[name].get_align()
            for field in record["fields"]:
                field["offset32"] = types[name].get_offset(field["name"]) // 8


def _differences_of_page(description):
    """The first column of the table under "What C cannot call", against the description."""
    table = (ROOT / PAGE).read_text(encoding="utf-8").partition("What C cannot call")[2].partition("\n#")[0]
    listed = {name for row in re.findall(r"^\|([^|]*)\|", table, re.M) for name in re.findall(r"`(Zan_\w+)`", row)}
    cannot = {function.get("memberOf", function["name"]) for function in description["functions"]
              if not function["callableFromC"]}
    return ([f"{PAGE} does not list {name}, which C cannot call\n" for name in sorted(cannot - listed)] +
            [f"{PAGE} lists {name} as what C cannot call\n" for name in sorted(listed - cannot)])


def main(arguments):
    description = headers.describe()
    header = c_header.write(description)
    _add_layouts_for_32_bit(description, header)
    made = {JSON: json.dumps(description, indent=1, ensure_ascii=False) + "\n", C_HEADER: header}
    if arguments != ["--check"]:
        for path, text in made.items():
            target = Path(arguments[0]) / Path(path).name if arguments else ROOT / path
            target.write_text(text, encoding="utf-8")
        return 0
    of_page = _differences_of_page(description)
    of_files = []
    for path, text in made.items():
        now = (ROOT / path).read_text(encoding="utf-8") if (ROOT / path).exists() else ""
        of_files += difflib.unified_diff(now.splitlines(True), text.splitlines(True), path, "the headers", n=1)
    sys.stdout.writelines(of_page + of_files)
    if of_page:
        print(f"if the headers are right: correct the table of {PAGE} by hand")
    if of_files:
        print("if the headers are right: ./dev accept, or tools/api/api.py for these two files alone")
    return 1 if of_page or of_files else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
