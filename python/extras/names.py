"""Things that are asked for by name."""

from __future__ import annotations

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from collections.abc import Iterable
    from typing import Any


def nearest(name: str, names: Iterable[str]) -> str:
    """The end of a message that tells which names were probably meant; empty where none is near."""
    import difflib

    near = difflib.get_close_matches(name, sorted(set(names)), 3)
    return f"; did you mean {' or '.join(map(repr, near))}?" if near else ""


def named(found: Any, name: str, owner: Any, all_of: str) -> Any:
    """What was found; KeyError where that is nothing."""
    if found is None:
        parts = [owner]
        for part in parts:
            parts += getattr(part, "getAssemblies", list)()
        names = [thing.getName() for part in parts for thing in getattr(part, all_of)()]
        raise KeyError(f"there is none of the name {name!r}{nearest(name, names)}")
    return found
