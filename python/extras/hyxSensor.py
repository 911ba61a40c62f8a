"""What scanners do beyond their native operations."""

from __future__ import annotations

from .point_files import CLOUD, save_points

__all__ = ["save_points"]

TYPE_CHECKING = False
if TYPE_CHECKING:
    import os

    from .hints import Table


class Lidar:
    @property
    def cloud(self) -> Table:
        """The returns of the last scan as a structured NumPy array of its own.

        Fields: `x`, `y`, `z` (metres, world), `time` (simulated seconds when the pulse left), `intensity`, `distance`
        (metres), `identity` (the number of the body as in `SensorFrame.bodies`; 0 for what is no body), `ring` (from
        the lowest), `return` (from 1 for the nearest of its pulse) and `returns` (of its pulse).
        """
        import numpy

        return numpy.array(self.getCloud(), numpy.uint8).reshape(-1).view(CLOUD)  # type: ignore[attr-defined]

    def save(self, path: str | os.PathLike[str], single: bool = False) -> None:
        """Writes the returns of the last scan; see `save_points`."""
        save_points(path, self.cloud, single)
