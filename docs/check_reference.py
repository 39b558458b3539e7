#!/usr/bin/env python3
"""Compares the exported symbols with the documented names, and the reporting sites with docs/reports.md. Also checks
that every function and type in the reference has a description of its own and a place in the side tree.

Run from the top of the tree after Doxygen: docs/check_reference.py. Prints what is not documented; status 1 then.
"""
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

sys.path.insert(0, "abi")
from exports import exported_names  # noqa: E402


def documented_names():
    names = set()
    for compound in ElementTree.parse("build/docs/zan.tag").getroot().findall("compound"):
        if compound.get("kind") not in ("class", "struct", "group") or compound.find("subgroup") is not None:
            continue  # the side tree shows groups by task; a subsystem holds only groups
        owner = compound.findtext("name") + "::" if compound.get("kind") in ("class", "struct") else ""
        for member in compound.findall("member"):
            names.add(owner + member.findtext("name"))
    return names


def without_brief():
    """Functions and types whose own description is empty, and members whose sentence Doxygen took for the heading of a
    group, as happens when no blank line separates the heading from the sentence."""
    found = set()
    for path in pathlib.Path("build/docs/xml").glob("*.xml"):
        for compound in ElementTree.parse(path).getroot().findall("compounddef"):
            if compound.get("kind") not in ("struct", "class", "group"):
                continue
            for member in compound.iter("memberdef"):
                if member.get("kind") == "variable" or member.get("prot") != "public":
                    continue
                if not "".join(member.find("briefdescription").itertext()).strip():
                    owner, name = compound.findtext("compoundname"), member.findtext("name")
                    found.add(f"{owner}: {name}{member.findtext('argsstring') or ''}")
    return sorted(found)


def main():
    with open("zan.exports", encoding="utf-8") as lines:
        exported = exported_names(line.strip() for line in lines if line.strip() and not line.startswith("#"))
    documented = documented_names()
    failures = [f"exported, but not documented under a task: {name}" for name in sorted(exported - documented)]
    failures += [f"no sentence of its own: {name}" for name in without_brief()]
    with open("frame/sites.def", encoding="utf-8") as sites, open("docs/reports.md", encoding="utf-8") as page:
        text = page.read()
        for number in re.findall(r"^ZAN_SITE\((0x[0-9A-F]+),", sites.read(), re.M):
            if "0x11{:04X}".format(int(number, 16)) not in text:
                failures.append(f"docs/reports.md: site {number} is missing")
    print("\n".join(failures) if failures else f"{len(exported)} exported names, all documented")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
