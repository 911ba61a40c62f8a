"""Makes the type tables of an extension module from class lists and the description of the headers.

The compiler checks every base (`static_cast`) and chooses how a pointer is adjusted; this program finds which of a
type's bases are listed, direct and indirect ones.
"""

from __future__ import annotations

import argparse
import itertools
import sys
from dataclasses import dataclass, field
from pathlib import Path

from .class_lists import ROOT, Type, read_lists
from .declarations import Description, read_descriptions, write_changed


@dataclass
class Row:
    """A type descriptor."""

    native: str  # the compiler's spelling
    mangled: str
    readable: str
    header: str = ""  # as an include
    shared: bool = False  # a shared pointer: converts by sharing ownership
    place: str = ""  # file:line, for messages
    ancestors: list[Row] = field(default_factory=list)  # nearest first


def fail(message: str) -> None:
    sys.exit(f"type catalogue: {message}")


def rows_of(listed: Type, description: Description) -> list[Row]:
    """The descriptors of one line of a list."""
    if listed.kind == "shared":
        spelled = f"std::shared_ptr< {listed.native} >"
        return [
            Row(listed.native, f"_{listed.mangled}", spelled, shared=True, place=listed.place),
            Row(listed.native, f"_p_{listed.mangled}", f"{spelled} *", shared=True, place=listed.place),
        ]
    pointer = "" if listed.kind == "type" else " *"
    readable = "|".join(f"{name}{pointer}" for name in listed.spellings)
    described = description.types.get(listed.native)
    return [
        Row(
            listed.native, listed.mangled, readable, include(described.header if described else ""), False, listed.place
        )
    ]


def include(header: str) -> str:
    own = (ROOT / header).exists()
    return f'"{header}"' if own else f"<{header}>"


def resolve(rows: list[Row], description: Description) -> None:
    """Fills in `ancestors`, and refuses what is listed twice."""
    by_mangled: dict[str, Row] = {}
    families: dict[str, dict[str, Row]] = {}  # by native, among the types of one kind
    for row in rows:
        family = families.setdefault(_family(row), {})
        if row.native in family:
            fail(f"{row.place}: {row.native} is listed twice (first in {family[row.native].place})")
        if row.mangled in by_mangled:
            fail(f"{row.place}: {row.mangled} is the name of another type, too ({by_mangled[row.mangled].place})")
        by_mangled[row.mangled] = family[row.native] = row
    for row in rows:
        family = families[_family(row)]
        row.ancestors = [family[name] for name in _bases(row.native, description) if name in family]


def is_function(native: str) -> bool:
    return native.endswith(")")


def _bases(native: str, description: Description) -> list[str]:
    """What a type converts to: a class to its bases, a function to those of its parameters that return a base."""
    if not is_function(native):
        return description.lineage(native)[1:]
    result, _, parameters = native.partition("*(")
    return [f"{base}*({parameters}" for base in description.lineage(result)[1:]]


def _family(row: Row) -> str:
    return "plain" if not row.shared else "pointers" if row.mangled.startswith("_p_") else "shared"


def quoted(text: str) -> str:
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def names_text(rows: list[Row]) -> str:
    named = sorted((i for i, row in enumerate(rows) if not row.shared), key=lambda i: rows[i].native.encode())
    entries = "\n".join(f"    {{{quoted(rows[i].native)}, {i}, {len(rows[i].ancestors)}}}," for i in named)
    return f"""// Made from the type catalogue.
#pragma once

#include <cstdint>
#include <string_view>

namespace catalogue {{

struct Entry {{
    std::string_view native; // the compiler's spelling
    std::int16_t index;      // place in the type table
    std::int16_t depth;      // number of direct and indirect bases
}};

inline constexpr Entry entries[] = {{ // sorted by native
{entries}
}};

}} // namespace catalogue
"""


def cast_name(source: Row, target: Row) -> str:
    return f"{source.mangled}To{target.mangled}"


def _cast_text(row: Row, base: Row) -> str:
    return "x" if is_function(row.native) else f"upcast<{row.native}, {base.native}>(x)"


def casts_text(rows: list[Row]) -> str:
    plain = [(row, base) for row in rows if not row.shared for base in row.ancestors]
    includes = "\n".join(
        f"#include {header}" for header in sorted({row.header for row, _ in plain if not is_function(row.native)})
    )
    body = "\n".join(
        f"void *{cast_name(row, base)}(void *x, int *) {{ return {_cast_text(row, base)}; }}" for row, base in plain
    )
    return f"""// Made from the type catalogue: how a pointer to a derived object becomes one to its base.
{includes}

template <class Derived, class Base> void *upcast(void *pointer)
{{
    return static_cast<Base *>(static_cast<Derived *>(pointer));
}}

extern "C" {{
{body}
}}
"""


TABLES_HEAD = """// Made from the type catalogue: the module's type descriptors and their initial cast lists.
#include "binding/runtime/state.h"

#include <memory>

namespace {

// All shared pointers have one layout, and every base here starts at the start of its object.
[[maybe_unused]] void *share_pointer(void *pointer, int *newmemory)
{
    *newmemory = 2;
    return new std::shared_ptr<void>(*static_cast<std::shared_ptr<void> *>(pointer));
}

} // namespace
"""


def cast_lists(rows: list[Row]) -> list[list[str]]:
    """For each descriptor its initialisers: itself, what converts to it, and the end."""
    index = {row.mangled: i for i, row in enumerate(rows)}
    lists = [[f"    {{&descriptors[{i}], nullptr, nullptr, nullptr}},"] for i in range(len(rows))]
    for i, row in enumerate(rows):
        for base in row.ancestors:
            converter = "share_pointer" if row.shared else cast_name(row, base)
            lists[index[base.mangled]].append(f"    {{&descriptors[{i}], {converter}, nullptr, nullptr}},")
    return [[*items, "    {nullptr, nullptr, nullptr, nullptr},"] for items in lists]


def tables_text(rows: list[Row]) -> str:
    lists = cast_lists(rows)
    starts = list(itertools.accumulate(map(len, lists), initial=0))[:-1]
    declared = [
        f"void *{cast_name(row, base)}(void *, int *);" for row in rows if not row.shared for base in row.ancestors
    ]
    described = [f"    {{{quoted(r.mangled)}, {quoted(r.readable)}, nullptr, nullptr, nullptr, 0}}," for r in rows]
    parts = [
        TABLES_HEAD,
        'extern "C" {',
        *declared,
        "}\n\nnamespace {\n",
        "swig_type_info descriptors[] = {",
        *described,
    ]
    parts += ["};\n", "swig_cast_info casts[] = {", *(line for items in lists for line in items)]
    parts += ["};\n\n} // namespace\n", "swig_type_info *swig_type_initial[] = {"]
    parts += [f"    &descriptors[{i}]," for i in range(len(rows))]
    parts += ["};\n\nswig_cast_info *swig_cast_initial[] = {", *(f"    &casts[{start}]," for start in starts)]
    parts.append(f"""}};

swig_type_info *swig_types[{len(rows) + 1}];
swig_module_info swig_module = {{swig_types, {len(rows)}, nullptr, nullptr, nullptr, nullptr}};
""")
    return "\n".join(parts)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--lists", nargs="+", type=Path, required=True, help="class lists")
    parser.add_argument("--descriptions", nargs="+", type=Path, required=True, help="what their headers declare")
    parser.add_argument("--out", type=Path, required=True, help="folder for the generated files")
    arguments = parser.parse_args()
    description = read_descriptions(arguments.descriptions)
    rows = [row for listed in read_lists(arguments.lists) for row in rows_of(listed, description)]
    rows.sort(key=lambda row: row.mangled.encode())
    resolve(rows, description)
    arguments.out.mkdir(parents=True, exist_ok=True)
    write_changed(names_text(rows), arguments.out / "catalogue_names.h")
    write_changed(casts_text(rows), arguments.out / "catalogue_casts.cpp")
    write_changed(tables_text(rows), arguments.out / "catalogue_tables.cpp")


if __name__ == "__main__":
    main()
