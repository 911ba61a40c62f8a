"""States that a model's file describes, against the format's own library, and held by the drives."""

import pathlib

import gymnasium
import hyx
import mujoco
import numpy
import pytest

ASSETS = pathlib.Path(gymnasium.__file__).parent / "envs" / "mujoco" / "assets"
SQUAT = (
    "0.3 -0.2 1.0 0.9238795325112867 0 0 0.3826834323650898 "
    "0 0.3 0 -0.1 -0.2 -1.0 -1.2 -0.1 -0.2 -1.0 -1.2 0.3 -0.4 -0.8 -0.3 0.4 -0.8"
)
SPEEDS = "0.1 0.2 0.3 0.5 -0.4 0.3 " + " ".join(["0.2"] * 17)
CHAIN = """<mujoco model="chain"><worldbody><geom type="plane" size="3 3 0.1"/>
  <body name="base" pos="0 0 2"><freejoint/><geom size="0.1"/>
   <body name="upper" pos="0 0 -0.2"><joint name="ball" type="ball"/>
    <geom type="capsule" fromto="0 0 0 0 0 -0.5" size="0.05"/>
    <body name="lower" pos="0 0 -0.5"><joint name="a" axis="0 1 0"/><joint name="b" axis="1 0 0"/>
     <geom type="capsule" fromto="0 0 0 0.4 0 0" size="0.05"/></body></body></body></worldbody>
  <actuator><position joint="a" kp="5"/><motor joint="b"/></actuator>
  <keyframe><key name="bent" qpos="1 2 3 0.5 0.5 0.5 0.5 0.8 0 0.6 0 0.3 -0.4" ctrl="0.7 9"/>
    <key name="short" qpos="1 2 3"/></keyframe></mujoco>"""


@pytest.fixture
def load(app, tmp_path):
    def read(text):
        path = tmp_path / "model.xml"
        path.write_text(text)
        result = app.loadTavLangFile(str(path), None)
        assert result.getErrors() == ()
        model = mujoco.MjModel.from_xml_path(str(path))
        return result, model, mujoco.MjData(model)

    return read


def humanoid():
    text = (ASSETS / "humanoid.xml").read_text()
    keyframe = f'<keyframe><key name="squat" qpos="{SQUAT}" qvel="{SPEEDS}"/></keyframe>'
    return text.replace("</mujoco>", f"{keyframe}</mujoco>")


def check_places(app, model, data):
    for index in range(1, model.nbody):
        body = app.getSimulation().getRigidBody(model.body(index).name)
        if body is None:  # a part of its parent
            continue
        assert tuple(body.getPosition()) == pytest.approx(data.xpos[index], abs=1e-9)
        w, x, y, z = data.xquat[index]
        q = body.getTransform().getRotate()
        assert abs(numpy.dot((q.x, q.y, q.z, q.w), (x, y, z, w))) == pytest.approx(1, abs=1e-9)


@pytest.mark.parametrize("text, name", [(humanoid(), "squat"), (CHAIN, "bent")], ids=["humanoid", "chain"])
def test_a_keyframe_puts_bodies_where_the_format_says(app, load, text, name):
    result, model, data = load(text)
    mujoco.mj_resetDataKeyframe(model, data, 0)
    mujoco.mj_forward(model, data)
    for _ in range(3):  # whatever the state before
        result.apply_keyframe(name)
        check_places(app, model, data)
        app.getSimulation().step()
    if name == "bent":
        target = result.joints.target
        assert target[0] == pytest.approx(0.7) and numpy.isnan(target[1])
        with pytest.raises(ValueError, match="'short' has 3 numbers where the joints have 13"):
            result.apply_keyframe("short")
        with pytest.raises(ValueError, match="'bent'"):
            result.apply_keyframe("absent")


def test_a_keyframe_moves_bodies_as_the_format_says(app, load):
    result, model, data = load(humanoid())
    mujoco.mj_resetDataKeyframe(model, data, 0)
    mujoco.mj_forward(model, data)
    result.apply_keyframe("squat")
    for name in ("torso", "left_shin", "right_lower_arm"):
        given, velocity = app.getSimulation().getRigidBody(name), numpy.zeros(6)
        mujoco.mj_objectVelocity(model, data, mujoco.mjtObj.mjOBJ_XBODY, model.body(name).id, velocity, 0)
        assert tuple(given.getAngularVelocity()) == pytest.approx(velocity[:3], abs=1e-6)
        at_origin = given.getPointVelocity(hyx.Vec3(*data.xpos[model.body(name).id]))
        assert tuple(at_origin) == pytest.approx(velocity[3:], abs=1e-6)


def test_a_humanoid_holds_its_keyframe_within_its_limits(app, load):
    result, _, _ = load(humanoid().replace(f'qvel="{SPEEDS}"', ""))
    result.apply_keyframe("squat")
    joints, simulation = result.joints, app.getSimulation()
    joints.target = wanted = joints.position
    lower, upper = numpy.array(joints.getLowerLimits()), numpy.array(joints.getUpperLimits())
    farthest = 0.0
    for _ in range(round(10 / simulation.getTimeStep())):
        simulation.step()
        position = joints.position
        farthest = max(farthest, (lower - position).max(), (position - upper).max())
    assert farthest < 0.02  # rad
    assert numpy.isfinite(joints.position).all() and abs(joints.position - wanted).max() < 0.8
    assert 0 < simulation.getRigidBody("torso").getPosition().z < 1.4
