"""Picking where the picture is drawn through a transform: what is drawn at a place is picked there."""

import hyx
import hyxOSG
import numpy
import pytest
from application_stage import add_box

CONTROL_LEFT = 0xFFE3


@pytest.fixture
def moved(window, shoot):
    """The body, and the place of the picture where it is drawn, three metres to the right of the middle."""
    body = add_box(window, "box")
    window.createVisual(window.getSimulation())
    empty = shoot(window)
    window.setCoordinateSystemTransform(hyx.AffineMatrix4x4(hyx.Vec3(3, 0, 0)))
    picture = shoot(window)
    rows, columns = numpy.nonzero(abs(picture - empty).max(axis=2) > 24)
    right = columns > 90
    return body, (float(columns[right].mean()), float(119 - rows[right].mean()))


def test_what_is_drawn_is_picked(window, moved):
    handler = window.getPickHandler()
    _, (x, y) = moved
    assert handler.intersect(x, y, False).getRigidBody().getName() == "box"
    assert not handler.intersect(80.0, 60.0, False).isValid()
    near, far = hyx.Vec3(), hyx.Vec3()
    handler.getNearFarPoints(window.getCamera(), near, far, x, y)
    assert handler.intersect(near, far, False).getRigidBody().getName() == "box"
    listener = hyxOSG.GuiEventListener()
    window.getSimulation().add(listener)
    found = listener.intersect(x, y, window.getCamera())
    assert abs(found.getPoint().x) < 0.5 and found.getPoint().y == pytest.approx(-0.5, abs=1e-6)
    space = window.getSimulation().getSpace()
    assert hyxOSG.getHoveredGeometryContact(window.getCamera(), space, x, y).getNumPoints() == 1


def test_the_spring_pulls_to_where_the_pointer_is_drawn(window, moved):
    window.getSimulation().setGravity(hyx.Vec3(0, 0, 0))
    handler = window.getPickHandler()
    body, (x, y) = moved
    assert handler.pick(x, y).isValid()
    handler.mouseDragged(hyxOSG.GuiEventListener.LEFT, x - 20.0, y)
    for _ in range(300):
        window.stepSimulation()
    handler.reset()
    picture = hyxOSG.GuiEventListener()
    window.getSimulation().add(picture)
    assert body.getPosition().x < -0.4
    assert picture.intersect(x - 20.0, y, window.getCamera()).isValid()
