"""The mutants of a C++ source: small faults, one at a time, that tests should notice.

The sources are formatted, so that a binary operator stands between blanks, and the brackets of a template and the signs
of references and pointers do not. Not mutated: assertions, sizes of arrays, and the 0 that initialises an output.
"""
import math
import re
from dataclasses import dataclass

SWAPS = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==",
    "+": "-", "-": "+", "*": "/", "/": "*", "&&": "||", "||": "&&", "&": "|", "|": "&", "<<": ">>", ">>": "<<",
    "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "&=": "|=", "|=": "&=", "<<=": ">>=", ">>=": "<<=",
}
SWAPPED = re.compile(r"(?<=\s)(" + "|".join(map(re.escape, sorted(SWAPS, key=len, reverse=True))) + r")(?=\s)")
STEPPED = re.compile(r"\+\+|--")
NUMBER = re.compile(r"(?<![\w.])(0x[\da-f.]+(?:p[+-]?\d+)?|\d+(?:\.\d*)?(?:e[+-]?\d+)?)([ul]*f?)(?![\w.])", re.I)
REPORT = re.compile(r"(?<![\w.>])((?:zan::)?(report|reportText|reportPlatform|throwIfFailed)|Belp?_Report\w+)\(")

# Assertions are off in the build in which mutants are tested.
IGNORED = re.compile(
    r"""//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<!\w)'(?:\\.|[^'\\\n])+'|^[ ]*\#(?:\\\n|[^\n])*"""
    r"""|\b(?:static_)?assert\(.*?\);|\balignas\([^)]*\)""", re.S | re.M)


@dataclass(frozen=True)
class Mutant:
    file: str
    start: int
    end: int
    text: str  # what takes the place of start to end
    what: str
    line: int
    column: int
    line_text: str

    def apply(self, source):
        return source[:self.start] + self.text + source[self.end:]

    def __str__(self):
        return f"{self.file}:{self.line}:{self.column}: {self.what}"


def step(number, suffix):
    """The next number of its type, but 1 for a floating-point zero: the next double would make no difference."""
    hexadecimal = number.lower().startswith("0x")
    if "p" in number.lower() or not hexadecimal and re.search(r"[.e]", number, re.I):
        value = float.fromhex(number) if hexadecimal else float(number)
        if value == 0:
            return "1.0" + suffix
        return repr(value * (1 + 2**-23) if "f" in suffix.lower() else math.nextafter(value, math.inf)) + suffix
    value = int(number, 0 if hexadecimal else 10)
    value += -1 if value == 2**64 - 1 else 1
    return (hex(value) if hexadecimal else str(value)) + suffix


def arguments(code, opening):
    """The ends of the arguments of the call whose '(' stands at opening; the last is the call's."""
    depth, ends = 0, []
    for at in range(opening, len(code)):
        depth += code[at] in "([{"
        depth -= code[at] in ")]}"
        if depth == 1 and code[at] == "," or depth == 0:
            ends.append(at)
        if depth == 0:
            return ends
    raise ValueError("a call without an end")


def is_output(code, zero):
    """Whether the number initialises a local whose address the next statement passes on, before anything reads it."""
    declared = re.search(r"\w (\w+) = $", code[:zero.start()][-80:])
    if not declared or code[zero.end()] != ";":
        return False
    following = code[zero.end() + 1:code.find(";", zero.end() + 1)]
    mention = re.search(rf"\b{declared[1]}\b", following)
    return mention is not None and following[:mention.start()].endswith(("(&", " &"))


def edits(code, source):
    """Yields (start, end, text, what)."""
    for m in SWAPPED.finditer(code):
        yield *m.span(), SWAPS[m[0]], f"{m[0]} becomes {SWAPS[m[0]]}"
    for m in STEPPED.finditer(code):
        other = "--" if m[0] == "++" else "++"
        yield *m.span(), other, f"{m[0]} becomes {other}"
    for m in NUMBER.finditer(code):
        if re.search(r"(?<!return)[\w>] \w+\[$", code[:m.start()][-80:]):
            continue  # the size of an array
        if m[0] == "0" and is_output(code, m):
            continue
        stepped = step(*m.groups())
        yield *m.span(), stepped, f"{m[0]} becomes {stepped}"
    for m in REPORT.finditer(code):
        before = re.search(r"(\w*)[>&*]?\s*$", code[:m.start()][-40:])[1]
        if before and before not in ("return", "else"):
            continue  # a declaration
        ends = arguments(code, m.end() - 1)
        end = ends[-1] + 1
        call = source[m.start():end]
        name = m[2] or m[1]
        if name == "throwIfFailed":
            dropped = f"static_cast<void>({source[m.end():ends[-1]]})"
        elif name in ("report", "reportPlatform"):
            dropped = f"static_cast<int32_t>({source[ends[0] + 1:ends[1]].strip()})"
        else:
            dropped = "static_cast<void>(0)"
        yield m.start(), end, dropped, f"{name} dropped"
        if name != "throwIfFailed":
            yield m.start(), end, f"({call}, {call})", f"{name} doubled"


def mutants(file, source):
    """All mutants of a source, in the order of their places."""
    code = IGNORED.sub(lambda m: re.sub(r"[^\n]", " ", m[0]), source)
    found, seen = [], {}
    for start, end, text, what in sorted(edits(code, source)):
        line = source.count("\n", 0, start) + 1
        begin = source.rfind("\n", 0, start) + 1
        line_text = source[begin:source.find("\n", start)].strip()
        nth = seen[line, what] = seen.get((line, what), 0) + 1
        if nth > 1:
            what += f" ({nth})"
        found.append(Mutant(file, start, end, text, what, line, start - begin + 1, line_text))
    return found
