"""Sequences of numbers, or of rows of numbers: what they share beside their native operations."""

from __future__ import annotations

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from collections.abc import Iterator
    from typing import Any


class Numbers:
    """`numpy.array(value)` gives the numbers; the constructor takes any sequence of as many."""

    __slots__ = ()

    def __iter__(self) -> Iterator[Any]:
        return iter([self[index] for index in range(len(self))])  # type: ignore[index, arg-type]

    def __array__(self, dtype: Any = None, copy: Any = None) -> Any:
        import numpy

        return numpy.array([_plain(item) for item in self], dtype=dtype)

    def __copy__(self) -> Any:
        return type(self)(tuple(self))  # type: ignore[call-arg]

    def __deepcopy__(self, memo: dict[int, Any]) -> Any:
        return self.__copy__()

    def __reduce__(self) -> tuple[type, tuple[Any, ...]]:
        return type(self), (tuple(self),)


def rows(memory: Any, columns: int) -> Any:
    """A memoryview of rows of numbers as a NumPy array over it; no columns for one dimension."""
    import numpy

    array = numpy.asarray(memory)
    return array.reshape(-1, columns) if columns else array


def component(index: int) -> property:
    """A component of a value, by its name."""

    def read(self: Any) -> float:
        return self[index]

    def write(self: Any, number: float) -> None:
        self[index] = number

    return property(read, write)


def _plain(item: Any) -> Any:
    return tuple(item) if isinstance(item, Numbers) else item
