"""The native classes' bases and spellings, as the type catalogue has them."""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from pathlib import Path


@dataclass
class Catalogue:
    bases: dict[str, list[str]] = field(default_factory=dict)  # by plain name
    spellings: dict[str, list[str]] = field(default_factory=dict)  # by plain name, all others of the same class
    headers: dict[str, str] = field(default_factory=dict)  # of classes that lie in no header of their own name


def plain_name(native: str) -> str:
    """A class name for comparing: one spelling of blanks, no default allocator."""
    text = re.sub(r",\s*std::allocator<.*?>\s*(?=>)", "", native)
    text = re.sub(r"\bconst\b", "", text)
    text = re.sub(r"\s*([<>,*&:])\s*", r"\1", text)
    return re.sub(r"\s+", " ", text).strip()


def read_catalogue(folder: Path) -> Catalogue:
    catalogue = Catalogue()
    for path in sorted(folder.glob("*.txt")):
        for line in path.read_text().splitlines():
            _add_line(catalogue, line.partition("#")[0].strip())
    return catalogue


def _add_line(catalogue: Catalogue, line: str) -> None:
    """`class : base, base = spelling | spelling @ header`, or `type mangled | readable|readable | native : base @ header`"""
    if not line or line.startswith("shared "):
        return
    line, _, header = line.partition(" @ ")
    if line.startswith("type "):
        _, readable, native = (part.strip() for part in line[5:].split(" | "))
        native, _, bases = native.partition(" : ")
        spellings = [name.removesuffix("*").strip() for name in readable.split("|")]
    else:
        line, _, spelled = line.partition(" = ")
        native, _, bases = line.partition(" : ")
        spellings = [text.strip() for text in spelled.split(" | ") if text.strip()]
    names = list(dict.fromkeys(plain_name(name) for name in (native, *spellings)))
    for name in names:
        catalogue.bases[name] = [base.strip() for base in bases.split(", ") if base.strip()]
        catalogue.spellings[name] = [other for other in names if other != name]
    if header:
        catalogue.headers[names[0]] = header.strip()
