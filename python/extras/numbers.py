"""Sequences of numbers, or of rows of numbers: what they share beside their native operations."""

from __future__ import annotations

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from collections.abc import Callable, Iterator
    from typing import Any

    from .hints import Self


class Numbers:
    """`numpy.array(value)` gives the numbers; the constructor takes any sequence of as many."""

    __slots__ = ()
    __takes_sequences__ = True  # where one is wanted, calls take a tuple, a list or an array, too

    def __iter__(self) -> Iterator[float]:
        return iter([self[index] for index in range(len(self))])  # type: ignore[index, arg-type]

    def __array__(self, dtype: Any = None, copy: Any = None) -> Any:
        import numpy

        return numpy.array([_plain(item) for item in self], dtype=dtype)

    def __array_ufunc__(self, ufunc: Any, method: str, *inputs: Any, **options: Any) -> Any:
        """A number of NumPy's before a value scales it as a number of Python's does; else the value is an array."""
        import numpy

        if ufunc is numpy.multiply and method == "__call__" and not options and isinstance(inputs[0], numpy.number):
            return self * inputs[0].item()  # type: ignore[operator]
        arrays = [numpy.array(item) if isinstance(item, Numbers) else item for item in inputs]
        return getattr(ufunc, method)(*arrays, **options)

    def __copy__(self) -> Self:
        return type(self)(tuple(self))  # type: ignore[call-arg]

    def __deepcopy__(self, memo: dict[int, Any]) -> Self:
        return self.__copy__()

    def __reduce__(self) -> tuple[type, tuple[Any, ...]]:
        return type(self), (tuple(self),)


def array(numbers: Any) -> Any:
    """A native list of numbers as an array of NumPy's."""
    import numpy

    return numpy.asarray(numbers)


def assign(name: str, setter: Callable[[Any], object], values: Any) -> None:
    """Sets an array that is an attribute. TypeError or ValueError, with its name, for values that are wrong."""
    try:
        setter(values)
    except (RuntimeError, TypeError, ValueError) as error:
        if isinstance(values, str | bytes):
            raise TypeError(f"{name}: expected numbers, not {type(values).__name__}") from None
        reason = error.__cause__ or error
        kind = TypeError if isinstance(reason, TypeError) else ValueError
        raise kind(f"{name}: {reason}") from None


def component(index: int) -> Any:
    """A component of a value, by its name: a property."""

    def read(self: Any) -> float:
        return self[index]

    def write(self: Any, number: float) -> None:
        self[index] = number

    return property(read, write, doc=f"The number at place {index}.")


def _plain(item: Any) -> Any:
    return tuple(item) if isinstance(item, Numbers) else item
