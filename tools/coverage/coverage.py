#!/usr/bin/env python3
"""coverage.py BUILD [FOLDER...]   the lines of the library with a branch that no test took, by gcov, except those that
                                unreachable.txt gives a reason for, and the number of branches taken; status 1 when
                                there is such a line. BUILD is the build directory in which the tests ran.
coverage.py --check             only lists the stale reasons
coverage.py --prune             removes them

tools/reasons.py describes the format of unreachable.txt.
"""
import json
import re
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
import reasons  # noqa: E402
from reasons import ROOT, SUBSYSTEMS  # noqa: E402

UNREACHABLE = Path(__file__).with_name("unreachable.txt")
# gcov also counts branches of inlined intrinsics and of calls that may throw.
BRANCHES = re.compile(r"\b(if|for|while|case|switch)\b|&&|\|\||\?")


def measured(build, folders):
    command = ["gcovr", "--root", ROOT, "--exclude-throw-branches", "--exclude-unreachable-branches", "--json", "-"]
    for folder in folders:
        command += ["--filter", f"{folder.rstrip('/')}/"]
    return json.loads(subprocess.run([*command, build], cwd=ROOT, check=True, stdout=subprocess.PIPE).stdout)["files"]


def main():
    library = reasons.read_sources()
    known = reasons.List(UNREACHABLE, library)
    if sys.argv[1] in ("--check", "--prune"):
        known.handle_stale(lambda *span: True, sys.argv[1] == "--prune")
        return 0
    build, *folders = sys.argv[1:]
    taken = branches = explained = surprises = 0
    idle = {str(r) for r in known.reasons if not folders}
    for file in measured(build, folders or SUBSYSTEMS):
        source = library[file["file"]]
        for line in file["lines"]:
            first, last = source.start_of(line["line_number"]), source.start_of(line["line_number"] + 1)
            text = source.text[first:last].strip()
            counts = [branch["count"] for branch in line["branches"] if not branch.get("throw")]
            if not BRANCHES.search(text):
                continue
            taken += sum(count > 0 for count in counts)
            branches += len(counts)
            if 0 not in counts:
                continue
            holding = [r for r in known.reasons if r.holds_at(source.name, first, last)]
            idle -= {str(r) for r in holding}
            if holding:
                explained += counts.count(0)
            else:
                surprises += 1
                print(f"{source.name}:{line['line_number']}: {counts.count(0)} of {len(counts)} not taken: {text}")
    for reason in sorted(idle):
        print(f"{UNREACHABLE.name}: not needed, since all branches there are taken: {reason}")
    print(f"{taken} of {branches} branches are taken, {explained} cannot be")
    return 1 if surprises else 0


if __name__ == "__main__":
    sys.exit(main())
