"""States that a model's file describes, taken over by its bodies, joints and drives."""

from __future__ import annotations

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from typing import Any

# How many numbers of positions and velocities a joint has; the single ones have one each.
_WIDTHS = {"FreeJoint": (7, 6), "BallJoint": (4, 3), "LockJoint": (0, 0), "PlanarJoint": (0, 0)}


def apply_keyframe(result: Any, name: str) -> None:
    keyframe = _found(result, name)
    _Applied(result).apply(keyframe.properties, f"the keyframe {keyframe.name!r}")


def _found(result: Any, name: str) -> Any:
    keyframes = [node for node in result.model.children if node.type == "Simulation.Keyframe"]
    for node in keyframes:
        if node.name == name:
            return node
    names = ", ".join(repr(node.name) for node in keyframes) or "none"
    raise ValueError(f"the model has no keyframe {name!r}; it has {names}")


class _Applied:
    def __init__(self, result: Any) -> None:
        self.result = result
        self.joints = [
            node
            for node in result.model.children
            if node.type.startswith("Robotics.Joints.") and not node.properties["closesLoop"]
        ]
        self.children: dict[str, dict[str, None]] = {}  # by parent, in order
        self.carriers: dict[str, list[str]] = {}  # between a body and its parent where several joints are
        for joint in self.joints:
            given = joint.properties
            self.children.setdefault(given["parent"], {})[given["child"]] = None
            self.carriers.setdefault(given["child"], []).append(f"{given['child']}/{joint.name}")
        singles = [joint.name for joint in self.joints if self.widths(joint) == (1, 1)]
        names = result.joints.names
        self.prefix = names[0][: len(names[0]) - len(singles[0])] if singles and names else ""
        self.singles = [self.prefix + single for single in singles]

    @staticmethod
    def widths(joint: Any) -> tuple[int, int]:
        return _WIDTHS.get(joint.type.rpartition(".")[2], (1, 1))

    def body(self, name: str) -> Any:
        return self.result.getAssembly().getRigidBody(self.prefix + name)

    def split(self, numbers: Any, kind: int, what: str) -> list[Any]:
        """The numbers of each joint; none where the file gives none at all."""
        widths = [self.widths(joint)[kind] for joint in self.joints]
        if not numbers:
            return [() for _ in widths]
        if len(numbers) != sum(widths):
            raise ValueError(f"{what} has {len(numbers)} numbers where the joints have {sum(widths)}")
        parts, rest = [], list(numbers)
        for width in widths:
            parts.append(rest[:width])
            rest = rest[width:]
        return parts

    def apply(self, given: dict[str, Any], what: str) -> None:
        positions = self.split(given["positions"], 0, f"the positions of {what}")
        velocities = self.split(given["velocities"], 1, f"the velocities of {what}")
        array = self.result.joints
        array.position = self.gathered(positions, array.position)
        for joint, numbers in zip(self.joints, positions):
            if len(numbers) == 7:
                self.place(joint.properties["child"], numbers[:3], numbers[3:])
            elif len(numbers) == 4:
                self.turn(joint, numbers)
        for joint, numbers in zip(self.joints, velocities):
            if len(numbers) == 6:
                self.throw(joint.properties["child"], numbers)
        array.velocity = self.gathered(velocities, [0.0] * len(array))
        self.drive(given["controls"])

    def gathered(self, parts: list[Any], otherwise: Any) -> list[float]:
        """The numbers of the single joints in the order of the array."""
        known = dict(
            zip(self.singles, (part for joint, part in zip(self.joints, parts) if self.widths(joint) == (1, 1)))
        )
        return [
            float(known[name][0]) if known.get(name) else float(value)
            for name, value in zip(self.result.joints.names, otherwise)
        ]

    def move(self, name: str, matrix: Any) -> None:
        """A body and all that hangs on it, by a transform of the world."""
        for part in (*self.carriers.get(name, ()), name):
            body = self.body(part)
            if body is not None:
                body.setTransform(body.getTransform() * matrix)
        for child in self.children.get(name, []):
            self.move(child, matrix)

    def place(self, name: str, position: Any, turn: Any) -> None:
        import hyx

        w, x, y, z = turn
        wanted = hyx.AffineMatrix4x4(hyx.Quat(x, y, z, w).normal(), hyx.Vec3(*position))
        self.move(name, self.body(name).getTransform().inverse() * wanted)

    def turn(self, joint: Any, turn: Any) -> None:
        """A ball joint: about its anchor, from how the child stands in the parent at the start."""
        import hyx

        w, x, y, z = turn
        given = joint.properties
        anchor = hyx.Vec3(*given["anchor"])
        start = self.start(given["child"]) * self.start(given["parent"]).inverse() * self.pose(given["parent"])
        about, back = hyx.AffineMatrix4x4.translate(anchor * -1.0), hyx.AffineMatrix4x4.translate(anchor)
        turned = about * hyx.AffineMatrix4x4.rotate(hyx.Quat(x, y, z, w).normal()) * back * start
        self.move(given["child"], self.body(given["child"]).getTransform().inverse() * turned)

    def start(self, name: str) -> Any:
        """Where the file has a body at first; the world where there is no name."""
        import hyx

        for node in self.result.model.children:
            if name and node.type == "Physics3D.Body" and node.name == name:
                return hyx.AffineMatrix4x4(node.properties["transform"])
        return hyx.AffineMatrix4x4()

    def pose(self, name: str) -> Any:
        """Where a body is now; that of a part follows from what it is a part of."""
        body = self.body(name) if name else None
        if body is not None:
            return body.getTransform()
        for joint in self.joints:
            given = joint.properties
            if name and given["child"] == name and joint.type == "Robotics.Joints.LockJoint":
                return self.start(name) * self.start(given["parent"]).inverse() * self.pose(given["parent"])
        return self.start(name)

    def throw(self, name: str, speeds: Any) -> None:
        """The turn is along the body's own axes, the way along the world's."""
        import hyx

        body = self.body(name)
        spin = body.getTransform().transformVector(hyx.Vec3(*speeds[3:]))
        lever = body.getWorldCenterOfMass() - body.getPosition()
        body.setAngularVelocity(spin)
        body.setVelocity(hyx.Vec3(*speeds[:3]) + spin.cross(lever))

    def drive(self, controls: Any) -> None:
        actuators = [node for node in self.result.model.children if node.type.startswith("Control.")]
        if len(controls) != len(actuators):
            return  # none given, or some drive was not carried over
        targets = list(self.result.joints.target)
        places = {name: index for index, name in enumerate(self.result.joints.names)}
        for actuator, control in zip(actuators, controls):
            if actuator.type == "Control.PositionActuator":
                targets[places[self.prefix + actuator.properties["joint"]]] = control
        self.result.joints.target = targets
