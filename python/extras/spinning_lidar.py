"""A spinning scanner that takes its distances from depth pictures, so that it sees what is drawn."""

from __future__ import annotations

import math

from .applications import require_application
from .camera_models import MOST_PIXELS
from .point_files import CLOUD
from .sensor_camera import SensorCamera, read_cameras, require_planes

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Sequence
    from typing import Any

    import hyx
    import hyxCollide
    import hyxOSG

    from .hints import Doubles, Rows

_FACES = 4
_STEEPEST = math.radians(75)
_OVERSAMPLING = 1.5  # pixels a column, in the middle of a picture
_MOST_BEAMS = 1 << 24  # of a turn
_GRAZING = 0.02  # cosine below which the distance is that of the pixel, not of the plane in it


class SpinningDepthLidar:
    """Rings of beams all around, read from four depth pictures in one drawing: what has a visual is seen, with or
    without a body. For rays into the physics, materials and rolling scans there is `hyxSensor.Lidar`.

        lidar = hyxOSG.SpinningDepthLidar(app, rings=32, columns=1024)
        lidar.follow(car, [[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 1.8], [0, 0, 0, 1]])
        points = lidar.scan()

    It looks along the X axis of its pose, with Z up. `elevations` in radians, one for each ring, replace `rings` and
    `vertical`, the lowest and the highest one. Nothing nearer than `near` or farther than `far` metres is measured.
    """

    def __init__(
        self,
        application: hyxOSG.ExampleApplication,
        rings: int = 16,
        columns: int = 1024,
        *,
        vertical: tuple[float, float] = (math.radians(-15), math.radians(15)),
        elevations: Sequence[float] | None = None,
        near: float = 0.1,
        far: float = 100.0,
    ) -> None:
        import numpy

        require_application(application)
        require_planes(near, far)
        if not (rings >= 1 and columns >= 4 and rings == int(rings) and columns == int(columns)):
            raise ValueError("a spinning lidar has at least one ring and four columns")
        if (rings if elevations is None else len(elevations)) * columns > _MOST_BEAMS:
            raise ValueError(f"a spinning lidar has at most {_MOST_BEAMS} beams")
        rings, columns = int(rings), int(columns)
        angles = numpy.linspace(*vertical, rings) if elevations is None else numpy.array(list(elevations), float)
        if angles.ndim != 1 or not len(angles) or not (numpy.abs(angles) <= _STEEPEST).all():
            raise ValueError("the elevations of rings are within 75 degrees of the horizon")
        self._application, self._range = application, (float(near), float(far))
        azimuths = 2 * math.pi * (numpy.arange(columns) / columns - 0.5)
        azimuth, elevation = (part.ravel() for part in numpy.meshgrid(azimuths, angles, indexing="ij"))
        self._rings = numpy.tile(numpy.arange(len(angles)), columns)
        self._beams = numpy.stack(
            [
                numpy.cos(elevation) * numpy.cos(azimuth),
                numpy.cos(elevation) * numpy.sin(azimuth),
                numpy.sin(elevation),
            ],
            axis=-1,
        )
        self._face_of = numpy.rint(azimuth / (math.pi / 2)).astype(int) % _FACES
        self._cameras = [self._camera(columns, float(numpy.abs(angles).max())) for _ in range(_FACES)]
        self._mount = SensorCamera(application, 1, 1)  # never read: it knows how to follow

    def _camera(self, columns: int, steepest: float) -> SensorCamera:
        width = max(8, math.ceil(_OVERSAMPLING * columns / math.pi)) + 4
        focal = (width - 4) / 2  # 90 degrees, and two pixels more at each side
        height = 2 * math.ceil(focal * math.tan(steepest) * math.sqrt(2)) + 6
        if max(width, height) > MOST_PIXELS:
            fitting = int(columns * (MOST_PIXELS - 12) / max(width, height))
            raise ValueError(
                f"{columns} columns, with rings up to {math.degrees(steepest):.0f} degrees from the horizon, need "
                f"depth pictures of {width} x {height} pixels, which have at most {MOST_PIXELS} each way: choose at "
                f"most {fitting} columns, or rings nearer to the horizon"
            )
        K: list[list[float]] = [[focal, 0, (width - 1) / 2], [0, focal, (height - 1) / 2], [0, 0, 1]]
        # A beam near a picture's corner is longer than its distance along the view.
        near = self._range[0] * math.cos(steepest) / math.sqrt(2)
        return SensorCamera(self._application, width, height, K=K, near=near, far=self._range[1])

    @property
    def pose(self) -> Doubles:
        """Lidar to world, (4, 4). Setting it ends following."""
        return self._mount.pose

    @pose.setter
    def pose(self, pose: Rows | hyx.AffineMatrix4x4) -> None:
        self._mount.pose = pose

    def follow(
        self, body: hyx.RigidBody | hyxCollide.Geometry | hyx.Frame, offset: Rows | hyx.AffineMatrix4x4 | None = None
    ) -> None:
        """Moves with a body (or geometry, or frame): `offset`, (4, 4), takes the lidar's points to the body's. An
        `AffineMatrix4x4`, which multiplies rows, is taken for what it means."""
        self._mount.follow(body, offset)

    def scan(self) -> Any:
        """Draws the present state, without a step, and gives the points column by column, with the fields of
        `hyxSensor.Lidar.cloud`. The intensity is the cosine between beam and surface, weakened with the distance."""
        import numpy

        pose = self.pose
        for face, camera in enumerate(self._cameras):
            camera.pose = pose @ _face_pose(face)
        frames = read_cameras(self._cameras, "depth", "normals", "identity")
        cloud = numpy.zeros(len(self._beams), CLOUD)
        for face, frame in enumerate(frames):
            mine = self._face_of == face
            directions = self._beams[mine] @ _face_pose(face)[:3, :3]
            cloud["distance"][mine], cloud["intensity"][mine], cloud["identity"][mine] = self._measure(
                frame, directions
            )
        distance = cloud["distance"].astype(float)
        with numpy.errstate(invalid="ignore"):
            places = pose[:3, 3] + (self._beams * distance[:, None]) @ pose[:3, :3].T
        for axis, name in enumerate("xyz"):
            cloud[name] = places[:, axis]
        cloud["time"] = self._application.getSimulation().getTimeStamp()
        cloud["ring"], cloud["return"], cloud["returns"] = self._rings, 1, 1
        return cloud[(distance >= self._range[0]) & (distance <= self._range[1])]

    def _measure(self, frame: Any, directions: Any) -> tuple[Any, Any, Any]:
        """Distances (infinite where nothing is), intensities and identities along directions of the camera's."""
        import numpy

        K = frame.K
        rows = numpy.rint(directions[:, 1] / directions[:, 2] * K[1, 1] + K[1, 2]).astype(int)
        columns = numpy.rint(directions[:, 0] / directions[:, 2] * K[0, 0] + K[0, 2]).astype(int)
        depth, normals = frame.depth[rows, columns].astype(float), frame.normals[rows, columns].astype(float)
        through = numpy.stack(
            [(columns - K[0, 2]) / K[0, 0], (rows - K[1, 2]) / K[1, 1], numpy.ones(len(rows))], axis=-1
        )
        cosine = -(directions * normals).sum(axis=-1)
        with numpy.errstate(divide="ignore", invalid="ignore"):
            of_plane = -depth * (through * normals).sum(axis=-1) / cosine
            of_pixel = depth / directions[:, 2]
        distance = numpy.where((cosine > _GRAZING) & numpy.isfinite(depth), of_plane, of_pixel)
        fading = 1 / (1 + distance * 5 / self._range[1])
        return distance, numpy.maximum(cosine, 0) * fading, frame.identity[rows, columns]

    def close(self) -> None:
        """Gives back what the graphics driver keeps for it. It can scan again."""
        for camera in self._cameras:
            camera.close()


def _face_pose(face: int) -> Any:
    """From a camera's axes to the lidar's: the first looks ahead, the next ones to the left of it."""
    import numpy

    angle = face * math.pi / 2
    forward = numpy.array([math.cos(angle), math.sin(angle), 0])
    right = numpy.array([math.sin(angle), -math.cos(angle), 0])
    pose = numpy.eye(4)
    pose[:3, :3] = numpy.stack([right, [0, 0, -1], forward], axis=1)
    return numpy.rint(pose)
