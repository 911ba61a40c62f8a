"""Scenes in JSON as model trees: joints by name, lines of errors, what is not carried over."""

import json
import math

import hyx
import hyxOSG
import pytest

SCENE = {
    "name": "yard",
    "gravity": [0, 0, 0],
    "bodies": [
        {"name": "ground", "motion": "static", "geometries": [{"shape": "plane"}]},
        {"name": "arm", "position": [1, 0, 2], "geometries": [{"shape": "box", "halfExtents": [1, 0.1, 0.1]}]},
        {
            "name": "top",
            "position": [0, 0, 5],
            "mass": 3,
            "geometries": [
                {"shape": "cone", "radius": 0.5, "height": 1, "position": [0, 0, 1], "rpy": [90, 0, 0]},
                {"shape": "sphere", "radius": 0.5, "color": [0, 1, 0, 0.5], "glow": 3},
            ],
        },
        {"name": "lift", "motion": "kinematics", "position": [0, 9, 0], "velocity": [0, 0, 1]},
    ],
    "constraints": [
        {"name": "pivot", "type": "hinge", "body1": "ground", "body2": "arm", "position": [0, 0, 2], "axis": [0, 2, 0]},
        {"name": "hook", "type": "lock", "body1": "top", "body2": "arm"},
        {"name": "rail", "type": "prismatic", "body1": "top", "speed": 0.5, "range": [0, 2]},
    ],
}


@pytest.fixture
def load(app, tmp_path):
    def make(scene, indent=1):
        text = scene if isinstance(scene, str) else json.dumps(scene, indent=indent)
        (tmp_path / "scene.json").write_text(text)
        return app.loadTavLangFile(str(tmp_path / "scene.json"), app.getSceneRoot())

    return make


def without(*names):
    return SCENE | {"constraints": [joint for joint in SCENE["constraints"] if joint["name"] not in names]}


def test_joints_of_a_scene_are_moved_by_name(app, load):
    result = load(without("hook", "rail"))
    assert result.getErrors() == () and result.getModelName() == "yard" and result.joints.names == ("pivot",)
    result.joints.position = [math.pi / 2]
    # The ground stands first in the file and still, so its turn against the arm is told: the arm goes the other way.
    assert tuple(app.getSimulation().getRigidBody("arm").getPosition()) == pytest.approx((0, 0, 3), abs=1e-9)


def test_bodies_weigh_stand_and_move_as_the_scene_says(app, load):
    result = load(SCENE)
    top, lift = (app.getSimulation().getRigidBody(name) for name in ("top", "lift"))
    cone, ball = math.pi / 12, math.pi / 6  # volumes; the cone's centre is a quarter of its height above its base
    assert top.getMass() == pytest.approx(3)
    assert top.getCenterOfMass().z == pytest.approx(cone * 0.75 / (cone + ball), abs=5e-3)
    assert len(app.getSimulation().getConstraints()) == 3 and len(result.joints) == 2
    for _ in range(60):
        app.getSimulation().step()
    assert lift.getMotionControl() == hyx.RigidBody.KINEMATICS
    assert lift.getPosition().z == pytest.approx(app.getSimulation().getTimeStamp(), rel=1e-6)
    assert top.getVelocity().z == pytest.approx(0.5, abs=1e-3)


def test_what_a_scene_does_not_carry_over_is_named_with_its_line(load, tmp_path):
    (remark,) = load(SCENE).model.getRemarks()
    lines = (tmp_path / "scene.json").read_text().splitlines()
    number = 1 + next(index for index, line in enumerate(lines) if "glow" in line)
    assert remark == f'{tmp_path}/scene.json:{number}: "glow" is not carried over'


@pytest.mark.parametrize(
    "path, value, told",
    [
        (("gravity",), [0, 0], "expected 3 numbers, not [0,0]"),
        (("bodies", 1, "mass"), -2, "expected a number above 0, not -2"),
        (("bodies", 1, "rotation"), [0, 0, 0, 0], "expected a quaternion"),
        (("bodies", 1, "geometries", 0, "halfExtents"), [1, -1, 1], "half extents"),
        (("bodies", 2, "geometries", 1, "radius"), "wide", 'expected a number, not "wide"'),
        (("bodies", 2, "geometries", 1, "material"), "glass", 'there is no "glass"'),
        (("bodies", 3, "motion"), "upwards", "expected dynamics, kinematics or static"),
        (("constraints", 0, "axis"), [0, 0, 0], "expected a direction"),
        (("constraints", 2, "range"), [2, 0], "a lower and an upper end"),
        (("constraints", 2, "type"), "glue", "expected hinge, prismatic, ball or lock"),
        (("constraints", 2, "body1"), "nobody", 'there is no "nobody"'),
    ],
)
def test_wrong_values_are_told_with_their_lines(app, load, tmp_path, path, value, told):
    scene = json.loads(json.dumps(SCENE))
    part = scene
    for key in path[:-1]:
        part = part[key]
    part[path[-1]] = value
    (error,) = load(scene).getErrors()
    number = int(error.removeprefix(f"{tmp_path}/scene.json:").partition(":")[0])
    # The value itself, or the object that has it.
    lines = (tmp_path / "scene.json").read_text().splitlines()
    assert told in error and number <= len(lines)
    if "not " in told:
        assert f'"{path[-1]}"' in lines[number - 1]
    assert app.getSimulation().getRigidBodies() == [] and app.getSceneRoot().getNumChildren() == 0


@pytest.mark.parametrize(
    "text, line", [('{"bodies": [\n{]\n', 2), ('{\n\n"gravity": [1e999, 0, 0]}', 3), ("[]", 1), ("", 1), ("{\n\n", 3)]
)
def test_what_is_no_scene_is_told_where_it_ends_to_be_one(load, tmp_path, text, line):
    (error,) = load(text).getErrors()
    assert error.startswith(f"{tmp_path}/scene.json:{line}: ")


def test_shapes_of_a_scene_are_found_and_coloured_as_those_of_scripts(window, load):
    result = load(SCENE)
    _, ball = result.getAssembly().getRigidBody("top").getGeometries()
    node = hyxOSG.findGeometryNode(ball, window.getSceneRoot())
    assert list(node.getStateSet().getMaterial().getDiffuse()) == [0, 1, 0, 0.5]
