"""Loaded models: their tree as Python walks it, their joints as arrays."""

from __future__ import annotations

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from collections.abc import Callable, Iterator
    from typing import Any


def _array(read: Callable[[Any], Any], write: Callable[[Any, Any], None], text: str) -> property:
    """A property that reads as an array of its own and is written as a whole, from any numbers."""

    def get(self: Any) -> Any:
        import numpy

        return numpy.array(read(self))

    return property(get, write, doc=text)


class JointArray:
    position = _array(lambda self: self.getPositions(), lambda self, values: self.setPositions(values), "rad or m")
    velocity = _array(
        lambda self: self.getVelocities(), lambda self, values: self.setVelocities(values), "rad/s or m/s"
    )
    effort = _array(lambda self: self.getEfforts(), lambda self, values: self.setEfforts(values), "Nm or N")
    target = _array(lambda self: self.getTargets(), lambda self, values: self.setTargets(values), "nan: not held")

    @property
    def names(self) -> tuple[str, ...]:
        return tuple(self.getNames())  # type: ignore[attr-defined]

    def __len__(self) -> int:
        count: int = self.getNumJoints()  # type: ignore[attr-defined]
        return count


class ModelNode:
    @property
    def name(self) -> str:
        return self.getName()  # type: ignore[attr-defined, no-any-return]

    @property
    def type(self) -> str:
        return self.getType()  # type: ignore[attr-defined, no-any-return]

    @property
    def properties(self) -> dict[str, Any]:
        return self.getProperties()  # type: ignore[attr-defined, no-any-return]

    @property
    def children(self) -> list[Any]:
        return [self.getChild(index) for index in range(self.getNumChildren())]  # type: ignore[attr-defined]

    def walk(self) -> Iterator[Any]:
        """This node and all below it."""
        yield self
        for child in self.children:
            yield from child.walk()

    def urdf(self) -> str:
        """The model as a robot description. Capsules become cylinders of their length; ValueError for what the format
        does not have: balls and loops, several roots, planes, height fields, bodies without a name.
        """
        from .urdf_text import urdf_text

        return urdf_text(self)

    def __bool__(self) -> bool:
        return self.isValid()  # type: ignore[attr-defined, no-any-return]

    def __str__(self) -> str:
        return self.getText()  # type: ignore[attr-defined, no-any-return]


class LoadResult:
    @property
    def joints(self) -> Any:
        return self.getJoints()  # type: ignore[attr-defined]

    @property
    def model(self) -> Any:
        return self.getModel()  # type: ignore[attr-defined]
