"""Lists of exceptions to a check of the library's sources, each with its reason.

A paragraph of a list is a place and, indented, what is excepted there and why:

    poly/convex_hull.cpp listCandidates
      x `>` 0; `*` x: the candidates only have to contain the hull

A place is a source (`*` in it stands for any characters) and the names of functions, classes, enumerations or constants
in it; without a name it is the whole source. What is excepted there:

  - An asterisk alone, without backquotes, excepts everything in the place. Otherwise it is pieces of code, separated by
    "; " (a semicolon inside a piece has no blank after it). A line that ends with ";" continues in the next one.
  - A piece matches token by token; the name x matches any name.
  - Tokens in backquotes are the excepted ones, and the rest is their context; without backquotes the whole piece is
    excepted.

The lists name no local variables and no line numbers: renaming a local variable or editing another line leaves them
valid.
"""
import bisect
import fnmatch
import itertools
import json
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
SUBSYSTEMS = ("frame", "scalar", "geom2d", "matrix", "space", "poly")
TOKEN = re.compile(r"""[A-Za-z_]\w*|\d(?:[eEpP][+-]|[\w.'])*|"(?:\\.|[^"\\\n])*"|<<=|>>=|<=>|->|::|\+\+|--|&&|\|\||"""
                   r"""[-+*/%&|^<>=!]=|<<|>>|\S""")
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.S)


def sources():
    """The names of the library's sources."""
    found = (p for folder in SUBSYSTEMS for p in sorted((ROOT / folder).rglob("*")))
    return [str(p.relative_to(ROOT)) for p in found if p.suffix in (".h", ".cpp") and "windows" not in p.name]


class Source:
    """A source with its tokens and the extent of each name that a place can have."""

    def __init__(self, name, tags):
        self.name = name
        self.text = (ROOT / name).read_text(encoding="utf-8")
        self.line_starts = [0, *(m.end() for m in re.finditer("\n", self.text))]
        code = COMMENT.sub(lambda m: re.sub(r"[^\n]", " ", m[0]), self.text)
        self.tokens = [(m[0], m.start(), m.end()) for m in TOKEN.finditer(code)]
        self.token_starts = [t[1] for t in self.tokens]
        self.extents = {}
        for tag in tags:
            extent = self.start_of(tag["line"]), self.start_of(tag.get("end", tag["line"]) + 1)
            self.extents.setdefault(tag["name"], []).append(extent)

    def start_of(self, line):
        return self.line_starts[line - 1] if line <= len(self.line_starts) else len(self.text)

    def line_of(self, position):
        return bisect.bisect_right(self.line_starts, position)

    def extents_of(self, names):
        return [e for name in names for e in self.extents.get(name, [])] if names else [(0, len(self.text))]

    def occurrences(self, piece, first, last):
        """Where the marked tokens of a piece of code stand between two positions."""
        parts = zip(itertools.cycle((False, True)), piece.split("`"))
        wanted = [(token, marked or "`" not in piece) for marked, part in parts for token in TOKEN.findall(part)]
        begin, end = (bisect.bisect_left(self.token_starts, position) for position in (first, last))
        for i in range(begin, end - len(wanted) + 1):
            run = self.tokens[i:i + len(wanted)]
            if all(t[0] == w or w == "x" and re.match(r"[A-Za-z_]", t[0]) for t, (w, _) in zip(run, wanted)):
                yield from ((t[1], t[2]) for t, (_, marked) in zip(run, wanted) if marked)


def read_sources():
    """{name: Source} of the whole library."""
    names = sources()
    command = ["ctags", "--languages=C++", "--langmap=C++:.cpp.h", "--output-format=json", "--fields=+ne",
               "--kinds-C++=fcsgetuv", "-f", "-", *names]
    done = subprocess.run(command, cwd=ROOT, check=True, capture_output=True, text=True)
    tags = {name: [] for name in names}
    for line in done.stdout.splitlines():
        tag = json.loads(line)
        if tag["_type"] == "tag":
            tags[tag["path"]].append(tag)
    return {name: Source(name, tags[name]) for name in names}


@dataclass
class Reason:
    place: str
    pieces: list
    why: str
    spans: dict  # {piece: [(source, first, last)]}, where it holds

    def __str__(self):
        return f"{self.place}: {'; '.join(self.pieces)}"

    def holds_at(self, name, first, last):
        """Whether it holds for some of a source between two positions."""
        return any(name == source and begin < last and first < end
                   for spans in self.spans.values() for source, begin, end in spans)

    def lines(self):
        """Its lines in the list."""
        lines = ["  "]
        for part in [f"{piece};" for piece in self.pieces[:-1]] + [f"{self.pieces[-1]}: {self.why}"]:
            if len(lines[-1]) + len(part) > 118 and lines[-1].strip():
                lines.append("  ")
            lines[-1] += part if lines[-1] == "  " else f" {part}"
        return lines


class List:
    """A list of exceptions, read from its file and located in the sources."""

    def __init__(self, path, sources_by_name):
        self.path, self.sources = path, sources_by_name
        self.comment, self.reasons = [], []
        place = what = ""
        for n, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if line.startswith("#"):
                self.comment.append(line)
            elif line.startswith(" "):
                pieces, _, why = line.strip().partition(": ")
                what = f"{what} {pieces}".strip()
                if why:
                    spans = {piece: list(self.find(place, piece)) for piece in what.split("; ")}
                    self.reasons.append(Reason(place, list(spans), why, spans))
                    what = ""
            else:
                place = line.strip()
            if what and not what.endswith(";") or line.startswith(" ") and not place:
                raise SystemExit(f"{path.name}:{n}: expected '  PIECE; PIECE: REASON' below a place")

    def find(self, place, piece):
        pattern, *names = place.split()
        for source in self.sources.values():
            if fnmatch.fnmatch(source.name, pattern):
                for first, last in source.extents_of(names):
                    found = [(first, last)] if piece == "*" else source.occurrences(piece, first, last)
                    yield from ((source.name, *span) for span in found)

    def handle_stale(self, is_used, prune):
        """Warns of pieces of which no span is used, or removes them."""
        count = 0
        for reason in self.reasons:
            for piece, spans in reason.spans.items():
                if not any(is_used(*span) for span in spans):
                    count += 1
                    print(f"{self.path.name}: {'removed' if prune else 'stale'}: {reason.place}: {piece}", flush=True)
                    reason.pieces.remove(piece)
        if prune:
            self.write()
        elif count:
            print(f"{self.path.name}: {count} stale pieces; --prune removes them", flush=True)

    def write(self):
        lines, place = list(self.comment), None
        for reason in self.reasons:
            if reason.pieces:
                lines += ([] if reason.place == place else ["", reason.place]) + reason.lines()
                place = reason.place
        self.path.write_text("\n".join(lines) + "\n", encoding="utf-8")
