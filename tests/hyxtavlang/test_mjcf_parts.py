"""Pairs, sites, curves, height fields and lights of MJCF files, against what the format's own library does."""

import math

import hyx
import mujoco
import numpy
import pytest
from application_stage import difference
from PIL import Image


@pytest.fixture
def load(app, tmp_path):
    def make(inside, root=None):
        path = tmp_path / "model.xml"
        path.write_text(f"<mujoco>{inside}</mujoco>")
        return app.loadTavLangFile(str(path), root), mujoco.MjModel.from_xml_path(str(path))

    return make


def steps(app, seconds):
    for _ in range(round(seconds / app.getSimulation().getTimeStep())):
        app.getSimulation().step()


SLIDER = """<option gravity="3 0 -9.81"/><worldbody><geom name="floor" type="plane" size="9 9 1" friction="1"/>
  <body name="block" pos="0 0 0.1"><freejoint/>
    <geom name="block" type="box" size="0.2 0.2 0.1" contype="{bits}" conaffinity="{bits}" friction="1"/></body>
  </worldbody><contact>{contact}</contact>"""


@pytest.mark.parametrize(
    "bits, contact, x, z",
    [
        (0, '<pair geom1="block" geom2="floor" friction="0.1 0.1"/>', 0.5 * (3 - 0.981), 0.1),
        (1, '<pair geom1="floor" geom2="block"/>', 0, 0.1),
        (1, '<exclude body1="world" body2="block"/>', 1.5, 0.1 - 0.5 * 9.81),
        (0, "", 1.5, 0.1 - 0.5 * 9.81),
    ],
    ids=["pair", "pair with the geoms' friction", "exclude", "none"],
)
def test_pairs_collide_and_excluded_bodies_do_not(app, load, bits, contact, x, z):
    result, model = load(SLIDER.format(bits=bits, contact=contact))
    assert result.getErrors() == ()
    data = mujoco.MjData(model)
    while data.time < 1 - 1e-9:
        mujoco.mj_step(model, data)
    steps(app, 1)
    place = app.getSimulation().getRigidBody("block").getPosition()
    assert (place.x, place.z) == pytest.approx((x, z), abs=0.05)
    assert (place.x, place.z) == pytest.approx((data.qpos[0], data.qpos[2]), abs=0.06)


def test_a_pair_overrules_that_a_parent_does_not_touch_its_child(app, load):
    text = """<worldbody><body name="base"><freejoint/><geom name="base" type="box" size="0.5 0.5 0.1" mass="100"/>
      <body name="bob" pos="0 0 0.5"><joint name="drop" type="slide"/><geom name="bob" size="0.1"/></body></body>
      <geom name="floor" type="plane" size="3 3 1" pos="0 0 -0.1"/></worldbody><contact>{}</contact>"""
    result, _ = load(text.format('<pair geom1="base" geom2="bob"/>'))
    steps(app, 1)
    assert result.joints.position[0] == pytest.approx(-0.3, abs=0.01)


def test_sites_stand_where_the_library_has_them(load):
    result, model = load(
        """<worldbody><site name="mark" pos="1 2 3"/><body pos="0 1 0" euler="0 0 90"><joint/><geom size="0.1"/>
        <site name="tip" pos="0.5 0 0" euler="0 90 0"/>
        <site name="rod" type="capsule" size="0.1" fromto="0 0 0 0 2 0"/></body></worldbody>"""
    )
    data = mujoco.MjData(model)
    mujoco.mj_kinematics(model, data)
    for name in ("mark", "tip", "rod"):
        matrix = result.getSensorFrame(name).getMatrix()
        given = numpy.array([[matrix.get(row, column) for column in range(4)] for row in range(4)])
        assert given[3, :3] == pytest.approx(data.site(name).xpos, abs=1e-9)
        assert given[:3, :3].T.ravel() == pytest.approx(data.site(name).xmat, abs=1e-9)


def test_joints_follow_others_along_a_curve(app, load):
    text = """<option gravity="0 0 0"/><worldbody>
      <body><joint name="lead" axis="0 0 1" ref="0.2"/><geom size="0.1" pos="0.5 0 0"/></body>
      <body pos="0 0 1"><joint name="follow" axis="0 0 1"/><geom size="0.1" pos="0.5 0 0"/></body></worldbody>
      <equality><joint joint1="follow" joint2="lead" polycoef="0.1 0.5 -0.7 0.3 0.2"/></equality>
      <compiler angle="radian"/>"""
    result, model = load(text)
    result.joints.target = [0.9, math.nan]
    steps(app, 1)
    way = 0.9 - model.qpos0[0]
    assert result.joints.position[0] == pytest.approx(0.9, abs=1e-4)
    assert result.joints.position[1] == pytest.approx(numpy.polyval(model.eq_data[0][4::-1], way), abs=1e-3)


def test_bodies_are_connected_at_sites(app, load):
    result, _ = load(
        """<worldbody><body name="a" pos="0 0 2"><freejoint/><geom size="0.1"/><site name="hook" pos="0.5 0 0"/></body>
        <body name="b" pos="1 0 2"><freejoint/><geom size="0.1"/><site name="eye" pos="-0.5 0 0"/></body>
        <site name="nail" pos="0 0 2"/></worldbody><equality><connect site1="hook" site2="eye"/>
        <connect body1="a" anchor="0 0 0"/></equality>"""
    )
    assert result.getErrors() == ()
    steps(app, 2)
    a, b = (app.getSimulation().getRigidBody(name) for name in "ab")
    assert tuple(a.getPosition()) == pytest.approx((0, 0, 2), abs=0.01)
    ends = a.getTransform().transformPoint(hyx.Vec3(0.5, 0, 0)), b.getTransform().transformPoint(hyx.Vec3(-0.5, 0, 0))
    assert tuple(ends[0]) == pytest.approx(tuple(ends[1]), abs=0.01)


@pytest.mark.parametrize(
    "content",
    ['nrow="3" ncol="4" elevation="0 1 2 3  4 5 6 7  8 9 11 3"', 'file="hill.png"'],
    ids=["numbers", "picture"],
)
def test_height_fields_are_as_high_as_the_library_has_them(load, tmp_path, content):
    Image.fromarray(numpy.array([[0, 30, 60, 90], [9, 8, 7, 200], [1, 99, 5, 50]], numpy.uint8)).save("hill.png")
    result, model = load(
        f"""<asset><hfield name="hill" size="3 2 0.8 0.1" {content}/></asset>
        <worldbody><geom name="hill" type="hfield" hfield="hill" pos="1 0 0.5"/></worldbody>"""
    )
    assert result.getErrors() == ()
    (ground,) = result.getAssembly().getRigidBodies()
    shape = ground.getGeometries()[0].getShape()
    for row in range(3):
        for column in range(4):
            height = model.hfield_data[row * 4 + column] * model.hfield_size[0][2]
            assert shape.getHeight(column, row) == pytest.approx(height, abs=1e-6)


LIT = """<worldbody>{}<geom type="plane" size="9 9 1" rgba="1 1 1 1"/></worldbody>"""


def test_lights_of_a_model_light_the_scene_as_long_as_it_is_there(window, load, shoot):
    window.setCameraHome(hyx.Vec3(0, 0, 12), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 1, 0))
    root = window.getSceneRoot()
    load(LIT.format(""), root)
    plain = shoot(window)
    window.clearScene()
    load(LIT.format('<light pos="0 0 3" dir="0 0 -1" cutoff="20" exponent="0" diffuse="1 0 0"/>'), root)
    lit = shoot(window).astype(int)
    middle, side = lit[60, 80], lit[60, 20]
    assert middle[0] > side[0] + 60 and middle[0] > middle[1] + 60  # a red spot around the middle
    radius = (abs(lit[60, :, 0] - middle[0]) < 20).sum() / 2
    around = (abs(plain[60, :, 0].astype(int) - plain[60, 80, 0]) < 20).sum() / 2
    assert 0 < radius < 0.5 * around
    window.clearScene()
    load(LIT.format(""), root)
    assert difference(shoot(window), plain) < 0.5


def test_lights_on_bodies_follow_them_and_a_fourth_is_named(window, load, shoot):
    window.setCameraHome(hyx.Vec3(0, 0, 12), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 1, 0))
    lamp = '<light name="{}" pos="0 0 3" cutoff="20" exponent="0" diffuse="1 1 1"/>'
    moving = f'<body name="lamp"><freejoint/><geom size="0.1" group="4"/>{lamp.format("head")}</body>'
    result, _ = load(LIT.format(moving + "".join(map(lamp.format, "bcd"))).replace("<worldbody>", WEIGHTLESS))
    assert [line for line in result.model.getRemarks() if "'head'" in line and "do not shine" in line]
    window.clearScene()
    load(LIT.format(moving).replace("<worldbody>", WEIGHTLESS), window.getSceneRoot())
    before = shoot(window).astype(int)
    window.getSimulation().getRigidBody("lamp").setPosition(hyx.Vec3(3, 0, 0))
    after = shoot(window).astype(int)
    assert before[60, 80, 0] > after[60, 80, 0] + 60
    columns = numpy.flatnonzero(after[60, :, 0] > after[60, 80, 0] + 60)
    assert 90 < columns.mean() < 150


WEIGHTLESS = '<option gravity="0 0 0"/><worldbody>'
