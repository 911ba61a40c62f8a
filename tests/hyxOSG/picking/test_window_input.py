"""Keys, buttons and the pointer of a display reach a Python listener, and so do the same ones in the window's queue."""

import functools
import json
import pathlib

import pytest
from subprocesses import has_display, run_python
from window_input import ARROW_LEFT, CONTROL_LEFT, HEIGHT, SHIFT_LEFT, WIDTH

PROGRAM = str(pathlib.Path(__file__).parent / "window_input.py")
DOWN, UP = 0, 1
LEFT, MIDDLE, RIGHT = 1, 2, 4
SHIFT, CONTROL = 1, 4


@functools.cache
def told(way):
    done = run_python(
        PROGRAM, way, **({} if way == "display" else {"HYX_DISPLAY": "offscreen"}), on_display=way == "display"
    )
    assert done.returncode == 0, done.stderr
    return json.loads(done.stdout)


@pytest.fixture(
    params=["queue", pytest.param("display", marks=pytest.mark.skipif(not has_display, reason="no xvfb or xdotool"))]
)
def report(request):
    return told(request.param)


def of(report, name):
    return [tuple(call[1:]) for call in report["calls"] if call[0] == name]


def test_the_pointer_is_in_pixels_from_the_lower_left_corner(report):
    assert of(report, "mouseMoved") == [
        (100, 50),
        (0, 0),
        (WIDTH - 1, HEIGHT - 1),
        (WIDTH // 2, HEIGHT // 2),
        (10, 20),
        (199, 149),
        (30, 40),
        (259, 179),
    ]
    assert report["last_update"] == [259, 179]


def test_buttons_have_their_masks_and_states(report):
    assert of(report, "mouse") == [
        (LEFT, DOWN, 100, 50),
        (LEFT, UP, 120, 70),
        (MIDDLE, DOWN, 120, 70),
        (MIDDLE, UP, 120, 70),
        (RIGHT, DOWN, 120, 70),
        (RIGHT, UP, 120, 70),
        (LEFT, DOWN, 120, 70),
        (RIGHT, DOWN, 120, 70),
        (RIGHT, UP, 130, 80),
        (LEFT, UP, 131, 81),
    ]


def test_drags_have_all_buttons_that_are_down(report):
    assert of(report, "mouseDragged") == [(LEFT, 110, 60), (LEFT, 120, 70), (LEFT | RIGHT, 130, 80), (LEFT, 131, 81)]


def test_keys_have_their_symbols_modifiers_and_place(report):
    place = 131, 81
    assert of(report, "keyboard") == [
        (ord("k"), 0, *place, True),
        (ord("k"), 0, *place, False),
        (ARROW_LEFT, 0, *place, True),
        (ARROW_LEFT, 0, *place, False),
        (SHIFT_LEFT, SHIFT, *place, True),
        (ord("K"), SHIFT, *place, True),
        (ord("K"), SHIFT, *place, False),
        (SHIFT_LEFT, 0, *place, False),
        (CONTROL_LEFT, CONTROL, 160, 120, True),
        (CONTROL_LEFT, 0, 200, 120, False),
    ]


def test_a_drag_with_control_moves_the_body_and_is_used_up(report):
    assert report["x"] > 0.3


@pytest.mark.skipif(not has_display, reason="no xvfb or xdotool")
def test_both_ways_tell_the_same_in_the_same_order():
    assert told("display")["calls"] == told("queue")["calls"]
