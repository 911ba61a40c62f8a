"""Reads the class lists: what crosses the binding, and what of it no header tells.

Input lines (`#` starts a comment):

    hyxOSG::Text                       a class
    osg::Vec4f = osg::Vec4             further spellings of a class
    osg::Box @ osg/Shape               the header of a library's class, where it is not the one of its name
    type _p_char | char * | char       mangled name | readable name | the compiler's spelling [@ header]
    shared tavlang::Core::Object       shared pointers to a class, by value and by pointer

Bases come from the headers, see declarations.py.
"""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


@dataclass
class Type:
    """One line of a list; the two types of a `shared` line come from one Type."""

    kind: str  # "class", "type" or "shared"
    native: str  # the compiler's spelling; for `shared`, of the class that is shared
    mangled: str
    spellings: list[str] = field(default_factory=list)  # readable ones: for a class itself, else for a pointer to it
    header: str = ""  # as in an include; empty where the project's headers have it
    place: str = ""  # file:line, for messages


def mangle(name: str) -> str:
    text = re.sub(r"\s+", "", name)
    for old, new in (("::", "__"), ("<", "T_"), (">", "_t"), (",", "_"), ("*", "_p")):
        text = text.replace(old, new)
    return text


def _library_header(name: str) -> str:
    """A class of the scene-graph library has a header of its name; the project's own are known from their headers."""
    return "/".join(name.split("::")[:2]) if name.startswith("osg") else ""


def _parse_class(line: str, header: str, place: str) -> Type:
    line, _, spellings = line.partition(" = ")
    name = line.strip()
    names = [name, *(text.strip() for text in spellings.split(" | ") if text.strip())]
    return Type("class", name, "_p_" + mangle(name), names, header or _library_header(name), place)


def _parse_type(line: str, header: str, place: str) -> Type:
    mangled, readable, native = (part.strip() for part in line.split(" | "))
    return Type("type", native, mangled, [text.strip() for text in readable.split("|")], header, place)


def read_list(path: Path) -> list[Type]:
    types: list[Type] = []
    for number, raw in enumerate(path.read_text().splitlines(), 1):
        line, _, header = (part.strip() for part in raw.split("#")[0].partition(" @ "))
        place = f"{path.name}:{number}"
        if line.startswith("type "):
            types.append(_parse_type(line[5:], header, place))
        elif line.startswith("shared "):
            name = line[7:].strip()
            types.append(Type("shared", name, f"std__shared_ptrT_{mangle(name)}_t", [name], header, place))
        elif line:
            types.append(_parse_class(line, header, place))
    return types


def read_lists(paths: list[Path]) -> list[Type]:
    """The types of lists, or of all lists in folders."""
    files = [file for path in paths for file in (path.glob("*.txt") if path.is_dir() else [path])]
    return [listed for file in sorted(files) for listed in read_list(file)]


def plain_name(native: str) -> str:
    """A class name for comparing: one spelling of blanks, no default allocator."""
    text = re.sub(r",\s*std::allocator<.*?>\s*(?=>)", "", native)
    text = re.sub(r"\bconst\b", "", text)
    text = re.sub(r"\s*([<>,*&:])\s*", r"\1", text)
    return re.sub(r"\s+", " ", text).strip()
