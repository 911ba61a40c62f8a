"""Robot descriptions of collections against a parse of our own: masses, inertias, axes, limits and shapes."""

import functools
import os
import pathlib
from xml.etree import ElementTree

import hyxtavlang
import jvrc_description
import numpy
import pytest
from model_collection import SHARE, needs_models

NAMES = [
    "manipulation/models/franka_description/urdf/panda_arm_hand",
    "manipulation/models/iiwa_description/urdf/iiwa14_primitive_collision",
    "manipulation/models/iiwa_description/urdf/iiwa14_spheres_collision",
    "manipulation/models/iiwa_description/urdf/iiwa14_polytope_collision",
    "manipulation/models/allegro_hand_description/urdf/allegro_hand_description_right",
    "manipulation/models/ur3e/ur3e_cylinders_collision",
    "manipulation/models/tri_homecart/homecart_bimanual",
    "examples/acrobot/Acrobot",
    "examples/pendulum/Pendulum",
    "examples/quadrotor/quadrotor",
    "examples/kuka_iiwa_arm/models/objects/folding_table",
    "examples/kuka_iiwa_arm/models/objects/open_top_box",
]
FILES = [
    pathlib.Path(jvrc_description.urdf_path),
    *(pytest.param(SHARE / f"{name}.urdf", marks=needs_models) for name in NAMES),
]


def numbers(element, key, otherwise):
    text = None if element is None else element.get(key)
    return numpy.array([float(part) for part in text.split()]) if text else numpy.array(otherwise, float)


def turn(angles):
    (sr, sp, sy), (cr, cp, cy) = numpy.sin(angles), numpy.cos(angles)
    about_x = numpy.array([[1, 0, 0], [0, cr, -sr], [0, sr, cr]])
    about_y = numpy.array([[cp, 0, sp], [0, 1, 0], [-sp, 0, cp]])
    return numpy.array([[cy, -sy, 0], [sy, cy, 0], [0, 0, 1]]) @ about_y @ about_x


def place(element):
    origin = None if element is None else element.find("origin")
    matrix = numpy.eye(4)
    matrix[:3, :3] = turn(numbers(origin, "rpy", [0, 0, 0]))
    matrix[:3, 3] = numbers(origin, "xyz", [0, 0, 0])
    return matrix


def given_place(node):
    return numpy.array(node.properties["transform"]).reshape(4, 4).T


CORNER = "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 3 4\nf 1 4 3\n"


def stand_in(robot, folder):
    """The collection fetches meshes from a network; here a corner stands for each of them."""
    for mesh in robot.iter("mesh"):
        name = mesh.get("filename")
        if name.startswith("package://drake_models/"):
            file = folder / name.removeprefix("package://")
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(CORNER)


@pytest.fixture(params=FILES, ids=lambda path: path.stem)
def pair(request, app, tmp_path):
    robot = ElementTree.parse(request.param).getroot()
    stand_in(robot, tmp_path)
    params = hyxtavlang.OptParams()
    params.addSearchPath(os.fspath(tmp_path))
    result = app.loadTavLangFile(str(request.param), None, params)
    assert result.getErrors() == ()
    return result.model, robot


def nodes(model, kind):
    return {node.name: node for node in model.children if node.type.startswith(kind)}


def test_links_stand_and_weigh_as_their_file_says(pair):
    model, robot = pair
    bodies = nodes(model, "Physics3D.Body")
    joints = {
        joint.find("child").get("link"): joint for joint in robot.iter("joint") if joint.find("child") is not None
    }

    @functools.cache
    def world(name):
        joint = joints.get(name)
        return numpy.eye(4) if joint is None else world(joint.find("parent").get("link")) @ place(joint)

    links = robot.findall("link")
    assert bodies.keys() - {"world"} == {link.get("name") for link in links} - {"world"}
    for link in links:
        body, inertial = bodies[link.get("name")], link.find("inertial")
        assert given_place(body) == pytest.approx(world(body.name), abs=1e-9)
        mass = 0 if inertial is None else float(inertial.find("mass").get("value"))
        assert body.properties.get("mass", 0) == mass
        if mass == 0:
            continue
        frame, tensor = place(inertial), inertial.find("inertia")
        xx, yy, zz, xy, xz, yz = (float(tensor.get(key)) for key in ("ixx", "iyy", "izz", "ixy", "ixz", "iyz"))
        along = frame[:3, :3] @ numpy.array([[xx, xy, xz], [xy, yy, yz], [xz, yz, zz]]) @ frame[:3, :3].T
        assert body.properties["centerOfMass"] == pytest.approx(frame[:3, 3], abs=1e-9)
        assert body.properties["inertia"] == pytest.approx(
            [along[i] for i in ((0, 0), (1, 1), (2, 2), (0, 1), (0, 2), (1, 2))], rel=1e-9, abs=1e-12
        )


KINDS = {"revolute": "Hinge", "continuous": "Hinge", "prismatic": "Prismatic", "fixed": "Lock", "floating": "Free"}


def test_joints_turn_about_the_axes_and_within_the_limits_of_their_file(pair):
    model, robot = pair
    ours = nodes(model, "Robotics.Joints")
    joints = [joint for joint in robot.findall("joint")]
    assert ours.keys() == {joint.get("name") for joint in joints}
    for joint in joints:
        node, kind = ours[joint.get("name")], joint.get("type")
        given = node.properties
        assert KINDS[kind] in node.type and given["anchor"] == (0, 0, 0)
        assert given["parent"] == joint.find("parent").get("link")
        if kind not in ("revolute", "continuous", "prismatic"):
            continue
        axis = numbers(joint.find("axis"), "xyz", [1, 0, 0])
        assert given["axis"] == pytest.approx(axis / numpy.linalg.norm(axis), abs=1e-9)
        limit, dynamics = joint.find("limit"), joint.find("dynamics")
        if kind != "continuous" and "lower" in given:
            assert given["lower"] == float(limit.get("lower", 0)) and given["upper"] == float(limit.get("upper", 0))
        for key, name in (("effort", "maximumEffort"), ("velocity", "maximumSpeed")):
            wanted = 0 if limit is None else float(limit.get(key))
            assert given[name] == (wanted if wanted > 0 else numpy.inf)
        for key in ("damping", "friction"):
            assert given[key] == (0 if dynamics is None else float(dynamics.get(key, 0)))


def check_shape(node, geometry, sizes):
    (element,) = [child for child in geometry if child.tag in ("box", "sphere", "cylinder", "capsule", "mesh")]
    wanted = {
        "box": lambda: ("Box", numbers(element, "size", [0, 0, 0]) / 2),
        "sphere": lambda: ("Sphere", [float(element.get("radius"))]),
        "cylinder": lambda: ("Cylinder", [float(element.get("radius")), float(element.get("length"))]),
        "capsule": lambda: ("Capsule", [float(element.get("radius")), float(element.get("length"))]),
        "mesh": lambda: ("Mesh", numbers(element, "scale", [1, 1, 1]) * numpy.ones(3)),
    }
    kind, expected = wanted[element.tag]()
    assert sizes[0] == kind and list(sizes[1]) == pytest.approx(list(expected), abs=1e-9)
    if kind == "Mesh":
        assert node.properties["file"].endswith(element.get("filename").rpartition("/")[2])


def sizes_of(properties, kind):
    keys = {"Box": "halfExtents", "Mesh": "scale"}
    if kind in keys:
        return kind, properties[keys[kind]]
    return kind, [properties[key] for key in ("radius", "height") if key in properties]


def test_shapes_are_those_of_their_file(pair):
    model, robot = pair
    bodies = nodes(model, "Physics3D.Body")
    count = 0
    for link in robot.findall("link"):
        parts = bodies[link.get("name")].children
        shapes = [part for part in parts if "Geometries" in part.type]
        visuals = [part for part in parts if part.type == "Visuals.Visual"]
        for found, kind in ((shapes, "collision"), (visuals, "visual")):
            wanted = link.findall(kind)
            assert len(found) == len(wanted)
            for node, element in zip(found, wanted):
                shape = node.properties["shape"] if kind == "visual" else node.type
                check_shape(node, element.find("geometry"), sizes_of(node.properties, shape.rpartition(".")[2]))
                assert given_place(node) == pytest.approx(place(element), abs=1e-9)
                count += 1
    assert count > 0
