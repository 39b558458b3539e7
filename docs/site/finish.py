#!/usr/bin/env python3
"""Finishes the site after Doxygen: links every name of the reference that a page mentions, and writes the search index.

Run from the top of the tree: docs/site/finish.py. Fails when a line of docs/site/synonyms.txt names no entry.
"""
import html
import json
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

SITE = pathlib.Path("build/docs/html")
XML = pathlib.Path("build/docs/xml")
VOID = {"area", "br", "col", "hr", "img", "input", "link", "meta", "wbr"}
# In these elements a name is a link already, or the title of its own entry.
UNLINKED = {"a", "script", "style", "title", "h1", "h2", "h3", "h4"}
UNLINKED_CLASSES = {"memname", "ttc", "headertitle"}


def address(identifier):
    """The address of an entry on the site, from Doxygen's id."""
    if (XML / f"{identifier}.xml").exists():
        return "index.html" if identifier == "indexpage" else f"{identifier}.html"
    page, anchor = identifier.rsplit("_1", 1)
    return f"{'index' if page == 'indexpage' else page}.html#{anchor}"


def text_of(element):
    return " ".join("".join(element.itertext()).split()) if element is not None else ""


def entries():
    """(name, address, description) of every page, section, group, type, member and constant."""
    found = {}
    for path in sorted(XML.glob("*.xml")):
        for compound in ElementTree.parse(path).getroot().findall("compounddef"):
            kind, name = compound.get("kind"), compound.findtext("compoundname")
            if kind not in ("page", "group", "struct", "class"):
                continue
            shown = compound.findtext("title") or name
            found[compound.get("id")] = (shown, text_of(compound.find("briefdescription")))
            for section in compound.iter("sect1"):
                found[section.get("id")] = (f"{shown}: {section.findtext('title')}", "")
            scope = f"{name}::" if kind in ("struct", "class") else ""
            for member in compound.iter("memberdef"):
                if member.get("prot") == "public":
                    brief = text_of(member.find("briefdescription")) or text_of(member.find("detaileddescription"))
                    found[member.get("id")] = (scope + member.findtext("name"), brief)
                for value in member.findall("enumvalue"):
                    found[value.get("id")] = (value.findtext("name"), text_of(value.find("briefdescription")))
    return [(name, address(identifier), brief) for identifier, (name, brief) in found.items()]


def synonyms(names):
    table = {}
    for line in pathlib.Path("docs/site/synonyms.txt").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            word, targets = line.split(" = ")
            table[word] = targets.split(" | ")
            for target in table[word]:
                if target not in names:
                    sys.exit(f"docs/site/synonyms.txt: {word}: there is no entry '{target}'")
    return table


def linked(page, addresses, pattern):
    """The page, with a link around each name outside the elements that stay as they are."""
    pieces, unlinked, open_elements = [], 0, []
    for piece in re.split(r"(<script.*?</script>|<!--.*?-->|<[^>]*>)", page, flags=re.S):
        tag = re.match(r"<(/?)(\w+)", piece)
        if tag and not piece.startswith("<script") and tag[2] not in VOID and not piece.endswith("/>"):
            if tag[1]:
                unlinked -= open_elements.pop()
            else:
                classes = re.search(r'class="([^"]*)"', piece)
                skip = tag[2] in UNLINKED or bool(classes and UNLINKED_CLASSES & set(classes[1].split()))
                open_elements.append(skip)
                unlinked += skip
        elif not piece.startswith("<") and not unlinked:
            piece = pattern.sub(lambda m: f'<a class="el" href="{addresses[html.unescape(m[0])]}">{m[0]}</a>', piece)
        pieces.append(piece)
    return "".join(pieces)


def main():
    index = entries()
    addresses = {}
    for name, where, _ in index:
        if re.fullmatch(r"k?(Zanp?|Belp?|OSKA|VUN)_\w+(::\w+)?", name):
            addresses.setdefault(name, where)
    pattern = re.compile(r"\b(" + "|".join(sorted(map(re.escape, addresses), key=len, reverse=True)) + r")\b")
    for path in SITE.glob("*.html"):
        page = path.read_text(encoding="utf-8")
        path.write_text(linked(page, addresses, pattern), encoding="utf-8")
    table = synonyms({name for name, _, _ in index})
    script = f"const searchIndex = {json.dumps(index)};\nconst searchSynonyms = {json.dumps(table)};\n"
    (SITE / "search_index.js").write_text(script, encoding="utf-8")


if __name__ == "__main__":
    main()
