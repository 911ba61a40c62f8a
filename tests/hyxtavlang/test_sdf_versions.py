"""SDF files of versions that are newer than the library that reads them, and lights and sensors that they have."""

import math

import pytest

FINGERS = """<sdf version="{version}">
  <model name="hand"><static>false</static>
    <link name="palm"><inertial><mass>3</mass></inertial></link>
    <link name="left"><pose>0.1 0 0 0 0 0</pose><inertial><mass>1</mass></inertial></link>
    <link name="right"><pose>-0.1 0 0 0 0 0</pose><inertial><mass>1</mass></inertial>
      <collision name="c"><geometry>{mesh}</geometry></collision></link>
    <joint name="fixed" type="fixed"><parent>world</parent><child>palm</child></joint>
    <joint name="lead" type="revolute"><parent>palm</parent><child>left</child><axis><xyz>0 0 1</xyz></axis></joint>
    <joint name="follow" type="revolute"><parent>palm</parent><child>right</child>
      <axis><xyz>0 0 1</xyz><mimic joint="{leader}"><multiplier>-2</multiplier><offset>0.3</offset>
        <reference>0.1</reference></mimic></axis></joint>
  </model>
</sdf>"""
SPHERE = "<sphere><radius>0.05</radius></sphere>"


@pytest.fixture
def load(app, tmp_path):
    def make(version="1.10", mesh=SPHERE, leader="lead"):
        (tmp_path / "hand.sdf").write_text(FINGERS.format(version=version, mesh=mesh, leader=leader))
        return app.loadTavLangFile(str(tmp_path / "hand.sdf"), None)

    return make


@pytest.mark.parametrize("version", ["1.10", "1.11", "1.12"])
def test_newer_versions_are_read_and_told(load, tmp_path, version):
    result = load(version)
    assert result.getErrors() == ()
    remarks = result.model.getRemarks()
    assert remarks[0].startswith(f"{tmp_path}/hand.sdf:1: version {version} is read as 1.9")
    assert all("hyx-sdf" not in remark for remark in remarks)


def test_joints_that_mimic_others_follow_them(app, load):
    result = load()
    (mimic,) = [node for node in result.model.children if node.type == "Robotics.Mimic"]
    assert mimic.properties["follower"] == "follow" and mimic.properties["leader"] == "lead"
    result.joints.target = [0.5, math.nan]
    for _ in range(120):
        app.getSimulation().step()
    assert result.joints.position == pytest.approx([0.5, -2 * (0.5 - 0.1) + 0.3], abs=1e-3)


@pytest.mark.parametrize(
    "changes, line, told",
    [
        ({"mesh": "<mesh><uri>none.obj</uri></mesh>"}, 6, "none.obj"),
        ({"leader": "nobody"}, 9, "cannot follow 'nobody'"),
        ({"leader": "follow"}, 9, "cannot follow"),
        ({"version": "1.13"}, 1, "from 1.0 to 1.12"),
        ({"version": "2.0"}, 1, "from 1.0 to 1.12"),
    ],
)
def test_errors_name_the_file_that_was_written(load, tmp_path, changes, line, told):
    (error,) = load(**changes).getErrors()
    assert error.startswith(f"{tmp_path}/hand.sdf:{line}: ") and told in error


def test_a_newer_model_is_included_with_what_lies_beside_it(app, tmp_path):
    folder = tmp_path / "parts"
    folder.mkdir()
    (folder / "corner.obj").write_text("v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 3 4\nf 1 4 3\n")
    mesh = "<mesh><uri>corner.obj</uri></mesh>"
    (folder / "hand.sdf").write_text(FINGERS.format(version="1.11", mesh=mesh, leader="lead"))
    (tmp_path / "world.sdf").write_text(
        '<sdf version="1.9"><world name="w"><include><uri>parts/hand.sdf</uri></include></world></sdf>'
    )
    result = app.loadTavLangFile(str(tmp_path / "world.sdf"), None)
    assert result.getErrors() == () and app.getSimulation().getRigidBody("hand::right") is not None
    assert result.model.getRemarks()[0].startswith(f"{folder}/hand.sdf:1: ")
    (folder / "corner.obj").unlink()
    assert (
        f"{folder}/hand.sdf:6: the file 'corner.obj'"
        in app.loadTavLangFile(str(tmp_path / "world.sdf"), None).getErrors()[0]
    )


LIGHTS = """<sdf version="1.9"><world name="w">
  <light name="sun" type="directional"><cast_shadows>true</cast_shadows><diffuse>1 0.9 0.8 1</diffuse>
    <direction>0 0.6 -0.8</direction></light>
  <light name="lamp" type="spot"><pose>0 0 3 0 0 0</pose><direction>0 0 -1</direction><intensity>0.5</intensity>
    <diffuse>1 1 1 1</diffuse><spot><inner_angle>0.2</inner_angle><outer_angle>0.8</outer_angle>
    <falloff>2</falloff></spot><attenuation><range>9</range><constant>0.5</constant><linear>0.25</linear>
    <quadratic>0.1</quadratic></attenuation></light></world></sdf>"""


def test_lights_of_a_world_become_those_of_the_picture(window, tmp_path):
    (tmp_path / "lights.sdf").write_text(LIGHTS)
    decorator = window.getSceneDecorator()
    assert window.loadTavLangFile(str(tmp_path / "lights.sdf"), window.getSceneRoot()).getErrors() == ()
    sun, lamp = (decorator.getLightSource(bit) for bit in (1, 2))
    assert tuple(sun.getPosition()) == pytest.approx((0, -0.6, 0.8, 0))
    assert tuple(sun.getDiffuse()) == pytest.approx((1, 0.9, 0.8, 1))
    assert tuple(lamp.getPosition()) == (0, 0, 3, 1) and tuple(lamp.getDiffuse())[:3] == (0.5, 0.5, 0.5)
    assert lamp.getSpotCutoff() == pytest.approx(math.degrees(0.4)) and lamp.getSpotExponent() == 2
    factors = lamp.getConstantAttenuation(), lamp.getLinearAttenuation(), lamp.getQuadraticAttenuation()
    assert factors == pytest.approx((0.5, 0.25, 0.1))
    window.clearScene()
    assert lamp.getSpotCutoff() == 180
