"""Gives operations of lists, iterators and other libraries' classes the texts that no header of this project has."""

from __future__ import annotations

import re
from pathlib import Path

from .interface import Operation, ProxyClass

LINE = re.compile(r"([\w.]+)\(([\w, ]*)\): (.+)")
# Lists and iterators have one set of operations, whatever is in them.
KINDS = ((r"\w*Vector|LidarOutputRendererLegend", "list"), (r"SwigPyIterator", "iterator"), (r"\w*Event", "event"))


class LibraryTexts:
    def __init__(self) -> None:
        self._texts: dict[str, list[tuple[list[str], str]]] = {}
        for line in Path(__file__).with_suffix(".txt").read_text().splitlines():
            if found := LINE.fullmatch(line):
                parameters = [name.strip() for name in found[2].split(",") if name.strip()]
                self._texts.setdefault(found[1], []).append((parameters, found[3]))

    def text(self, name: str) -> str:
        return next((text for _, text in self._texts.get(name, [])), "")

    def complete(self, proxy: ProxyClass, operation: Operation) -> None:
        kinds = [kind for pattern, kind in KINDS if re.fullmatch(pattern, proxy.name)]
        for owner in (f"{proxy.package}.{proxy.name}", *kinds):
            self.complete_named(f"{owner}.{operation.name}", operation)

    def complete_named(self, name: str, operation: Operation) -> None:
        for form in operation.forms:
            for names, text in self._texts.get(name, []):
                form.doc = form.doc or text
                if len(names) == len(form.parameters):
                    for parameter, given in zip(form.parameters, names):
                        parameter.name = given
