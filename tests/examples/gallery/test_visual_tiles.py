"""Each tile of the visuals shows what its label says, and not what its neighbours show."""

import numpy
import pytest
from gallery import tiles_of
from tile import frame, fullness, is_round, length_to_width, middle, runs, turns, width_at

# One worker draws for all of them.
pytestmark = pytest.mark.xdist_group("gallery")


def cream(tile):
    """The light fields of the checkered textures."""
    return tile.shown & (tile.green > 0.75 * tile.red)


def row(tile, flags, y=60):
    return flags[y][tile.shown[y]]


def same_outline(tile, other):
    return (tile.shown != other.shown).sum() < 0.04 * other.shown.sum()


def primaries(tile):
    return all(tile.colored(name).sum() > 8 for name in ("red", "green", "blue"))


def white(tile):
    return tile.light > 235


def saturation(tile):
    inside = tile.pixels[tile.shown]
    return (inside.max(axis=1) - inside.min(axis=1)).mean()


def text_rows(tile, flags):
    return runs(flags.any(axis=1))


SHAPES = {
    "box": lambda t, all: t.flat_shades() >= 2 and 0.6 < fullness(t.shown) < 0.9,
    "sphere": lambda t, all: is_round(t.shown) and t.shades() > 60,
    "cylinder": lambda t, all: (
        abs(width_at(t.shown, 0.3) - width_at(t.shown, 0.7)) <= 6 and length_to_width(t.shown) > 1.1
    ),
    "capsule": lambda t, all: length_to_width(t.shown) > 1.2 and t.flat_shades() == 0,
    "cone": lambda t, all: width_at(t.shown, 0.2) < 0.4 * width_at(t.shown, 0.8),
    "plane": lambda t, all: t.shown[70:].all() and not t.shown[:50].any() and t.light[100, 80] > 100,
    "mesh": lambda t, all: 0.4 < fullness(t.shown) < 0.6 and t.flat_shades() >= 1,
    "height field": lambda t, all: turns(numpy.diff(t.light[t.shown[:, 80], 80]) > 0) >= 4,
    "compound": lambda t, all: max(width_at(t.shown.T, part) for part in (0.4, 0.5)) < 0.6 * width_at(t.shown.T, 0.2),
    "coarse detail": lambda t, all: is_round(t.shown) and 40 < (t.shown ^ all["sphere"].shown).sum() < 400,
    "sensor": lambda t, all: is_round(t.shown) and t.colored("green")[t.shown].mean() > 0.5,
    "body": lambda t, all: middle(t.shown)[0] > 84 and middle(t.shown)[1] < 56,
    "assembly": lambda t, all: 1.3 < width_at(t.shown, 0.8) / width_at(t.shown, 0.2) < 2.2 and middle(t.shown)[0] < 72,
    "cached assemblies": lambda t, all: (
        runs(t.shown.any(axis=0)) == 2 and abs(t.shown[:, :80].sum() - t.shown[:, 80:].sum()) < 0.1 * t.shown.sum()
    ),
    "simulation": lambda t, all: runs(t.shown.any(axis=0)) == 3,
    "observer frame": lambda t, all: primaries(t) and middle(t.colored("blue"))[1] < 60,
}

MATERIALS = {
    "diffuse": lambda t, all: t.colored("red")[45, 65] and not t.colored("red")[80, 100],
    "ambient": lambda t, all: t.colored("green")[85, 95] and not t.colored("green")[45, 65],
    "specular": lambda t, all: white(t).sum() > 60,
    "shininess": lambda t, all: 2 < white(t).sum() < 0.5 * white(all["specular"]).sum(),
    "alpha": lambda t, all: t.shown.sum() > 1.05 * all["box"].shown.sum() and t.colored("red").sum() > 800,
    "outline": lambda t, all: t.near((230, 26, 26)).sum() > 100 and frame(t.near((230, 26, 26))) == frame(t.shown),
    "wire frame": lambda t, all: (
        t.shown.sum() < 0.4 * all["box"].shown.sum()
        and numpy.abs(numpy.subtract(frame(t.shown), frame(all["box"].shown))).max() <= 2
    ),
    "forced wire frame": lambda t, all: t.shown.sum() < 0.9 * all["sphere"].shown.sum() and width_at(t.shown, 0.5) > 40,
    "light off": lambda t, all: is_round(t.shown) and t.light[t.shown].max() < 60,
    "smooth normals": lambda t, all: same_outline(t, all["box"]) and t.shades() > 3 * all["box"].shades(),
}

TEXTURES = {
    "diffuse map": lambda t, all: turns(row(t, cream(t))) >= 6,
    "scaled 2 by half": lambda t, all: (
        turns(row(t, cream(t))) > 1.5 * turns(row(all["diffuse map"], cream(all["diffuse map"])))
    ),
    "edge drawn out": lambda t, all: (
        t.light[58:68, 96:110].std() < 3 and all["diffuse map"].light[58:68, 96:110].std() > 10
    ),
    "shadow map": lambda t, all: turns(row(t, t.light > t.light[60][t.shown[60]].mean())) >= 6,
    "shadow jitter": lambda t, all: 100 < t.differs(all["shadow map"], 4).sum() < 0.3 * t.shown.sum(),
    "normal map": lambda t, all: t.light[50:90, 70:90].std() > 3 * all["box"].light[50:90, 70:90].std(),
    "height map": lambda t, all: (
        t.light[50:90, 70:90].std() > 3 * all["box"].light[50:90, 70:90].std()
        and t.differs(all["normal map"]).sum() > 500
    ),
    "specular map": lambda t, all: (
        white(t).sum() > 60 and white(t).sum() < 0.8 * is_round(t.shown) * frame(white(t))[1] * 20
    ),
    "sphere map": lambda t, all: t.blue[40, 80] > t.red[40, 80] + 40 and t.red[80, 80] > t.blue[80, 80] + 40,
    "mirror": lambda t, all: saturation(t) > 120 and primaries(t),
    "half a mirror": lambda t, all: 0.3 < saturation(t) / saturation(all["mirror"]) < 0.8,
    "sky sphere": lambda t, all: (
        t.blue[60, 5] > 2 * t.red[60, 5] and t.green[60, 155] < 20 and not t.shown[~t.shown].any()
    ),
}

DRAWN = {
    "line": lambda t, all: numpy.corrcoef(numpy.nonzero(t.colored("blue")))[0, 1] < -0.99,
    "polyline": lambda t, all: runs(t.colored("blue")[60]) >= 3,
    "cube lines": lambda t, all: runs(t.shown[60]) == 4 and t.near((0, 0, 139), 40).sum() > 150,
    "drawn sphere": lambda t, all: is_round(t.shown) and t.colored("blue").any() and middle(t.shown)[0] > 88,
    "drawn cylinder": lambda t, all: (
        length_to_width(t.shown) > 1.3 and t.flat_shades() >= 1 and t.colored("blue").any()
    ),
    "grid": lambda t, all: runs(t.shown[65]) == 8 and runs(t.shown[:, 85]) == 8,
    "filled grid": lambda t, all: 0.45 < (t.light[t.shown] < 120).mean() < 0.55 and turns(t.light[55] < 120) >= 6,
    "3D grid": lambda t, all: t.shown.sum() > 1.5 * all["grid"].shown.sum(),
    "axes": lambda t, all: primaries(t) and middle(t.colored("red"))[0] > 80 > middle(t.colored("green"))[0],
    "axes of a joint": lambda t, all: primaries(t) and (t.shown & t.near((120, 120, 120), 60)).sum() > 300,
    "text": lambda t, all: runs(t.shown.any(axis=0)) == 2 and t.colored("red").sum() > 150,
    "text on a geometry": lambda t, all: text_rows(t, t.colored("blue") & (t.light < 90)) == 2,
}


def bands(tile):
    """How much of the grains is in the dark bands of turning particles."""
    return (tile.shown & (tile.light < 50)).sum() / tile.shown.sum()


def pale(tile):
    """How much is neither grain nor background."""
    return (tile.shown & (tile.light > 150)).sum() / tile.shown.sum()


def alike(tile, other):
    """Forms of drawing differ at the edges only."""
    return tile.differs(other, 30).sum() < 0.07 * other.shown.sum()


PARTICLES = {
    "points": lambda t, all: bands(t) < 0.25 and pale(t) < 0.05 and alike(t, all["quads"]),
    "points turning": lambda t, all: bands(t) > bands(all["points"]) + 0.1 and alike(t, all["quads turning"]),
    "points soft": lambda t, all: pale(t) > 0.3 and alike(t, all["quads soft"]),
    "quads": lambda t, all: bands(t) < 0.25 and pale(t) < 0.05 and alike(t, all["meshes"]),
    "quads turning": lambda t, all: bands(t) > bands(all["quads"]) + 0.1 and alike(t, all["meshes turning"]),
    "quads soft": lambda t, all: pale(t) > 0.3 and alike(t, all["meshes soft"]),
    "meshes": lambda t, all: t.shown.sum() < all["quads"].shown.sum(),
    "meshes turning": lambda t, all: bands(t) > bands(all["meshes"]) + 0.1,
    "meshes soft": lambda t, all: pale(t) > 0.3,
    "among bodies": lambda t, all: t.near((205, 145, 84), 30).sum() > 1500 and bands(t) > 0.05,
    "emitter": lambda t, all: t.light[t.shown].min() > 100 and fullness(t.shown) > 0.6,
    "contact graph": lambda t, all: runs(t.shown[50]) >= 7 and t.colored("red").sum() > 300,
    "particle trajectories": lambda t, all: max(runs(line) for line in t.shown) >= 4,
}

MOTION = {
    "body trajectories": lambda t, all: (
        len(
            [
                flags
                for flags in (t.near((0, 80, 255), 60), t.near((200, 255, 0), 60), t.near((255, 0, 220), 60))
                if flags.sum() > 20
            ]
        )
        == 3
    ),
    "coloured by speed": lambda t, all: (
        (t.shown & (t.green < 30) & (t.blue > 100)).sum() > 20
        and t.colored("red").sum() > 20
        and not t.near((200, 255, 0), 60).any()
    ),
    "frame trajectories": lambda t, all: 40 < t.colored("green").sum() < 300,
    "fracture": lambda t, all: numpy.ptp(t.pixels[t.shown], axis=1).max() < 30 and t.flat_shades() >= 5,
    "coloured fracture": lambda t, all: same_outline(t, all["fracture"]) and t.colored("blue")[t.shown].mean() > 0.4,
    "emitted bodies": lambda t, all: max(runs(line) for line in t.shown) >= 3 and t.shades() > 50,
    "terrain": lambda t, all: t.flat_shades() >= 2 and frame(t.shown)[1] - frame(t.shown)[0] > 100,
}

CHECKS = {**SHAPES, **MATERIALS, **TEXTURES, **DRAWN, **PARTICLES, **MOTION}


@pytest.mark.parametrize("label", tiles_of("visuals"))
def test_the_tile_shows_what_it_says(drawn, label):
    tiles = drawn[1]["visuals"]
    assert CHECKS[label](tiles[label], tiles)
