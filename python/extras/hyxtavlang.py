"""Loaded models: their tree as Python walks it, their joints as arrays."""

from __future__ import annotations

from .numbers import array, assign

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from collections.abc import Iterator

    import hyxOSG
    import hyxSensor
    import hyxtavlang

    from .hints import Doubles, Values
    from .model_sensors import Imu
    from .sensor_camera import SensorCamera


class JointArray:
    """`position`, `velocity`, `effort` and `target` are read as arrays of their own, and set as wholes."""

    @property
    def position(self) -> Doubles:
        """rad or m."""
        return array(self.getPositions())  # type: ignore[attr-defined]

    @position.setter
    def position(self, values: Values) -> None:
        assign("position", self.setPositions, values)  # type: ignore[attr-defined]

    @property
    def velocity(self) -> Doubles:
        """rad/s or m/s."""
        return array(self.getVelocities())  # type: ignore[attr-defined]

    @velocity.setter
    def velocity(self, values: Values) -> None:
        assign("velocity", self.setVelocities, values)  # type: ignore[attr-defined]

    @property
    def effort(self) -> Doubles:
        """Nm or N."""
        return array(self.getEfforts())  # type: ignore[attr-defined]

    @effort.setter
    def effort(self, values: Values) -> None:
        assign("effort", self.setEfforts, values)  # type: ignore[attr-defined]

    @property
    def target(self) -> Doubles:
        """rad or m; nan: not held."""
        return array(self.getTargets())  # type: ignore[attr-defined]

    @target.setter
    def target(self, values: Values) -> None:
        assign("target", self.setTargets, values)  # type: ignore[attr-defined]

    @property
    def names(self) -> tuple[str, ...]:
        """Of the joints, in the order of the arrays."""
        return tuple(self.getNames())  # type: ignore[attr-defined]

    def index(self, name: str) -> int:
        """The place of a joint in the arrays. KeyError, with the nearest names, where there is none of this name."""
        from .names import nearest

        names = self.names
        if name not in names:
            raise KeyError(f"there is no joint {name!r}{nearest(name, names)}")
        return names.index(name)

    def __len__(self) -> int:
        count: int = self.getNumJoints()  # type: ignore[attr-defined]
        return count


class ModelNode:
    @property
    def name(self) -> str:
        """As in the file; empty for what has none there."""
        return self.getName()  # type: ignore[attr-defined, no-any-return]

    @property
    def type(self) -> str:
        """Its class, like `Physics3D.Body`."""
        return self.getType()  # type: ignore[attr-defined, no-any-return]

    @property
    def properties(self) -> dict[str, bool | float | str | tuple[float, ...]]:
        """What the file says of it: metres, kilograms, radians; transforms are 16 numbers, row by row."""
        return self.getProperties()  # type: ignore[attr-defined, no-any-return]

    @property
    def children(self) -> list[hyxtavlang.ModelNode]:
        """Its parts, in the order of the file."""
        return [self.getChild(index) for index in range(self.getNumChildren())]  # type: ignore[attr-defined]

    def walk(self) -> Iterator[hyxtavlang.ModelNode]:
        """This node and all below it."""
        yield self
        for child in self.children:
            yield from child.walk()

    def urdf(self) -> str:
        """The model as a robot description. Capsules become cylinders of their length; ValueError for what the format
        does not have: balls and loops, several roots, planes, height fields, bodies without a name.
        """
        from .urdf_text import urdf_text

        return urdf_text(self)

    def __bool__(self) -> bool:
        return self.isValid()  # type: ignore[attr-defined, no-any-return]

    def __str__(self) -> str:
        return self.getText()  # type: ignore[attr-defined, no-any-return]


class LoadResult:
    @property
    def joints(self) -> hyxtavlang.JointArray | None:
        """The joints that turn or slide, as arrays; None when nothing was loaded."""
        return self.getJoints()  # type: ignore[attr-defined]

    @property
    def model(self) -> hyxtavlang.ModelNode:
        """All that was read, as a tree."""
        return self.getModel()  # type: ignore[attr-defined]

    def camera(
        self, name: str, application: hyxOSG.ExampleApplication, width: int = 0, height: int = 0
    ) -> SensorCamera:
        """A `hyxOSG.SensorCamera` where the model has the camera of this name, with its picture unless told another."""
        from .model_sensors import camera

        return camera(self, name, application, width, height)

    def lidar(self, name: str) -> hyxSensor.Lidar:
        """A `hyxSensor.Lidar` in the simulation where the model has the one of this name."""
        from .model_sensors import lidar

        return lidar(self, name)

    def imu(self, name: str) -> Imu:
        """The motion sensor of this name: `read()` gives the turning speed in rad/s, and in m/s2 what an accelerometer
        feels, both along the sensor's axes, as a mean since the last reading."""
        from .model_sensors import Imu

        return Imu(self, name)

    def apply_keyframe(self, name: str) -> None:
        """Brings bodies and joints into the state of this name in the model, and gives the drives of position actuators
        its controls as targets. Speeds of ball joints are left out. ValueError where the model has no such state."""
        from .model_keyframes import apply_keyframe

        apply_keyframe(self, name)
