#!/usr/bin/env python3
"""Compares the exported symbols with the documented names, and the reporting sites with docs/reports.md.

Run from the top of the tree after Doxygen: docs/check_reference.py. Prints what is not documented; status 1 then.
"""
import re
import sys
import xml.etree.ElementTree as ElementTree

sys.path.insert(0, "abi")
from exports import exported_names  # noqa: E402


def documented_names():
    names = set()
    for compound in ElementTree.parse("build/docs/zan.tag").getroot().findall("compound"):
        owner = compound.findtext("name") + "::" if compound.get("kind") in ("class", "struct") else ""
        for member in compound.findall("member"):
            names.add(owner + member.findtext("name"))
    return names


def main():
    with open("zan.exports", encoding="utf-8") as lines:
        exported = exported_names(line.strip() for line in lines if line.strip() and not line.startswith("#"))
    documented = documented_names()
    failures = [f"exported, but not documented: {name}" for name in sorted(exported - documented)]
    with open("frame/sites.def", encoding="utf-8") as sites, open("docs/reports.md", encoding="utf-8") as page:
        text = page.read()
        for number in re.findall(r"^ZAN_SITE\((0x[0-9A-F]+),", sites.read(), re.M):
            if "0x11{:04X}".format(int(number, 16)) not in text:
                failures.append(f"docs/reports.md: site {number} is missing")
    print("\n".join(failures) if failures else f"{len(exported)} exported names, all documented")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
