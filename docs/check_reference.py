#!/usr/bin/env python3
"""Compares what the library exports with what the reference documents, and the reporting sites with the reports page.

Run from the top of the tree after Doxygen: docs/check_reference.py. Prints what is missing; exits with 1 then.
"""
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree


def exported_names():
    with open("zan.exports", encoding="utf-8") as lines:
        symbols = [line.strip() for line in lines if line.strip() and not line.startswith("#")]
    spoken = subprocess.run(["c++filt"], input="\n".join(symbols), capture_output=True, text=True, check=True)
    names = set()
    for name in spoken.stdout.splitlines():
        if re.match(r"(vtable|typeinfo|typeinfo name) for ", name):
            continue
        name = re.sub(r"^(void|int|bool|double) ", "", name)  # a template instance starts with its result
        name = re.sub(r"\(.*", "", name)
        name = re.sub(r"<.*", "", name)
        names.add(name)
    return names


def documented_names():
    names = set()
    for compound in ElementTree.parse("build/docs/zan.tag").getroot().findall("compound"):
        owner = compound.findtext("name") + "::" if compound.get("kind") in ("class", "struct") else ""
        for member in compound.findall("member"):
            names.add(owner + member.findtext("name"))
    return names


def main():
    failures = []
    exported, documented = exported_names(), documented_names()
    failures += [f"exported and not documented: {name}" for name in sorted(exported - documented)]
    with open("frame/sites.def", encoding="utf-8") as sites, open("docs/reports.md", encoding="utf-8") as page:
        text = page.read()
        for number in re.findall(r"^ZAN_SITE\((0x[0-9A-F]+),", sites.read(), re.M):
            if "0x11{:04X}".format(int(number, 16)) not in text:
                failures.append(f"docs/reports.md does not have site {number}")
    print("\n".join(failures) if failures else f"{len(exported)} exported names, all documented")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
