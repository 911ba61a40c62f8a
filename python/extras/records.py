"""Values of several members: equal when their members are, and copied and pickled by them."""

from __future__ import annotations

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

    from .hints import Self


class Record:
    """`_blank` are the arguments that make an object whose members can be set."""

    __slots__ = ()
    _blank: tuple[Any, ...] = ()

    def _state(self) -> dict[str, Any]:
        return {name: getattr(self, name) for name in _members(type(self))}

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Record) or _members(type(self)) != _members(type(other)):
            return NotImplemented
        return self._state() == other._state()

    __hash__ = None  # type: ignore[assignment]

    def __copy__(self) -> Self:
        return _make(type(self), self._state())  # type: ignore[no-any-return]

    def __deepcopy__(self, memo: dict[int, Any]) -> Self:
        return self.__copy__()

    def __reduce__(self) -> tuple[Any, ...]:
        return _make, (type(self), self._state())


def _members(kind: type) -> list[str]:
    from _hyx_proxy import member

    return [name for base in kind.__mro__ for name, value in vars(base).items() if isinstance(value, member)]


def _make(kind: type, state: dict[str, Any]) -> Any:
    made = kind(*kind._blank)  # type: ignore[attr-defined]
    for name, value in state.items():
        setattr(made, name, value)
    return made
