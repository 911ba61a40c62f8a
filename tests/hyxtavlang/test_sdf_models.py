"""Models and worlds of SDF files: poses, masses, joints, includes, and what they do."""

import math
import re

import hyx
import numpy
import pytest

LINK = """<link name="{0}"><pose>{1}</pose>
  <inertial><pose>0 0 {2} 0 0 0</pose><mass>{3}</mass>
    <inertia><ixx>0.1</ixx><iyy>0.2</iyy><izz>0.25</izz></inertia></inertial>
  <collision name="shape"><pose>0 0 {2} 0 0 0</pose><geometry>{4}</geometry></collision>
  <visual name="seen"><pose>0 0 {2} 0 0 0</pose><geometry>{4}</geometry>
    <material><diffuse>1 0 0 1</diffuse></material></visual></link>"""
BOX = "<box><size>0.2 0.4 1</size></box>"
ARM = f"""<model name="arm"><pose>0 0 1 0 0 {math.pi / 2}</pose>
  {LINK.format("base", "0 0 0 0 0 0", 0, 5, BOX)}
  {LINK.format("fore", "1 0 0 0 0 0", -0.5, 2, BOX)}
  <joint name="ground" type="fixed"><parent>world</parent><child>base</child></joint>
  <joint name="elbow" type="revolute"><pose>0 0 0.1 0 0 0</pose><parent>base</parent><child>fore</child>
    <axis><xyz>0 1 0</xyz><limit><lower>-1</lower><upper>0.5</upper><effort>30</effort><velocity>2</velocity></limit>
      <dynamics><damping>0.3</damping><friction>0.1</friction></dynamics></axis></joint></model>"""
GROUND = """<model name="ground"><static>true</static><link name="plane"><collision name="plane"><geometry>
  <plane><normal>0 0 1</normal><size>9 9</size></plane></geometry></collision></link></model>"""
BALL = LINK.format("ball", "0 0 0 0 0 0", 0, 1, "<sphere><radius>0.25</radius></sphere>")


@pytest.fixture
def load(app, tmp_path):
    def make(inside, name="world.sdf"):
        (tmp_path / name).write_text(f'<sdf version="1.9">{inside}</sdf>')
        return app.loadTavLangFile(str(tmp_path / name), None)

    return make


def find(result, name):
    (node,) = [node for node in result.model.children if node.name == name]
    return node


def test_links_stand_and_weigh_as_their_file_says(app, load):
    result = load(ARM)
    assert result.getErrors() == () and result.getModelName() == "arm"
    fore = find(result, "fore").properties
    assert fore["mass"] == 2 and fore["centerOfMass"] == pytest.approx((0, 0, -0.5))
    assert fore["inertia"] == pytest.approx((0.1, 0.2, 0.25, 0, 0, 0))
    place = numpy.array(fore["transform"]).reshape(4, 4)
    assert place[3] == pytest.approx((0, 1, 1, 1), abs=1e-12)  # the model turns its X to Y
    body = app.getSimulation().getRigidBody("fore")
    assert tuple(body.getPosition()) == pytest.approx((0, 1, 1)) and body.getMass() == 2
    assert app.getSimulation().getRigidBody("base").getMotionControl() == hyx.RigidBody.STATIC


def test_a_joint_has_the_axis_and_the_bounds_of_its_file(app, load):
    result = load(ARM)
    elbow = find(result, "elbow").properties
    assert elbow["anchor"] == pytest.approx((0, 0, 0.1)) and elbow["axis"] == pytest.approx((0, 1, 0))
    assert (elbow["lower"], elbow["upper"]) == (-1, 0.5) and elbow["maximumEffort"] == 30
    assert elbow["maximumSpeed"] == 2 and elbow["damping"] == 0.3 and elbow["friction"] == 0.1
    assert result.joints.names == ("elbow",)
    result.joints.position = [0.4]
    center = app.getSimulation().getRigidBody("fore").getWorldCenterOfMass()
    assert center.z == pytest.approx(1.1 - 0.6 * math.cos(0.4))
    for _ in range(300):
        app.getSimulation().step()
    assert abs(result.joints.position[0]) < 0.05


def test_a_world_has_its_gravity_its_ground_and_its_models(app, load):
    world = f"""<world name="moon"><gravity>0 0 -1.6</gravity>{GROUND}
      <model name="drop"><pose>0 0 1.05 0 0 0</pose>{BALL}</model>
      <model name="sensors"><static>true</static><link name="mast"><sensor name="eye" type="camera">
        <pose>0 0 2 0 0 0</pose><camera><horizontal_fov>1.2</horizontal_fov>
        <image><width>200</width><height>100</height></image></camera></sensor>
      </link></model></world>"""
    result = load(world)
    assert result.getErrors() == () and app.getSimulation().getGravity().z == -1.6
    eye = find(result, "sensors::eye").properties
    assert eye["body"] == "sensors::mast" and eye["verticalAngle"] == pytest.approx(2 * math.atan(math.tan(0.6) / 2))
    view = numpy.array(eye["transform"]).reshape(4, 4)
    assert -view[2, :3] == pytest.approx((1, 0, 0)) and view[1, :3] == pytest.approx((0, 0, 1))
    ball = app.getSimulation().getRigidBody("drop::ball")
    simulation = app.getSimulation()
    for _ in range(round(0.5 / simulation.getTimeStep())):
        simulation.step()
    assert ball.getPosition().z == pytest.approx(1.05 - 0.5 * 1.6 * 0.25, abs=0.01)
    for _ in range(round(3 / simulation.getTimeStep())):
        simulation.step()
    assert ball.getPosition().z == pytest.approx(0.25, abs=0.01)


SENSORS = f"""<world name="yard"><light name="sun" type="directional"><diffuse>1 0.9 0.8 1</diffuse>
      <direction>0 0 -1</direction></light>
    <model name="wall"><static>true</static><pose>5 0 2 0 0 0</pose><link name="wall">
      <collision name="c"><geometry><box><size>1 20 8</size></box></geometry></collision>
      <visual name="v"><geometry><box><size>1 20 8</size></box></geometry>
        <material><diffuse>0 1 0 1</diffuse></material></visual></link></model>
    <model name="rover"><pose>0 0 1 0 0 0.1</pose><static>true</static>{
    BALL.replace(
        "</link>",
        '''
      <sensor name="eye" type="camera"><pose>0.3 0 0 0 0 -0.1</pose><camera><horizontal_fov>1.2</horizontal_fov>
        <image><width>64</width><height>48</height></image><clip><near>0.1</near><far>50</far></clip></camera></sensor>
      <sensor name="scan" type="gpu_lidar"><pose>0 0 0.5 0 0 -0.1</pose><lidar><scan>
        <horizontal><samples>21</samples><min_angle>-0.2</min_angle><max_angle>0.6</max_angle></horizontal>
        <vertical><samples>1</samples><min_angle>0</min_angle><max_angle>0</max_angle></vertical></scan>
        <range><min>0.1</min><max>30</max></range></lidar></sensor></link>''',
    )
}</model>
    <model name="faller"><pose>0 9 9 0 0 0</pose>{
    BALL.replace(
        "</link>",
        '''
      <sensor name="motion" type="imu"><pose>0 0 0 1.5707963267948966 0 0</pose></sensor></link>''',
    )
}</model></world>"""


def test_cameras_and_lidars_of_a_world_see_it(window, tmp_path):
    (tmp_path / "yard.sdf").write_text(f'<sdf version="1.9">{SENSORS}</sdf>')
    result = window.loadTavLangFile(str(tmp_path / "yard.sdf"), window.getSceneRoot())
    assert result.getErrors() == () and find(result, "sun").properties["directional"]
    picture = result.camera("rover::eye", window).read("rgb", "depth")
    assert picture.rgb.shape == (48, 64, 3)
    red, green, blue = picture.rgb[24, 32].astype(int)
    assert green > red + 40 and green > blue + 40
    assert picture.depth[24, 32] == pytest.approx(4.5 - 0.3 * math.cos(0.1), abs=0.02)

    lidar = result.lidar("rover::scan")
    lidar.scan()
    points = numpy.array(lidar.getPoints())
    assert len(points) == 21 and points[:, 0] == pytest.approx(4.5, abs=1e-3) and points[:, 2] == pytest.approx(1.5)
    assert points[[0, -1], 1] == pytest.approx([4.5 * math.tan(-0.2), 4.5 * math.tan(0.6)], abs=1e-3)
    with pytest.raises(ValueError, match="rover::scan"):
        result.lidar("scan")


def test_a_motion_sensor_feels_what_its_body_does(window, tmp_path):
    (tmp_path / "yard.sdf").write_text(f'<sdf version="1.9">{SENSORS}</sdf>')
    result = window.loadTavLangFile(str(tmp_path / "yard.sdf"), None)
    imu = result.imu("faller::motion")
    assert imu.read()[1] == pytest.approx([0, 9.8, 0], abs=1e-6)  # its Y is up
    window.getSimulation().getRigidBody("faller::ball").setAngularVelocity(hyx.Vec3(0, 0, 2))
    for _ in range(5):
        window.getSimulation().step()
    turning, felt = imu.read()
    assert felt == pytest.approx([0, 0, 0], abs=1e-3) and turning == pytest.approx([0, 2, 0], abs=0.1)


def test_included_and_nested_models_are_read_in_their_places(app, load, tmp_path):
    (tmp_path / "part").mkdir()
    (tmp_path / "part" / "model.sdf").write_text(f'<sdf version="1.9"><model name="part">{BALL}</model></sdf>')
    (tmp_path / "part" / "model.config").write_text(
        '<model><name>part</name><version>1</version><sdf version="1.9">model.sdf</sdf></model>'
    )
    result = load(
        f"""<model name="whole">{LINK.format("hull", "0 0 0 0 0 0", 0, 3, BOX)}
        <include><uri>model://part</uri><name>wheel</name><pose>0 2 0 0 0 0</pose></include>
        <joint name="axle" type="continuous"><parent>hull</parent><child>wheel::ball</child>
          <axis><xyz>0 1 0</xyz></axis></joint></model>"""
    )
    assert result.getErrors() == ()
    assert tuple(app.getSimulation().getRigidBody("wheel::ball").getPosition()) == pytest.approx((0, 2, 0))
    assert result.joints.names == ("axle",) and math.isinf(result.joints.getUpperLimits()[0])


@pytest.mark.parametrize(
    "inside, told",
    [
        (ARM.replace("<child>fore</child>", "<child>hand</child>"), "hand"),
        (ARM.replace(BOX, "<mesh><uri>absent.obj</uri></mesh>"), "absent.obj"),
        (ARM.replace("<mass>2</mass>", "<mass>-2</mass>"), "mass"),
        ('<model name="x"><include><uri>model://absent</uri></include></model>', "absent"),
        ("<world name='a'></world><world name='b'></world>", "2 worlds"),
        ("", "expected"),
        ("<model name='m'><include><uri>world.sdf</uri></include></model>", "within itself"),
        (ARM.replace("<lower>-1</lower>", "<lower>2</lower>"), "lower limit above"),
        (ARM.replace('type="revolute"', 'type="bent"'), "bent"),
        (ARM.replace("<size>0.2 0.4 1</size>", "<size>0.2 0 1</size>"), "half extents"),
        (ARM.replace("<damping>0.3</damping>", "<damping>-0.3</damping>"), "viscosity"),
    ],
)
def test_what_cannot_be_read_is_told_in_words(app, load, inside, told, capfd):
    result = load(inside)
    assert not result.isSuccess() and any(told in line for line in result.getErrors())
    assert all(re.search(r"world\.sdf:[1-9]\d*: ", line) for line in result.getErrors())
    assert app.getSimulation().getRigidBodies() == []
    assert capfd.readouterr() == ("", "")


@pytest.mark.parametrize("head", ['<sdf version="3.7">', "<sdf>", '<sdf version="nan">'])
def test_a_version_that_is_not_known_is_refused(app, tmp_path, head, capfd):
    (tmp_path / "future.sdf").write_text(f"<?xml version='1.0'?>\n{head}{GROUND}</sdf>")
    (error,) = app.loadTavLangFile(str(tmp_path / "future.sdf"), None).getErrors()
    assert "future.sdf:2: expected a version of <sdf> from 1.0 to 1." in error
    assert capfd.readouterr() == ("", "")
