#!/usr/bin/env python3
"""coverage.py BUILD [FOLDER...]: the lines of the library with a branch that the tests in this build directory did not
take, by gcov, but for those that unreachable.txt gives a reason for; and how many branches they took. Status 1 when there
are such lines, or reasons for lines that are not there or are taken.
"""
import json
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
UNREACHABLE = Path(__file__).with_name("unreachable.txt")
ROOMS = ("frame", "scalar", "geom2d", "matrix", "space", "poly")
# For gcov an inlined intrinsic and whatever may throw branch, too.
BRANCHES = re.compile(r"\b(if|for|while|case|switch)\b|&&|\|\||\?")


def measured(build, rooms):
    command = ["gcovr", "--root", ROOT, "--exclude-throw-branches", "--exclude-unreachable-branches", "--json", "-"]
    for room in rooms:
        command += ["--filter", f"{room.rstrip('/')}/"]
    return json.loads(subprocess.run([*command, build], cwd=ROOT, check=True, stdout=subprocess.PIPE).stdout)["files"]


def read_unreachable(rooms):
    """The places with a reason, (file, text of the line)."""
    lines = [n for n in UNREACHABLE.read_text(encoding="utf-8").splitlines() if n and not n.startswith("#")]
    for place, reason in zip(lines[::2], lines[1::2], strict=True):
        if place.startswith(" ") or not reason.startswith("    "):
            sys.exit(f"{UNREACHABLE.name}: a place and its reason are wanted: {place}")
    places = {tuple(place.split(": ", 1)) for place in lines[::2]}
    return {place for place in places if any(place[0].startswith(room.rstrip("/") + "/") for room in rooms)}


def main():
    build, *rooms = sys.argv[1:]
    rooms = rooms or ROOMS
    reasons = read_unreachable(rooms)
    unused = set(reasons)
    taken = branches = explained = surprises = 0
    for file in measured(build, rooms):
        source = (ROOT / file["file"]).read_text(encoding="utf-8").splitlines()
        for line in file["lines"]:
            text = source[line["line_number"] - 1].strip()
            counts = [branch["count"] for branch in line["branches"] if not branch.get("throw")]
            if not BRANCHES.search(text):
                continue
            taken += sum(count > 0 for count in counts)
            branches += len(counts)
            if (file["file"], text) in reasons and 0 in counts:
                unused.discard((file["file"], text))
                explained += counts.count(0)
            elif 0 in counts:
                surprises += 1
                print(f"{file['file']}:{line['line_number']}: {counts.count(0)} of {len(counts)} not taken: {text}")
    for place in sorted(unused):
        print(f"{UNREACHABLE.name}: all taken, or not there: {': '.join(place)}")
    print(f"{taken} of {branches} branches are taken, {explained} cannot be")
    return 1 if surprises or unused else 0


if __name__ == "__main__":
    sys.exit(main())
