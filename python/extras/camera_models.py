"""The geometry of pin-hole cameras and of lenses that bend what they see."""

from __future__ import annotations

import math
from collections import namedtuple

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Sequence
    from typing import Any

    from .hints import Doubles


MOST_PIXELS = 16384  # to a side of a picture
_LARGEST = 1e9  # pixels, of what stands in a camera matrix
_LEAST_FOCAL = 1e-6  # pixels


class Intrinsics(namedtuple("Intrinsics", "width height fx fy cx cy")):
    """A pin-hole camera: focal lengths and principal point in pixels, the centre of the upper left pixel is (0, 0)."""

    __slots__ = ()

    @staticmethod
    def of(width: int, height: int, K: Any, field_of_view: float) -> Intrinsics:
        import numpy

        if not all(1 <= size <= MOST_PIXELS and size == int(size) for size in (width, height)):
            raise ValueError(f"a camera has 1 to {MOST_PIXELS} whole pixels each way, not {width} x {height}")
        width, height = int(width), int(height)
        if K is None:
            if not 0 < field_of_view < 180:
                raise ValueError("the field of view is an angle between 0 and 180 degrees")
            focal = height / 2 / math.tan(math.radians(field_of_view) / 2)
            K = [[focal, 0, (width - 1) / 2], [0, focal, (height - 1) / 2], [0, 0, 1]]
        K = numpy.array(K, float)
        bare = K.shape == (3, 3) and K[0, 1] == K[1, 0] == K[2, 0] == K[2, 1] == 0 and K[2, 2] == 1
        if not bare or not numpy.isfinite(K).all() or K[0, 0] <= 0 or K[1, 1] <= 0:
            raise ValueError("K must be [[fx, 0, cx], [0, fy, cy], [0, 0, 1]] with focal lengths above 0")
        if numpy.abs(K).max() > _LARGEST or min(K[0, 0], K[1, 1]) < _LEAST_FOCAL:
            raise ValueError(f"focal lengths are {_LEAST_FOCAL} to {_LARGEST} pixels, and the centre no farther away")
        return Intrinsics(width, height, K[0, 0], K[1, 1], K[0, 2], K[1, 2])

    def finer(self, times: int) -> Intrinsics:
        """The same picture of so many times the pixels to each side."""
        shift = (times - 1) / 2
        return Intrinsics(
            *(times * self.width, times * self.height),
            *(times * self.fx, times * self.fy),
            *(times * self.cx + shift, times * self.cy + shift),
        )

    def matrix(self) -> Any:
        """K, (3, 3)."""
        import numpy

        return numpy.array([[self.fx, 0, self.cx], [0, self.fy, self.cy], [0, 0, 1]])

    def projection(self, near: float, far: float) -> Any:
        """The clip matrix (4, 4) for eye coordinates with y up and the view along -z."""
        import numpy

        right, up = 2 * (self.cx + 0.5) / self.width - 1, 1 - 2 * (self.cy + 0.5) / self.height
        return numpy.array(
            [
                [2 * self.fx / self.width, 0, -right, 0],
                [0, 2 * self.fy / self.height, -up, 0],
                [0, 0, -(far + near) / (far - near), -2 * far * near / (far - near)],
                [0, 0, -1, 0],
            ]
        )


class Lens:
    """Radial and tangential distortion after Brown and Conrady: k1, k2, p1, p2, k3."""

    @staticmethod
    def of(intrinsics: Intrinsics, coefficients: Any) -> Lens | None:
        """The lens with up to five coefficients, in any shape, as calibrations give them. None for one that bends
        nothing. ValueError for what is no lens."""
        import numpy

        numbers = numpy.ravel(numpy.array(() if coefficients is None else coefficients, float))
        if len(numbers) > 5 or not numpy.isfinite(numbers).all():
            raise ValueError("a distortion has up to five coefficients: k1, k2, p1, p2, k3")
        return Lens(intrinsics, numbers.tolist()) if numbers.any() else None

    def __init__(self, intrinsics: Intrinsics, coefficients: Sequence[float]) -> None:
        import numpy

        self._coefficients = (*coefficients, *[0.0] * (5 - len(coefficients)))
        self._intrinsics = intrinsics
        rows, columns = numpy.mgrid[0 : intrinsics.height, 0 : intrinsics.width].astype(float)
        x, y = (columns - intrinsics.cx) / intrinsics.fx, (rows - intrinsics.cy) / intrinsics.fy
        self._straight = self._undo(x, y)

    def distort(self, x: Any, y: Any) -> tuple[Any, Any]:
        """Where the lens shows a direction; both as x / z and y / z."""
        k1, k2, p1, p2, k3 = self._coefficients
        square = x * x + y * y
        radial = 1 + square * (k1 + square * (k2 + square * k3))
        return (
            x * radial + 2 * p1 * x * y + p2 * (square + 2 * x * x),
            y * radial + p1 * (square + 2 * y * y) + 2 * p2 * x * y,
        )

    def straight(self, most: float) -> Intrinsics:
        """The pin-hole camera whose picture holds all that the lens shows."""
        import numpy

        own, (x, y) = self._intrinsics, self._straight
        left, right = numpy.floor((x * own.fx).min()) - 1, numpy.ceil((x * own.fx).max()) + 1
        top, bottom = numpy.floor((y * own.fy).min()) - 1, numpy.ceil((y * own.fy).max()) + 1
        width, height = int(right - left) + 1, int(bottom - top) + 1
        if width > most * own.width or height > most * own.height:
            raise ValueError(f"the distortion shows more than {most} times the width or height of a straight picture")
        if max(width, height) > MOST_PIXELS:
            raise ValueError(f"the distortion shows more than {MOST_PIXELS} pixels of a straight picture each way")
        return Intrinsics(width, height, own.fx, own.fy, -left, -top)

    def places(self, drawn: Intrinsics) -> Any:
        """Rows and columns of the straight picture that the pixels show, (height, width, 2)."""
        import numpy

        x, y = self._straight
        return numpy.stack([y * drawn.fy + drawn.cy, x * drawn.fx + drawn.cx], axis=-1)

    def bend(self, drawn: Intrinsics, drawn_truth: Intrinsics, arrays: dict[str, Any]) -> dict[str, Any]:
        """What else the lens does: colours between the pixels of the straight picture, and flow in the bent one."""
        import numpy

        bent = {}
        if "rgb" in arrays:
            bent["rgb"] = _between(arrays["rgb"], *numpy.moveaxis(self.places(drawn), -1, 0))
        if "flow" in arrays:
            rows, columns = numpy.moveaxis(self.places(drawn_truth), -1, 0)
            bent["flow"] = self._bend_flow(drawn_truth, arrays["flow"], columns, rows)
        return bent

    def _bend_flow(self, drawn: Intrinsics, flow: Any, columns: Any, rows: Any) -> Any:
        import numpy

        own = self._intrinsics
        before = self.distort(
            (columns - flow[..., 0] - drawn.cx) / drawn.fx, (rows - flow[..., 1] - drawn.cy) / drawn.fy
        )
        here = numpy.mgrid[0 : own.height, 0 : own.width]
        moved = [here[1] - (before[0] * own.fx + own.cx), here[0] - (before[1] * own.fy + own.cy)]
        still = (flow == 0).all(axis=-1, keepdims=True)
        return numpy.where(still, 0, numpy.stack(moved, axis=-1)).astype(numpy.float32)

    def _undo(self, x: Any, y: Any) -> tuple[Any, Any]:
        """The directions that the lens shows at x, y, by Newton's method. ValueError where it shows none."""
        import numpy

        straight_x, straight_y = x.copy(), y.copy()
        step = 1e-6
        for _ in range(30):
            shown_x, shown_y = self.distort(straight_x, straight_y)
            error_x, error_y = shown_x - x, shown_y - y
            if max(numpy.abs(error_x).max(), numpy.abs(error_y).max()) < 1e-10:
                return straight_x, straight_y
            xx, yx = ((a - b) / step for a, b in zip(self.distort(straight_x + step, straight_y), (shown_x, shown_y)))
            xy, yy = ((a - b) / step for a, b in zip(self.distort(straight_x, straight_y + step), (shown_x, shown_y)))
            with numpy.errstate(all="ignore"):
                determinant = xx * yy - xy * yx
                straight_x = straight_x - (yy * error_x - xy * error_y) / determinant
                straight_y = straight_y - (xx * error_y - yx * error_x) / determinant
        raise ValueError("the distortion folds the picture: no direction belongs to some of its pixels")


def look_at(eye: Sequence[float], target: Sequence[float], up: Sequence[float] = (0, 0, 1)) -> Doubles:
    """The pose (4, 4) of a camera at `eye` that looks at `target`. ValueError when `up` points along the view."""
    import numpy

    place, seen, above = (numpy.array(list(point), float) for point in (eye, target, up))
    if any(point.shape != (3,) or not numpy.isfinite(point).all() for point in (place, seen, above)):
        raise ValueError("eye, target and up are three finite numbers each")
    forward = seen - place
    right = numpy.cross(forward, above)
    if not numpy.linalg.norm(right) > 1e-9 * numpy.linalg.norm(forward):
        raise ValueError("eye and target must differ, and up must not point along the view")
    forward, right = forward / numpy.linalg.norm(forward), right / numpy.linalg.norm(right)
    pose = numpy.eye(4)
    pose[:3] = numpy.stack([right, numpy.cross(forward, right), forward, place], axis=1)
    return pose


def _between(values: Any, rows: Any, columns: Any) -> Any:
    """Colours between the pixels, by the four around."""
    import numpy

    top, left = numpy.floor(rows).astype(int), numpy.floor(columns).astype(int)
    down, right = (rows - top)[..., None], (columns - left)[..., None]
    mixed = (values[top, left] * (1 - right) + values[top, left + 1] * right) * (1 - down)
    mixed += (values[top + 1, left] * (1 - right) + values[top + 1, left + 1] * right) * down
    return numpy.rint(mixed).astype(values.dtype)
