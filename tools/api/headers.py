"""Reads the public headers with libclang into the description that api.py writes: plain lists and dictionaries."""
import ctypes
import re
import subprocess
from pathlib import Path

from clang import cindex
from clang.cindex import CursorKind, TypeKind

ROOT = Path(__file__).resolve().parents[2]
HEADERS = ROOT / "include" / "zan"
ARITHMETIC = {"bool", "char", "double", "float", "int16_t", "int32_t", "int64_t", "uint16_t", "uint32_t", "uint64_t",
              "uint8_t", "uintptr_t", "unsigned char", "void"}


class _StringSet(ctypes.Structure):
    _fields_ = [("strings", ctypes.POINTER(cindex._CXString)), ("count", ctypes.c_uint)]


def _bind(name, result, *arguments):
    """A function of libclang that the Python module leaves out."""
    function = getattr(cindex.conf.lib, name)
    function.restype, function.argtypes = result, arguments
    return function


def _value(cursor):
    """The value of a constant; None for one that is an address."""
    result = _bind("clang_Cursor_Evaluate", ctypes.c_void_p, cindex.Cursor)(cursor)
    kind = _bind("clang_EvalResult_getKind", ctypes.c_int, ctypes.c_void_p)(result) if result else 0
    if kind == 1:
        return _bind("clang_EvalResult_getAsLongLong", ctypes.c_longlong, ctypes.c_void_p)(result)
    return _bind("clang_EvalResult_getAsDouble", ctypes.c_double, ctypes.c_void_p)(result) if kind == 2 else None


def _symbols(cursor):
    """The linkage names of a function, of which constructors and destructors have several."""
    if cursor.kind not in (CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR):
        return [cursor.mangled_name]
    manglings = _bind("clang_Cursor_getCXXManglings", ctypes.POINTER(_StringSet), cindex.Cursor)(cursor).contents
    return [cindex.conf.lib.clang_getCString(manglings.strings[i]) for i in range(manglings.count)]


def parse(name, text, arguments):
    """The syntax tree of a source file that exists in memory only."""
    unit = cindex.Index.create().parse(name, args=arguments, unsaved_files=[(name, text)])
    errors = [str(diagnostic) for diagnostic in unit.diagnostics if diagnostic.severity >= cindex.Diagnostic.Error]
    if errors:
        raise SystemExit("\n".join(errors))
    return unit.cursor


def _spelling(type_):
    return re.sub(r" (?=[*&])", "", type_.spelling)


def _initializer(cursor):
    tokens = [token.spelling for token in cursor.get_tokens() if token.kind != cindex.TokenKind.COMMENT]
    return "".join(tokens[tokens.index("=") + 1:]) if "=" in tokens else None


# --- Documentation

COMMANDS = "param|return|reports|throws|threads|libm|copydoc|copydetails"


def _one_line(lines):
    return re.sub(r"@ref (\w+)", r"\1", " ".join(" ".join(lines).split()))


def _documentation(raw):
    """The slots of a comment: brief, details, return, reports, throws, threads, libm, copydoc, copydetails;
    "params" by name."""
    lines = [re.sub(r"^\s*///<? ?", "", line) for line in (raw or "").splitlines() if "///" in line]
    fences = [i for i, line in enumerate(lines) if line.strip() in ("@{", "@}")]
    sections = [("text", [])]
    for line in lines[fences[-1] + 1:] if fences else lines:
        command = re.match(rf"@({COMMANDS})\b *(.*)", line)
        if command:
            sections.append((command[1], [command[2]]))
        else:
            sections[-1][1].append(line)
    slots = {"params": {}}
    for section, content in sections:
        text = _one_line(content)
        if section == "param":
            names, meaning = re.match(r"(\w+(?:, \w+)*) *(.*)", text).groups()
            slots["params"].update(dict.fromkeys(names.split(", "), meaning))
        elif section == "text":
            brief, rest = re.match(r"(.*?[.](?= [A-Z]|$)|.*) *(.*)", text).groups()
            slots.update(brief=brief, details=rest)
        else:
            slots[section] = text
    return {slot: text for slot, text in slots.items() if text}


def _resolve_copies(entries):
    """Replaces @copydoc and @copydetails by what they name."""
    by_name = {entry["name"]: entry["slots"] for entry in entries if "copydoc" not in entry["slots"]}
    for entry in entries:
        own = entry["slots"]
        source = own.pop("copydoc", None) or own.pop("copydetails", None)
        if source:
            entry["slots"] = {**by_name[source.partition("(")[0]], **own}


class _Groups:
    """The documentation groups of a header, by line."""

    def __init__(self, path):
        self.of_line, self.titles = {}, {}
        stack, pending = [], None
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            text = re.sub(r"^\s*///", "", line).strip() if line.strip().startswith("///") else ""
            if command := re.match(r"@(?:defgroup|addtogroup) (\w+) ?(.*)|@name (.*)", text):
                pending = command[1]
                if command[2]:
                    self.titles[command[1]] = command[2]
            elif text == "@{":
                stack.append(pending or (stack[-1] if stack else None))
                pending = None
            elif text == "@}":
                stack.pop()
            self.of_line[number] = stack[-1] if stack else None


# --- Declarations

class _Reader:
    def __init__(self, exports):
        self.exports = exports
        self.groups = {path.name: _Groups(path) for path in sorted(HEADERS.glob("*.h"))}
        self.constants, self.aliases, self.records, self.data, self.functions, self.templates = [], [], [], [], [], []

    def entry(self, cursor, name, **more):
        header = Path(cursor.location.file.name).name
        group = self.groups[header].of_line[cursor.location.line]
        slots = _documentation(cursor.raw_comment)
        return {"name": name, "header": f"zan/{header}", "group": group, "slots": slots, **more}

    def visit(self, cursor):
        for child in cursor.get_children():
            location = child.location.file
            if not location or Path(location.name).parent != HEADERS:
                continue
            kind = child.kind
            if kind in (CursorKind.LINKAGE_SPEC, CursorKind.UNEXPOSED_DECL):
                self.visit(child)
            elif kind == CursorKind.VAR_DECL:
                self.variable(child)
            elif kind == CursorKind.TYPE_ALIAS_DECL:
                self.aliases.append(self.entry(child, child.spelling, type=_spelling(child.underlying_typedef_type)))
            elif kind in (CursorKind.STRUCT_DECL, CursorKind.CLASS_DECL) and child.is_definition():
                self.record(child.type, child)
                for member in child.get_children():
                    if member.kind in (CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR):
                        self.function(member, child.spelling)
            elif kind == CursorKind.FUNCTION_DECL and child.get_num_template_arguments() < 0:  # no specialization
                self.function(child)
            elif kind == CursorKind.FUNCTION_TEMPLATE and child == child.canonical:  # no second declaration
                self.templates.append(self.callable(child, child.spelling, [], template=True))

    def variable(self, cursor):
        if cursor.spelling in self.exports:
            self.data.append(self.entry(cursor, cursor.spelling, type=_spelling(cursor.type), symbol=cursor.spelling))
            return
        type_ = re.sub(r"^const |(?<=\*)const$", "", _spelling(cursor.type))
        self.constants.append(self.entry(cursor, cursor.spelling, type=type_, value=_value(cursor),
                                         text=_initializer(cursor)))

    def record(self, type_, cursor):
        """Adds a record, and before it those of which its fields consist."""
        name = type_.get_canonical().spelling
        if any(record["name"] == name for record in self.records):
            return
        fields = list(type_.get_fields())
        plain = all(field.access_specifier == cindex.AccessSpecifier.PUBLIC for field in fields)
        fields = fields if plain else []
        for field in fields:
            self.instantiations(field.type)
        self.records.append(self.entry(
            cursor, name, size=type_.get_size(), align=type_.get_align(), plain=plain,
            fields=[{"name": field.spelling, "type": _spelling(field.type), "offset": type_.get_offset(field.spelling) // 8,
                     "doc": _documentation(field.raw_comment).get("brief")} for field in fields]))

    def instantiations(self, type_):
        """Adds the record templates' instantiations that a type mentions."""
        while type_.kind in (TypeKind.POINTER, TypeKind.LVALUEREFERENCE, TypeKind.CONSTANTARRAY):
            type_ = type_.element_type if type_.kind == TypeKind.CONSTANTARRAY else type_.get_pointee()
        declaration = type_.get_canonical().get_declaration()
        if declaration.spelling.startswith("Zan_"):
            self.record(declaration.type, declaration)

    def function(self, cursor, owner=None):
        symbols = [symbol for symbol in _symbols(cursor) if symbol in self.exports]
        if symbols:
            for type_ in [cursor.result_type, *(argument.type for argument in cursor.get_arguments())]:
                self.instantiations(type_)
            member = {"memberOf": owner, "const": cursor.is_const_method()} if owner else {}
            self.functions.append(self.callable(cursor, f"{owner}::{cursor.spelling}" if owner else cursor.spelling,
                                                symbols, **member))

    def callable(self, cursor, name, symbols, **more):
        parameters = [child for child in cursor.get_children() if child.kind == CursorKind.PARM_DECL]
        discard = not any(child.kind == CursorKind.WARN_UNUSED_RESULT_ATTR for child in cursor.get_children())
        return self.entry(cursor, name, linkage="C" if symbols == [name] else "C++", symbols=symbols,
                          returns=_spelling(cursor.result_type), mayDiscardResult=discard,
                          parameters=[{"name": parameter.spelling, "type": _spelling(parameter.type),
                                       "default": _initializer(parameter)} for parameter in parameters], **more)


def _exports():
    lines = (ROOT / "zan.exports").read_text(encoding="utf-8").splitlines()
    return {line.strip() for line in lines if line.strip() and not line.startswith("#")}


def _add_templates(reader):
    """Function templates with their exported instantiations, which only the export list knows. Every symbol of the list
    must then have an owner, except those of vtables and type information."""
    known = {symbol for function in reader.functions for symbol in function["symbols"]}
    left = sorted(reader.exports - known - {entry["symbol"] for entry in reader.data})
    readable = subprocess.run(["c++filt"], input="\n".join(left), check=True, capture_output=True, text=True).stdout
    for symbol, text in zip(left, readable.splitlines()):
        template = next((entry for entry in reader.templates if re.search(rf"\b{entry['name']}<", text)), None)
        if template:
            template["symbols"].append(symbol)
        elif not text.startswith(("vtable for ", "typeinfo ")):
            raise SystemExit(f"zan.exports: {text} is not declared in a public header")
    reader.functions += reader.templates


def _callable_from_c(function, records):
    """Linkage of C, and nothing but numbers, pointers and plain records in the signature."""
    types = [function["returns"], *(parameter["type"] for parameter in function["parameters"])]
    bases = {re.sub(r"\bconst\b|\*", "", type_).strip() for type_ in types}
    return function["linkage"] == "C" and bases <= ARITHMETIC | records


def _finish(entry):
    """Puts the slots of the comment where the description has them, and drops what is empty."""
    slots = entry.pop("slots")
    of_parameter = slots.pop("params", {})
    for parameter in entry.get("parameters", []):
        parameter["doc"] = of_parameter.get(parameter["name"])
        parameter["mayBeNull"] = "may be null" in (parameter["doc"] or "") or None
    entry["returnDoc"] = slots.pop("return", None)
    for part in (*entry.get("parameters", []), *entry.get("fields", [])):
        for key in [key for key, value in part.items() if value is None]:
            del part[key]
    name, header, group = entry.pop("name"), entry.pop("header"), entry.pop("group")
    entry = {"name": name, "header": header, "group": group, **slots, **entry}
    return {key: value for key, value in entry.items() if value is not None}


def describe():
    """The description of the public headers."""
    reader = _Reader(_exports())
    reader.visit(parse("api.cpp", '#include "zan/zan.h"\n', ["-xc++", "-std=c++17", f"-I{HEADERS.parent}"]))
    _add_templates(reader)
    plain = {record["name"] for record in reader.records if record["plain"]}
    plain |= {alias["name"] for alias in reader.aliases}
    for function in reader.functions:
        function["callableFromC"] = _callable_from_c(function, plain)
    titles = [title for groups in reader.groups.values() for title in groups.titles.items()]
    description = {"groups": dict(titles)}
    for kind in ("constants", "aliases", "records", "data", "functions"):
        entries = getattr(reader, kind)
        _resolve_copies(entries)
        description[kind] = [_finish(entry) for entry in entries]
    return description
