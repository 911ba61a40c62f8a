"""Planes that cut the scene, and the sky around it."""

import gc
import math

import _hyxOSG
import hyx
import hyxOSG
import numpy
import osg
import pytest
from decorated_stage import changed, decorator, frame, near, stage, write_image
from hyxOSG import ClipPlane, SkyBox


@pytest.fixture
def sphere():
    return hyxOSG.createSphere(hyx.Vec3(0, 0, 2.5), hyx.Vec4(0, 1, 0, 1), 0.8)


def green(picture):
    return (picture[..., 1] > 1.3 * picture[..., 0]) & (picture[..., 1] > 40)


@pytest.fixture
def cut(stage, sphere):
    """Draws the sphere below a plane that keeps its right half."""
    plane = ClipPlane(hyx.Vec3(0, 0, 0), hyx.Vec3(1, 0, 0))
    plane.addChild(sphere)
    stage.decorator.addChild(plane)
    yield plane
    stage.decorator.removeChild(plane)


def test_children_are_drawn_on_the_side_of_the_normal(stage, cut):
    left, right, _, _ = frame(green(stage.picture()))
    assert abs(left - 160) <= 2 and right > 170


def test_enable_turns_the_cut_on_and_off(stage, cut):
    half = green(stage.picture()).sum()
    assert cut.getEnable() is True
    cut.setEnable(False)
    assert cut.getEnable() is False
    assert green(stage.picture()).sum() > 1.7 * half
    cut.setEnable(True)
    assert green(stage.picture()).sum() == half


def test_plane_moves_and_turns(stage, cut):
    cut.setPosition(hyx.Vec3(0.4, 0, 0))
    assert frame(green(stage.picture()))[0] > 168
    assert tuple(cut.getPosition()) == (0.4, 0, 0)
    cut.setNormal(hyx.Vec3(-2, 0, 0))
    assert tuple(cut.getNormal()) == (-1, 0, 0)
    assert frame(green(stage.picture()))[1] < 185
    cut.setClipPlane(hyx.Plane(hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, 3)))
    plane = cut.getPlane()
    assert tuple(plane.getNormal()) == (0, 0, 1) and math.isclose(plane.getD(), -3)
    cap = green(stage.picture())
    cut.setEnable(False)
    assert cap.sum() < 0.8 * green(stage.picture()).sum()


@pytest.mark.parametrize(
    "arguments", [(hyx.Plane(1.0, 0.0, 0.0, -2.0),), (hyx.Vec3(2, 5, 5), hyx.Vec3(3, 0, 0)), (2.0, 0.0, 0.0, -4.0)]
)
def test_each_constructor_makes_the_same_plane(arguments):
    plane = ClipPlane(*arguments).getPlane()
    assert numpy.allclose(tuple(plane.getNormal()), (1, 0, 0)) and math.isclose(plane.getD(), -2)


def test_no_plane_without_a_normal():
    for make in (
        lambda: ClipPlane(hyx.Vec3(), hyx.Vec3()),
        lambda: ClipPlane(0.0, 0.0, 0.0, 1.0),
        lambda: ClipPlane(hyx.Vec3(math.nan, 0, 0), hyx.Vec3(1, 0, 0)),
    ):
        with pytest.raises(RuntimeError):
            make()
    with pytest.raises(TypeError, match="not None"):
        ClipPlane(None)


def test_two_planes_cut_together(stage, sphere):
    outer, inner = ClipPlane(hyx.Vec3(), hyx.Vec3(1, 0, 0)), ClipPlane(hyx.Vec3(0, 0, 2.5), hyx.Vec3(0, 0, 1))
    inner.addChild(sphere)
    outer.addChild(inner)
    stage.decorator.addChild(outer)
    both = green(stage.picture()).sum()
    outer.setEnable(False)
    one = green(stage.picture()).sum()
    stage.decorator.removeChild(outer)
    assert one > 1.6 * both > 0


@pytest.fixture
def many_cuts(stage):
    """Adds one cut within another, each around a sphere of its own."""
    outer = osg.Group()
    stage.decorator.addChild(outer)

    def add(count):
        for place in range(count):
            plane = ClipPlane(hyx.Vec3(0, 0, 0), hyx.Vec3(1, 0, 0))
            plane.addChild(hyxOSG.createSphere(hyx.Vec3(0, 0.1 * place, 2.5), hyx.Vec4(0, 1, 0, 1), 0.8))
            outer.addChild(plane)

    def keep(count):
        while outer.getNumChildren() > count:
            outer.removeChild(outer.getChild(count))

    add.keep = keep
    yield add
    stage.decorator.removeChild(outer)


def test_cuts_that_are_gone_take_no_place(stage, many_cuts):
    for _ in range(20):
        many_cuts(6)
        left = frame(green(stage.picture()))[0]
        assert abs(left - 160) <= 2
        many_cuts.keep(0)


@pytest.mark.parametrize("shadows", [False, True])
def test_more_cuts_than_the_driver_can_do_are_refused_in_words(stage, many_cuts, shadows):
    stage.decorator.setEnableShadows(shadows)
    many_cuts(33)
    with pytest.raises(RuntimeError, match="can do no more than [0-9]+ cuts in one picture"):
        stage.picture()
    many_cuts.keep(6)
    left, right, _, _ = frame(green(stage.picture()))
    assert abs(left - 160) <= 2 and right > 170


def test_particles_behind_the_plane_are_hidden(stage):
    particles = hyx.ParticleSystem()
    for x in (-1.0, 1.0):
        particles.createParticle(hyx.Vec3(x, 0, 3), hyx.Vec3())
    stage.simulation.add(particles)
    plain = stage.picture()
    visual = hyxOSG.createVisual(particles, stage.app.getSceneRoot())
    both = changed(stage.picture(), plain)
    plane = ClipPlane(hyx.Vec3(), hyx.Vec3(1, 0, 0))
    plane.setParticleSystemToClip(particles)
    plane.clipAgainstParticleSystem()
    right = changed(stage.picture(), plain)
    assert right[:, 160:].sum() == both[:, 160:].sum() > 0
    assert both[:, :160].any() and not right[:, :160].any()
    plane.setEnable(False)
    plane.clipAgainstParticleSystem()
    assert changed(stage.picture(), plain).sum() == both.sum()
    plane.setParticleSystemToClip(None)
    plane.clipAgainstParticleSystem()
    stage.simulation.remove(particles)
    stage.app.getSceneRoot().removeChild(visual)


def test_deleting_the_proxy_leaves_the_plane_in_the_scene(stage, cut):
    half = green(stage.picture()).sum()
    _hyxOSG.delete_ClipPlane(hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3(1, 0, 0)))
    gc.collect()
    assert green(stage.picture()).sum() == half


@pytest.fixture(scope="module")
def sky_images(tmp_path_factory):
    folder = tmp_path_factory.mktemp("sky")
    colors = {
        "posx": (1, 0, 0),
        "negx": (0, 1, 0),
        "posy": (1, 1, 1),
        "negy": (0, 0, 0),
        "posz": (0, 0, 1),
        "negz": (1, 1, 0),
    }
    for name, color in colors.items():
        write_image(folder / f"{name}.png", color, (16, 16))
    return str(folder) + "/"


@pytest.fixture
def sky(stage, sky_images):
    shown = []

    def show(*arguments):
        shown.append(SkyBox("sky", sky_images, ".png", *arguments))
        stage.decorator.addChild(shown[-1])
        return stage.picture()

    yield show
    for node in shown:
        stage.decorator.removeChild(node)


def test_sky_is_behind_the_scene(stage, sky):
    plain = stage.picture()
    picture = sky()
    behind = numpy.abs(plain).max(axis=2) == 0
    assert behind.sum() > 1000 and changed(picture, plain)[behind].mean() > 0.99
    assert not changed(picture, plain)[~behind].any()


def test_sky_stays_around_the_camera(stage, sky):
    first = sky()
    stage.app.setCameraHome(hyx.Vec3(100, -7, 5), hyx.Vec3(100, 0, 0.4))
    far = stage.picture()
    stage.app.setCameraHome(hyx.Vec3(0, -7, 5), hyx.Vec3(0, 0, 0.4))
    assert not changed(far[:8], first[:8]).any()


def test_heading_and_brightness(stage, sky):
    first = sky()[4, 160]
    turned = sky(math.pi / 2)[4, 160]
    assert numpy.abs(first - turned).max() > 200
    assert sky(0.0, 0.5)[4, 160].max() in range(120, 136)


def test_upper_side_of_the_map_is_up(stage, sky):
    stage.app.setCameraHome(hyx.Vec3(0, 0, 5), hyx.Vec3(0, 0.1, 15))
    picture = sky()
    stage.app.setCameraHome(hyx.Vec3(0, -7, 5), hyx.Vec3(0, 0, 0.4))
    assert near(picture, (1, 1, 1))[120, 160]


def test_missing_images_are_refused(tmp_path):
    with pytest.raises(RuntimeError, match="the sky box's images cannot be read"):
        SkyBox("sky", str(tmp_path) + "/", ".png")


def test_sky_values_out_of_range_are_refused(sky_images):
    with pytest.raises(RuntimeError, match="brightness"):
        SkyBox("sky", sky_images, ".png", 0.0, -1.0)
    with pytest.raises(RuntimeError, match="heading"):
        SkyBox("sky", sky_images, ".png", math.inf)


def test_sky_does_not_count_in_the_bounds(stage, sky):
    before = stage.decorator.getBound().radius()
    sky()
    assert stage.decorator.getBound().radius() == before
