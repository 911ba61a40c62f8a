"""Light from the sky: an even one shows white things as white as itself, and lamps still make shade."""

import hyx
import hyxCollide
import hyxOSG
import pytest
from off_screen import OffScreen

SIZE = 120


@pytest.fixture
def ball():
    """A ball of one metre and white all over, seen from the side, in a white sky."""
    made = OffScreen(SIZE, SIZE)
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)))
    visual = hyxOSG.createVisual(body, made.root)
    hyxOSG.setDiffuseColor(visual, hyx.Vec4f(1, 1, 1, 1))
    hyxOSG.setSpecularColor(visual, hyx.Vec4f(0, 0, 0, 1))
    made.kept = body
    made.decorator.setEnableShaderState(True)
    made.decorator.setEnableSkyLight(True)
    made.look_from(hyx.Vec3(0, -4, 0))
    yield made
    made.app.close()


def face(stage):
    """The pixels of the ball's inner half, from above downwards."""
    stage.app.render()
    return stage.app.render().astype(int)[SIZE // 3 : -SIZE // 3, SIZE // 3 : -SIZE // 3]


@pytest.mark.parametrize("sky", [(1, 1, 1), (0.6, 0.6, 0.6), (0.5, 0.7, 0.9)])
def test_white_is_as_bright_as_an_even_sky(ball, sky):
    """The irradiance of an even sky of radiance L is pi L, and a white matt surface sends back 1 / pi of it."""
    ball.decorator.setEnableLights(0)
    ball.decorator.setBackgroundColor(hyx.Vec3(*sky))
    assert abs(face(ball) / 255 - sky).max() < 0.02


def test_the_ground_gives_back_less_than_the_sky(ball):
    ball.decorator.setEnableLights(0)
    ball.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1), hyx.Vec3(0.8, 0.8, 0.8))
    rows = face(ball).mean(axis=(1, 2))
    assert (rows[:-1] >= rows[1:]).all() and rows[0] > 1.2 * rows[-1]


def test_lamps_leave_shade_below_a_white_sky(ball):
    ball.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1))
    rows = face(ball)
    assert rows.max() > 250 and 100 < rows.min() < 200
