#!/usr/bin/env python3
"""exports.py BUILD LIST: prints the export list of a library, made from its object files, in the format of LIST.

The list holds every symbol that an object file in BUILD defines with default visibility, by subsystem. Before it is
printed it is compared with the headers: each declaration marked for export must have a definition, and each exported
symbol such a declaration. LIST is zan.exports or platform/platform.exports; its leading comment is kept.
"""
import json
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
LIBRARIES = {
    "zan.exports": (["frame", "scalar", "geom2d", "matrix", "space", "poly"], "include/zan/*.h", "ZAN_API"),
    "platform.exports": (["platform"], "include/zan/platform/*.h", "ZAN_PLATFORM_API"),
}


def object_files(build, folder):
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    for entry in commands:
        if Path(entry["file"]).is_relative_to(ROOT / folder):
            output = build / re.search(r" -o (\S+)", entry["command"])[1]
            if output.is_file():
                yield output


def visible_symbols(build, folder):
    """What the folder's object files define for everybody."""
    objects = list(object_files(build, folder))
    if not objects:
        sys.exit(f"{build} has no object file of {folder}")
    table = subprocess.run(["readelf", "-sW", *objects], check=True, capture_output=True, text=True).stdout
    rows = (line.split() for line in table.splitlines())
    return {row[7] for row in rows if len(row) == 8 and row[4] in ("GLOBAL", "WEAK", "UNIQUE") and
            row[5] == "DEFAULT" and row[6] != "UND"}


def without_template_arguments(text):
    while re.search(r"(?<=\w)<[^<>]*>", text):
        text = re.sub(r"(?<=\w)<[^<>]*>", "", text)
    return text


def exported_names(symbols):
    """The names of functions, members (with their class before them) and variables, without types and arguments."""
    readable = subprocess.run(["c++filt"], input="\n".join(symbols), check=True, capture_output=True, text=True).stdout
    plain = (re.sub(r"\(.*", "", without_template_arguments(name)) for name in readable.splitlines())
    return {re.sub(r".* (?=\S+$)", "", name) for name in plain if not name.startswith(("vtable for ", "typeinfo "))}


def declared_names(pattern, macro):
    """The functions, members and variables, and the classes, that the headers mark for export."""
    names, classes = set(), set()
    for header in ROOT.glob(pattern):
        text = re.sub(r"//[^\n]*|^ *#[^\n]*", "", header.read_text(encoding="utf-8"), flags=re.M)
        for declaration in re.findall(rf"(?:class |struct )?\b{macro}\b[^;{{]*", without_template_arguments(text)):
            if declaration.startswith(("class ", "struct ")):
                classes.add(re.search(rf"{macro} (\w+)", declaration)[1])
            else:
                names.add(re.search(r"(operator\S+?|~?\w+)\s*(?:\(|$)", declaration)[1])
    return names, classes


def main():
    build, path = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    folders, headers, macro = LIBRARIES[path.name]
    found = {folder: visible_symbols(build, folder) for folder in folders}
    exported = exported_names(set.union(*found.values()))
    declared, classes = declared_names(headers, macro)
    undefined = declared - {name.split("::")[-1] for name in exported}
    undeclared = {n for n in exported if n.split("::")[-1] not in declared and n.split("::")[0] not in classes}
    wrong = [f"{name}: declared for export in a header, and defined nowhere" for name in sorted(undefined)]
    wrong += [f"{name}: visible outside the library, and declared in no header" for name in sorted(undeclared)]
    if wrong:
        sys.exit("\n".join(wrong))
    comment = re.match(r"(#.*\n)*", (ROOT / path).read_text(encoding="utf-8"))[0]
    sections, seen = [], set()
    for folder, symbols in found.items():
        heading = f"# {folder}\n" if len(folders) > 1 else ""
        sections.append(heading + "".join(f"{s}\n" for s in sorted(symbols - seen)))
        seen |= symbols
    sys.stdout.write(comment + ("\n" if len(folders) > 1 else "") + "\n".join(sections))


if __name__ == "__main__":
    main()
