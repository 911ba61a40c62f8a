"""Light from the sky: an even one shows white things as white as itself, and lamps still make shade."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from off_screen import OffScreen
from PIL import Image

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


def write_sky(folder, upper, lower, size=32):
    """The six pictures of a sky with one colour above the horizon and one below."""
    sides = numpy.full((size, size, 3), lower, numpy.uint8)
    sides[: size // 2] = upper
    for name in ("posx", "negx", "posy", "negy", "posz", "negz"):
        even = {"posy": upper, "negy": lower}.get(name)
        Image.fromarray(sides if even is None else numpy.full_like(sides, even)).save(folder / f"{name}.png")
    return str(folder) + "/"


@pytest.mark.parametrize("color, brightness", [((255, 255, 255), 1.0), ((255, 255, 255), 0.6), ((200, 120, 60), 1.0)])
def test_a_sky_box_lights_what_is_white_like_itself(ball, tmp_path, color, brightness):
    ball.decorator.setEnableLights(0)
    sky = hyxOSG.SkyBox("sky", write_sky(tmp_path, color, color), ".png", 0.0, brightness)
    ball.root.addChild(sky)
    assert abs(face(ball) - numpy.array(color) * brightness).max() < 0.02 * 255


def test_halves_of_a_sky_box_light_from_above_and_below(ball, tmp_path):
    ball.decorator.setEnableLights(0)
    ball.decorator.setBackgroundColor(hyx.Vec3(0, 0.5, 0))
    sky = hyxOSG.SkyBox("sky", write_sky(tmp_path, (240, 0, 0), (0, 0, 120)), ".png", 1.0)
    ball.root.addChild(sky)
    rows = face(ball).mean(axis=1)
    assert (rows[:, 1] < 1).all() and rows[0, 0] > 3 * rows[-1, 0] and rows[-1, 2] > 3 * rows[0, 2]
    assert rows[len(rows) // 2] == pytest.approx((120, 0, 60), abs=6), "half of both at the height of the eye"


def test_without_its_sky_box_a_scene_has_the_light_of_the_background(ball, tmp_path):
    ball.decorator.setEnableLights(0)
    ball.decorator.setBackgroundColor(hyx.Vec3(0.2, 0.4, 0.6))
    before = face(ball)
    sky = hyxOSG.SkyBox("sky", write_sky(tmp_path, (250, 80, 80), (250, 80, 80)), ".png")
    ball.root.addChild(sky)
    assert abs(face(ball) - before).min(axis=(0, 1))[0] > 100
    sky.setNodeMask(0)
    assert (face(ball) == before).all(), "hidden"
    sky.setNodeMask(0xFFFFFFFF)
    ball.root.removeChild(sky)
    assert (face(ball) == before).all(), "taken out"


def test_lamps_leave_shade_below_a_white_sky(ball):
    ball.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1))
    rows = face(ball)
    assert rows.max() > 250 and 100 < rows.min() < 200
