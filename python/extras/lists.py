"""Native lists: what they share beside their native operations."""

from __future__ import annotations

from _hyx_proxy import Buffer

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from typing import Any


class Items:
    """A list of native elements, which are copied in and out; shared objects are shared."""

    __slots__ = ()

    def __iter__(self) -> Iterator[Any]:
        """As a list's, it sees what is added or removed on the way."""
        index = 0
        while index < len(self):  # type: ignore[arg-type]
            yield self[index]  # type: ignore[index]
            index += 1

    def __copy__(self) -> Any:
        return type(self)(self)  # type: ignore[call-arg]


class NumberList(Items, Buffer):
    """A list of numbers, or of values of as many numbers each, which `memoryview` and NumPy read as an array."""

    __slots__ = ()

    def __deepcopy__(self, memo: dict[int, Any]) -> Any:
        return self.__copy__()

    def __reduce__(self) -> tuple[type, tuple[Any, ...]]:
        return type(self), (list(self),)
