"""Shapes of many points as arrays."""

from __future__ import annotations

from .numbers import assign

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .hints import Doubles, Indices, Rows, Values


class Trimesh:
    @property
    def vertices(self) -> Doubles:
        """float64 of shape (n, 3): a copy. What is assigned moves the vertices."""
        return self.getVertexArray()  # type: ignore[attr-defined, no-any-return]

    @vertices.setter
    def vertices(self, values: Rows) -> None:
        assign("vertices", self.updateVertices, values)  # type: ignore[attr-defined]

    @property
    def triangles(self) -> Indices:
        """The vertices of each triangle: uint32 of shape (n, 3), a copy."""
        return self.getIndexArray()  # type: ignore[attr-defined, no-any-return]


class HeightField:
    @property
    def heights(self) -> Doubles:
        """Metres: float64 of shape (resolutionY, resolutionX), a copy. What is assigned is set."""
        return self.getHeightArray()  # type: ignore[attr-defined, no-any-return]

    @heights.setter
    def heights(self, values: Values | Rows) -> None:
        assign("heights", self.setHeights, values)  # type: ignore[attr-defined]
