"""Panels, which the library makes for an object of the simulation."""

import math

import hyx
import pytest
from _probe import delete_panel, make_panel
from decorated_stage import HEIGHT, changed, decorator, frame, near, stage


@pytest.fixture
def key():
    return hyx.Vec3()


@pytest.fixture
def panel(decorator, key):
    made = make_panel(decorator.getHud(), key)
    made.setPosition(hyx.Vec2(60, 40))
    made.setSize(hyx.Vec2(100, 30))
    made.setColor(hyx.Vec4(1, 0, 1, 1))
    made.update()
    yield made
    delete_panel(made)


def test_panel_is_drawn_where_it_stands(stage, panel):
    assert frame(near(stage.picture(), (1, 0, 1))) == (60, 159, HEIGHT - 70, HEIGHT - 41)


def test_values_are_kept_and_shown_after_an_update(stage, panel):
    panel.setPosition(hyx.Vec2(10, 20))
    panel.setSize(hyx.Vec2(50, 10))
    panel.setColor(hyx.Vec4(0, 1, 1, 1))
    assert tuple(panel.getPosition()) == (10, 20)
    assert tuple(panel.getSize()) == (50, 10)
    assert tuple(panel.getColor()) == (0, 1, 1, 1)
    assert near(stage.picture(), (1, 0, 1)).any(), "not before the update"
    panel.update()
    picture = stage.picture()
    assert not near(picture, (1, 0, 1)).any()
    assert frame(near(picture, (0, 1, 1))) == (10, 59, HEIGHT - 30, HEIGHT - 21)


def test_panel_leaves_its_display(stage, decorator, panel):
    with_panel = stage.picture()
    assert panel.isValid() is True
    panel.uninitialize(None)
    panel.uninitialize(decorator.getShadowedScene())
    assert panel.isValid() is True, "it stands on neither"
    panel.uninitialize(decorator.getHud())
    assert panel.isValid() is False
    assert changed(stage.picture(), with_panel).any()
    panel.update()


def test_resetting_the_display_takes_panels_off(decorator, panel):
    decorator.resetHUD()
    assert panel.isValid() is False


def test_panel_knows_its_object(panel, key):
    assert panel.match(key) is True
    assert panel.match(hyx.Vec3()) is False
    assert panel.match(None) is False
    with pytest.raises(TypeError, match="Panel.match.. argument 1 '"):
        panel.match(3)


def test_places_that_are_none_are_refused(panel):
    with pytest.raises(RuntimeError, match="position must be finite"):
        panel.setPosition(hyx.Vec2(math.nan, 0))
    with pytest.raises(RuntimeError, match="size must be finite and not negative"):
        panel.setSize(hyx.Vec2(-1, 5))
