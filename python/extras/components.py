"""Values of a few named numbers: vectors, quaternions, colours.

They behave as mutable sequences of fixed length, compare by their numbers, and are therefore not hashable.
"""

from __future__ import annotations

from collections.abc import Iterator
from typing import Any, ClassVar


class Components:
    """A value of named numbers. `numpy.array(value)` gives them in order; the constructor takes any sequence of them."""

    __slots__ = ()
    _names: ClassVar[tuple[str, ...]]

    def __len__(self) -> int:
        return len(self._names)

    def __iter__(self) -> Iterator[Any]:
        return iter([getattr(self, name) for name in self._names])

    def __getitem__(self, index: int | slice) -> Any:
        if isinstance(index, slice):
            return tuple(self)[index]
        return getattr(self, self._name_at(index))

    def __setitem__(self, index: int, value: float) -> None:
        setattr(self, self._name_at(index), value)

    def _name_at(self, index: int) -> str:
        try:
            return self._names[index]
        except IndexError:
            raise IndexError(f"{type(self).__name__} has components 0 to {len(self._names) - 1}") from None

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Components) or self._names != other._names or type(self) is not type(other):
            return NotImplemented
        return tuple(self) == tuple(other)

    __hash__ = None  # type: ignore[assignment]

    def __repr__(self) -> str:
        return f"{type(self).__module__}.{type(self).__qualname__}({', '.join(map(_short, self))})"

    def __array__(self, dtype: Any = None, copy: Any = None) -> Any:
        import numpy

        return numpy.array(tuple(self), dtype=dtype)

    def __copy__(self) -> Any:
        return type(self)(*self)

    def __deepcopy__(self, memo: dict[int, Any]) -> Any:
        return type(self)(*self)

    def __reduce__(self) -> tuple[type, tuple[Any, ...]]:
        return type(self), tuple(self)


def _short(number: float) -> str:
    """The shortest text that reads back as the number in single or double precision."""
    if isinstance(number, float) and f"{number:.7g}" != repr(number):
        import struct

        if struct.unpack("f", struct.pack("f", number))[0] == number:
            return f"{number:.7g}"
    return repr(int(number)) if isinstance(number, float) and number.is_integer() and abs(number) < 1e15 else repr(number)
