"""Scalar colour maps: the published tables, intervals, and what lies outside of them."""

import math

import _hyxOSG
import hyxOSG
import hyxRender
import pytest
from hyxOSG import ScalarColorMap

STEPS = [i / 100 for i in range(101)]
HALF_LEVEL = 1.2 / 255


def rgb(color):
    return tuple(color)[:3]


def from_hex(text):
    return tuple(int(text[i : i + 2], 16) / 255 for i in (0, 2, 4))


def unit(value):
    return min(1.0, max(0.0, value))


def through(*knots):
    """Linear through (position, value) pairs."""

    def at(x):
        for (x0, y0), (x1, y1) in zip(knots, knots[1:]):
            if x <= x1:
                return y0 + (y1 - y0) * (x - x0) / (x1 - x0)
        return knots[-1][1]

    return at


FORMULAS = {
    hyxOSG.ScalarColorMap_RAINBOW: (
        lambda x: unit(abs(2 * x - 0.5)),
        lambda x: math.sin(math.pi * x),
        lambda x: math.cos(math.pi * x / 2),
    ),
    hyxOSG.ScalarColorMap_GRAYSCALE: (unit, unit, unit),
    hyxOSG.ScalarColorMap_BLUE_WHITE_RED: (
        lambda x: unit(2 * x),
        lambda x: unit(min(2 * x, 2 - 2 * x)),
        lambda x: unit(2 - 2 * x),
    ),
    hyxOSG.ScalarColorMap_AFMHOT: (lambda x: unit(2 * x), lambda x: unit(2 * x - 0.5), lambda x: unit(2 * x - 1)),
    hyxOSG.ScalarColorMap_COPPER: (
        through((0, 0), (0.809524, 1), (1, 1)),
        through((0, 0), (1, 0.7812)),
        through((0, 0), (1, 0.4975)),
    ),
    hyxOSG.ScalarColorMap_BONE: (
        through((0, 0), (0.746032, 0.652778), (1, 1)),
        through((0, 0), (0.365079, 0.319444), (0.746032, 0.777778), (1, 1)),
        through((0, 0), (0.365079, 0.444444), (1, 1)),
    ),
}

# The colours at 0, 1/4, 1/2, 3/4 and 1 as the tables were published.
ANCHORS = {
    hyxOSG.ScalarColorMap_VIRIDIS: ["440154", "3b528b", "21918c", "5ec962", "fde725"],
    hyxOSG.ScalarColorMap_INFERNO: ["000004", "57106e", "bc3754", "f98e09", "fcffa4"],
    hyxOSG.ScalarColorMap_PLASMA: ["0d0887", "7e03a8", "cc4778", "f89540", "f0f921"],
    hyxOSG.ScalarColorMap_CIVIDIS: ["00224e", "434e6c", "7d7c78", "bcae6c", "fee838"],
    hyxOSG.ScalarColorMap_COOLWARM: ["3b4cc0", "8db0fe", "dddcdc", "f49a7b", "b40426"],
}


@pytest.mark.parametrize("preset", FORMULAS)
def test_presets_with_a_formula_follow_it(preset):
    colors = ScalarColorMap(preset, 0.0, 1.0)
    for x in STEPS:
        expected = [channel(x) for channel in FORMULAS[preset]]
        assert rgb(colors.getColor(x)) == pytest.approx(expected, abs=2.5 / 255), x


@pytest.mark.parametrize("preset", ANCHORS)
def test_presets_with_a_table_meet_it(preset):
    colors = ScalarColorMap(preset, 0.0, 1.0)
    for i, text in enumerate(ANCHORS[preset]):
        assert rgb(colors.getColor(i / 4)) == pytest.approx(from_hex(text), abs=2.5 / 255), i


@pytest.mark.parametrize("preset", [hyxOSG.ScalarColorMap_VIRIDIS, hyxOSG.ScalarColorMap_CIVIDIS])
def test_perceptual_presets_grow_lighter(preset):
    colors = ScalarColorMap(preset, 0.0, 1.0)
    lightness = [sum(w * c for w, c in zip((0.2126, 0.7152, 0.0722), rgb(colors.getColor(x)))) for x in STEPS]
    assert all(a < b + 1e-3 for a, b in zip(lightness, lightness[1:]))


def test_every_preset_has_256_opaque_colors_of_its_own():
    seen = set()
    for preset in range(11):
        colors = ScalarColorMap()
        colors.setColorsFromPreset(preset)
        table = colors.getColors()
        assert len(table) == 256 and all(color.a == 1 for color in table)
        seen.add(tuple(round(channel, 3) for color in table for channel in tuple(color)))
    assert len(seen) == 11


@pytest.mark.parametrize("preset", [-1, 11])
def test_unknown_presets_are_refused(preset):
    with pytest.raises(RuntimeError, match="use 0 to 10"):
        ScalarColorMap(preset, 0.0, 1.0)
    with pytest.raises(RuntimeError, match="use 0 to 10"):
        ScalarColorMap().setColorsFromPreset(preset)


def test_the_interval_scales_the_value():
    colors = ScalarColorMap(hyxOSG.ScalarColorMap_GRAYSCALE, -10.0, 30.0)
    assert rgb(colors.getColor(10.0)) == pytest.approx((0.5,) * 3, abs=HALF_LEVEL)
    colors.setScalarInterval(0.0, 20.0)
    assert rgb(colors.getColor(5.0)) == pytest.approx((0.25,) * 3, abs=HALF_LEVEL)
    assert (colors.getMinScalar(), colors.getMaxScalar()) == (0, 20)


def test_a_limit_pushes_the_other():
    colors = ScalarColorMap(hyxOSG.ScalarColorMap_GRAYSCALE, 0.0, 1.0)
    colors.setMinScalar(5.0)
    assert (colors.getMinScalar(), colors.getMaxScalar()) == (5, 5)
    colors.setMaxScalar(-5.0)
    assert (colors.getMinScalar(), colors.getMaxScalar()) == (-5, -5)
    assert rgb(colors.getColor(-6.0)) == (0, 0, 0) and rgb(colors.getColor(-4.0)) == (1, 1, 1)


@pytest.mark.parametrize("low, high", [(1.0, 0.0), (math.nan, 1.0), (0.0, math.inf)])
def test_impossible_intervals_are_refused(low, high):
    colors = ScalarColorMap()
    with pytest.raises(RuntimeError, match="finite, with its minimum first"):
        colors.setScalarInterval(low, high)
    assert (colors.getMinScalar(), colors.getMaxScalar()) == (0, 1)


def test_values_beyond_the_interval_are_clamped_or_transparent():
    colors = ScalarColorMap(hyxOSG.ScalarColorMap_AFMHOT, 0.0, 1.0)
    assert tuple(colors.getColor(2.0)) == tuple(colors.getColor(2.0, True)) == tuple(colors.getColor(1.0))
    assert tuple(colors.getColor(math.inf)) == tuple(colors.getColor(1.0))
    for value in (-0.1, 1.1):
        assert tuple(colors.getColor(value, False)) == (0, 0, 0, 0)
    assert tuple(colors.getColor(math.nan)) == (0, 0, 0, 0)
    assert tuple(colors.getColor(0.0, False)) == tuple(colors.getColor(0.0))


def test_the_widest_interval_does_not_overflow():
    colors = ScalarColorMap(hyxOSG.ScalarColorMap_GRAYSCALE, -1.7e308, 1.7e308)
    assert rgb(colors.getColor(0.0)) == pytest.approx((0.5,) * 3, abs=HALF_LEVEL)


def test_own_colors_are_spread_evenly():
    source = ScalarColorMap()
    source.setColorsFromPreset(hyxOSG.ScalarColorMap_BLUE_WHITE_RED)
    colors = ScalarColorMap(source.getColors(), 0.0, 2.0)
    assert rgb(colors.getColor(1.0)) == pytest.approx((1, 1, 1), abs=HALF_LEVEL)
    copy = colors.getColors()
    colors.setColorsFromPreset(hyxOSG.ScalarColorMap_GRAYSCALE)
    assert tuple(copy[0]) == pytest.approx((0, 0, 1, 1))
    colors.setColors(copy)
    assert rgb(colors.getColor(0.0)) == pytest.approx((0, 0, 1))


def test_lists_of_colors_are_sequences():
    colors = hyxRender.ColorVector([hyxRender.Color(1.0, 0.0, 0.0, 1.0)])
    colors.append(hyxRender.Color(0.0, 0.0, 1.0, 1.0))
    changed = colors[0]
    changed.g = 0.5
    assert colors[0].g == 0, "elements are copies: a list that grows moves its own"
    colors[0] = changed
    assert [tuple(color) for color in colors] == [(1, 0.5, 0, 1), (0, 0, 1, 1)]
    assert [tuple(color) for color in colors[::-1]] == [(0, 0, 1, 1), (1, 0.5, 0, 1)]
    between = ScalarColorMap(colors, 0.0, 1.0)
    assert tuple(between.getColor(0.5)) == pytest.approx((0.5, 0.25, 0.5, 1))
    del colors[:]
    assert not colors
    between.setColors(colors)
    assert tuple(between.getColor(0.5)) == (1, 1, 1, 1)


def test_both_vectors_hold_the_same_color():
    colors = ScalarColorMap(hyxOSG.ScalarColorMap_PLASMA, 0.0, 1.0)
    assert tuple(colors.getColorOSG(0.3)) == pytest.approx(tuple(colors.getColor(0.3)))


def test_the_scene_color_range_is_a_new_owned_pointer():
    colors = ScalarColorMap()
    first, second = colors.getOsgColorRange(), colors.getOsgColorRange()
    assert "osgSim::ColorRange" in repr(first if not hasattr(first, "this") else first.this)
    assert int(getattr(first, "this", first)) != int(getattr(second, "this", second))


def test_the_overloads_are_listed():
    with pytest.raises(TypeError) as refusal:
        _hyxOSG.new_ScalarColorMap("viridis")
    assert str(refusal.value) == (
        "Wrong number or type of arguments for overloaded function 'new_ScalarColorMap'.\n"
        "  Possible C/C++ prototypes are:\n"
        "    hyxOSG::ScalarColorMap::ScalarColorMap()\n"
        "    hyxOSG::ScalarColorMap::ScalarColorMap(hyxRender::ColorVector const &,double,double)\n"
        "    hyxOSG::ScalarColorMap::ScalarColorMap(hyxOSG::ScalarColorMap::ColorRangePreset,double,double)\n"
    )
