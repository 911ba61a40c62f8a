"""Values of the scene graph: components by name, iteration, copies, pickling and NumPy; images as arrays."""

from __future__ import annotations

from .lists import Items
from .numbers import Numbers, assign, component

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

    from .hints import Bytes, Floats, Indices, Rows


class Vec2f(Numbers):
    x: float = component(0)
    y: float = component(1)


class Vec3f(Numbers):
    x: float = component(0)
    y: float = component(1)
    z: float = component(2)


class Vec3d(Numbers):
    x: float = component(0)
    y: float = component(1)
    z: float = component(2)


class Vec4f(Numbers):
    x: float = component(0)
    y: float = component(1)
    z: float = component(2)
    w: float = component(3)


class Quat(Numbers): ...


class ImageVector(Items): ...


class Geometry:
    """Arrays of any type that converts; what is set again, in the same number, goes into the buffer that is there."""

    @property
    def vertices(self) -> Floats:
        """float32 of shape (n, 3): a copy. What is assigned moves the vertices."""
        return self.getVertexArray()  # type: ignore[attr-defined, no-any-return]

    @vertices.setter
    def vertices(self, values: Rows) -> None:
        assign("vertices", self.setVertexArray, values)  # type: ignore[attr-defined]

    @property
    def normals(self) -> Floats:
        """float32 of shape (n, 3): a copy."""
        return self.getNormalArray()  # type: ignore[attr-defined, no-any-return]

    @normals.setter
    def normals(self, values: Rows) -> None:
        assign("normals", self.setNormalArray, values)  # type: ignore[attr-defined]

    @property
    def colors(self) -> Floats | Bytes:
        """A copy of shape (n, 4): float32 up to 1, or uint8 up to 255 where bytes were set."""
        return self.getColorArray()  # type: ignore[attr-defined, no-any-return]

    @colors.setter
    def colors(self, values: Rows) -> None:
        assign("colors", self.setColorArray, values)  # type: ignore[attr-defined]

    @property
    def texcoords(self) -> Floats:
        """float32 of shape (n, 2): a copy."""
        return self.getTexCoordArray()  # type: ignore[attr-defined, no-any-return]

    @texcoords.setter
    def texcoords(self, values: Rows) -> None:
        assign("texcoords", self.setTexCoordArray, values)  # type: ignore[attr-defined]

    @property
    def elements(self) -> Indices:
        """The places of the vertices in all that is drawn, one after the other: uint32, a copy."""
        return self.getElements()  # type: ignore[attr-defined, no-any-return]


class Image:
    def __array__(self, dtype: Any = None, copy: Any = None) -> Any:
        """A copy of the pixels: (height, width) or (height, width, channels), bytes or floats. Row 0 is the lowest."""
        import numpy

        width, height = self.s(), self.t()  # type: ignore[attr-defined]
        channels = _CHANNELS.get(self.getPixelFormat())  # type: ignore[attr-defined]
        data = self.getData()  # type: ignore[attr-defined]
        if channels is None or not data:
            raise ValueError("the image has no pixels, or a format that is no array")
        rows = numpy.frombuffer(data, numpy.uint8).reshape(height, -1)  # rows may be padded at their ends
        kind = numpy.float32 if rows.shape[1] >= 4 * width * channels else numpy.uint8
        used = width * channels * numpy.dtype(kind).itemsize
        pixels = numpy.ascontiguousarray(rows[:, :used]).view(kind).reshape(height, width, channels)
        return numpy.array(pixels[:, :, 0] if channels == 1 else pixels, dtype=dtype or kind)


# By pixel format: depth, alpha, RGB, RGBA, luminance, luminance with alpha, BGR, BGRA.
_CHANNELS = {6402: 1, 6406: 1, 6407: 3, 6408: 4, 6409: 1, 6410: 2, 32992: 3, 32993: 4}
