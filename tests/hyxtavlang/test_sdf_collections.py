"""SDF models of a collection against the reading of the format's own library."""

import json
import subprocess

import numpy
import pytest
from model_collection import SHARE, needs_models
from subprocesses import BUILD

pytestmark = needs_models

FILES = [
    "examples/acrobot/Acrobot",
    "examples/multibody/cart_pole/cart_pole",
    "examples/planar_gripper/planar_gripper",
    "examples/planar_gripper/planar_brick",
    "examples/quadrotor/warehouse",
    "examples/manipulation_station/models/cupboard",
    "examples/manipulation_station/models/bin",
    "examples/manipulation_station/models/061_foam_brick",
    "examples/kuka_iiwa_arm/models/desk/transcendesk55inch",
    "examples/kuka_iiwa_arm/models/table/extra_heavy_duty_table",
    "manipulation/models/wsg_50_description/sdf/schunk_wsg_50",
    "manipulation/models/wsg_50_description/sdf/schunk_wsg_50_ball_contact",
]


@pytest.fixture(params=FILES, ids=lambda name: name.rpartition("/")[2])
def pair(request, app):
    """What we and what the format's library read from one file."""
    path = SHARE / f"{request.param}.sdf"
    result = app.loadTavLangFile(str(path), None)
    assert result.getErrors() == ()
    done = subprocess.run([BUILD / "test_modules" / "sdf_reading", path], capture_output=True, text=True, timeout=60)
    assert done.returncode == 0, done.stderr
    return result, json.loads(done.stdout)


def matrix(numbers):
    return numpy.array(numbers).reshape(4, 4)


def test_links_weigh_stand_and_are_shaped_as_the_library_says(pair):
    result, expected = pair
    bodies = [node for node in result.model.children if node.type == "Physics3D.Body"]
    assert [body.name for body in bodies] == [link["name"] for link in expected["links"]]
    for body, link in zip(bodies, expected["links"]):
        given = body.properties
        place = matrix(expected["pose"]) @ matrix(link["pose"])
        assert matrix(given["transform"]).T == pytest.approx(place, abs=1e-9)
        if "mass" in given:
            assert given["mass"] == link["mass"]
            assert given["centerOfMass"] == pytest.approx(link["center"], abs=1e-9)
            xx, yy, zz, xy, xz, yz = given["inertia"]
            assert [xx, xy, xz, xy, yy, yz, xz, yz, zz] == pytest.approx(link["inertia"], rel=1e-9, abs=1e-12)
        shapes = {node.name: node for node in body.children if node.type.startswith("Physics3D.Geometries")}
        for shape in link["shapes"]:
            if shape["shape"]:
                check_shape(shapes[shape["name"]], shape)


def check_shape(node, expected):
    ((kind, sizes),) = expected["shape"].items()
    given = node.properties
    assert node.type == f"Physics3D.Geometries.{kind}"
    found = {
        "Box": lambda: [2 * half for half in given["halfExtents"]],
        "Sphere": lambda: [given["radius"]],
        "Cylinder": lambda: [given["radius"], given["height"]],
        "Mesh": lambda: given["scale"],
    }[kind]()
    assert list(found) == pytest.approx(sizes, abs=1e-9)
    assert matrix(given["transform"]).T == pytest.approx(matrix(expected["pose"]), abs=1e-9)


def test_joints_turn_about_the_axes_and_within_the_limits_that_the_library_says(pair):
    result, expected = pair
    joints = {node.name: node.properties for node in result.model.children if node.type.startswith("Robotics.Joints")}
    wanted = expected.get("joints") or []
    assert joints.keys() == {joint["name"] for joint in wanted}
    for joint in wanted:
        given = joints[joint["name"]]
        assert given["child"] == joint["child"] and given["parent"] == joint["parent"].replace("world", "")
        assert given["anchor"] == pytest.approx(joint["anchor"], abs=1e-9)
        if "axis" not in joint or "damping" not in given:
            continue
        assert given["axis"] == pytest.approx(joint["axis"], abs=1e-9)
        lower, upper, effort, speed, damping, friction = (
            numpy.inf if number is None else number for number in joint["numbers"]
        )
        if "lower" in given:
            assert (given["lower"], given["upper"]) == pytest.approx((lower, upper), abs=1e-9)
        else:
            assert abs(lower) >= 1e15 and upper >= 1e15
        assert given["maximumEffort"] == effort or (numpy.isinf(given["maximumEffort"]) and not 0 <= effort < 1e15)
        assert given["maximumSpeed"] == speed or (numpy.isinf(given["maximumSpeed"]) and not 0 <= speed < 1e15)
        assert (given["damping"], given["friction"]) == pytest.approx((damping, friction), abs=1e-9)
