"""Each tile of the decoration shows what its label says, and not what its neighbours show."""

import numpy
import pytest
from gallery import tiles_of
from tile import MIDDLE_X, frame, fullness, is_round, middle, runs, turns, width_at

# One worker draws for all of them.
pytestmark = pytest.mark.xdist_group("gallery")

RED, GREEN, BLUE, YELLOW = (204, 76, 76), (76, 178, 102), (76, 102, 204), (230, 204, 76)
TEAL = (26, 128, 128)
GROUND = numpy.s_[62:115, 20:150]


def corners_are(tile, *colors):
    return all(max(abs(a - b) for a, b in zip(corner, color)) < 16 for corner, color in zip(tile.corners(), colors))


def sky_turns(tile, left, right):
    """Whether the dark tenths of the sky's colours stand to the left and right."""
    return all(tile.pixels[60, x, part] < 20 for x, part in ((4, left), (155, right)))


def cream(tile):
    return tile.green > 0.75 * tile.red


def highlight(tile):
    return tile.light > 240


def bright_side(tile):
    """From the middle of the ball to its bright half, in pixels to the right and down."""
    ball = tile.near((100, 130, 220), 130) & (tile.blue > 1.3 * tile.red)
    bright = ball & (tile.light > numpy.median(tile.light[ball]))
    return numpy.subtract(middle(bright), middle(ball))


def gain(tile, all, x, y):
    """How much of the near light reaches a point of the ground."""
    dark = all["no lights"].light[y, x]
    return (tile.light[y, x] - dark) / (all["near light"].light[y, x] - dark)


def shadow(tile, all):
    """What shadows take from the ground, in levels."""
    return (all["no shadows"].light - tile.light)[GROUND]


def half_dark(tile, all):
    """How many pixels are neither in the light nor in the shadow."""
    loss = shadow(tile, all)
    return ((loss > 0.2 * loss.max()) & (loss < 0.8 * loss.max())).sum()


def shadowed(tile, all):
    """Where the ground of the small scene is darker than without shadows."""
    return (all["ground receives none"].light - tile.light > 25)[55:]


def logo_at(tile, color=TEAL):
    return frame(tile.near(color, 16))


def rows_of(tile):
    """The upper ends of the text's first, second and fourth row."""
    return [
        frame(flags)[2]
        for flags in (tile.colored("blue") & (tile.light < 150), tile.colored("red"), tile.colored("green"))
    ]


def ball_unchanged(tile, all):
    return not tile.differs(all["decorator off"])[40:80, 60:100].any()


BACKGROUNDS = {
    "one colour": lambda t, all: corners_are(t, GREEN, GREEN, GREEN, GREEN) and ball_unchanged(t, all),
    "two colours": lambda t, all: corners_are(t, BLUE, BLUE, YELLOW, YELLOW) and (numpy.diff(t.red[:, 2]) >= 0).all(),
    "four colours": lambda t, all: corners_are(t, RED, GREEN, BLUE, YELLOW),
    "four of Vec4f": lambda t, all: corners_are(t, YELLOW, BLUE, GREEN, RED),
    "decorator off": lambda t, all: len(set(t.corners())) == 1 and not t.near((255, 255, 255), 60).any(),
    "sky box": lambda t, all: sky_turns(t, 0, 1) and ball_unchanged(t, {"decorator off": all["turned sky box"]}),
    "turned sky box": lambda t, all: sky_turns(t, 1, 2),
    "dim sky box": lambda t, all: abs(t.blue[60, 155] / all["sky box"].blue[60, 155] - 0.4) < 0.02,
    "base texture": lambda t, all: turns(cream(t)[100]) >= 4 and turns(cream(t)[30:, 95]) >= 6,
    "light by vertex": lambda t, all: highlight(t).sum() == 0,  # it lies between the corners of the ground
    "light by pixel": lambda t, all: highlight(t).sum() > 500 and fullness(highlight(t)) > 0.7,
    "default material": lambda t, all: (
        numpy.ptp(t.pixels[60, 60:100], axis=1).max() <= 1 and t.light[40, 65] > 1.5 * t.light[80, 95]
    ),
}

LIGHTS = {
    "light 0": lambda t, all: (
        t.light[GROUND].mean() > 1.8 * all["light 1"].light[GROUND].mean() and bright_side(t)[0] < 0.5
    ),
    "light 1": lambda t, all: bright_side(t)[0] > 2,
    "light 2": lambda t, all: (
        bright_side(t)[1] < -0.5 and t.light[GROUND].mean() > 1.1 * all["no lights"].light[GROUND].mean()
    ),
    "all lights": lambda t, all: all_light(t) > max(all_light(all[f"light {i}"]) for i in range(3)) + 10,
    "no lights": lambda t, all: (
        numpy.ptp(t.light[100]) == 0 and all_light(t) < min(all_light(all[f"light {i}"]) for i in range(3))
    ),
    "placed lights": lambda t, all: t.red[110, 5] > t.blue[110, 5] + 20 and t.blue[110, 154] > t.red[110, 154] + 20,
    "near light": lambda t, all: t.light[85, 80] > t.light[115, 5] + 15,
    "diffuse light": lambda t, all: t.red[85, 80] > 2 * t.blue[85, 80] and not t.differs(all["near light"])[:20].any(),
    "ambient light": lambda t, all: (
        t.green[100, 80] > t.red[100, 80] + 20 and t.green[60, 58] > all["near light"].green[60, 58] + 20
    ),
    "light from far away": lambda t, all: numpy.ptp(t.light[75:115, 40:120]) <= 1 and bright_side(t)[0] < -2,
    "attenuation, constant": lambda t, all: (
        abs(gain(t, all, 80, 85) - 1 / 1.5) < 0.03 and abs(gain(t, all, 5, 115) - 1 / 1.5) < 0.03
    ),
    "attenuation, linear": lambda t, all: 0.5 < gain(t, all, 5, 115) < gain(t, all, 80, 85) - 0.02,
    "attenuation, quadratic": lambda t, all: (
        gain(t, all, 5, 115) / gain(t, all, 80, 85)
        < gain(all["attenuation, linear"], all, 5, 115) / gain(all["attenuation, linear"], all, 80, 85) - 0.03
    ),
    "spot": lambda t, all: gain(t, all, 80, 85) > 0.95 and gain(t, all, 5, 115) == 0,
    "spot exponent": lambda t, all: 100 < (t.light[GROUND] > 100).sum() < 0.5 * (all["spot"].light[GROUND] > 100).sum(),
}


def all_light(tile):
    return tile.light[GROUND].mean()


SHADOWS = {
    "soft shadow map": lambda t, all: half_dark(t, all) > 150,
    "shadow map": lambda t, all: half_dark(t, all) == 0 and (shadow(t, all) > 40).sum() > 900,
    "shadow volume": lambda t, all: (
        t.light[85, 12] < 0.7 * all["shadow map"].light[85, 12] and all["shadow map"].differs(t)[62:].sum() > 200
    ),
    "parallel split map": lambda t, all: 0 < half_dark(t, all) < half_dark(all["soft shadow map"], all),
    "light space map": lambda t, all: t.differs(all["soft shadow map"], 5).sum() > 50 and half_dark(t, all) > 100,
    "shadow texture": lambda t, all: t.near((0, 0, 0), 2).sum() > 900,
    "no shadows": lambda t, all: len(numpy.unique(t.light[GROUND][20:, 60:])) == 1,
    "shadows of light 1": lambda t, all: (
        middle(t.light[62:, :75] < 160)[0] < middle(shadowed(all["not shadowed"], all))[0] - 10
    ),
    "ground receives none": lambda t, all: not (t.light[65:, 20:140] < 70).any(),
    "on a normal map": lambda t, all: (
        shadowed(t, all).sum() > 300 and abs(shadowed(t, all).sum() - shadowed(all["not shadowed"], all).sum()) < 250
    ),
    "on particles": lambda t, all: (t.light[45:60, 76:85] < 40).all() and (t.light[66:] > 50).mean() > 0.95,
    "of particles": lambda t, all: shadowed(t, all).sum() > 1.3 * shadowed(all["on a normal map"], all).sum(),
    "not shadowed": lambda t, all: (
        t.colored("green").sum() > 300 and shadowed(t, all).sum() <= shadowed(all["on a normal map"], all).sum() + 40
    ),
}

OVERLAYS = {
    "logo, upper left": lambda t, all: logo_at(t) == (8, 55, 6, 25),
    "logo, lower left": lambda t, all: logo_at(t) == (8, 55, 94, 113),
    "logo, upper right": lambda t, all: logo_at(t) == (104, 151, 6, 25),
    "logo, lower right": lambda t, all: logo_at(t) == (104, 151, 94, 113),
    "logo, free": lambda t, all: logo_at(t) == (48, 95, 52, 71),
    "logo, half transparent": lambda t, all: (
        numpy.abs(2 * t.pixels[54, 50:90] - all["logo, free"].pixels[54, 50:90] - all["cursor"].pixels[54, 50:90]).max()
        <= 3
    ),
    "logo of a texture": lambda t, all: frame(t.differs(all["logo, lower left"])[:90]) == (125, 156, 2, 33),
    "text rows": lambda t, all: numpy.allclose(
        numpy.diff(rows_of(t)) / (rows_of(t)[1] - rows_of(t)[0]), (1, 2), atol=0.15
    ),
    "font": lambda t, all: (
        numpy.abs(numpy.subtract(rows_of(t), rows_of(all["text rows"]))).max() <= 3
        and t.differs(all["text rows"]).sum() > 200
    ),
    "font size": lambda t, all: 1.2 < frame(t.shown)[1] / frame(all["text rows"].shown)[1] < 1.7,
    "pixel scale": lambda t, all: 0.5 < frame(t.shown)[1] / frame(all["text rows"].shown)[1] < 0.8,
    "cursor": lambda t, all: (
        t.near((255, 255, 255), 8)[60:85, 80:95].sum() > 30 and not t.near((255, 255, 255), 8)[:60].any()
    ),
    "HUD": lambda t, all: frame(t.near((128, 0, 128), 40))[0] < 20 and frame(t.near((128, 0, 128), 40))[2] > 85,
}

CUTS = {
    "clip plane": lambda t, all: frame(t.shown)[0] in (79, 80, 81) and t.shown[30:90].any(axis=1).all(),
    "two clip planes": lambda t, all: frame(t.shown)[0] in (79, 80, 81) and frame(t.shown)[3] in (59, 60, 61),
    "clip plane off": lambda t, all: is_round(t.shown),
    "particles sorted": lambda t, all: is_round(t.shown) and frame(t.shown)[0] > MIDDLE_X,
    "particles cut": lambda t, all: (
        frame(t.shown)[0] in (79, 80, 81)
        and t.shown[:, 81].sum() > 15
        and runs(t.shown[:, 82]) >= 1
        and width_at(t.shown, 0.5) > 30
    ),
}

CHECKS = {**BACKGROUNDS, **LIGHTS, **SHADOWS, **OVERLAYS, **CUTS}


@pytest.mark.parametrize("label", tiles_of("decoration"))
def test_the_tile_shows_what_it_says(drawn, label):
    tiles = drawn[1]["decoration"]
    assert CHECKS[label](tiles[label], tiles)
