"""Colours have names and numbers."""

import hyx
import hyxRender
import pytest


@pytest.mark.parametrize(
    "name, numbers",
    [
        ("orange", (1, 165 / 255, 0, 1)),
        ("Red", (1, 0, 0, 1)),
        ("#336699", (0.2, 0.4, 0.6, 1)),
        ("#33669980", (0.2, 0.4, 0.6, 128 / 255)),
    ],
)
def test_colours_have_names(name, numbers):
    assert tuple(hyxRender.Color(name)) == pytest.approx(numbers)


@pytest.mark.parametrize("name", ["", "reddish", "#12345", "#gggggg", "336699"])
def test_unknown_colours_are_refused(name):
    with pytest.raises(RuntimeError, match="is no colour"):
        hyxRender.Color(name)


def test_colours_convert_to_vectors_and_back():
    color = hyxRender.Color(0.25, 0.5, 0.75)
    assert color.a == 1
    assert color.toVec4f() == hyx.Vec4f(0.25, 0.5, 0.75, 1)
    assert hyxRender.Color(color.toVec4f()) == color
    assert hyxRender.Color((0.25, 0.5, 0.75, 1)) == color
