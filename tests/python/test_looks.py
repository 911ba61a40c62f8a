"""The looks that a script chooses by one word."""

import colorsys
from typing import NamedTuple

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
import pytest
from PIL import Image

SIZE = 160


class Shown(NamedTuple):
    app: hyxOSG.ExampleApplication
    bodies: list
    file: str

    def picture(self):
        for _ in range(2):  # the first frame after a change also places the lights
            self.app.takeScreenShot(self.file)
        return numpy.asarray(Image.open(self.file).convert("RGB")).astype(int)


@pytest.fixture
def shown(tmp_path):
    with hyxOSG.ExampleApplication(look="plain") as application:
        application.init(None)
        application.initSimulation(hyxSDK.Simulation())
        application.initViewer(SIZE, SIZE, True)
        bodies = [hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half))) for half in ((3, 3, 0.1), (0.5, 0.5, 0.5))]
        for body, height in zip(bodies, (-0.1, 0.5)):
            body.setPosition(hyx.Vec3(0, 0, height))
            hyxOSG.createVisual(body, application.getSceneRoot())
        application.setCameraHome(hyx.Vec3(2, -5, 3), hyx.Vec3(0, 0, 0.4))
        yield Shown(application, bodies, str(tmp_path / "picture.png"))


def test_plain_is_the_defaults_and_comes_back(shown):
    before = shown.picture()
    shown.app.setLook("plain")
    assert (shown.picture() == before).all()
    shown.app.setLook("talk")
    assert (shown.picture() != before).any()
    shown.app.setLook("plain")
    assert (shown.picture() == before).all()


def test_talk_grounds_the_scene(shown):
    plain = shown.picture()
    shown.app.setLook("talk")
    talk = shown.picture()
    ground = slice(SIZE // 2, SIZE)
    assert (plain[ground].max(axis=2) - talk[ground].max(axis=2) > 40).sum() > 100, "a shadow"
    shade = talk[ground][talk[ground].max(axis=2) < 130]
    assert len(shade) > 100 and (shade[:, 2] > shade[:, 0] + 2).mean() > 0.5, "in the colour of the sky"
    assert shade.min() > 30, "and never black"


def test_paper_is_white_behind_and_smoother(shown):
    shown.app.setLook("paper")
    assert (shown.picture()[0] == 255).all()
    shown.app.initViewer(SIZE, SIZE, True)
    assert shown.app.getNumSamples() >= 4


def test_other_words_are_refused(shown):
    with pytest.raises(ValueError, match="'default', 'plain', 'talk' or 'paper'"):
        shown.app.setLook("glossy")
    with pytest.raises(ValueError, match="'glossy'"):
        hyxOSG.ExampleApplication(look="glossy")


def shapes_on_a_plane(number, look=None):
    """The picture of so many balls above an endless ground, as floats of 0 to 1."""
    with hyxOSG.ExampleApplication(look=look) as application:
        simulation = application.getSimulation()
        ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
        ground.setMotionControl(hyx.RigidBody.STATIC)
        simulation.add(ground)
        for i in range(number):
            ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.3)))
            ball.setPosition((0.7 * (i % 10), 0.7 * (i // 10), 0.6))
            simulation.add(ball)
        application.initViewer(320, 240)
        application.createVisual(simulation)
        return application.render() / 255


def test_who_chooses_nothing_gets_a_lit_scene_with_shadows(monkeypatch):
    monkeypatch.delenv("HYX_LOOK")
    default, plain = shapes_on_a_plane(5), shapes_on_a_plane(5, "plain")
    assert (default == shapes_on_a_plane(5, "default")).all() and (default != plain).mean() > 0.5
    ground, shade = numpy.median(default[200:].reshape(-1, 3), axis=0), default[100:].min(axis=(0, 1))
    assert 0.25 * ground.mean() < shade.mean() < 0.6 * ground.mean(), "shadows, and never black ones"
    assert shade[2] > shade[0], "in the colour of the sky"
    shades = [len(numpy.unique(picture[:100, 5].mean(axis=1))) for picture in (default, plain)]
    assert shades[0] > 10 > shades[1], "the ground fades"
    monkeypatch.setenv("HYX_LOOK", "plain")
    assert (shapes_on_a_plane(5) == plain).all()


def test_things_are_seen_before_a_ground_of_their_colour(tmp_path):
    with hyxOSG.ExampleApplication(look="default") as application:
        shapes = [hyxCollide.Plane(hyx.Vec3(0, 0, 1), hyx.Vec3()), hyxCollide.Box(0.5, 0.5, 0.5)]
        ground, box = (hyx.RigidBody(hyxCollide.Geometry(shape)) for shape in shapes)
        application.initViewer(160, 120, True)
        visuals = [hyxOSG.createVisual(body, application.getSceneRoot()) for body in (ground, box)]
        application.setCameraHome((0, -0.1, 8), (0, 0, 0))
        application.getSceneDecorator().setEnableShadows(False)
        top, beside = (application.render()[y, 80].astype(int) for y in (60, 100))
        assert (top - beside).min() > 20
        for visual in visuals:
            hyxOSG.setDiffuseColor(visual, (0.5, 0.3, 0.2, 1))
        top, beside = (application.render()[y, 80].astype(int) for y in (60, 100))
        assert abs(top - beside).max() < 15, "a colour that a script gives is that of the ground"


@pytest.mark.parametrize("look", ["default", "plain", "talk", "paper"])
def test_colours_keep_their_hue_in_the_shade(look):
    """Of all hues, half as saturated as can be, on the sides of a box all around."""
    with hyxOSG.ExampleApplication(look=look) as application:
        application.initViewer(48, 48, True)
        box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
        visual = hyxOSG.createVisual(box, application.getSceneRoot())
        for hue in range(0, 360, 30):
            hyxOSG.setDiffuseColor(visual, (*colorsys.hsv_to_rgb(hue / 360, 0.5, 0.8), 1))
            sides = []
            for x, y in ((0.3, -3), (3, 0.3), (-0.3, 3), (-3, -0.3)):
                application.setCameraHome((x, y, 1.2), (0, 0, 0))
                application.render()
                sides.append(tuple(application.render()[24, 24] / 255))
            hues = [360 * colorsys.rgb_to_hsv(*side)[0] for side in sides]
            lit, shade = (end(range(4), key=lambda side: sum(sides[side])) for end in (max, min))
            assert abs((hues[lit] - hues[shade] + 180) % 360 - 180) < 5.5, (hue, sides)
            assert 0.25 < sum(sides[shade]) / sum(sides[lit]) < 0.9


def test_many_casters_throw_no_shadows_where_the_processor_draws(shown):
    decorator = shown.app.getSceneDecorator()
    plain = shown.picture()
    decorator.setEnableShadows(True)
    shadowed = shown.picture()
    decorator.setShadowCasterLimit(2)
    assert (shown.picture() == shadowed).all() and (shadowed != plain).any()
    decorator.setShadowCasterLimit(1)  # the box and what it stands on are two
    without = shown.picture()
    decorator.setEnableShadows(False)
    decorator.setEnableShaderState(True)
    assert (without == shown.picture()).all()
    with pytest.raises(RuntimeError, match="not negative"):
        decorator.setShadowCasterLimit(-1)
