"""Models written as robot descriptions, read again by us and by another library."""

import pathlib

import gymnasium
import hyxtavlang
import mujoco
import numpy
import pytest

ASSETS = pathlib.Path(gymnasium.__file__).parent / "envs" / "mujoco" / "assets"
NAMED = ["walker2d", "hopper", "half_cheetah", "humanoid"]


def written(app, path):
    """The model without its ground, which the format does not have."""
    params = hyxtavlang.OptParams()
    result = app.loadTavLangFile(str(path), None, params)
    assert result.getErrors() == ()
    return result


@pytest.fixture
def arm(app, tmp_path):
    text = """<robot name="arm"><link name="base"/>
      <link name="upper"><inertial><origin xyz="0.1 0.2 0.3" rpy="0.3 -0.7 1.1"/><mass value="2"/>
        <inertia ixx="0.5" iyy="0.4" izz="0.3" ixy="0.1" ixz="-0.05" iyz="0.08"/></inertial>
        <visual name="shell"><origin rpy="0 1.5707963267948966 0"/><geometry>
          <cylinder radius="0.1" length="1"/></geometry>
          <material name="red"><color rgba="1 0 0 0.5"/></material></visual>
        <collision><geometry><box size="0.4 0.5 0.6"/></geometry></collision></link>
      <link name="tip"><inertial><mass value="1"/>
        <inertia ixx="1" iyy="1" izz="1" ixy="0" ixz="0" iyz="0"/></inertial></link>
      <joint name="shoulder" type="revolute"><parent link="base"/><child link="upper"/>
        <origin xyz="0 0 0.2" rpy="0.1 0.2 0.3"/><axis xyz="0 1 0"/>
        <limit lower="-1" upper="1.5" effort="500" velocity="3"/>
        <dynamics damping="0.5" friction="0.2"/></joint>
      <joint name="rail" type="prismatic"><parent link="upper"/><child link="tip"/><origin xyz="1 0 0"/>
        <axis xyz="0.6 0 0.8"/><limit lower="0" upper="2" effort="10" velocity="1"/>
        <mimic joint="shoulder" multiplier="0.5" offset="0.25"/></joint></robot>"""
    (tmp_path / "arm.urdf").write_text(text)
    return written(app, tmp_path / "arm.urdf")


def flat(value):
    return [number for item in value for number in flat(item)] if isinstance(value, tuple) else [value]


def test_a_robot_is_the_same_after_writing_and_reading(app, arm, tmp_path):
    (tmp_path / "again.urdf").write_text(arm.model.urdf())
    again = app.loadTavLangFile(str(tmp_path / "again.urdf"), None)
    assert again.getErrors() == ()
    before, after = list(arm.model.walk()), list(again.model.walk())
    assert [(node.type, node.name) for node in before] == [(node.type, node.name) for node in after]
    for one, other in zip(before, after, strict=True):
        assert one.properties.keys() == other.properties.keys()
        for key, value in one.properties.items():
            assert flat(other.properties[key]) == pytest.approx(flat(value), abs=1e-9), (one.name, key)


@pytest.mark.parametrize("name", NAMED)
def test_another_format_written_as_robot_description_weighs_the_same(app, name, tmp_path):
    tree = mujoco.MjSpec.from_file(str(ASSETS / f"{name}.xml"))
    for geom in list(tree.worldbody.geoms):
        tree.delete(geom)
    source = tmp_path / "model.xml"
    tree.compile()
    source.write_text(tree.to_xml())
    result = written(app, source)
    model = mujoco.MjModel.from_xml_path(str(source))
    text = result.model.urdf().replace(
        "</robot>",
        '<mujoco><compiler discardvisual="true" fusestatic="false" balanceinertia="true" boundmass="1e-9"'
        ' boundinertia="1e-12"/></mujoco></robot>',
    )
    again = mujoco.MjModel.from_xml_string(text)
    for index in range(1, model.nbody):
        body = model.body(index)
        assert again.body(body.name).mass == pytest.approx(body.mass, rel=1e-9)
        assert again.body(body.name).inertia == pytest.approx(body.inertia, rel=1e-6)
    joints = [model.joint(i).name for i in range(model.njnt) if model.jnt_type[i] != mujoco.mjtJoint.mjJNT_FREE]
    for joint in joints:
        assert again.joint(joint).range == pytest.approx(model.joint(joint).range, abs=1e-9)
    poses = [mujoco.MjData(model), mujoco.MjData(again)]
    random = numpy.random.default_rng(2)
    for joint in joints:
        value = random.uniform(-0.5, 0.5)
        for data, one in zip(poses, (model, again), strict=True):
            data.qpos[one.joint(joint).qposadr[0]] += value
    for data, one in zip(poses, (model, again), strict=True):
        mujoco.mj_kinematics(one, data)
    for index in range(2, model.nbody):
        body, root = model.body(index).name, model.body(1).name
        ways = [data.body(body).xipos - data.body(root).xipos for data in poses]
        assert numpy.linalg.norm(ways[0]) == pytest.approx(numpy.linalg.norm(ways[1]), abs=1e-7)


@pytest.mark.parametrize(
    "inside, told",
    [
        ('<body name="a"><joint type="ball"/><geom size="0.1"/></body>', "BallJoint"),
        ('<geom type="plane" size="1 1 1"/>', "Plane"),
        ("<body><joint/><geom size='0.1'/></body>", "a name of its own"),
    ],
)
def test_what_the_format_does_not_have_is_refused_in_words(app, tmp_path, inside, told):
    (tmp_path / "model.xml").write_text(f"<mujoco><worldbody>{inside}</worldbody></mujoco>")
    result = written(app, tmp_path / "model.xml")
    with pytest.raises(ValueError, match=told):
        result.model.urdf()
