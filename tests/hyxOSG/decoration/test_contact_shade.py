"""Places that things near them hide from the sky are darker, others stay as they are."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from off_screen import OffScreen

WIDTH, HEIGHT = 320, 240
KEPT = []


@pytest.fixture(params=[0, 4])
def scene(request):
    """A box on a ground, seen from the front and above."""
    made = OffScreen(WIDTH, HEIGHT, request.param)
    for half, place in (((4, 4, 0.1), (0, 0, -0.1)), ((0.5, 0.5, 0.5), (0, 0, 0.5))):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half)))
        body.setPosition(hyx.Vec3(*place))
        KEPT.append(body)
        hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, made.root), hyx.Vec4f(0.8, 0.8, 0.8, 1))
    made.look_from(hyx.Vec3(0, -5, 3))
    yield made
    KEPT.clear()
    made.app.close()


def darkening(scene, program):
    scene.decorator.setEnableShaderState(program)
    pictures = []
    for on in (False, True):
        scene.decorator.setEnableContactShade(on)
        scene.app.render()
        pictures.append(scene.app.render().astype(float).sum(axis=2))
    before, after = pictures
    lit = before > 100
    return numpy.where(lit, 1 - after / numpy.where(lit, before, 1), 0), lit


@pytest.mark.parametrize("program", [False, True])
def test_contacts_are_ten_to_thirty_percent_darker(scene, program):
    darker, lit = darkening(scene, program)
    middle = darker[:, WIDTH // 2 - 5 : WIDTH // 2 + 5].mean(axis=1)  # down the front of the box and the ground
    contact = middle.argmax()
    assert HEIGHT / 2 < contact < 0.8 * HEIGHT
    assert 0.1 <= middle[contact] <= 0.31
    assert middle[int(contact + HEIGHT / 8) :].max() < 0.02, "open ground stays as it is"
    assert (darker > 0.02)[lit].mean() < 0.1
    assert darker.min() > -0.01


def test_looks_have_it_and_the_defaults_do_not(app):
    assert not app.getSceneDecorator().getEnableContactShade()
    for look, has in (("talk", True), ("plain", False), ("paper", True)):
        app.setLook(look)
        assert app.getSceneDecorator().getEnableContactShade() is has
