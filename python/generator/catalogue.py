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
    """`class : base, base = spelling | spelling @ header`, or `type mangled | readable|readable | native`"""
    if line.startswith("type "):
        _, readable, native = (part.strip() for part in line[5:].split(" | "))
        _add_spellings(catalogue, [native, *(name.removesuffix("*").strip() for name in readable.split("|"))])
    elif line and not line.startswith("shared "):
        line, _, header = line.partition(" @ ")
        line, _, spellings = line.partition(" = ")
        name, _, bases = line.partition(" : ")
        plain = plain_name(name)
        catalogue.bases[plain] = [base.strip() for base in bases.split(", ") if base.strip()]
        _add_spellings(catalogue, [plain, *(text.strip() for text in spellings.split(" | ") if text.strip())])
        if header:
            catalogue.headers[plain] = header.strip()


def _add_spellings(catalogue: Catalogue, names: list[str]) -> None:
    for name in names:
        catalogue.spellings.setdefault(plain_name(name), []).extend(other for other in names if other != name)
