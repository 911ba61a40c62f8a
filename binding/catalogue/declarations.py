"""The description of the interface as programs read it: what the headers declare, by qualified name.

describe_headers.py writes it, once a build; the type tables and the Python packages are made from it.
"""

from __future__ import annotations

import json
import re
from dataclasses import asdict, dataclass, field
from pathlib import Path


@dataclass(frozen=True)
class Parameter:
    type: str
    name: str
    default: str | None  # as written


@dataclass
class Declaration:
    kind: str  # "function", "variable", "class", "enumerator"
    name: str  # qualified, without template arguments
    doc: str = ""
    parameters: list[Parameter] = field(default_factory=list)  # of a function
    value: int | None = None  # of an enumerator
    enumeration: str = ""  # of an enumerator: the qualified name of its type, where that has one

    @property
    def scope(self) -> str:
        return self.name.rpartition("::")[0]


@dataclass
class Described:
    """A class, or a type of the class lists, as the compiler knows it."""

    bases: list[str]  # direct and public
    header: str = ""  # that defines it: relative to the project, absolute elsewhere


@dataclass
class Description:
    declarations: list[Declaration] = field(default_factory=list)
    types: dict[str, Described] = field(default_factory=dict)

    def __post_init__(self) -> None:
        self._by_name: dict[str, list[Declaration]] = {}
        for declaration in self.declarations:
            self._by_name.setdefault(declaration.name, []).append(declaration)

    def find(self, name: str, kind: str) -> list[Declaration]:
        return [d for d in self._by_name.get(name, ()) if d.kind == kind]

    def enumerator(self, written: str, scope: str) -> Declaration | None:
        """The enumerator that `written` means inside `scope`, a namespace, class or function."""
        while True:
            found = self.find(f"{scope}::{written}".removeprefix("::"), "enumerator")
            if found or not scope:
                return found[0] if found else None
            scope = scope.rpartition("::")[0]

    def lineage(self, native: str) -> list[str]:
        """A class and its bases, those first that are nearer."""
        found = [native]
        for base in self.types[native].bases if native in self.types else ():
            found += [name for name in self.lineage(base) if name not in found]
        return found


def without_arguments(name: str) -> str:
    """The name of a template, for its declarations."""
    return re.sub(r"<.*", "", name)


def write_description(description: Description, path: Path) -> None:
    declarations = [asdict(d) for d in description.declarations]
    types = {name: asdict(described) for name, described in description.types.items()}
    write_changed(json.dumps({"declarations": declarations, "types": types}), path)


def write_changed(text: str, path: Path) -> None:
    """Leaves an unchanged file alone, so that nothing is built again that depends on it."""
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def read_descriptions(paths: list[Path]) -> Description:
    """Several descriptions as one; the first that tells of a type counts."""
    declarations: list[Declaration] = []
    types: dict[str, Described] = {}
    for path in paths:
        data = json.loads(path.read_text())
        for item in data["declarations"]:
            item["parameters"] = [Parameter(**p) for p in item["parameters"]]
            declarations.append(Declaration(**item))
        types = {name: Described(**item) for name, item in data["types"].items()} | types
    return Description(declarations, types)
