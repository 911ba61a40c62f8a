"""Robot models loaded from their descriptions."""

import math
import textwrap

import _hyxOSG
import hyx
import hyxIO
import hyxtavlang
import pytest
from application_stage import difference
from zmq_client import Client

ARM = """<robot name="arm">
  <link name="base">
    <visual><geometry><box size="0.4 0.4 0.2"/></geometry>
      <material name="red"><color rgba="1 0 0 1"/></material></visual>
    <collision><geometry><box size="0.4 0.4 0.2"/></geometry></collision>
  </link>
  <link name="upper">
    <inertial><origin xyz="0 0 0.5"/><mass value="2"/>
      <inertia ixx="0.2" iyy="0.2" izz="0.01" ixy="0" ixz="0" iyz="0"/></inertial>
    <visual><origin xyz="0 0 0.5"/><geometry><cylinder radius="0.05" length="1"/></geometry></visual>
    <collision><origin xyz="0 0 0.5"/><geometry><cylinder radius="0.05" length="1"/></geometry></collision>
  </link>
  <link name="tip"><collision><geometry><sphere radius="0.1"/></geometry></collision></link>
  <link name="slide"><inertial><mass value="1"/>
      <inertia ixx="1" iyy="1" izz="1" ixy="0" ixz="0" iyz="0"/></inertial></link>
  <joint name="shoulder" type="revolute">
    <parent link="base"/><child link="upper"/><origin xyz="0 0 0.2"/><axis xyz="0 1 0"/>
    <limit lower="-1" upper="1.5" effort="500" velocity="3"/>
  </joint>
  <joint name="grip" type="fixed"><parent link="upper"/><child link="tip"/><origin xyz="0 0 1"/></joint>
  <joint name="rail" type="prismatic">
    <parent link="base"/><child link="slide"/><origin xyz="1 0 0"/><axis xyz="1 0 0"/>
    <limit lower="0" upper="2" effort="10" velocity="1"/>
  </joint>
</robot>"""


@pytest.fixture
def description(tmp_path):
    def write(text=ARM, name="arm.urdf"):
        (tmp_path / name).write_text(textwrap.dedent(text))
        return str(tmp_path / name)

    return write


def test_links_become_bodies_and_joints_constraints(app, description):
    result = app.loadTavLangFile(description(), app.getSceneRoot())
    assert result.isSuccess() and result.getErrors() == () and result.getModelName() == "arm"
    bodies = {body.getName(): body for body in result.getAssembly().getRigidBodies()}
    assert set(bodies) == {"base", "upper", "slide"}  # the massless tip is a part of the upper arm
    assert bodies["upper"].getMass() == 2 and bodies["upper"].getCenterOfMass().z == pytest.approx(0.5)
    assert bodies["upper"].getPosition().z == pytest.approx(0.2) and len(bodies["upper"].getGeometries()) == 2
    assert bodies["base"].getMotionControl() == hyx.RigidBody.STATIC
    assert {joint.getName() for joint in app.getSimulation().getConstraints()} == {"shoulder", "rail"}
    assert app.getSceneRoot().getNumChildren() == 1


def test_a_joint_moves_about_its_axis_within_its_limits(app, description):
    app.loadTavLangFile(description(), None)
    upper = app.getSimulation().getRigidBody("upper")
    upper.setAngularVelocity(hyx.Vec3(0, 0.5, 0))
    for _ in range(240):
        app.step()
    direction = upper.getRotation() * hyx.Vec3(0, 0, 1)
    assert math.atan2(direction.x, direction.z) == pytest.approx(1.5, abs=0.05)
    assert direction.y == pytest.approx(0, abs=1e-2)


def test_options_choose_base_prefix_and_folders(app, description):
    params = hyxtavlang.OptParams()
    params.setNamePrefix("left_")
    params.setFixedBase(True)
    result = app.loadTavLangFile(description(), None, params)
    assert sorted(body.getName() for body in result.getAssembly().getRigidBodies()) == [
        "left_base",
        "left_slide",
        "left_upper",
    ]


MESH = ARM.replace(
    '<box size="0.4 0.4 0.2"/></geometry></collision>',
    '<mesh filename="package://arm_parts/base.obj"/></geometry></collision>',
)
OBJ = "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 3 4\nf 1 4 3\n"


def test_meshes_are_looked_for_in_the_bundle_paths(app, description, tmp_path, monkeypatch):
    path = description(MESH)
    result = app.loadTavLangFile(path, app.getSceneRoot())
    assert not result.isSuccess() and "base.obj" in result.getErrors()[0] and result.getAssembly() is None
    assert app.getSimulation().getRigidBodies() == [] and app.getSceneRoot().getNumChildren() == 0
    (tmp_path / "bundles" / "arm_parts").mkdir(parents=True)
    (tmp_path / "bundles" / "arm_parts" / "base.obj").write_text(OBJ)
    monkeypatch.setenv("HYX_BUNDLE_PATH", str(tmp_path / "bundles"))
    assert app.loadTavLangFile(path, None).isSuccess()


@pytest.mark.parametrize(
    "text, name, error",
    [
        ("<robot", "broken.urdf", ""),
        ("<robot name='x'></robot>", "empty.urdf", ""),
        (ARM, "arm.closed", "is of a closed format"),
    ],
)
def test_what_cannot_be_loaded_is_listed_and_nothing_changes(app, description, text, name, error, capfd):
    result = app.loadTavLangFile(description(text, name), app.getSceneRoot())
    assert not result.isSuccess() and any(error in line for line in result.getErrors())
    assert app.getSimulation().getRigidBodies() == [] and app.getSceneRoot().getNumChildren() == 0
    assert capfd.readouterr() == ("", "")


def test_a_missing_file_is_an_error_which_the_flat_function_lists(app, tmp_path):
    assert "nowhere" in _hyxOSG.ExampleApplication_loadTavLangFile(app, "/nowhere/arm.urdf", None).getErrors()[0]
    with pytest.raises(FileNotFoundError, match="/nowhere/arm.urdf"):
        app.loadTavLangFile("/nowhere/arm.urdf", None)
    with pytest.raises(IsADirectoryError):
        app.loadTavLangFile(tmp_path, None)
    (tmp_path / "empty.urdf").touch()
    assert "empty.urdf' is empty" in app.loadTavLangFile(tmp_path / "empty.urdf", None).getErrors()[0]


def test_the_name_of_the_model_is_checked(app, description):
    assert app.getTavLangModelName() == ""
    app.setTavLangModelName("leg")
    assert app.getTavLangModelName() == "leg"
    result = app.loadTavLangFile(description(), None)
    assert not result.isSuccess() and "leg" in result.getErrors()[0]
    app.setTavLangModelName("arm")
    assert app.loadTavLangFile(description(), None).isSuccess()


def test_bundle_paths_come_from_options_environment_and_argument(app, monkeypatch):
    monkeypatch.delenv("HYX_BUNDLE_PATH", raising=False)
    assert app.getTavLangBundlePaths() == () and app.getTavLangDebugRenderFrames() is False
    assert app.getTavLangBundlePaths(["c"]) == ("c",)
    monkeypatch.setenv("HYX_BUNDLE_PATH", "a:b")
    app.init(hyxIO.ArgumentParser(["--bundle-path", "x:y", "--model", "arm", "--debug-frames"]))
    assert app.getTavLangBundlePaths(["c"]) == ("x", "y", "a", "b", "c")
    assert app.getTavLangModelName() == "arm" and app.getTavLangDebugRenderFrames()


def test_another_process_drives_the_joints(app, description):
    assert app.getTavLangUseClick() is False and app.getTavLangClickServerAddr() == ""
    app.init(hyxIO.ArgumentParser(["--click-port", "0", "--rpc-token", "secret"]))
    app.initRpc()
    assert app.getTavLangUseClick() and not app.useCoSimulation()
    host, _, port = app.getTavLangClickServerAddr().rpartition(":")
    assert host == "tcp://127.0.0.1"
    app.loadTavLangFile(description(), None)
    client = Client(int(port), "secret")
    try:
        assert client.ask(app, do="drive", joint="shoulder", speed=0.5)["ok"]
        for _ in range(60):
            app.step()  # the loop steps on its own
        joints = client.ask(app, do="joints")["joints"]
        assert set(joints) == {"shoulder", "rail"}
        assert joints["shoulder"]["position"] == pytest.approx(0.5, rel=1e-2) and joints["shoulder"]["motor"] == 0.5
        assert joints["shoulder"]["speed"] == pytest.approx(0.5, rel=1e-2) and joints["rail"]["motor"] is None
        assert client.ask(app, do="drive", joint="shoulder", speed=-2, force=1e-6)["ok"]
        for _ in range(10):
            app.step()
        shoulder = client.ask(app, do="joints")["joints"]["shoulder"]
        assert (
            abs(shoulder["force"]) == pytest.approx(1e-6) and shoulder["speed"] > 0.5
        )  # falls, as if there were no motor
        assert client.ask(app, do="drive", joint="shoulder", speed=None)["ok"]
        assert client.ask(app, do="joints")["joints"]["shoulder"]["motor"] is None
        for wrong in (dict(joint="grip", speed=1), dict(joint="rail", speed="fast"), dict(joint="rail", force=-1)):
            answer = client.ask(app, do="drive", **wrong)
            assert not answer["ok"] and answer["error"]
    finally:
        client.close()


def test_frames_of_links_are_shown_on_demand(window, description, shoot):
    window.setCameraHome(hyx.Vec3(2, -2, 2), hyx.Vec3(0, 0, 0.5))
    path = description()
    window.loadTavLangFile(path, window.getSceneRoot())
    plain = shoot(window)
    window.clearScene()
    window.init(hyxIO.ArgumentParser(["--debug-frames"]))
    window.loadTavLangFile(path, window.getSceneRoot())
    assert difference(plain, shoot(window)) > 5


def test_visuals_have_their_colours_and_follow_their_bodies(window, description, shoot):
    window.setCameraHome(hyx.Vec3(0, -4, 0.5), hyx.Vec3(0, 0, 0.5))
    empty = shoot(window)
    window.loadTavLangFile(description(), window.getSceneRoot())
    standing = shoot(window)
    changed = abs(standing - empty).max(axis=2) > 24
    red = (standing[..., 0] > standing[..., 1] + 60) & changed
    assert red.sum() > 50 and (changed & ~red).sum() > 50
    window.getSimulation().getRigidBody("upper").setRotation(hyx.Quat(math.pi / 4, hyx.Vec3(0, 1, 0)))
    assert difference(standing, shoot(window)) > 50
