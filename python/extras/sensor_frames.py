"""What a sensor camera has read, and its files."""

from __future__ import annotations

from .fields import Fields

TYPE_CHECKING = False
if TYPE_CHECKING:
    import os
    from typing import Any

    import hyx

    from .hints import Bytes, Doubles, Floats, Indices

CHANNELS = ("rgb", "depth", "identity", "normals", "flow")


class SensorFrame(Fields):
    """One reading. Channels that were not asked for are None."""

    time: float
    """Simulated time in seconds."""
    K: Doubles
    """Camera matrix (3, 3), in pixels."""
    pose: Doubles
    """Camera to world (4, 4), in metres."""
    rgb: Bytes
    """uint8, (height, width, 3)."""
    depth: Floats
    """float32, (height, width): metres along the view; infinite where nothing is."""
    identity: Indices
    """uint32, (height, width): see `bodies`; 0 for what is no body."""
    normals: Floats
    """float32, (height, width, 3): unit vectors in the camera's axes, on the side that is seen; 0 where nothing is."""
    flow: Floats
    """float32, (height, width, 2): pixels by which each surface moved in the picture since the last reading."""
    extra: dict[str, Any]

    def __init__(
        self,
        time: float,
        K: Doubles,
        pose: Doubles,
        rgb: Bytes | None = None,
        depth: Floats | None = None,
        identity: Indices | None = None,
        normals: Floats | None = None,
        flow: Floats | None = None,
        extra: dict[str, Any] | None = None,
    ) -> None:
        self.time, self.K, self.pose = time, K, pose
        self.rgb, self.depth, self.identity = rgb, depth, identity  # type: ignore[assignment]
        self.normals, self.flow = normals, flow  # type: ignore[assignment]
        self.extra = {} if extra is None else extra

    @property
    def bodies(self) -> dict[int, hyx.RigidBody]:
        """The bodies in the picture by their identities."""
        import numpy
        import osgViewer

        if self.identity is None:
            raise ValueError("the frame has no identities: read the channel 'identity'")
        numbers = (int(number) for number in numpy.unique(self.identity) if number)
        bodies = {number: osgViewer.identifiedBody(number) for number in numbers}
        return {number: body for number, body in bodies.items() if body}

    def channels(self) -> dict[str, Any]:
        """The arrays that were read, by channel."""
        return {name: getattr(self, name) for name in CHANNELS if getattr(self, name) is not None}

    def save_npz(self, path: str | os.PathLike[str]) -> None:
        """Writes all channels, K, pose and time; read it with `numpy.load`."""
        import numpy

        from .whole_files import whole_file

        with whole_file(path) as place, open(place, "wb") as file:  # numpy would put an ending to a name
            numpy.savez_compressed(file, time=self.time, K=self.K, pose=self.pose, **self.channels())

    def save_exr(self, path: str | os.PathLike[str]) -> None:
        """Writes all channels as OpenEXR: R, G, B (linear light, 16 bits), Z (metres, infinite where nothing is), N.X,
        N.Y, N.Z, flow.X, flow.Y (all float32) and id (uint32), with `time`, `pose` and `K` in the header. Needs the
        package OpenEXR."""
        from .exr import write_exr

        layers: dict[str, Any] = {}
        if self.rgb is not None:
            layers["RGB"] = self.rgb
        for name, own in (("Z", self.depth), ("id", self.identity)):
            if own is not None:
                layers[name] = own
        for name, own in (("N", self.normals), ("flow", self.flow)):
            if own is not None:
                layers |= {f"{name}.{axis}": own[..., i] for i, axis in zip(range(own.shape[-1]), "XYZ")}
        write_exr(path, layers, {"time": float(self.time), "K": self.K, "pose": self.pose})

    def save_depth_png(self, path: str | os.PathLike[str], unit: float = 0.001) -> None:
        """Writes the distances as a PNG of 16 bits in steps of `unit` metres; 0 where nothing is or it is too far.
        ValueError when no unit or no distances are given."""
        import numpy
        from PIL import Image

        from .whole_files import whole_file

        if self.depth is None:
            raise ValueError("the frame has no distances: read the channel 'depth'")
        if not (unit > 0 and numpy.isfinite(unit)):
            raise ValueError(f"the unit of a depth picture is a length above 0, not {unit}")
        depth = numpy.asarray(self.depth, float)
        if depth.ndim != 2 or not depth.size:
            raise ValueError("the distances must be an array of (height, width)")
        with numpy.errstate(over="ignore"):
            steps = numpy.rint(numpy.nan_to_num(depth, nan=0, posinf=0) / unit)
        picture = Image.fromarray(numpy.where((steps >= 0) & (steps <= 65535), steps, 0).astype(numpy.uint16))
        with whole_file(path) as place:
            picture.save(place, "PNG")
