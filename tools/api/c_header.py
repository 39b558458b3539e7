"""Writes zan_c.h, the C11 header of everything in a description that C can call."""
import itertools
import re

VECTORS = {f"Zan_Vector{n}T<double>": f"Zan_Vector{n}d" for n in (2, 3, 4)}
HEADERS = ("types", "frame", "scalar", "geom2d", "matrix", "space", "poly")
WIDTH = 120

HEAD = """\
// Zan for C11: the constants, records and functions of the public headers that C can use, with the first sentence of
// each entry; the headers have the whole. Made from them by tools/api, and not edited.
// clang-format off
#ifndef ZAN_ZAN_C_H
#define ZAN_ZAN_C_H

#ifdef __cplusplus

// C++ gets the headers themselves, and this header's names for their vectors.
#include "zan/zan.h"

%(aliases)s

#else

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#define ZAN_API __declspec(dllimport)
#else
#define ZAN_API __attribute__((visibility("default")))
#endif

// Marks a function whose result tells whether it failed, or is its only effect.
#if defined(__GNUC__) || defined(__clang__)
#define ZAN_NODISCARD __attribute__((warn_unused_result))
#else
#define ZAN_NODISCARD
#endif
"""
TAIL = """
#endif  // __cplusplus

#endif  // ZAN_ZAN_C_H
"""


def c_name(record):
    """A record's name in C; None for one that C cannot use."""
    name = record["name"]
    return VECTORS.get(name, None if "<" in name or not record["plain"] else name)


def _type(text):
    for name, short in VECTORS.items():
        text = text.replace(name, short)
    return text.replace("*const", "* const")


def _declare(type_, name):
    base, array = re.fullmatch(r"(.*?)(\[\d+\])?", _type(type_)).groups()
    return f"{base} {name}{array or ''}"


def _wrapped(head, parts, tail):
    """A list of parts in lines of at most WIDTH characters, aligned under the first part."""
    lines, indent = [head], " " * len(head)
    for i, part in enumerate(parts):
        part += "," if i + 1 < len(parts) else tail
        if len(lines[-1]) + 1 + len(part) > WIDTH:
            lines.append(indent + part)
        else:
            lines[-1] += part if lines[-1] in (head, indent) else " " + part
    return "\n".join(lines)


def _comment(text):
    lines = ["///"]
    for word in (text or "").split():
        if len(lines[-1]) + 1 + len(word) > WIDTH:
            lines.append("///")
        lines[-1] += " " + word
    return "\n".join(lines) + "\n" if text else ""


def _fits_enum(constant):
    return isinstance(constant.get("value"), int) and -2**31 <= constant["value"] < 2**31


def _macro(constant):
    value = re.sub(r"reinterpret_cast<(.*?)>\((.*)\)", r"((\1)\2)", constant["text"])
    return f"{_comment(constant.get('brief'))}#define {constant['name']} {value}\n"


def _member(text, doc):
    """A line of an enumeration or record, with its comment behind it or, if that is too long, above it."""
    line = f"    {text}" + (f"  ///< {doc}" if doc else "")
    return line + "\n" if len(line) <= WIDTH else f"    /// {doc}\n    {text}\n"


def _constants(constants, titles):
    """Enumerators, one enumeration a group; a macro for what is no int."""
    text = ""
    for group, members in itertools.groupby(filter(_fits_enum, constants), lambda constant: constant.get("group")):
        lines = "".join(_member(f"{member['name']} = {member['text']},", member.get("brief")) for member in members)
        text += (f"// {titles[group]}\n" if group else "") + f"enum {{\n{lines}}};\n\n"
    return text + "\n".join(_macro(constant) for constant in constants if not _fits_enum(constant))


def _record(record):
    fields = "".join(_member(_declare(field["type"], field["name"]) + ";", field.get("doc"))
                     for field in record["fields"])
    return f"{_comment(record.get('brief'))}typedef struct {c_name(record)} {{\n{fields}}} {c_name(record)};\n"


def _layout(records):
    """Assertions about sizes and offsets; those of records with pointers are for pointers of 64 bits."""
    checks = {False: "", True: ""}
    for record in records:
        name = c_name(record)
        wide = any("*" in field["type"] or "uintptr_t" in field["type"] for field in record["fields"])
        conditions = [f"sizeof({name}) == {record['size']}"]
        conditions += [f"offsetof({name}, {field['name']}) == {field['offset']}" for field in record["fields"][1:]]
        checks[wide] += "".join(f'_Static_assert({condition}, "{name}");\n' for condition in conditions)
    return f"{checks[False]}\n#if UINTPTR_MAX > UINT32_MAX\n{checks[True]}#endif\n"


def _function(function):
    parameters = [_declare(parameter["type"], parameter["name"]) for parameter in function["parameters"]] or ["void"]
    mark = "ZAN_API " if function["mayDiscardResult"] else "ZAN_NODISCARD ZAN_API "
    return _comment(function.get("brief")) + _wrapped(f"{mark}{_declare(function['returns'], function['name'])}(",
                                                      parameters, ");") + "\n"


def write(description):
    """The text of zan_c.h."""
    text = HEAD % {"aliases": "\n".join(f"using {short} = {name};" for name, short in VECTORS.items())}
    records = [record for record in description["records"] if c_name(record)]
    functions = [function for function in description["functions"] if function["callableFromC"]]
    for header in HEADERS:
        def here(entries):
            return [entry for entry in entries if entry["header"] == f"zan/{header}.h"]

        blocks = [f"{_comment(alias.get('brief'))}typedef {_declare(alias['type'], alias['name'])};\n"
                  for alias in here(description["aliases"])]
        blocks.append(_constants(here(description["constants"]), description["groups"]).rstrip("\n") + "\n")
        blocks += [_record(record) for record in here(records)]
        blocks += [f"{_comment(item.get('brief'))}extern ZAN_API {_declare(item['type'], item['name'])};\n"
                   for item in here(description["data"])]
        blocks += [_function(function) for function in here(functions)]
        text += f"\n// --- zan/{header}.h\n\n" + "\n".join(block for block in blocks if block.strip())
    return text + f"\n// --- Layouts\n\n{_layout(records)}" + TAIL
