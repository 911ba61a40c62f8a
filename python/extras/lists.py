"""Native lists: what they share beside their native operations."""

from __future__ import annotations

from collections.abc import MutableSequence

from _hyx_proxy import Buffer

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from typing import Any

    from .hints import Self

    _Sequence = MutableSequence[Any]
else:
    _Sequence = object


class Items(_Sequence):
    """A list of native elements, which are copied in and out; shared objects are shared.

    What the native list has no operation for is Python's own.
    """

    __slots__ = ()

    if not TYPE_CHECKING:
        for _name in ("__contains__", "__iadd__", "__reversed__", "clear", "count", "extend", "index", "pop", "remove"):
            locals()[_name] = getattr(MutableSequence, _name)
        append = MutableSequence.append

        def __init_subclass__(cls) -> None:
            MutableSequence.register(cls)

    def __iter__(self) -> Iterator[Any]:
        """As a list's, it sees what is added or removed on the way."""
        index = 0
        while index < len(self):  # type: ignore[arg-type]
            yield self[index]  # type: ignore[index]
            index += 1

    def reverse(self) -> None:
        self[:] = list(self)[::-1]  # type: ignore[index]

    def __copy__(self) -> Self:
        return type(self)(self)  # type: ignore[call-arg]


class NumberList(Items, Buffer):
    """A list of numbers, or of values of as many numbers each, which `memoryview` and NumPy read as an array."""

    __slots__ = ()
    __takes_sequences__ = True  # as single values do

    def __deepcopy__(self, memo: dict[int, Any]) -> Self:
        return self.__copy__()

    def __reduce__(self) -> tuple[type, tuple[Any, ...]]:
        return type(self), (list(self),)
