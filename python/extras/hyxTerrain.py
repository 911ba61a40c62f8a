"""Soil as arrays."""

from __future__ import annotations

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .hints import Table


class Terrain:
    def cells(self, height: float | None = None) -> Table:
        """The soil in cells of one size, `height` metres high, as a structured NumPy array of its own; cubes where the
        height is left out.

        Fields: `x`, `y`, `z` (of the middle, metres, world), `solidMass` and `fluidMass` (kg at rest and on the move),
        `compaction` (the mean by mass), `material` (that with most of it). Their masses are those of all columns:
        `getMass` without grains. Cells without soil are left out. ValueError unless the height is positive.
        """
        import numpy

        height = self.getElementSize() if height is None else height  # type: ignore[attr-defined]
        if not height > 0:
            raise ValueError("the height of a cell must be positive")
        numbers = numpy.array(self.getCells(height)).reshape(-1, 7)  # type: ignore[attr-defined]
        names = ("x", "y", "z", "solidMass", "fluidMass", "compaction", "material")
        cells = numpy.empty(len(numbers), [(name, "<u4" if name == "material" else "<f8") for name in names])
        for column, name in enumerate(names):
            cells[name] = numbers[:, column]
        return cells
