"""Shapes of many points as arrays."""

from __future__ import annotations

from .numbers import assign, rows

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .hints import Doubles, Indices, Rows, Values


class Trimesh:
    @property
    def vertices(self) -> Doubles:
        """float64 of shape (n, 3): a copy. What is assigned moves the vertices."""
        return rows(self.getVertexArray(), 3)  # type: ignore[attr-defined]

    @vertices.setter
    def vertices(self, values: Rows) -> None:
        assign("vertices", self.updateVertices, values)  # type: ignore[attr-defined]

    @property
    def triangles(self) -> Indices:
        """The vertices of each triangle: uint32 of shape (n, 3), a copy."""
        return rows(self.getIndexArray(), 3)  # type: ignore[attr-defined]


class HeightField:
    @property
    def heights(self) -> Doubles:
        """Metres: float64 of shape (resolutionY, resolutionX), a copy. What is assigned is set."""
        return rows(self.getHeightArray(), self.getResolutionX())  # type: ignore[attr-defined]

    @heights.setter
    def heights(self, values: Values | Rows) -> None:
        assign("heights", self.setHeights, values)  # type: ignore[attr-defined]
