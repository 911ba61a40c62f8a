"""The way back in time: through the last seconds, and from there into another future."""

import hyx
import pytest
from application_stage import add_box


@pytest.fixture
def falling(app):
    add_box(app, "ground", (0, 0, -1), static=True)
    for i in range(4):
        add_box(app, f"box{i}", (0.1 * i, 0, 0.8 + 1.1 * i))
    app.setHistoryLength(5)
    return app


def state(app):
    return [
        (*body.getPosition(), *body.getRotation(), *body.getVelocity(), *body.getAngularVelocity())
        for body in app.getSimulation().getRigidBodies()
    ]


def step(app, count):
    states = []
    for _ in range(count):
        app.stepSimulation()
        states.append(state(app))
    return states


def test_one_goes_back_and_forward(falling):
    states = step(falling, 60)
    assert falling.getHistoryLength() == 5
    assert (falling.getHistorySpan().x, falling.getHistorySpan().y) == pytest.approx((1 / 60, 1))
    assert falling.scrub(-1) and state(falling) == states[58] and not falling.getAutoStepping()
    assert falling.scrub(-20) and state(falling) == states[38]
    assert falling.followKey(0xFF53) and state(falling) == states[39]  # Right
    assert falling.followKey(0xFF51) and state(falling) == states[38]  # Left
    assert falling.goToTime(0.5) and falling.getTimeStamp() == pytest.approx(0.5) and state(falling) == states[29]
    assert falling.scrub(1000) and state(falling) == states[59] and not falling.scrub(1)
    assert falling.goToTime(-3) and state(falling) == states[0]


def test_another_future_begins_in_the_past(falling):
    step(falling, 60)
    falling.goToTime(0.5)
    falling.getSimulation().getRigidBody("box3").setVelocity(hyx.Vec3(3, 0, 0))
    step(falling, 5)
    assert falling.getHistorySpan().y == pytest.approx(0.5 + 5 / 60)
    assert falling.getSimulation().getRigidBody("box3").getPosition().x > 0.5


def test_the_same_future_comes_again_from_the_same_past(falling):
    step(falling, 30)
    falling.scrub(-1)  # states that are restored go on alike
    first = step(falling, 30)
    falling.goToTime(29 / 60)
    assert step(falling, 30) == first


def test_it_keeps_as_much_as_it_is_told_and_begins_anew_with_other_bodies(falling):
    falling.setHistoryLength(0.25)
    step(falling, 60)
    assert falling.getHistorySpan().x == pytest.approx(0.75, abs=0.02)
    add_box(falling, "new", (9, 9, 9))
    assert not falling.scrub(-1)
    step(falling, 2)
    assert falling.scrub(-1)
    falling.setHistoryLength(0)
    assert not falling.scrub(-1)
    with pytest.raises(RuntimeError, match="0 or a positive"):
        falling.setHistoryLength(-1)
