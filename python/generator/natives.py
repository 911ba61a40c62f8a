"""What native classes are called and derive from, however a row spells them."""

from __future__ import annotations

from binding.catalogue.class_lists import Type, plain_name
from binding.catalogue.declarations import Description


class Natives:
    """The listed types, with what the headers tell of their bases."""

    def __init__(self, types: list[Type], description: Description) -> None:
        self.description = description
        self._names: dict[str, list[str]] = {}  # by every plain name of a type: all of them
        self._native: dict[str, str] = {}  # by plain name: the description's
        for listed in types:
            if listed.kind != "shared":
                spellings = [text.removesuffix("*") for text in listed.spellings]
                names = list(dict.fromkeys(plain_name(name) for name in (listed.native, *spellings)))
                self._names.update(dict.fromkeys(names, names))
                self._native.update(dict.fromkeys(names, listed.native))

    def spellings(self, native: str) -> list[str]:
        """The other plain names of a type."""
        plain = plain_name(native)
        return [name for name in self._names.get(plain, ()) if name != plain]

    def bases(self, native: str) -> list[str]:
        described = self.description.types.get(self._described(native))
        return described.bases if described else []

    def lineage(self, native: str) -> list[str]:
        """A class and its bases, those first that are nearer."""
        return self.description.lineage(self._described(native))

    def _described(self, native: str) -> str:
        return self._native.get(plain_name(native), native)
