"""Picking agrees with the physics, and the mouse spring drags a body."""

import math

import hyx
import hyxOSG
import hyxSDK
import numpy
import pytest
from playground import CENTER, CONTROL_LEFT, HEIGHT, SHIFT_LEFT, WIDTH, numbers, playground

LEFT, MIDDLE, RIGHT = 1, 2, 4
DOWN, UP = 0, 1


@pytest.fixture
def handler(playground):
    made = playground.new_handler()
    yield made
    made.reset()


def test_ray_meets_the_body_exactly(playground, handler):
    result = handler.intersect(hyx.Vec3(0.2, -10, 0.1), hyx.Vec3(0.2, 10, 0.1), False)
    assert result.isValid() and result.getNumContacts() == 1
    assert result.getRigidBody() == playground.body
    assert result.getGeometry() == playground.geometry
    assert numpy.allclose(numbers(result.getPoint()), (0.2, -0.5, 0.1), atol=1e-9)
    assert numpy.allclose(numbers(result.getNormal()), (0, -1, 0), atol=1e-9)
    assert math.isclose(result.getDistance(), 9.5)


def test_all_finds_what_is_behind(playground, handler):
    playground.add_ball(3)
    ray = hyx.Vec3(0, -10, 0), hyx.Vec3(0, 10, 0)
    assert handler.intersect(*ray, False).getNumContacts() == 1
    everything = handler.intersect(*ray, True)
    assert everything.getNumContacts() == 2
    assert everything.getDistance(0) < everything.getDistance(1) == pytest.approx(12.5)


def test_screen_point_and_ray_agree(playground, handler):
    for x, y in [CENTER, (CENTER[0] + 8, CENTER[1] - 5), (3.0, 3.0)]:
        near, far = hyx.Vec3(), hyx.Vec3()
        handler.getNearFarPoints(playground.app.getCamera(), near, far, x, y)
        by_ray = handler.intersect(near, far, True)
        by_point = handler.intersect(x, y, True)
        assert by_ray.getNumContacts() == by_point.getNumContacts()
        assert numpy.allclose(numbers(by_ray.getPoint()), numbers(by_point.getPoint()))
    assert handler.intersect(*CENTER, False).isValid()
    assert not handler.intersect(3.0, 3.0, False).isValid()


def test_near_and_far_points_lie_on_the_line_of_sight(playground, handler):
    near, far = hyx.Vec3(), hyx.Vec3()
    handler.getNearFarPoints(playground.app.getCamera(), near, far, *CENTER)
    for point in (near, far):
        assert numpy.allclose(numbers(point)[[0, 2]], 0, atol=1e-6 * abs(point.y))
    assert -10 < near.y < far.y
    other, other_far = hyx.Vec3(), hyx.Vec3()
    handler.getNearFarPoints(playground.app.getCamera(), other, other_far, 0.0, 0.0, True)
    assert numpy.allclose(numbers(other), numbers(near)) and numpy.allclose(numbers(other_far), numbers(far))
    handler.getNearFarPoints(playground.app.getCamera(), other, other_far, 1.0, 1.0, True)
    handler.getNearFarPoints(playground.app.getCamera(), near, far, float(WIDTH), float(HEIGHT))
    assert numpy.allclose(numbers(other), numbers(near)) and near.x > 0 and near.z > 0


def test_null_arguments(playground, handler):
    point = hyx.Vec3(1, 2, 3)
    handler.getNearFarPoints(None, point, hyx.Vec3(), 0.0, 0.0)
    assert numpy.allclose(numbers(point), (1, 2, 3)), "left as it was"
    with pytest.raises(
        TypeError,
        match="PickHandler.getNearFarPoints.. argument 2 .* not None",
    ):
        handler.getNearFarPoints(playground.app.getCamera(), None, hyx.Vec3(), 0.0, 0.0)
    handler.setCamera(None)
    assert handler.getCamera() is None
    assert not handler.pick(*CENTER).isValid()
    handler.setCamera(playground.app.getCamera())
    assert handler.getCamera() == playground.app.getCamera()
    assert handler.intersect(*CENTER, False).isValid()
    handler.setSimulation(None)
    assert not handler.intersect(*CENTER, False).isValid()
    alone = hyxOSG.PickHandler(None)
    assert not alone.pick(1.0, 1.0).isValid()
    alone.update(1.0, 1.0)


def test_pick_on_an_empty_scene_is_an_empty_result(handler):
    handler.setSimulation(hyxSDK.Simulation())
    result = handler.pick(*CENTER)
    assert result is not None and not result.isValid()
    assert result.getNumContacts() == 0 and result.getRigidBody() is None and result.getGeometry() is None


@pytest.mark.parametrize("x", [1e39, -1e39])
def test_numbers_beyond_single_precision_are_refused(handler, x):
    with pytest.raises(OverflowError, match="PickHandler.pick.. argument 1 '"):
        handler.pick(x, 0.0)


def test_masks_are_kept(handler):
    assert handler.getActivateModKeyMask() == 12 and handler.getActivateMouseButton() == LEFT
    handler.setActivateModKeyMask(2**32 - 1)
    handler.setActivateMouseButton(RIGHT)
    assert handler.getActivateModKeyMask() == 2**32 - 1 and handler.getActivateMouseButton() == RIGHT
    with pytest.raises(OverflowError):
        handler.setActivateModKeyMask(-1)


def drag(playground, handler, x, frames=90):
    for _ in range(frames):
        handler.update(x, CENTER[1])
        playground.simulation.step()


def test_spring_drags_the_body_to_the_pointer(playground, handler):
    handler.keyboard(CONTROL_LEFT, 0, 0.0, 0.0, True)
    assert handler.mouse(LEFT, DOWN, *CENTER) is True
    assert handler.mouseDragged(LEFT, CENTER[0] + 20, CENTER[1]) is True
    drag(playground, handler, CENTER[0] + 20)
    near, far = hyx.Vec3(), hyx.Vec3()
    handler.getNearFarPoints(playground.app.getCamera(), near, far, CENTER[0] + 20, CENTER[1])
    target = near.x + (far.x - near.x) * (-0.5 - near.y) / (far.y - near.y)
    held = playground.body.getTransform().transformPoint(hyx.Vec3(0, -0.5, 0))
    assert abs(held.x - target) < 0.05 * target and target > 0.5
    assert handler.mouse(LEFT, UP, *CENTER) is True
    playground.body.setVelocity(hyx.Vec3(0, 0, 0))
    playground.body.setAngularVelocity(hyx.Vec3(0, 0, 0))
    before = numbers(playground.body.getPosition())
    drag(playground, handler, CENTER[0] - 20, 30)
    assert numpy.allclose(numbers(playground.body.getPosition()), before, atol=1e-6), "let go"
    assert handler.mouseDragged(LEFT, *CENTER) is False


def test_the_spring_follows_the_pointer_of_every_frame(playground, handler):
    assert handler.pick(*CENTER).getRigidBody() == playground.body
    drag(playground, handler, CENTER[0] + 20)
    assert playground.body.getPosition().x > 0.3


def test_another_button_and_key_can_hold_the_body(playground, handler):
    handler.setActivateMouseButton(RIGHT)
    handler.setActivateModKeyMask(1)
    handler.keyboard(CONTROL_LEFT, 4, 0.0, 0.0, True)
    assert handler.mouse(RIGHT, DOWN, *CENTER) is False
    handler.keyboard(SHIFT_LEFT, 1, 0.0, 0.0, True)
    assert handler.mouse(LEFT, DOWN, *CENTER) is False
    assert handler.mouse(RIGHT, DOWN, *CENTER) is True


def test_keys_and_button_must_fit(playground, handler):
    assert handler.mouse(LEFT, DOWN, *CENTER) is False, "no control key"
    handler.keyboard(CONTROL_LEFT, 4, 0.0, 0.0, True)
    assert handler.mouse(RIGHT, DOWN, *CENTER) is False
    assert handler.mouse(LEFT, DOWN, 3.0, 3.0) is False, "nothing there"
    assert handler.mouse(LEFT, DOWN, *CENTER) is True
    handler.reset()
    handler.keyboard(CONTROL_LEFT, 4, 0.0, 0.0, False)
    assert handler.mouse(LEFT, DOWN, *CENTER) is False, "the key is up again"
    handler.setActivateModKeyMask(0)
    assert handler.mouse(LEFT, DOWN, *CENTER) is True


def test_bodies_that_do_not_move_by_forces_are_not_held(playground, handler):
    playground.body.setMotionControl(hyx.RigidBody.STATIC)
    assert handler.pick(*CENTER).isValid()
    assert handler.mouseDragged(LEFT, *CENTER) is False


def test_a_held_body_may_leave_the_simulation(playground, handler):
    held = playground.add_ball(-2)
    assert handler.pick(*CENTER).getRigidBody() == held
    playground.simulation.remove(held)
    assert handler.mouseDragged(LEFT, *CENTER) is False
    handler.update(*CENTER)
    playground.simulation.step()


def orange(picture):
    return (picture[..., 0] > 200) & (picture[..., 1] > 100) & (picture[..., 1] < 180) & (picture[..., 2] < 80)


def test_spring_is_drawn_while_it_holds(playground, handler):
    assert not orange(playground.picture()).any()
    handler.pick(*CENTER)
    handler.mouseDragged(LEFT, CENTER[0] + 60, CENTER[1])
    handler.updateRenderState()
    columns = numpy.nonzero(orange(playground.picture()).any(axis=0))[0]
    assert abs(columns.min() - CENTER[0]) < 6 and abs(columns.max() - CENTER[0] - 60) < 6
    small = orange(playground.picture()).sum()
    handler.createMouseSpringRendering(0.2)
    assert orange(playground.picture()).sum() > 2 * small
    handler.reset()
    assert not orange(playground.picture()).any()
    with pytest.raises(RuntimeError, match="radius"):
        handler.createMouseSpringRendering(0.0)


def test_the_drawn_spring_follows_a_moved_body_when_asked(playground, handler):
    handler.pick(*CENTER)
    handler.mouseDragged(LEFT, CENTER[0] + 60, CENTER[1])
    before = orange(playground.picture())
    playground.body.setPosition(hyx.Vec3(-1, 0, 0))
    left = numpy.nonzero(orange(playground.picture()).any(axis=0))[0].min()
    handler.updateRenderState()
    assert numpy.nonzero(orange(playground.picture()).any(axis=0))[0].min() < left - 10
    assert before.any()


def test_a_handler_without_a_group_draws_nothing(playground):
    alone = hyxOSG.PickHandler(playground.app.getViewer())
    alone.setSimulation(playground.simulation)
    assert alone.pick(*CENTER).getRigidBody() == playground.body
    assert alone.mouseDragged(LEFT, CENTER[0] + 60, CENTER[1]) is True
    assert not orange(playground.picture()).any()
    alone.reset()


def test_events_of_the_window_drag_a_body(playground):
    """The whole road: event queue, viewer, application, pick handler, physics."""
    events = playground.events
    events.mouseMotion(*CENTER)
    events.keyPress(CONTROL_LEFT)
    playground.frame()
    events.mouseButtonPress(CENTER[0], CENTER[1], 1)
    playground.frame()
    events.mouseMotion(CENTER[0] + 30, CENTER[1])
    playground.frame(40)
    assert playground.body.getPosition().x > 0.4
    events.mouseButtonRelease(CENTER[0] + 30, CENTER[1], 1)
    events.keyRelease(CONTROL_LEFT)
    playground.frame()
