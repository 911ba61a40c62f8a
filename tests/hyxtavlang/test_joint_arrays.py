"""The joints of a model as arrays: positions, velocities, efforts and targets; the tree as Python walks it."""

import math

import hyx
import hyxtavlang
import mujoco
import numpy
import pytest

ARM = """<mujoco model="arm">
  <compiler angle="radian"/>
  <option gravity="0 0 -9.81"/>
  <default><geom type="capsule" density="500"/>
    <default class="soft"><joint stiffness="40" damping="4"/></default></default>
  <worldbody>
    <body name="upper" pos="0 0 2">
      <joint name="shoulder_x" axis="1 0 0" damping="0.2"/>
      <joint name="shoulder_y" axis="0 1 0" range="-1 1" damping="0.2"/>
      <geom fromto="0 0 0 0 0 -0.5" size="0.04"/>
      <body name="lower" pos="0 0 -0.5" childclass="soft">
        <joint name="elbow" axis="0 1 0" pos="0 0 0.02"/>
        <geom fromto="0 0 0 0 0 -0.4" size="0.03"/>
        <body name="hand" pos="0 0 -0.4"><joint name="reach" class="main" type="slide" axis="0 0 -1" range="0 0.2"/>
          <geom type="sphere" size="0.05"/></body>
      </body>
    </body>
  </worldbody>
  <actuator><position joint="shoulder_y" kp="300" kv="20"/><motor joint="reach" gear="2"/></actuator>
</mujoco>"""


@pytest.fixture
def load(app, tmp_path):
    def make(text=ARM, name="model.xml", params=None):
        (tmp_path / name).write_text(text)
        return app.loadTavLangFile(str(tmp_path / name), None, params or hyxtavlang.OptParams())

    return make


def run(app, seconds):
    simulation = app.getSimulation()
    for _ in range(round(seconds / simulation.getTimeStep())):
        simulation.step()


def test_positions_and_velocities_are_those_that_were_set(app, load):
    joints = load().joints
    assert joints.names == ("shoulder_x", "shoulder_y", "elbow", "reach") and len(joints) == 4
    joints.position = pose = (0.4, -0.3, 1.2, 0.1)
    joints.velocity = speeds = (1.0, -2.0, 0.5, 0.2)
    assert joints.position == pytest.approx(pose, abs=1e-9)
    assert joints.velocity == pytest.approx(speeds, abs=1e-6)
    assert joints.getLowerLimits()[1] == -1 and math.isinf(joints.getUpperLimits()[0])


def test_a_drive_holds_its_target_with_the_gain_of_the_file(app, load):
    joints = load().joints
    assert numpy.isnan(joints.target).all()
    joints.target = (math.nan, 0.5, math.nan, math.nan)
    assert joints.target[1] == 0.5
    data = mujoco.MjData(model := mujoco.MjModel.from_xml_string(ARM))
    data.ctrl[0] = 0.5
    mujoco.mj_step(model, data, 3000)
    run(app, 6)
    assert joints.position[:3] == pytest.approx(data.qpos[:3], abs=5e-3)
    assert joints.effort[1] == pytest.approx(data.actuator_force[0], rel=0.05)
    joints.target = [math.nan] * 4
    run(app, 6)
    assert abs(joints.position[1]) < 0.05  # hangs


ROBOT = """<robot name="r"><link name="base"/><link name="arm"><inertial><mass value="2"/>
<inertia ixx="1" iyy="1" izz="1" ixy="0" ixz="0" iyz="0"/></inertial></link>
<joint name="turn" type="{}"><parent link="base"/><child link="arm"/><axis xyz="0 1 0"/>
<limit lower="-3" upper="3" effort="500" velocity="0.8"/></joint></robot>"""


@pytest.mark.parametrize("kind", ["revolute", "prismatic"])
@pytest.mark.parametrize("step", [1 / 60, 1 / 240])
def test_targets_are_gone_to_no_faster_than_the_limits(app, load, kind, step):
    joints = load(ROBOT.format(kind), "robot.urdf").joints
    app.getSimulation().setTimeStep(step)
    joints.target = [-1.0]
    run(app, 1)
    assert joints.position == pytest.approx([-0.8], abs=0.02) and joints.velocity == pytest.approx([-0.8], abs=1e-3)
    run(app, 0.5)
    assert joints.position == pytest.approx([-1.0], abs=1e-6) and joints.velocity == pytest.approx([0], abs=1e-3)


def test_an_effort_acts_until_it_is_changed(app, load):
    joints = load().joints
    weight = 9.81 * app.getSimulation().getRigidBody("hand").getMass()
    joints.position = (0, 0, 0, 0.1)
    joints.effort = (0, 0, 0, -weight)
    run(app, 1)
    assert joints.position[3] == pytest.approx(0.1, abs=1e-3) and joints.effort[3] == pytest.approx(-weight)
    joints.effort = [0] * 4
    run(app, 1)
    assert joints.position[3] == pytest.approx(0.2, abs=1e-3)


@pytest.mark.parametrize(
    "numbers, error",
    [((0, 0, 0), ValueError), ((0, 0, 0, math.nan), ValueError), (("a",) * 4, TypeError), (3, TypeError)],
)
def test_wrong_numbers_are_refused(load, numbers, error):
    joints = load().joints
    before = list(joints.position)
    for name in ("position", "velocity", "effort"):
        with pytest.raises((error, RuntimeError)):
            setattr(joints, name, numbers)
    assert list(joints.position) == before


def test_three_links_fall_as_in_the_format(app, load):
    text = ARM.replace('class="main" type="slide" axis="0 0 -1" range="0 0.2"', 'class="soft" axis="1 0 0"')
    text = text.replace('<motor joint="reach" gear="2"/>', "").replace('kv="20"', 'kv="1"')
    joints = load(text).joints
    model = mujoco.MjModel.from_xml_string(text)
    model.opt.timestep, model.opt.integrator = 1e-4, mujoco.mjtIntegrator.mjINT_RK4
    model.opt.disableflags |= mujoco.mjtDisableBit.mjDSBL_CONTACT
    data = mujoco.MjData(model)
    model.actuator_gainprm[:] = model.actuator_biasprm[:, 1] = 0
    data.qpos[:] = joints.position = (0.9, -0.5, 0.7, 0.3)
    app.getSimulation().setTimeStep(1 / 240)
    for _ in range(4):
        run(app, 0.25)
        mujoco.mj_step(model, data, 2500)
        assert joints.position == pytest.approx(data.qpos, abs=0.03)


def test_the_tree_tells_of_its_parts(load):
    result = load()
    tree = result.model
    assert tree.type == "Physics3D.System" and tree.name == "arm" and tree.getLine() == 1
    kinds = [node.type for node in tree.walk()]
    assert kinds.count("Physics3D.Body") == 3 and "Robotics.Joints.PositionHingeJoint" in kinds
    (gain,) = [node.properties["gain"] for node in tree.walk() if "PositionHinge" in node.type]
    assert gain == 300
    text = str(tree)
    assert "Physics3D.Body lower" in text and "shoulder_y" in text and text.count("\n") > 60
    with pytest.raises((IndexError, RuntimeError)):
        tree.getChild(99)
    assert not hyxtavlang.LoadResult().model and hyxtavlang.LoadResult().joints is None


def test_what_is_not_carried_over_is_told_once_with_its_line(load):
    text = ARM.replace('damping="0.2"', 'damping="0.2" armature="1"').replace("</mujoco>", "<sensor/>\n</mujoco>")
    remarks = load(text).model.getRemarks()
    assert len(remarks) == 2 and all("model.xml:" in line and "not carried over" in line for line in remarks)
    assert any('model.xml:8: "armature" of <joint>' in line for line in remarks)


@pytest.mark.parametrize(
    "old, new, line, told",
    [
        ('axis="1 0 0"', 'axis="1 0"', 8, 'expected 3 numbers in "axis", not 2'),
        ('size="0.04"', 'size="-1"', 10, "above 0"),
        ('childclass="soft"', 'childclass="hard"', 12, '"hard"'),
        ('type="slide"', 'type="slip"', 14, '"slip"'),
        ('range="-1 1"', 'range="1 -1"', 9, "range"),
        ('gear="2"', 'gear="two"', 19, '"two"'),
        ('name="hand"', 'name="upper"', 14, "another body"),
        ("</body>", "</bodies>", 14, "no XML"),
        ('<mujoco model="arm">', '<mujoco model="arm"><include file="absent.xml"/>', 1, "absent.xml"),
        ("<worldbody>", '<worldbody><geom type="mesh" mesh="gear"/>', 6, '"gear"'),
        (
            "<worldbody>",
            '<worldbody><body><freejoint/><geom type="plane" size="1 1 1"/></body>',
            6,
            "expected in the world",
        ),
    ],
)
def test_errors_name_file_line_and_what_was_expected(app, load, old, new, line, told):
    assert old in ARM
    result = load(ARM.replace(old, new))
    (error,) = result.getErrors()
    assert f"model.xml:{line}: " in error and told in error
    assert result.getAssembly() is None and result.joints is None
    assert app.getSimulation().getRigidBodies() == []


def test_shapes_collide_as_their_bits_say(app, load):
    shapes = "".join(
        f'<body name="{name}" pos="{x} 0 {height}"><freejoint/><geom size="0.1" {bits}/></body>'
        for name, x, height, bits in (
            ("lands", 0, 0.2, ""),
            ("falls", 1, 0.2, 'contype="2" conaffinity="2"'),
            ("rests", 0, 0.5, 'contype="0"'),
        )
    )
    text = f'<mujoco><worldbody><geom type="plane" size="5 5 1"/>{shapes}</worldbody></mujoco>'
    assert load(text).getErrors() == ()
    run(app, 1)
    height = {name: app.getSimulation().getRigidBody(name).getPosition().z for name in ("lands", "falls", "rests")}
    assert height["lands"] == pytest.approx(0.1, abs=0.01) and height["falls"] < -1
    assert height["rests"] > 0.08
