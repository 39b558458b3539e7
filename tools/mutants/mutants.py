#!/usr/bin/env -S python3 -B
"""Do the tests notice faults? Makes small ones in the library's sources, one at a time, and runs the tests on each.

A mutant that compiles to the same machine code is not tested. One that survives the tests is printed: it needs a test,
or a reason in equivalent.txt why no test can see it (tools/reasons.py describes the format). Reasons that hold nowhere
any more are listed at the start, and do not fail the run. The work is done on copies of the tree in build/mutants.
"""
import argparse
import hashlib
import os
import queue
import random
import shutil
import subprocess
import sys
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from mutations import mutants

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
import reasons  # noqa: E402
from reasons import ROOT, SUBSYSTEMS  # noqa: E402

WORK = ROOT / "build" / "mutants"
EQUIVALENT = Path(__file__).with_name("equivalent.txt")
PROGRAMS = ("zan_tests", "zan_properties", "zan_first_check", "zan_selfcheck", "zan_selfcheck_plain",
            "zan_out_of_memory")
# ctest's tests other than those of zan_tests, which run faster in one process.
OTHER_TESTS = "^(first version check|golden sums: the|out of memory)"
MEMORY = 4 << 20  # KiB
HELP = """\
./dev mutants                          all of the library
./dev mutants poly                     a folder
./dev mutants poly/clip.cpp            a file
./dev mutants poly/clip.cpp --line 30  one line, for example after its test has a new row
./dev mutants --sample 40 --seed 7     a random sample, the same for the same seed
./dev mutants --prune                  remove the stale reasons from equivalent.txt, in seconds
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
        self.unchanged = self.machine_code()
        for subsystem in SUBSYSTEMS:
            for n, test in enumerate(self.tests(subsystem)):
                start = time.monotonic()
                self.must(*test)
                self.seconds[subsystem, n] = time.monotonic() - start

    def machine_code(self):
        """A digest of every program and library that was built."""
        digest = hashlib.sha256()
        for path in sorted(self.build.rglob("*")):
            if path.is_file() and not path.is_symlink() and (path.stem.replace("-", "_") in PROGRAMS or
                                                             path.name.startswith("libzan")):
                digest.update(path.read_bytes())
        return digest.digest()

    def must(self, *command):
        done = subprocess.run([str(c) for c in command], capture_output=True, text=True, env=self.environment)
        if done.returncode != 0:
            sys.exit(f"{done.stdout[-4000:]}{done.stderr}\nwithout a mutant this fails: {' '.join(map(str, command))}")

    def tests(self, subsystem):
        """The test commands, those that are most likely to fail first."""
        files = sorted(p.stem for p in (ROOT / "tests").glob(f"{subsystem}_*.cpp"))
        program = [self.build / "tests" / "zan_tests", "-#", "--abort"]
        properties = self.build / "tests" / "properties" / "zan_properties"
        yield [*program, ",".join(f"[#{f}]" for f in files)]
        if any((ROOT / "tests" / "properties").glob(f"{subsystem}_*.cpp")):
            yield [properties, subsystem]
        yield [*program, "".join(f"~[#{f}]" for f in files)]
        yield [properties]
        yield ["ctest", "--test-dir", self.build, "-R", OTHER_TESTS, "--stop-on-failure"]

    def succeeds(self, command, seconds):
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
        """"not built", "same code", "killed" or "survived"."""
        path = self.path / mutant.file
        source = path.read_text()
        try:
            path.write_text(mutant.apply(source))
            if not self.succeeds(["cmake", "--build", self.build, "--target", *PROGRAMS], 600):
                return "not built"
            if self.machine_code() == self.unchanged:
                return "same code"
            subsystem = mutant.file.split("/")[0]
            for n, test in enumerate(self.tests(subsystem)):
                if not self.succeeds(test, 3 + 8 * self.seconds[subsystem, n]):
                    return "killed"
            return "survived"
        finally:
            path.write_text(source)


def in_places(names, places):
    """The sources that the command line names."""
    places = [p.rstrip("/") for p in places] or SUBSYSTEMS
    for p in places:
        if not any(n == p or n.startswith(p + "/") for n in names):
            sys.exit(f"{p}: not a source of the library")
    return [n for n in names if any(n == p or n.startswith(p + "/") for p in places)]


def covers(reason, mutant):
    return reason.holds_at(mutant.file, mutant.start, mutant.start + 1)


def print_table(outcomes):
    columns = ("killed", "survived", "equivalent", "same code", "not built")
    files = sorted({f for f, _ in outcomes}, key=lambda f: (SUBSYSTEMS.index(f.split("/")[0]), f))
    print(f"\n{'':36}{'made':>12}" + "".join(f"{c:>12}" for c in columns))
    for f in [*files, "all"]:
        counts = [sum(n for (g, o), n in outcomes.items() if f in (g, "all") and o == c) for c in columns]
        print(f"{f:36}{sum(counts):12}" + "".join(f"{n or '':>12}" for n in counts))


def main():
    parser = argparse.ArgumentParser(prog="./dev mutants", description=__doc__, epilog=HELP,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("places", nargs="*", metavar="PLACE", help="a folder or a source (default: all)")
    parser.add_argument("--line", type=int, help="only the mutants of this line")
    parser.add_argument("--sample", type=int, metavar="N", help="only N of the mutants, chosen at random")
    parser.add_argument("--seed", type=int, default=1, help="the seed of that choice")
    parser.add_argument("--with-reason", action="store_true", help="only those with a reason: is it still needed?")
    parser.add_argument("--list", action="store_true", help="print the mutants, each with its reason if it has one; "
                        "test none")
    parser.add_argument("--check", action="store_true", help="list the stale reasons; test no mutant")
    parser.add_argument("--prune", action="store_true", help="remove the stale reasons; test no mutant")
    parser.add_argument("--at-least", type=float, default=100, metavar="PERCENT",
                        help="fail when the tests kill fewer of the mutants without a reason (default 100)")
    parser.add_argument("--jobs", type=int, help="how many at a time; each builds the tests once (default: 1 for up to "
                        "100 mutants, else the number of processors)")
    options = parser.parse_args()

    library = reasons.read_sources()
    made = {name: mutants(name, source.text) for name, source in library.items()}
    known = reasons.List(EQUIVALENT, library)
    known.handle_stale(lambda name, first, last: any(first <= m.start < last for m in made[name]), options.prune)
    if options.check or options.prune:
        return 0
    chosen = [m for f in in_places(list(library), options.places) for m in made[f] if options.line in (None, m.line)]
    if options.with_reason:
        chosen = [m for m in chosen if any(covers(r, m) for r in known.reasons)]
    if options.sample is not None:
        chosen = random.Random(options.seed).sample(chosen, min(options.sample, len(chosen)))
    covering = {m: [r for r in known.reasons if covers(r, m)] for m in chosen}
    if options.list:
        for m in chosen:
            print(m, *(f"    {r.why}" for r in covering[m][:1]), sep="\n")
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

    outcomes = Counter()
    left_out = [m for f in made for m in made[f] if m not in covering]
    idle = {str(r) for r in known.reasons if not any(covers(r, m) for m in left_out)}
    with ThreadPoolExecutor(trees.qsize()) as pool:
        for n, (mutant, outcome) in enumerate(zip(chosen, pool.map(run, chosen)), 1):
            if outcome == "survived" and covering[mutant]:
                outcome = "equivalent"
                idle -= {str(r) for r in covering[mutant]}
            outcomes[mutant.file, outcome] += 1
            if outcome == "survived":
                print(f"{mutant}\n    {mutant.line_text}", flush=True)
            elif n % 100 == 0:
                print(f"... {n} of {len(chosen)}", file=sys.stderr, flush=True)
    print_table(outcomes)

    killed, survived = (sum(n for (_, o), n in outcomes.items() if o == c) for c in ("killed", "survived"))
    percent = 100 * killed / max(1, killed + survived)
    print(f"\nThe tests kill {percent:.1f} % of the {killed + survived} mutants that can be killed")
    for reason in sorted(idle):
        print(f"{EQUIVALENT.name}: not needed, since no mutant survives there: {reason}")
    return 0 if percent >= options.at_least else 1


if __name__ == "__main__":
    sys.exit(main())
