"""The view of a script that has chosen none: what moves fills the picture, on what it stands on."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from off_screen import OffScreen

WIDTH, HEIGHT = 160, 120


@pytest.fixture
def stage():
    made = OffScreen(WIDTH, HEIGHT)
    yield made
    made.app.close()


def add(stage, shape, place, static=False):
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setPosition(hyx.Vec3(*place))
    if static:
        body.setMotionControl(hyx.RigidBody.STATIC)
    stage.simulation.add(body)
    color = (0, 0, 1, 1) if static else (1, 0, 0, 1)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, stage.root), hyx.Vec4f(*color))
    return body


def red(picture):
    """Rows and columns of what moves."""
    return numpy.argwhere((picture[..., 0] > 40) & (picture[..., 1] < 30) & (picture[..., 2] < 30))


def assert_in_the_picture(picture, share):
    rows, columns = red(picture).T
    assert len(rows) > share * WIDTH * HEIGHT
    assert rows.min() > 0 and rows.max() < HEIGHT - 1 and columns.min() > 0 and columns.max() < WIDTH - 1


@pytest.mark.parametrize("place, half", [((0, 0, 0), 0.5), ((30, -8, 4), 0.01), ((-200, 0, 3), 40)])
def test_a_box_fills_the_first_picture_wherever_and_however_large_it_is(stage, place, half):
    add(stage, hyxCollide.Box(half, half, half), place)
    picture = stage.app.render()
    assert_in_the_picture(picture, 0.15)
    tones = {tuple(picture[row, column] // 8) for row, column in red(picture)[::7]}
    assert len(tones) >= 3, "three faces show"


@pytest.mark.parametrize("plane", [True, False])
def test_falling_bodies_stay_in_the_first_view_until_they_lie_on_a_wide_ground(stage, plane):
    if plane:
        add(stage, hyxCollide.Plane(0.0, 0.0, 1.0, 0.0), (0, 0, 0), static=True)
    else:
        add(stage, hyxCollide.Box(80, 80, 0.5), (0, 0, -0.5), static=True)
    bodies = [add(stage, hyxCollide.Box(0.5, 0.5, 0.5), (2 * x - 2, 0, 3)) for x in range(3)]
    assert_in_the_picture(stage.app.render(), 0.01)
    for body in bodies:
        body.setPosition(body.getPosition() - hyx.Vec3(0, 0, 2.5))
    assert_in_the_picture(stage.app.render(), 0.01)


def test_what_has_fallen_off_does_not_count(stage):
    add(stage, hyxCollide.Box(2, 2, 0.1), (0, 0, -0.1), static=True)
    for x in range(3):
        add(stage, hyxCollide.Box(0.4, 0.4, 0.4), (1.2 * x - 1.2, 0, 0.4))
    add(stage, hyxCollide.Box(0.4, 0.4, 0.4), (3, 0, -60))
    assert_in_the_picture(stage.app.render(), 0.03)


def test_what_hangs_below_what_rests_is_in_the_first_view(stage):
    add(stage, hyxCollide.Box(0.1, 0.1, 0.1), (0, 0, 8), static=True)
    for z in range(4):
        add(stage, hyxCollide.Box(0.3, 0.3, 0.9), (0, 0, 2 * z))
    assert_in_the_picture(stage.app.render(), 0.02)
    assert numpy.ptp(red(stage.app.render())[:, 0]) > 0.5 * HEIGHT


def test_later_pictures_keep_the_view(stage):
    stage.app.render()  # nothing to see yet
    body = add(stage, hyxCollide.Box(0.5, 0.5, 0.5), (0, 0, 0))
    stage.app.render()
    eye = stage.app.getCameraData().eye
    body.setPosition(hyx.Vec3(5, 0, 0))
    stage.app.render()
    assert (stage.app.getCameraData().eye - eye).length() < 1e-9


def test_a_chosen_view_stays(stage):
    add(stage, hyxCollide.Box(0.5, 0.5, 0.5), (0, 0, 0))
    eye = hyx.Vec3(3, -9, 2)
    stage.app.setCameraHome(eye, hyx.Vec3(0, 0, 1))
    stage.app.render()
    assert (stage.app.getCameraData().eye - eye).length() < 1e-3
