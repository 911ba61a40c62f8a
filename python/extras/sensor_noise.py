"""Noise of sensor cameras."""

from __future__ import annotations

from .fields import Fields

TYPE_CHECKING = False
if TYPE_CHECKING:
    from .sensor_frames import SensorFrame

_LARGEST = 1e6  # levels, metres


class SensorNoise(Fields):
    """Normal noise with a seed of its own: standard deviations for `rgb` (of 0 to 255) and `depth` (metres, growing by
    `depth_per_square` with the square of the distance, as of stereo cameras). No distance becomes less than 0.
    ValueError for what is no deviation."""

    def __init__(self, rgb: float = 0.0, depth: float = 0.0, depth_per_square: float = 0.0, seed: int = 0) -> None:
        import numpy

        self.rgb, self.depth, self.depth_per_square, self.seed = rgb, depth, depth_per_square, seed
        self._random = numpy.random.default_rng(self.seed)
        self._require_deviations()

    def _require_deviations(self) -> None:
        for name in ("rgb", "depth", "depth_per_square"):
            if not 0 <= getattr(self, name) <= _LARGEST:
                raise ValueError(f"the noise of {name} must be 0 to {_LARGEST:g}, not {getattr(self, name)}")

    def __call__(self, frame: SensorFrame) -> None:
        import numpy

        self._require_deviations()
        if frame.rgb is not None and self.rgb > 0:
            noisy = frame.rgb + self._random.normal(0, self.rgb, frame.rgb.shape)
            frame.rgb = numpy.clip(numpy.rint(noisy), 0, 255).astype(numpy.uint8)
        if frame.depth is not None and (self.depth > 0 or self.depth_per_square > 0):
            seen = numpy.where(numpy.isfinite(frame.depth), frame.depth, 0)
            deviation = self.depth + self.depth_per_square * seen**2
            noisy = frame.depth + deviation * self._random.standard_normal(seen.shape)
            frame.depth = numpy.maximum(noisy, 0).astype(numpy.float32)
