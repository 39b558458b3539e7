#!/usr/bin/python3
"""Makes a JavaScript function for each function of the library that C can call, from the description of the interface.

bindings.py FOLDER   writes functions.js, constants.js, their declarations, exports.json (what the linker keeps), and for
                     the tests calls.json (which arguments the functions take) and answers.inc (calls in C++) into a folder
"""
import json
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# Left out: functions that start and stop the library or move its state, and functions that set or copy records, which
# are literals in JavaScript.
LEFT_OUT = re.compile(r"Zan_(Birth|Death|CheckVersions|PkgObjectVersion|(Get|Set)Globals|(Un)?Prepare\w+)$|Zanp_"
                      r"|Zan_(Set|Copy)(L|Fixed|WH)?(Pt|Rect)$")
# Their names would begin with a digit.
RENAMED = {"Zan_3DTransform2DPoints": "transform2DPointsIn3D"}
# Parameters that the functions read and write; other pointers to data that is not const are only written.
READ_AND_WRITTEN = re.compile(
    r"Zan_AddPt target|Zan_(Inset|Offset|Center)\w* rect|Zan_Transform\w*Rect rect|Zan_ConcatMatrix b|Zan_ClipLine2Rect [ab]"
    r"|Zan_(Translate|Rotate|Scale)Matrix\w* m|Zan_Correct3DDecompFor2D decomposition|Zan_\w+Ratio status")
# Null for these makes the functions report a failure, which becomes an exception.
NULL = re.compile(r"Zan_DecomposeMatrix4(ZYX)? failed|Zan_(Short)?ConvRatio overflow")
COUNTED = 3  # points in the arrays of the tests
RESERVED = {"in": "m"}  # words of JavaScript
ARRAY_LENGTHS = {"vertices": 4, "quad": 4, "corners": 4}

SCALARS = {  # C type: typed array, size, TypeScript
    "double": ("F64", 8, "number"), "int32_t": ("I32", 4, "number"), "uint32_t": ("U32", 4, "number"),
    "int16_t": ("I16", 2, "number"), "uint8_t": ("U8", 1, "number"), "unsigned char": ("U8", 1, "boolean"),
    "bool": ("U8", 1, "boolean"), "int64_t": ("", 8, "bigint"),
}
ARRAYS = {"F64": "Float64Array", "I32": "Int32Array", "I16": "Int16Array"}
MATRICES = {"Zan_Matrix3": ("Matrix3", 9), "Zan_Matrix4": ("Matrix4", 16)}

DESCRIPTION = json.loads((ROOT / "tools/api/zan-api.json").read_text(encoding="utf-8"))
ALIASES = {alias["name"]: alias["type"] for alias in DESCRIPTION["aliases"]}
RECORDS = {record["name"]: record for record in DESCRIPTION["records"] if record["plain"]}


def camel(name):
    """Zan_FixMul: fixMul, Zan_LPtInRect: lPtInRect."""
    name = RENAMED.get(name, name.removeprefix("Zan_"))
    return name[0].lower() + name[1:]


def plain(c_type):
    """A C type without const, pointer and alias."""
    c_type = c_type.removeprefix("const ").rstrip("*")
    return ALIASES.get(c_type, c_type)


def type_name(c_type):
    """The TypeScript type of a value."""
    c_type = plain(c_type)
    if c_type in SCALARS:
        return SCALARS[c_type][2]
    return re.sub(r"T<double>", "", c_type.removeprefix("Zan_"))


def size_of(c_type):
    return SCALARS[c_type][1] if c_type in SCALARS else RECORDS[c_type]["size"]


def fields(c_type, path="", offset=0):
    """The numbers of a record: path in JavaScript, typed array, size, offset."""
    for field in RECORDS[c_type]["fields"]:
        field_type, at, name = plain(field["type"]), offset + field["offset"], path + "." + field["name"]
        if field_type in SCALARS:
            yield name, SCALARS[field_type][0], SCALARS[field_type][1], at
        else:
            yield from fields(field_type, name, at)


def address(at):
    return f"$ + {at}" if at else "$"


def element(view, size, at):
    shift = {1: "", 2: " >> 1", 4: " >> 2", 8: " >> 3"}[size]
    return f"{view}[({address(at)}){shift}]" if shift and at else f"{view}[{address(at)}{shift}]"


def write(c_type, value, at):
    """Statements that store a value in scratch memory."""
    if c_type in MATRICES:
        return [f"F64.set(elementsOf{MATRICES[c_type][0]}({value}), ({address(at)}) >> 3);"]
    if c_type in SCALARS:
        view, size, _ = SCALARS[c_type]
        return [f"{element(view, size, at)} = {value};"]
    return [f"{element(view, size, where)} = {value}{path};" for path, view, size, where in fields(c_type, offset=at)]


def read(c_type, at):
    """An expression for a value in scratch memory."""
    if c_type in MATRICES:
        name, count = MATRICES[c_type]
        return f"new{name}(F64.slice(({address(at)}) >> 3, ({address(at + 8 * count)}) >> 3))"
    if c_type in SCALARS:
        view, size, script = SCALARS[c_type]
        return element(view, size, at) + (" !== 0" if script == "boolean" else "")
    parts = []
    for field in RECORDS[c_type]["fields"]:
        field_type = plain(field["type"])
        parts.append(f"{field['name']}: {read(field_type, at + field['offset'])}")
    return "{ " + ", ".join(parts) + " }"


class Function:
    """A plain function and how its arguments and results pass through memory."""

    def __init__(self, entry):
        self.entry, self.name, self.script = entry, entry["name"], camel(entry["name"])
        self.parameters, self.into, self.call, self.results, self.arguments = [], [], [], [], []
        self.array = None
        at = 0
        counted = any(p["name"] == "count" for p in entry["parameters"])
        for p in entry["parameters"]:
            c_type, name = plain(p["type"]), RESERVED.get(p["name"], p["name"])
            pointer, const = "*" in p["type"], p["type"].startswith("const")
            key = f"{self.name} {name}"
            if name == "count":
                self.call.append("count")
            elif NULL.match(key):
                self.call.append("0")
                self.arguments.append((name, None, "null", 1))
            elif counted and pointer and not const:
                views = {view for _, view, _, _ in fields(c_type)}
                self.array = (name, views.pop(), len(list(fields(c_type))))
                self.call.append("array")
                self.parameters.append((name, "ArrayLike<number>"))
                self.arguments.append((name, c_type, "array", COUNTED))
            elif not pointer and c_type in SCALARS:
                self.parameters.append((name, SCALARS[c_type][2]))
                self.call.append(name)
                self.arguments.append((name, c_type, "value", 1))
            else:
                length = ARRAY_LENGTHS.get(name, 1) if pointer else 1
                size = size_of(c_type)
                at = -(-at // 8) * 8
                reads = not pointer or const or bool(READ_AND_WRITTEN.match(key))
                if reads:
                    like = "Like" if c_type in MATRICES else "[]" if length > 1 else ""
                    self.parameters.append((name, type_name(c_type) + like))
                    for i in range(length):
                        self.into += write(c_type, f"{name}[{i}]" if length > 1 else name, at + i * size)
                if pointer and not const:
                    places = [read(c_type, at + i * size) for i in range(length)]
                    self.results.append((name, type_name(c_type) + ("[]" if length > 1 else ""),
                                         f"[{', '.join(places)}]" if length > 1 else places[0]))
                self.call.append(address(at))
                kind = "value" if not pointer else "in" if const else "both" if reads else "out"
                self.arguments.append((name, c_type, kind, length))
                at += size * length
        self.returns = ALIASES.get(entry["returns"], entry["returns"])
        # A plain function returns a result code when it returns int32_t, has a pointer parameter, and the text of its
        # result begins with 0 or "as Zan_".
        doc = entry.get("returnDoc") or ""
        self.is_code = self.returns == "int32_t" and bool(re.match(r"0\b|as Zan_", doc)) and any(
            "*" in p["type"] for p in entry["parameters"])
        self.is_quiet = self.name.endswith("Quiet")

    def javascript(self):
        names = ", ".join(name for name, _ in self.parameters)
        if self.array:
            name, view, components = self.array
            names += f", into = new {ARRAYS[view]}({name}.length)"
        lines = [f"export function {self.script}({names}) {{"]
        call = f"wasm().{self.name}({', '.join(self.call)})"
        if self.array:
            lines.append(f"  const count = countOf({self.array[0]}, {self.array[2]});")
        if self.into or self.results:
            lines.append("  const $ = scratch();")
        lines += ["  " + statement for statement in self.into]
        if self.array:
            lines.append(f"  const array = put{self.array[1]}({self.array[0]});")
        if self.is_code:
            lines.append(f"  {'' if self.is_quiet else 'check('}{call}{'' if self.is_quiet else ')'};")
            values = []
        else:
            fix = {"bool": " !== 0", "uint32_t": " >>> 0"}.get(self.returns, "")
            lines.append(f"  const result = {call}{fix};")
            if "reports" in self.entry:
                lines.append("  check(0);")
            values = [("result", "result")]
        if self.array:
            lines.append(f"  return get{self.array[1]}(array, into);")
        else:
            values += [(name, value) for name, _, value in self.results]
            if len(values) == 1:
                lines.append(f"  return {values[0][1]};")
            elif values:
                lines.append("  return { " + ", ".join(n if n == v else f"{n}: {v}" for n, v in values) + " };")
        return "\n".join(lines + ["}"])

    def declaration(self):
        returned = [] if self.is_code else [("result", SCALARS[self.returns][2])]
        returned += [(name, script) for name, script, _ in self.results]
        parameters = [f"{name}: {script}" for name, script in self.parameters]
        if self.array:
            answer = ARRAYS[self.array[1]]
            parameters.append(f"into?: {answer}")
        elif len(returned) == 1:
            answer = returned[0][1]
        else:
            answer = "{ " + "; ".join(f"{n}: {t}" for n, t in returned) + " }" if returned else "void"
        brief = self.entry.get("brief", "").replace("*/", "")
        return f"/** {brief} `{self.name}` */\nexport function {self.script}({', '.join(parameters)}): {answer};"


def constants():
    """Objects for the constants with a common prefix: Zan_Err_Overflow is Err.Overflow."""
    groups = {}
    for constant in DESCRIPTION["constants"]:
        if match := re.match(r"Zan_(Err|Result|RectRelation|MatrixType)_(\w+)", constant["name"]):
            groups.setdefault(match[1], []).append((match[2], constant["value"], constant["brief"]))
        elif match := re.match(r"Zan_Ratio(\w+)", constant["name"]):
            groups.setdefault("RatioStatus", []).append((match[1], constant["value"], constant["brief"]))
    return groups


def used_records(functions):
    used = set()

    def add(c_type):
        if c_type in RECORDS and c_type not in MATRICES and c_type not in used:
            used.add(c_type)
            for field in RECORDS[c_type]["fields"]:
                add(plain(field["type"]))
    for function in functions:
        for p in function.entry["parameters"]:
            add(plain(p["type"]))
    return [RECORDS[name] for name in RECORDS if name in used]


NOTICE = "// Made from the description of the library's interface by bindings.py, and not edited."


def javascript(functions):
    head = [NOTICE, "import { elementsOfMatrix3, elementsOfMatrix4, newMatrix3, newMatrix4 } from './matrix.js';",
            "import { F64, I16, I32, U32, U8, check, countOf, getF64, getI16, getI32, putF64, putI16, putI32, scratch, wasm } "
            "from '../wasm.js';"]
    return "\n\n".join(["\n".join(head)] + [f.javascript() for f in functions]) + "\n"


def declarations(functions):
    lines = [NOTICE, "import type { Matrix3, Matrix3Like, Matrix4, Matrix4Like } from './matrix.js';"]
    for record in used_records(functions):
        members = " ".join(f"{field['name']}: {type_name(field['type'])};" for field in record["fields"])
        lines.append(f"/** {record['brief']} */\nexport interface {type_name(record['name'])} {{ {members} }}")
    return "\n".join(lines + [f.declaration() for f in functions]) + "\n"


def constants_javascript():
    lines = [NOTICE]
    for name, members in constants().items():
        lines.append(f"export const {name} = Object.freeze({{ {', '.join(f'{n}: {v}' for n, v, _ in members)} }});")
    texts = [[v, b] for group in ("Err", "Result") for _, v, b in constants()[group]]
    return "\n".join(lines + [f"export const MESSAGES = new Map({json.dumps(texts)});"]) + "\n"


def constants_declarations():
    lines = [NOTICE]
    for name, members in constants().items():
        described = " ".join(f"/** {b} */ {n}: {v};" for n, v, b in members)
        lines.append(f"export const {name}: Readonly<{{ {described} }}>;")
    return "\n".join(lines + ["/** What the result codes mean. */\nexport const MESSAGES: ReadonlyMap<number, string>;"]) + "\n"


def calls(functions):
    """For the tests: the types of the arguments that are read, with the fields of records, and of the numbers returned."""
    def fields_of(c_type):
        if c_type in SCALARS:
            return c_type
        return {field["name"]: fields_of(plain(field["type"])) for field in RECORDS[c_type]["fields"]}

    def numbers_of(c_type):
        if c_type in SCALARS:
            return [c_type]
        return [number for field in RECORDS[c_type]["fields"] for number in numbers_of(plain(field["type"]))]
    listed = []
    for f in functions:
        arguments = [{"type": fields_of(c_type), "kind": kind, "length": length, "matrix": c_type in MATRICES}
                     for _, c_type, kind, length in f.arguments if kind not in ("null", "out")]
        numbers = [] if f.is_code else [f.returns]
        for _, c_type, kind, length in f.arguments:
            if kind in ("both", "out", "array"):
                numbers += numbers_of(c_type) * length
        listed.append({"name": f.script, "arguments": arguments, "numbers": numbers})
    return listed


def answers(functions):
    """The same calls in C++: make<T>() draws a value, show(value) prints it."""
    lines = [NOTICE]
    for name, record in RECORDS.items():
        if any("*" in field["type"] or "[" in field["type"] for field in record["fields"]) or "float" in name:
            continue
        members = [field["name"] for field in record["fields"]]
        made = " ".join(f"record.{m} = make<decltype(record.{m})>();" for m in members)
        lines.append(f"template <>\n{name} make() {{\n    {name} record;\n    {made}\n    return record;\n}}")
        lines.append(f"void show(const {name}& record) {{ {' '.join(f'show(record.{m});' for m in members)} }}")
    lines.append("void answerAll() {")
    for f in functions:
        lines.append(f"    answer(\"{f.script}\", {str(f.is_quiet).lower()}, [] {{")
        passed, shown = [], []
        for name, c_type, kind, length in f.arguments:
            if kind == "null":
                passed.append("nullptr")
                continue
            first = "{}" if kind == "out" else "{" + ", ".join([f"make<{c_type}>()"] * length) + "}"
            lines.append(f"        {c_type} {name}[{length}] = {first};")
            passed += [str(COUNTED), name] if kind == "array" else [name + "[0]" if kind == "value" else name]
            if kind in ("both", "out", "array"):
                shown.append(f"for (const auto& value : {name}) show(value);")
        call = f"{f.name}({', '.join(passed)})"
        if f.is_code:
            lines.append(f"        if (failed({call})) return;")
        else:
            lines.append(f"        const auto result = {call};\n        if (failed(0)) return;")
            shown.insert(0, "show(result);")
        lines += ["        " + line for line in shown] + ["    });"]
    return "\n".join(lines + ["}"]) + "\n"


def main(folder):
    functions = [Function(entry) for entry in DESCRIPTION["functions"]
                 if entry["callableFromC"] and not LEFT_OUT.match(entry["name"])]
    out = Path(folder)
    out.mkdir(parents=True, exist_ok=True)
    made = {"functions.js": javascript(functions), "functions.d.ts": declarations(functions),
            "constants.js": constants_javascript(), "constants.d.ts": constants_declarations(),
            "calls.json": json.dumps(calls(functions)), "answers.inc": answers(functions),
            "exports.json": json.dumps(["_" + f.name for f in functions])}
    for name, text in made.items():
        target = out / name
        if not target.exists() or target.read_text(encoding="utf-8") != text:
            target.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main(sys.argv[1])
