"""The cameras, laser scanners and motion sensors that a loaded model describes."""

from __future__ import annotations

import math

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from typing import Any

TOWARDS_VIEW = ((1, 0, 0, 0), (0, -1, 0, 0), (0, 0, -1, 0), (0, 0, 0, 1))  # from y up and the view along -z


def described(result: Any, name: str, kind: str) -> dict[str, Any]:
    """What the model says of its sensor of this name and kind; ValueError where it has none."""
    sensors = [node for node in result.model.children if node.type == kind]
    for node in sensors:
        if node.name == name:
            return node.properties  # type: ignore[no-any-return]
    names = ", ".join(repr(node.name) for node in sensors) or "none"
    raise ValueError(f"the model has no {kind} {name!r}; it has {names}")


def camera(result: Any, name: str, application: Any, width: int, height: int) -> Any:
    import hyxOSG

    given = described(result, name, "Visuals.Camera")
    made = hyxOSG.SensorCamera(
        application,
        width or int(given["width"]) or 640,
        height or int(given["height"]) or 480,
        field_of_view=math.degrees(given["verticalAngle"]),
        near=given["near"],
        far=given["far"],
    )
    made.follow(result.getSensorFrame(name), TOWARDS_VIEW)
    return made


def lidar(result: Any, name: str) -> Any:
    import hyx
    import hyxSensor

    given = described(result, name, "Sensors.Lidar")
    made = hyxSensor.Lidar(result.getSensorFrame(name))
    made.setResolution(int(given["rows"]), int(given["columns"]))
    made.setFieldOfView(min(given["horizontalAngle"], 2 * math.pi), min(given["verticalAngle"], math.pi))
    made.setRange(hyx.RangeReal(given["nearest"], given["farthest"]))
    made.setDistanceNoise(given["deviation"])
    made.setScanRate(given["rate"])
    if body := result.getSensorBody(name):
        made.setIgnoredBody(body)
        body.getSimulation().add(made)
    return made


class Imu:
    """A motion sensor on a body. Accelerations are means over the time since the last reading."""

    def __init__(self, result: Any, name: str) -> None:
        described(result, name, "Sensors.Imu")
        self._frame, self._body = result.getSensorFrame(name), result.getSensorBody(name)
        self._last: Any = None

    def read(self) -> tuple[Any, Any]:
        """The turning speed in rad/s, and in m/s2 what an accelerometer feels, along the axes of the sensor. The first
        reading feels only gravity."""
        import numpy

        matrix = self._frame.getMatrix()
        turn = numpy.array([[matrix.get(row, column) for column in range(3)] for row in range(3)])  # rows: the axes
        simulation = self._body.getSimulation()
        time, gravity = simulation.getTimeStamp(), numpy.array(tuple(simulation.getGravity()))
        velocity = numpy.array(tuple(self._body.getPointVelocity(self._frame.getTranslate())))
        if self._last is None or time <= self._last[0]:
            acceleration = numpy.zeros(3)
        else:
            acceleration = (velocity - self._last[1]) / (time - self._last[0])
        self._last = time, velocity
        return turn @ numpy.array(tuple(self._body.getAngularVelocity())), turn @ (acceleration - gravity)
