"""Makes the type tables of an extension module from the class lists in this folder.

Input lines (`#` starts a comment):

    hyxOSG::Text : osg::Geode                 a class and its direct bases
    osg::Vec4f = osg::Vec4                    further spellings of a class
    hyx::Foo::Bar : hyx::Foo @ platform/hyx/foo.h    the header that defines it, where it is not the default one
    type _p_char | char * | char              mangled name | readable name | the compiler's spelling [: bases @ header]
    shared tavlang::Core::Object : ...        shared pointers to a class, by value and by pointer

The compiler checks every base (`static_cast`) and chooses how a pointer is adjusted; this program checks that every
base is listed, and finds all indirect ones.
"""

import argparse
import difflib
import pathlib
import re
import sys
from dataclasses import dataclass, field

ROOT = pathlib.Path(__file__).resolve().parents[2]


@dataclass
class Type:
    native: str  # the compiler's spelling; empty for types that rows never name
    mangled: str
    readable: str
    bases: list[str] = field(default_factory=list)  # natives of direct bases
    header: str = ""
    shared: bool = False  # a shared pointer: converts by sharing ownership
    place: str = ""  # file:line, for messages
    ancestors: list["Type"] = field(default_factory=list)


def mangle(name: str) -> str:
    text = re.sub(r"\s+", "", name)
    for old, new in (("::", "__"), ("<", "T_"), (">", "_t"), (",", "_"), ("*", "_p")):
        text = text.replace(old, new)
    return text


def default_header(name: str) -> str:
    library, _, rest = name.partition("::")
    outer = rest.split("::")[0]
    if library.startswith("osg"):
        return f"<{library}/{outer}>"
    snake = re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", outer).lower()
    places = sorted(ROOT.glob(f"platform/{library}/**/{snake}.h"))
    return f'"{places[0].relative_to(ROOT)}"' if places else f'"platform/{library}/{snake}.h"'


def parse_class(line: str, place: str) -> Type:
    line, _, header = line.partition(" @ ")
    line, _, spellings = line.partition(" = ")
    name, _, bases = line.partition(" : ")
    name = name.strip()
    names = [name] + [s.strip() for s in spellings.split(" | ") if s.strip()]
    return Type(
        native=name,
        mangled="_p_" + mangle(name),
        readable="|".join(f"{n} *" for n in names),
        bases=[b.strip() for b in bases.split(", ") if b.strip()],
        header=f'"{header.strip()}"' if header else default_header(name),
        place=place,
    )


def parse_type(line: str, place: str) -> Type:
    line, _, header = line.partition(" @ ")
    mangled, readable, native = (part.strip() for part in line.split(" | "))
    native, _, bases = native.partition(" : ")
    return Type(
        native=native,
        mangled=mangled,
        readable=readable,
        bases=[b.strip() for b in bases.split(", ") if b.strip()],
        header=f"<{header.strip()}>" if header else "",
        place=place,
    )


def parse_shared(line: str, place: str) -> list[Type]:
    name, _, bases = line.partition(" : ")
    base_names = [b.strip() for b in bases.split(", ") if b.strip()]
    types = []
    for prefix, star in (("_", ""), ("_p_", " *")):
        spelled = f"std::shared_ptr< {name.strip()} >{star}"
        types.append(
            Type(
                native=spelled,
                mangled=f"{prefix}std__shared_ptrT_{mangle(name)}_t",
                readable=spelled,
                bases=[f"std::shared_ptr< {b} >{star}" for b in base_names],
                shared=True,
                place=place,
            )
        )
    return types


def parse(path: pathlib.Path) -> list[Type]:
    types: list[Type] = []
    for number, raw in enumerate(path.read_text().splitlines(), 1):
        line = raw.split("#")[0].strip()
        place = f"{path.name}:{number}"
        if not line:
            continue
        if line.startswith("type "):
            types.append(parse_type(line[5:], place))
        elif line.startswith("shared "):
            types += parse_shared(line[7:], place)
        else:
            types.append(parse_class(line, place))
    return types


def fail(message: str) -> None:
    sys.exit(f"type catalogue: {message}")


def resolve(types: list[Type]) -> None:
    """Fills in `ancestors`, nearest first, and refuses what does not add up."""
    by_name: dict[str, Type] = {}
    for t in types:
        if t.native and t.native in by_name:
            fail(f"{t.place}: {t.native} is listed twice (first in {by_name[t.native].place})")
        by_name[t.native] = t
    seen: dict[str, Type] = {}
    for t in types:
        if t.mangled in seen:
            fail(f"{t.place}: {t.mangled} is the name of another type, too ({seen[t.mangled].place})")
        seen[t.mangled] = t

    def bases_of(t: Type) -> list[Type]:
        found = []
        for base in t.bases:
            if base not in by_name:
                near = difflib.get_close_matches(base, by_name, 1)
                fail(
                    f"{t.place}: base '{base}' of {t.native} is not in the catalogue"
                    + (f"; did you mean '{near[0]}'?" if near else "")
                )
            found.append(by_name[base])
        return found

    def collect(t: Type, path: tuple[str, ...]) -> list[Type]:
        if t.native in path:
            fail(f"{t.place}: {t.native} derives from itself")
        if not t.ancestors and t.bases:
            for base in bases_of(t):
                for ancestor in [base, *collect(base, (*path, t.native))]:
                    if ancestor not in t.ancestors:
                        t.ancestors.append(ancestor)
        return t.ancestors

    for t in types:
        collect(t, ())


def quoted(text: str) -> str:
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def write_names(types: list[Type], out: pathlib.Path) -> None:
    index = {id(t): i for i, t in enumerate(types)}
    named = sorted((t for t in types if t.native and not t.shared), key=lambda t: t.native.encode())
    rows = "\n".join(f"    {{{quoted(t.native)}, {index[id(t)]}, {len(t.ancestors)}}}," for t in named)
    out.write_text(f"""// Made from the type catalogue.
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
{rows}
}};

}} // namespace catalogue
""")


def cast_name(source: Type, target: Type) -> str:
    return f"{source.mangled}To{target.mangled}"


def write_casts(types: list[Type], out: pathlib.Path) -> None:
    plain = [(t, a) for t in types if not t.shared for a in t.ancestors]
    headers = dict.fromkeys(t.header for t in types if t.bases and not t.shared and t.header)
    body = "\n".join(
        f"void *{cast_name(t, a)}(void *x, int *) {{ return upcast<{t.native}, {a.native}>(x); }}" for t, a in plain
    )
    includes = "\n".join(f"#include {h}" for h in sorted(headers))
    out.write_text(f"""// Made from the type catalogue: how a pointer to a derived object becomes one to its base.
{includes}

template <class Derived, class Base> void *upcast(void *pointer)
{{
    return static_cast<Base *>(static_cast<Derived *>(pointer));
}}

extern "C" {{
{body}
}}
""")


def write_tables(types: list[Type], out: pathlib.Path) -> None:
    derived: dict[int, list[Type]] = {id(t): [] for t in types}
    for t in types:
        for a in t.ancestors:
            derived[id(a)].append(t)
    index = {id(t): i for i, t in enumerate(types)}
    parts = [
        """// Made from the type catalogue: the module's type descriptors and their initial cast lists.
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

extern "C" {"""
    ]
    parts += [f"void *{cast_name(t, a)}(void *, int *);" for t in types if not t.shared for a in t.ancestors]
    parts.append("}\n\nnamespace {\n")
    parts.append("swig_type_info descriptors[] = {")
    parts += [f"    {{{quoted(t.mangled)}, {quoted(t.readable)}, nullptr, nullptr, nullptr, 0}}," for t in types]
    parts.append("};\n")
    parts.append("swig_cast_info casts[] = {")
    starts = []
    position = 0
    for i, t in enumerate(types):
        starts.append(position)
        rows = [f"    {{&descriptors[{i}], nullptr, nullptr, nullptr}},"]
        for d in sorted(derived[id(t)], key=lambda d: d.mangled.encode()):
            converter = "share_pointer" if d.shared else cast_name(d, t)
            rows.append(f"    {{&descriptors[{index[id(d)]}], {converter}, nullptr, nullptr}},")
        rows.append("    {nullptr, nullptr, nullptr, nullptr},")
        position += len(rows)
        parts += rows
    parts.append("};\n\n} // namespace\n")
    parts.append("swig_type_info *swig_type_initial[] = {")
    parts += [f"    &descriptors[{i}]," for i in range(len(types))]
    parts.append("};\n\nswig_cast_info *swig_cast_initial[] = {")
    parts += [f"    &casts[{s}]," for s in starts]
    parts.append(f"""}};

swig_type_info *swig_types[{len(types) + 1}];
swig_module_info swig_module = {{swig_types, {len(types)}, nullptr, nullptr, nullptr, nullptr}};
""")
    out.write_text("\n".join(parts))


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("lists", nargs="+", type=pathlib.Path, help="class lists")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="folder for the generated files")
    arguments = parser.parse_args()
    types = [t for path in sorted(arguments.lists) for t in parse(path)]
    types.sort(key=lambda t: t.mangled.encode())
    resolve(types)
    arguments.out.mkdir(parents=True, exist_ok=True)
    write_names(types, arguments.out / "catalogue_names.h")
    write_casts(types, arguments.out / "catalogue_casts.cpp")
    write_tables(types, arguments.out / "catalogue_tables.cpp")


if __name__ == "__main__":
    main()
