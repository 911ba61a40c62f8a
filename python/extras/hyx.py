"""Values, lists of values, and texts by number: iteration, copies, pickling and NumPy."""

from __future__ import annotations

from collections.abc import Iterator

from _hyx_proxy import ArgumentError, PlaceError

from .lists import Items, NumberList
from .numbers import Numbers

__all__ = ["ArgumentError", "PlaceError"]


class Vec2(Numbers): ...


class Vec2u(Numbers): ...


class Vec3(Numbers): ...


class Vec3f(Numbers): ...


class Vec4(Numbers): ...


class Vec4f(Numbers): ...


class Quat(Numbers): ...


class AffineMatrix4x4(Numbers): ...


class RealVector(NumberList): ...


class Vec3Vector(NumberList): ...


class Vec3fVector(NumberList): ...


class LocalGeometryContactVector(Items): ...


class StringTable:
    def __iter__(self) -> Iterator[int]:
        return iter(self.keys())  # type: ignore[attr-defined]

    def items(self) -> list[tuple[int, str]]:
        """All keys with their texts, in the order of the keys."""
        return [(key, self[key]) for key in self]  # type: ignore[index]

    def __repr__(self) -> str:
        return f"hyx.StringTable({dict(self.items())})"
