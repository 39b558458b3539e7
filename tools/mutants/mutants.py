#!/usr/bin/env -S python3 -B
"""Do the tests notice faults? Makes small ones in the library's sources, one at a time, and runs the tests on each.

A mutant that no test notices is printed: it wants a test, or a line in equivalent.txt that says why it changes nothing.
The work is done on copies of the tree in build/mutants.
"""
import argparse
import os
import queue
import random
import re
import shutil
import subprocess
import sys
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from mutations import Mutant, mutants

ROOT = Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutants"
EQUIVALENT = Path(__file__).with_name("equivalent.txt")
ROOMS = ("frame", "scalar", "geom2d", "matrix", "space", "poly")
PROGRAMS = ("zan_tests", "zan_properties", "zan_first_check", "zan_selfcheck", "zan_selfcheck_plain",
            "zan_out_of_memory")
# What ctest knows besides the rows of zan_tests, which are quicker in one process.
OTHER_TESTS = "^(first version check|golden sums$|golden sums: plain|out of memory)"
MEMORY = 4 << 20  # KiB
HELP = """\
./dev mutants                          all of the library
./dev mutants poly                     a folder
./dev mutants poly/clip.cpp            a file
./dev mutants poly/clip.cpp --line 30  what survives in one line, say, after its test has a new row
./dev mutants --sample 40 --seed 7     some of all, the same ones for the same seed
"""


class Tree:
    """A copy of the tree with a build directory, in which one mutant at a time is built and tested."""

    def __init__(self, number):
        self.path = WORK / str(number) / "tree"
        self.build = WORK / str(number) / "build"
        self.seconds = {}
        # Where the compiler's cache is used, the trees share what it keeps.
        self.environment = dict(os.environ, CCACHE_BASEDIR=str(WORK / str(number)), CCACHE_NOHASHDIR="1",
                                CCACHE_SLOPPINESS="pch_defines,time_macros")

    def copy(self):
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, capture_output=True,
                                text=True, check=True).stdout.split("\n")
        wanted = {f for f in listed if f and (ROOT / f).is_file()}
        for path in [p for p in self.path.rglob("*") if p.is_file() or p.is_symlink()]:
            if str(path.relative_to(self.path)) not in wanted:
                path.unlink()
        for f in wanted:
            old, new = self.path / f, (ROOT / f).read_bytes()
            if not old.is_file() or old.read_bytes() != new:
                old.parent.mkdir(parents=True, exist_ok=True)
                old.write_bytes(new)
                shutil.copymode(ROOT / f, old)

    def prepare(self):
        self.copy()
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        self.must("cmake", "-S", self.path, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                  "-DCMAKE_CXX_COMPILER=g++", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG -w", "-DBUILD_TESTING=ON",
                  "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", *launcher)
        self.must("cmake", "--build", self.build, "--target", *PROGRAMS)
        for room in ROOMS:
            for n, test in enumerate(self.tests(room)):
                start = time.monotonic()
                self.must(*test)
                self.seconds[room, n] = time.monotonic() - start

    def must(self, *command):
        done = subprocess.run([str(c) for c in command], capture_output=True, text=True, env=self.environment)
        if done.returncode != 0:
            sys.exit(f"{done.stdout[-4000:]}{done.stderr}\nwithout a mutant this fails: {' '.join(map(str, command))}")

    def tests(self, room):
        """The commands that decide, the likeliest first."""
        files = sorted(p.stem for p in (ROOT / "tests").glob(f"{room}_*.cpp"))
        program = [self.build / "tests" / "zan_tests", "-#", "--abort"]
        properties = self.build / "tests" / "properties" / "zan_properties"
        yield [*program, ",".join(f"[#{f}]" for f in files)]
        if any((ROOT / "tests" / "properties").glob(f"{room}_*.cpp")):
            yield [properties, room]
        yield [*program, "".join(f"~[#{f}]" for f in files)]
        yield [properties]
        yield ["ctest", "--test-dir", self.build, "-R", OTHER_TESTS, "--stop-on-failure"]

    def quiet(self, command, seconds):
        """True when the command succeeds in time."""
        limited = ["sh", "-c", f'ulimit -c 0 -v {MEMORY}; exec "$@"', "-", *map(str, command)]
        process = subprocess.Popen(limited, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   env=self.environment, start_new_session=True)
        try:
            return process.wait(seconds) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.wait()
            return False

    def decide(self, mutant):
        """"not built", "killed" or "survived"."""
        path = self.path / mutant.file
        source = path.read_text()
        try:
            path.write_text(mutant.apply(source))
            if not self.quiet(["cmake", "--build", self.build, "--target", *PROGRAMS], 600):
                return "not built"
            room = mutant.file.split("/")[0]
            for n, test in enumerate(self.tests(room)):
                if not self.quiet(test, 3 + 8 * self.seconds[room, n]):
                    return "killed"
            return "survived"
        finally:
            path.write_text(source)


def read_equivalent():
    """{(file, text of the line, mutant): reason}, from paragraphs of a place and its mutants."""
    known, place = {}, None
    for n, line in enumerate(EQUIVALENT.read_text().splitlines(), 1):
        if not line or line.startswith("#"):
            continue
        if not line.startswith(" "):
            place = tuple(line.split(": ", 1))
            continue
        what, _, reason = line.strip().partition(": ")
        if not reason or place is None:
            sys.exit(f"{EQUIVALENT.name}:{n}: a mutant and a reason are wanted")
        known[(*place, what)] = reason
    return known


def key(m: Mutant):
    return m.file, m.line_text, m.what


def sources(wanted):
    """The files of the library that the places name."""
    everything = [p for room in ROOMS for p in sorted((ROOT / room).rglob("*"))
                  if p.suffix in (".h", ".cpp") and "windows" not in p.name]
    names = [str(p.relative_to(ROOT)) for p in everything]
    wanted = [w.rstrip("/") for w in wanted] or ROOMS
    for w in wanted:
        if not any(n == w or n.startswith(w + "/") for n in names):
            sys.exit(f"{w}: no source of the library")
    return [n for n in names if any(n == w or n.startswith(w + "/") for w in wanted)]


def print_table(outcomes):
    columns = ("killed", "survived", "accepted", "not built")
    files = sorted({f for f, _ in outcomes}, key=lambda f: (ROOMS.index(f.split("/")[0]), f))
    print(f"\n{'':36}{'made':>10}" + "".join(f"{c:>10}" for c in columns))
    for f in [*files, "all"]:
        counts = [sum(n for (g, o), n in outcomes.items() if f in (g, "all") and o == c) for c in columns]
        print(f"{f:36}{sum(counts):10}" + "".join(f"{n or '':>10}" for n in counts))


def main():
    parser = argparse.ArgumentParser(prog="./dev mutants", description=__doc__, epilog=HELP,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("places", nargs="*", metavar="PLACE", help="a folder or a source; all when none is named")
    parser.add_argument("--line", type=int, help="only the mutants of this line")
    parser.add_argument("--sample", type=int, metavar="N", help="only N of the mutants")
    parser.add_argument("--seed", type=int, default=1, help="which ones")
    parser.add_argument("--list", action="store_true", help="print the mutants and do nothing")
    parser.add_argument("--at-least", type=float, default=100, metavar="PERCENT",
                        help="fail when fewer are killed of those that can be (default 100)")
    parser.add_argument("--jobs", type=int, help="how many at a time; each builds the tests once (default: 1 for up to "
                        "100 mutants, else the number of processors)")
    options = parser.parse_args()

    chosen = [m for f in sources(options.places) for m in mutants(f, (ROOT / f).read_text())
              if options.line in (None, m.line)]
    known = read_equivalent()
    files = {m.file for m in chosen}
    unused = [k for k in known if k[0] in files and options.line is None and k not in set(map(key, chosen))]
    unused += [k for k in known if not (ROOT / k[0]).is_file()]
    if options.sample is not None:
        chosen = random.Random(options.seed).sample(chosen, min(options.sample, len(chosen)))
    if options.list:
        print("\n".join(map(str, chosen)))
        return 0

    print(f"{len(chosen)} mutants; building the tests", flush=True)
    trees = queue.Queue()
    for number in range(options.jobs or (os.cpu_count() if len(chosen) > 100 else 1)):
        tree = Tree(number)
        tree.prepare()
        trees.put(tree)

    def run(mutant):
        tree = trees.get()
        try:
            return tree.decide(mutant)
        finally:
            trees.put(tree)

    outcomes, wrong = Counter(), []
    with ThreadPoolExecutor(trees.qsize()) as pool:
        for n, (mutant, outcome) in enumerate(zip(chosen, pool.map(run, chosen)), 1):
            if key(mutant) in known:
                if outcome == "survived":
                    outcome = "accepted"
                else:
                    wrong.append((*key(mutant), outcome))
            outcomes[mutant.file, outcome] += 1
            if outcome == "survived":
                print(f"{mutant}\n    {mutant.line_text}", flush=True)
            elif n % 100 == 0:
                print(f"... {n} of {len(chosen)}", file=sys.stderr, flush=True)
    print_table(outcomes)

    killed, survived = (sum(n for (_, o), n in outcomes.items() if o == c) for c in ("killed", "survived"))
    percent = 100 * killed / max(1, killed + survived)
    print(f"\n{percent:.1f} % of the {killed + survived} that can be killed are")
    for k in unused:
        print(f"{EQUIVALENT.name}: there is no such mutant: {': '.join(k)}")
    for *k, outcome in wrong:
        print(f"{EQUIVALENT.name}: {outcome}, so not equivalent: {': '.join(k)}")
    return 0 if percent >= options.at_least and not unused and not wrong else 1


if __name__ == "__main__":
    sys.exit(main())
