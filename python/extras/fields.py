"""Printing and comparing what is its named values, as `dataclasses` do: importing those takes long."""

from __future__ import annotations


class Fields:
    """Shown and compared by its public attributes; not hashable, as they may change."""

    __hash__ = None  # type: ignore[assignment]

    def _fields(self) -> dict[str, object]:
        return {name: value for name, value in vars(self).items() if not name.startswith("_")}

    def __repr__(self) -> str:
        return f"{type(self).__name__}({', '.join(f'{name}={value!r}' for name, value in self._fields().items())})"

    def __eq__(self, other: object) -> bool:
        return self._fields() == other._fields() if isinstance(other, type(self)) else NotImplemented
