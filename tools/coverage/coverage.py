#!/usr/bin/env python3
"""coverage.py BUILD [FOLDER...]: the lines of the library with a branch that the tests in this build directory did not
take, by gcov, and how many branches they took.
"""
import json
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
ROOMS = ("frame", "scalar", "geom2d", "matrix", "space", "poly")
# For gcov an inlined intrinsic and whatever may throw branch, too.
BRANCHES = re.compile(r"\b(if|for|while|case|switch)\b|&&|\|\||\?")


def measured(build, rooms):
    command = ["gcovr", "--root", ROOT, "--exclude-throw-branches", "--exclude-unreachable-branches", "--json", "-"]
    for room in rooms:
        command += ["--filter", f"{room.rstrip('/')}/"]
    return json.loads(subprocess.run([*command, build], cwd=ROOT, check=True, stdout=subprocess.PIPE).stdout)["files"]


def main():
    build, *rooms = sys.argv[1:]
    taken = branches = 0
    for file in measured(build, rooms or ROOMS):
        source = (ROOT / file["file"]).read_text(encoding="utf-8").splitlines()
        for line in file["lines"]:
            text = source[line["line_number"] - 1].strip()
            counts = [branch["count"] for branch in line["branches"] if not branch.get("throw")]
            if not BRANCHES.search(text):
                continue
            taken += sum(count > 0 for count in counts)
            branches += len(counts)
            if 0 in counts:
                print(f"{file['file']}:{line['line_number']}: {counts.count(0)} of {len(counts)} not taken: {text}")
    print(f"{taken} of {branches} branches are taken")


if __name__ == "__main__":
    main()
