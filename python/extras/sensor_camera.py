"""A camera as a sensor: calibrated pictures with distance, normals, identities and motion of what is seen.

The camera's axes are those of computer vision: x to the right, y down, z along the view. The centre of the upper left
pixel is (0, 0). Poses are 4x4 matrices that take points of the camera to the world, lengths in metres.
"""

from __future__ import annotations

import _osg  # type: ignore[import-not-found]

from .applications import require_application
from .camera_models import Intrinsics, Lens, look_at
from .sensor_frames import CHANNELS, SensorFrame

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Callable, Iterable, Sequence
    from typing import Any

    import hyx
    import hyxCollide
    import hyxOSG

    from .hints import Doubles, Rows

_SHAPES = {
    "depth": ((), "float32"),
    "normals": ((3,), "float32"),
    "flow": ((2,), "float32"),
    "identity": ((), "uint32"),
}
_MOST_SAMPLES = 16
_FARTHEST = 1e12  # metres
_MOST_PLANES = 1e9  # by which far may exceed near: the buffer of depths has no more
_MOST_PIXELS = 8192  # to a side of what is drawn finer
_FINER = 3  # times the pixels to each side that truth is drawn with for a lens, which takes the nearest of them
_MOST_WIDENING = 4  # times as many pixels to each side as a distorted picture may need from the straight one
_TRUE_TURN = 1e-5  # by which the rows of a rotation may miss unit length and right angles


class SensorCamera:
    """A camera in the scene of an application that is read into arrays. It draws only when it is read.

        camera = hyxOSG.SensorCamera(app, 640, 480, K=[[525, 0, 319.5], [0, 525, 239.5], [0, 0, 1]])
        camera.follow(hand, camera.looking((0.1, 0, 0), (1, 0, 0)))
        frame = camera.read("rgb", "depth", "identity")

    Without K the picture's height takes `field_of_view` degrees. `distortion` has the coefficients k1, k2, p1, p2, k3
    of Brown and Conrady, as camera calibrations give them (D. C. Brown, Photogrammetric Engineering 37, 1971), in an
    array of any shape. Nothing nearer than `near` or farther than `far` metres is seen. `samples` smooth the edges of
    `rgb`. `noise` is called with every frame, and may change it: a `SensorNoise`, say. Texts on the screen and debug
    marks are left out. ValueError for what cannot be a camera.
    """

    def __init__(
        self,
        application: hyxOSG.ExampleApplication,
        width: int,
        height: int,
        *,
        K: Rows | None = None,
        field_of_view: float = 60.0,
        distortion: Sequence[float] | Rows | None = (),
        near: float = 0.05,
        far: float = 1000.0,
        samples: int = 4,
        noise: Callable[[SensorFrame], None] | None = None,
    ) -> None:
        import numpy

        require_application(application)
        require_planes(near, far)
        if not 0 <= samples <= _MOST_SAMPLES:
            raise ValueError(f"a camera takes 0 to {_MOST_SAMPLES} samples a pixel, not {samples}")
        self.intrinsics = Intrinsics.of(width, height, K, field_of_view)
        self.noise = noise
        self._application = application
        self._lens = Lens.of(self.intrinsics, distortion)
        self._drawn = self._lens.straight(_MOST_WIDENING) if self._lens else self.intrinsics
        self._drawn_truth = self._drawn.finer(_finer(self._drawn)) if self._lens else self._drawn
        self._planes = (float(near), float(far))
        self._samples = int(samples)
        self._rgb: Any = None
        self._truth: Any = None
        self._followed: Any = None
        self._offset = numpy.eye(4)

    @property
    def K(self) -> Doubles:
        """The camera matrix (3, 3), in pixels: a copy."""
        return self.intrinsics.matrix()

    @property
    def pose(self) -> Doubles:
        """Camera to world, (4, 4). Setting it ends following."""
        if self._followed is None:
            return self._offset.copy()
        place = _place_of(self._followed)
        return _matrix(place()) @ self._offset

    @pose.setter
    def pose(self, pose: Rows | hyx.AffineMatrix4x4) -> None:
        self._followed, self._offset = None, _pose(pose)

    CHANNELS = CHANNELS

    @staticmethod
    def looking(eye: Sequence[float], target: Sequence[float], up: Sequence[float] = (0, 0, 1)) -> Doubles:
        """The pose of a camera that stands at `eye` and looks at `target`: a matrix of 4 by 4."""
        return look_at(eye, target, up)

    def look_at(self, eye: Sequence[float], target: Sequence[float], up: Sequence[float] = (0, 0, 1)) -> None:
        """Stands at `eye` and looks at `target`, in world coordinates."""
        self.pose = look_at(eye, target, up)

    def follow(
        self, body: hyx.RigidBody | hyxCollide.Geometry | hyx.Frame, offset: Rows | hyx.AffineMatrix4x4 | None = None
    ) -> None:
        """Moves with a body (or geometry, or frame): `offset`, (4, 4), takes the camera's points to the body's. An
        `AffineMatrix4x4`, which multiplies rows, is taken for what it means."""
        import numpy

        if _place_of(body) is None:
            raise TypeError(f"a camera follows a body, a geometry or a frame, not {type(body).__name__}")
        self._offset = numpy.eye(4) if offset is None else _pose(offset)
        self._followed = body

    def read(self, *channels: str) -> SensorFrame:
        """Draws the present state, without a step, and gives the channels: any of "rgb", "depth", "identity",
        "normals", "flow"; "rgb" alone when none is named."""
        return read_cameras([self], *channels)[0]

    def close(self) -> None:
        """Gives back what the graphics driver keeps for it. It can be read again."""
        for target in (self._rgb, self._truth):
            if target is not None and hasattr(self._application, "this"):  # else it is closed already
                self._application.removeRenderTarget(target)
        self._rgb = self._truth = None

    def _prepare(self, channels: set[str]) -> None:
        if "rgb" in channels and self._rgb is None:
            self._rgb = self._new_target(False)
        if channels - {"rgb"} and self._truth is None:
            self._truth = self._new_target(True)
        for target, drawn, wanted in (
            (self._rgb, self._drawn, "rgb" in channels),
            (self._truth, self._drawn_truth, bool(channels - {"rgb"})),
        ):
            if target is not None:
                target.getCamera().setNodeMask(0xFFFFFFFF if wanted else 0)
                self._place(target, drawn)
        if channels - {"rgb"}:
            _osg.prepareTruth(self._truth)

    def _new_target(self, truth: bool) -> Any:
        import hyxOSG

        drawn = self._drawn_truth if truth else self._drawn
        size = drawn.width, drawn.height
        app, Application = self._application, hyxOSG.ExampleApplication
        if truth:
            target = _osg.newTruthTarget(*size)
            target.setCameraCullMask(Application.MAIN_SCENE_MASK)
            app.addRenderTarget(target, app.getSceneRoot().getParent(0))
        else:
            target = hyxOSG.RenderToImage(
                *size, hyxOSG.RenderTarget.COLOR_BUFFER, self._samples, hyxOSG.RenderTarget.RGB
            )
            target.setCameraCullMask(~(Application.HUD_MASK | Application.DEBUG_RENDER_MASK))
            target.setComputeNearFarMode(hyxOSG.RenderTarget.DO_NOT_COMPUTE_NEAR_FAR)
            app.addRenderTarget(target)
        return target

    def _place(self, target: Any, drawn: Intrinsics) -> None:
        import numpy
        import osg

        towards_viewer = numpy.diag([1.0, -1.0, -1.0, 1.0])  # the scene graph's cameras look along -z, y up
        view = towards_viewer @ numpy.linalg.inv(self.pose)
        camera = target.getCamera()
        # The scene graph multiplies rows, so its matrices are transposed.
        camera.setViewMatrix(osg.Matrixd(view.T.ravel().tolist()))
        camera.setProjectionMatrix(osg.Matrixd(drawn.projection(*self._planes).T.ravel().tolist()))

    def _frame(self, channels: set[str]) -> SensorFrame:
        import numpy

        shape = (self.intrinsics.height, self.intrinsics.width)
        arrays: dict[str, Any] = {}
        for name in channels - {"rgb"}:
            more, kind = _SHAPES[name]
            arrays[name] = numpy.empty(shape + more, kind)
        places = self._lens.places(self._drawn_truth) if self._lens else None
        if arrays:
            found = (arrays.get(name) for name in ("depth", "normals", "flow", "identity"))
            _osg.readTruth(self._truth, *found, places)
        if "rgb" in channels:
            arrays["rgb"] = numpy.array(self._rgb.pixels)[::-1].copy()
        if self._lens:
            arrays |= self._lens.bend(self._drawn, self._drawn_truth, arrays)
        return SensorFrame(self._application.getSimulation().getTimeStamp(), self.K, self.pose, **arrays)


def read_cameras(cameras: Iterable[SensorCamera], *channels: str) -> list[SensorFrame]:
    """Reads several cameras of one application in one drawing; see `SensorCamera.read`."""
    cameras = list(cameras)
    if not all(isinstance(camera, SensorCamera) for camera in cameras):
        raise TypeError("only sensor cameras are read together")
    wanted = set(channels or ("rgb",))
    if unknown := wanted - set(CHANNELS):
        raise ValueError(f"there is no channel {sorted(unknown)[0]!r}: use {', '.join(CHANNELS)}")
    if not cameras:
        return []
    application = cameras[0]._application
    if any(camera._application != application for camera in cameras):
        raise ValueError("the cameras belong to several applications: read each application's on their own")
    if not hasattr(application, "this"):
        raise RuntimeError("the application of the cameras is closed")
    for camera in cameras:
        camera._prepare(wanted)
    try:
        _osg.drawRenderTargets(application)
        frames = [camera._frame(wanted) for camera in cameras]
    finally:
        for camera in cameras:
            for target in (camera._rgb, camera._truth):
                if target is not None:
                    target.getCamera().setNodeMask(0)
    for camera, frame in zip(cameras, frames):
        if camera.noise:  # a function of the script's, which may read cameras itself
            camera.noise(frame)
    return frames


def require_planes(near: float, far: float) -> None:
    """ValueError for distances that no picture can have."""
    if not 0 < near < far:
        raise ValueError("near and far must be distances above 0, far the larger")
    if far > _FARTHEST or far > _MOST_PLANES * near:
        raise ValueError(f"far is {_FARTHEST:g} metres at most, and {_MOST_PLANES:g} times near")


def _finer(drawn: Intrinsics) -> int:
    """Less where the graphics driver draws no pictures of such a size."""
    return max(1, min(_FINER, _MOST_PIXELS // max(drawn.width, drawn.height)))


def _pose(values: Any) -> Any:
    import hyx
    import numpy

    pose = _matrix(values) if isinstance(values, hyx.AffineMatrix4x4) else numpy.array(values, float)
    if pose.shape != (4, 4) or not numpy.isfinite(pose).all() or (pose[3] != (0, 0, 0, 1)).any():
        raise ValueError("a pose is a matrix of 4 x 4 numbers: a rotation and a place, and (0, 0, 0, 1) below them")
    turn = pose[:3, :3]
    if abs(turn @ turn.T - numpy.eye(3)).max() > _TRUE_TURN or numpy.linalg.det(turn) < 0:
        raise ValueError("a pose turns and moves: its first 3 x 3 numbers must be a rotation")
    return pose


def _place_of(thing: Any) -> Any:
    """What gives the matrix of a thing that has a place in the world; None for others."""
    return getattr(thing, "getTransform", None) or getattr(thing, "getMatrix", None)


def _matrix(transform: Any) -> Any:
    """An affine matrix, which multiplies rows, as one that multiplies columns."""
    import numpy

    return numpy.array([[transform.get(row, column) for row in range(4)] for column in range(4)])
