"""Writes the tree of a model as a robot description (URDF)."""

from __future__ import annotations

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from collections.abc import Sequence
    from typing import Any

_KINDS = {
    "HingeJoint": "revolute",
    "PositionHingeJoint": "revolute",
    "PrismaticJoint": "prismatic",
    "PlanarJoint": "planar",
    "FreeJoint": "floating",
    "LockJoint": "fixed",
}


def _numbers(values: Sequence[float]) -> str:
    return " ".join(repr(float(value)) for value in values)


def _matrix(values: Any) -> Any:
    """As it acts on columns; the tree's transforms act on rows."""
    import numpy

    return numpy.array(values).reshape(4, 4).T


def _angles(matrix: Any) -> tuple[float, float, float]:
    """Roll, pitch and yaw about standing axes."""
    import math

    pitch = math.atan2(-matrix[2, 0], math.hypot(matrix[0, 0], matrix[1, 0]))
    if abs(matrix[2, 0]) > 1 - 1e-12:  # straight up: only the sum of the other two counts
        return math.atan2(-matrix[1, 2], matrix[1, 1]), pitch, 0.0
    return math.atan2(matrix[2, 1], matrix[2, 2]), pitch, math.atan2(matrix[1, 0], matrix[0, 0])


class _Writer:
    """A link's frame lies where its joint is: the body's, moved to the joint's anchor."""

    def __init__(self, model: Any) -> None:
        from xml.etree import ElementTree

        self.make = ElementTree.SubElement
        self.robot = ElementTree.Element("robot", name=model.name or "robot")
        self.bodies = [node for node in model.children if node.type == "Physics3D.Body"]
        self.joints = [node for node in model.children if node.type.startswith("Robotics.Joints")]
        self.mimics = {
            node.properties["follower"]: node.properties for node in model.children if node.type == "Robotics.Mimic"
        }
        self.frames: dict[str, Any] = {}
        self.names: dict[str, str] = {}

    def write(self) -> str:
        from xml.etree import ElementTree

        holders: dict[str, list[Any]] = {}
        for joint in self.joints:
            if not joint.properties["closesLoop"]:
                holders.setdefault(joint.properties["child"], []).append(joint)
        self.check(holders)
        for body in self.bodies:
            self.place(body, holders.get(body.name, []))
        needs_world = any(not joint.properties["parent"] for held in holders.values() for joint in held)
        if needs_world and "world" not in self.frames:
            self.place_world()
        for body in self.bodies:
            self.add_link(body)
            self.add_joints(body, holders.get(body.name, []))
        ElementTree.indent(self.robot)
        return ElementTree.tostring(self.robot, encoding="unicode")

    def check(self, holders: dict[str, list[Any]]) -> None:
        names = [body.name for body in self.bodies]
        if len(set(names)) != len(names) or "" in names:
            raise ValueError("a robot description needs a name of its own for each body")
        for joint in self.joints:
            kind = joint.type.rpartition(".")[2]
            if kind not in _KINDS or joint.properties["closesLoop"]:
                raise ValueError(f"a robot description has no joint like '{joint.name}' ({kind})")
        roots = [name for name in names if name not in holders]
        worlds = any(not held[0].properties["parent"] for held in holders.values())
        if len(roots) + (worlds and "world" not in names) != 1:
            raise ValueError("a robot description has one root")

    def place_world(self) -> None:
        import numpy

        self.frames["world"] = numpy.eye(4)
        self.make(self.robot, "link", name="world")

    def place(self, body: Any, held: list[Any]) -> None:
        import numpy

        frame = _matrix(body.properties["transform"])
        if held and all(joint.type.rpartition(".")[2] != "FreeJoint" for joint in held):
            move = numpy.eye(4)
            move[:3, 3] = held[-1].properties["anchor"]
            frame = frame @ move
        self.frames[body.name] = frame

    def origin(self, parent: Any, matrix: Any) -> None:
        self.make(parent, "origin", xyz=_numbers(matrix[:3, 3]), rpy=_numbers(_angles(matrix)))

    def add_link(self, body: Any) -> None:
        import numpy

        link = self.make(self.robot, "link", name=body.name)
        given = body.properties
        local = numpy.linalg.inv(self.frames[body.name]) @ _matrix(given["transform"])  # from the body to the link
        if given.get("mass", 0) > 0:
            inertial = self.make(link, "inertial")
            place = local.copy()
            place[:3, 3] = local[:3, :3] @ given["centerOfMass"] + local[:3, 3]
            self.origin(inertial, place)
            self.make(inertial, "mass", value=repr(given["mass"]))
            names = ("ixx", "iyy", "izz", "ixy", "ixz", "iyz")
            self.make(inertial, "inertia", dict(zip(names, map(repr, given["inertia"]), strict=True)))
        for part in body.children:
            kind = "visual" if part.type == "Visuals.Visual" else "collision"
            self.add_shape(self.make(link, kind, {"name": part.name} if part.name else {}), part, local)

    def add_shape(self, element: Any, part: Any, local: Any) -> None:
        given = part.properties
        kind = given.get("shape", part.type).rpartition(".")[2]
        self.origin(element, local @ _matrix(given["transform"]))
        geometry = self.make(element, "geometry")
        if kind == "Box":
            self.make(geometry, "box", size=_numbers([2 * value for value in given["halfExtents"]]))
        elif kind == "Sphere":
            self.make(geometry, "sphere", radius=repr(given["radius"]))
        elif kind in ("Cylinder", "Capsule"):  # the format has no capsule; the cylinder in it is as long as it
            length = given["height"] + (2 * given["radius"] if kind == "Capsule" else 0)
            self.make(geometry, "cylinder", radius=repr(given["radius"]), length=repr(length))
        elif kind == "Mesh" and given["file"]:
            self.make(geometry, "mesh", filename=given["file"], scale=_numbers(given["scale"]))
        else:
            raise ValueError(f"a robot description has no shape like '{part.name}' ({kind})")
        if "color" in given:
            material = self.make(element, "material", name="")
            self.make(material, "color", rgba=_numbers(given["color"]))

    def add_joints(self, body: Any, held: list[Any]) -> None:
        """Of several joints of one body each but the last leads to a link without mass."""
        import numpy

        if not held:
            return
        parent = held[0].properties["parent"] or "world"
        frame = self.frames[parent]
        for joint in held:
            last = joint is held[-1]
            child = body.name if last else f"{body.name}/{joint.name}"
            here = self.frames[body.name] if last else self.joint_frame(body, joint)
            if not last:
                self.make(self.robot, "link", name=child)
            kind = _KINDS[joint.type.rpartition(".")[2]]
            if kind == "revolute" and "lower" not in joint.properties:
                kind = "continuous"
            element = self.make(self.robot, "joint", name=joint.name or f"{child}_joint", type=kind)
            self.make(element, "parent", link=parent)
            self.make(element, "child", link=child)
            self.origin(element, numpy.linalg.inv(frame) @ here)
            self.add_motion(element, joint, kind)
            parent, frame = child, here

    def joint_frame(self, body: Any, joint: Any) -> Any:
        import numpy

        move = numpy.eye(4)
        move[:3, 3] = joint.properties["anchor"]
        return _matrix(body.properties["transform"]) @ move

    def add_motion(self, element: Any, joint: Any, kind: str) -> None:
        given = joint.properties
        if kind in ("fixed", "floating"):
            return
        self.make(element, "axis", xyz=_numbers(given["axis"]))
        if kind == "planar":
            return
        limit = {"effort": given["maximumEffort"], "velocity": given["maximumSpeed"]}
        finite = {name: repr(value) for name, value in limit.items() if value < float("inf")}
        if "lower" in given:
            bounds = {name: repr(given[name] - given["start"]) for name in ("lower", "upper")}
            self.make(element, "limit", {"effort": "0", "velocity": "0"} | finite | bounds)
        elif finite:
            self.make(element, "limit", {"effort": "0", "velocity": "0"} | finite)
        if given["damping"] or given["friction"]:
            self.make(element, "dynamics", damping=repr(given["damping"]), friction=repr(given["friction"]))
        if mimic := self.mimics.get(joint.name):
            values = {"multiplier": repr(mimic["multiplier"]), "offset": repr(mimic["offset"])}
            self.make(element, "mimic", {"joint": mimic["leader"]} | values)


def urdf_text(model: Any) -> str:
    return _Writer(model).write()
