# Pretty-printers of zan's records for gdb: `source zan_gdb.py`, then print as usual; `print/r` prints the raw fields.
import ctypes
import struct

import gdb
import gdb.printing

FAILURE = -0x80000000
KINDS = ("identity", "translate", "scale", "scale and translate", "affine", "perspective")


def shortest(value):
    """A double in the fewest digits that identify it."""
    digits = repr(value)
    return digits[:-2] if digits.endswith(".0") else digits


def number(value):
    """A float or double in the fewest digits that identify it."""
    exact = float(value)
    if value.type.strip_typedefs().sizeof == 4:
        for precision in range(1, 9):
            digits = "%.*g" % (precision, exact)
            if ctypes.c_float(float(digits)).value == exact:
                return digits
        return "%.9g" % exact
    return shortest(exact)


def fixed(value, fraction_bits):
    """A fixed-point number in all its decimal digits, which are finitely many."""
    raw = int(value)
    if raw == FAILURE:
        return "failure (0x80000000)"
    digits = "%.*f" % (fraction_bits, raw / 2.0**fraction_bits)
    return digits.rstrip("0").rstrip(".")


def fixed16(value):
    return fixed(value, 16)


def fixed24(value):
    return fixed(value, 24)


def integer(value):
    return str(int(value))


def ratio(value):
    num, den = int(value["num"]), int(value["den"])
    if den == 0:
        return "%d/0 = %s" % (num, "failure" if num == 0 else "invalid")
    return "%d/%d = %s" % (num, den, shortest(num / den))


def point(show):
    return lambda value: "(h %s, v %s)" % (show(value["h"]), show(value["v"]))


def rectangle(show, scale=1):
    def text(value):
        left, top, right, bottom = (value[edge] for edge in ("left", "top", "right", "bottom"))
        edges = "left %s, top %s, right %s, bottom %s" % (show(left), show(top), show(right), show(bottom))
        read = float if show is number else int
        left, top, right, bottom = read(left), read(top), read(right), read(bottom)
        if scale != 1 and FAILURE in (left, top, right, bottom):
            return edges
        if right <= left or bottom <= top:
            return edges + " (empty)"
        return edges + " (%s x %s)" % (shortest((right - left) / scale), shortest((bottom - top) / scale))

    return text


def vector(members):
    return lambda value: "(%s)" % ", ".join(number(value[member]) for member in members)


class Text:
    def __init__(self, text):
        self.text = text

    def to_string(self):
        return self.text


class Matrix:
    """The rows of a matrix, and its kind by the rules of Zan_GetMatrixType."""

    def __init__(self, value, size):
        self.rows = [[value["m%d%d" % (row, column)] for column in range(size)] for row in range(size)]

    def kind(self):
        m = [[float(element) for element in row] for row in self.rows]
        last = len(m) - 1
        inner = range(last)
        if any(m[row][last] != 0 for row in inner) or m[last][last] != 1:
            return 5
        if any(m[row][column] != 0 for row in inner for column in inner if row != column):
            return 4
        scales = any(m[row][row] != 1 for row in inner)
        moves = any(m[last][column] != 0 for column in inner)
        return 2 * scales + moves

    def to_string(self):
        kind = self.kind()
        # The library numbers the kinds of a Zan_Matrix3 only.
        return KINDS[kind] + (" (kind %d)" % kind if len(self.rows) == 3 else "")

    def children(self):
        for index, row in enumerate(self.rows):
            yield "row %d" % index, "(%s)" % ", ".join(number(element) for element in row)


class Outline:
    """A layer outline, read from memory: a host's debug information has no fields for it, since a compiler describes a
    class with virtual functions only where it defines them, in the library."""

    def __init__(self, value):
        self.bytes = bytes(gdb.selected_inferior().read_memory(value.address, self.SIZE))

    def doubles(self, offset, count):
        return struct.unpack_from("%dd" % count, self.bytes, offset)

    def flag(self, offset):
        return self.bytes[offset] != 0


def tuple_text(values):
    return "(%s)" % ", ".join(shortest(value) for value in values)


class Outline2D(Outline):
    # The pointer to the virtual functions, four corners of two doubles, the flag.
    SIZE, CORNERS, VISIBLE = 80, 8, 72

    def to_string(self):
        return "visible" if self.flag(self.VISIBLE) else "invisible"

    def children(self):
        for corner in range(4):
            yield "corner %d" % corner, tuple_text(self.doubles(self.CORNERS + 16 * corner, 2))


class Outline3D(Outline):
    # The pointer to the virtual functions, four corners and four clip points of three doubles, four flags, the outline's
    # vector (begin, end, capacity), the flag.
    SIZE, CORNERS, BEHIND, POINTS, BUILT = 240, 8, 200, 208, 232

    def outline(self):
        begin, end = struct.unpack_from("2Q", self.bytes, self.POINTS)
        if not self.flag(self.BUILT) or end <= begin:
            return []
        points = bytes(gdb.selected_inferior().read_memory(begin, end - begin))
        return list(struct.iter_unpack("2d", points))

    def to_string(self):
        return "outline of %d points" % len(self.outline()) if self.flag(self.BUILT) else "no outline"

    def children(self):
        for corner in range(4):
            text = tuple_text(self.doubles(self.CORNERS + 24 * corner, 3))
            yield "corner %d" % corner, text + (" behind" if self.flag(self.BEHIND + corner) else "")
        for index, point_ in enumerate(self.outline()):
            yield "point %d" % index, tuple_text(point_)


def as_text(show):
    return lambda value: Text(show(value))


PRINTERS = {
    "Zan_Fixed": as_text(fixed16),
    "Zan_Fix24": as_text(fixed24),
    "Zan_Ratio": as_text(ratio),
    "Zan_Point": as_text(point(integer)),
    "Zan_LPoint": as_text(point(integer)),
    "Zan_FixedPoint": as_text(point(fixed16)),
    "Zan_Rect": as_text(rectangle(integer)),
    "Zan_LRect": as_text(rectangle(integer)),
    "Zan_FixedRect": as_text(rectangle(fixed16, 65536)),
    "Zan_FloatRect": as_text(rectangle(number)),
    "Zan_Vector2T": as_text(vector("xy")),
    "Zan_Vector3T": as_text(vector("xyz")),
    "Zan_Vector4T": as_text(vector("xyzw")),
    "Zan_Matrix3": lambda value: Matrix(value, 3),
    "Zan_Matrix4": lambda value: Matrix(value, 4),
    "Zan_TransformPoly2D": Outline2D,
    "Zan_TransformPoly3D": Outline3D,
}


class Zan(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("zan", [])

    def __call__(self, value):
        kind = value.type
        if kind.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
            value = value.referenced_value()
            kind = value.type
        # Zan_Fixed and Zan_Fix24 are typedefs of int32_t: look for a printer at each typedef on the way to the basic type.
        while True:
            kind = kind.unqualified()
            make = PRINTERS.get((kind.name or "").partition("<")[0])
            if make is not None:
                return make(value)
            if kind.code != gdb.TYPE_CODE_TYPEDEF:
                return None
            kind = kind.target()


gdb.printing.register_pretty_printer(gdb.current_objfile(), Zan(), replace=True)
