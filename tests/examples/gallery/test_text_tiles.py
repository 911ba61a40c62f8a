"""Each tile of the text sheet shows its text as its label says."""

import numpy
import pytest
from gallery import texts, tiles_of
from tile import MIDDLE_X, MIDDLE_Y, frame, middle, runs

# One worker draws for all of them.
pytestmark = pytest.mark.xdist_group("gallery")

INK = (204, 0, 128)
SIDES = {"left": 1, "center": 0, "right": -1}
DOWN = {"top": 1, "center": 0, "bottom": -1}


def ink(tile):
    return tile.near(INK, 60)


def black(tile):
    return tile.near((0, 0, 0), 40)


def white(tile):
    return tile.near((255, 255, 255), 10)


def beside(tile):
    """Where the middle of the ink stands, from the text's position: right and down, -1, 0 or 1."""
    x, y = middle(ink(tile))
    return tuple(0 if abs(way) < 4 else int(numpy.sign(way)) for way in (x - MIDDLE_X, y - MIDDLE_Y))


def size(tile):
    left, right, upper, lower = frame(ink(tile))
    return right - left, lower - upper


ALIGNMENTS = [texts.readable(name) for name in texts.ALIGNMENTS]
BACKDROPS = [texts.readable(name).removeprefix("drop ") for name in texts.BACKDROPS]


@pytest.mark.parametrize("label", ALIGNMENTS)
def test_alignment(drawn, label):
    tile = drawn[1]["text"][label]
    side, _, height = label.partition(" ")
    assert white(tile).sum() > 15, "the cross at the position"
    x, y = beside(tile)
    assert x == SIDES[side]
    if height in DOWN:
        assert y == DOWN[height]
    left, right, upper, lower = frame(ink(tile))
    if height == "base line":
        assert upper < MIDDLE_Y < lower, "one line above, one below"
    if height == "bottom base line":
        assert upper < MIDDLE_Y and lower in range(MIDDLE_Y + 1, MIDDLE_Y + 8), "both lines above, g below"


def test_base_lines_are_no_lower_ends(drawn):
    """The text's box ends below the last base line, where letters hang down."""
    tiles = drawn[1]["text"]
    for side in SIDES:
        lines = [
            frame(ink(tiles[f"{side} {height}"]))[3]
            for height in ("bottom", "bottom base line", "center", "base line", "top")
        ]
        assert lines == sorted(lines) and len(set(lines)) == 5, side


# From the side that the planes are seen from, x runs to the right and down, y to the right and up.
PLANES = {
    "xy plane": (1, -1),
    "reversed xy plane": (-1, -1),
    "xz plane": (1, 1),
    "reversed xz plane": (-1, -1),
    "yz plane": (1, -1),
    "reversed yz plane": (-1, 1),
    "screen": (1, -1),
    "user defined rotation": (1, 1),
}


@pytest.mark.parametrize("label", PLANES)
def test_plane(drawn, label):
    tiles = drawn[1]["text"]
    x, y = middle(ink(tiles[label]))
    assert numpy.sign(x - MIDDLE_X) == PLANES[label][0], label
    others = set(PLANES) - {label, "xz plane", "user defined rotation"}
    assert all(tiles[label].differs(tiles[other]).sum() > 80 for other in others)
    width, height = size(tiles[label])
    assert (height < 0.5 * width) == ("xy" in label), "only text that lies is this low"


def test_the_free_rotation_starts_as_none(drawn):
    assert not drawn[1]["text"]["user defined rotation"].differs(drawn[1]["text"]["xz plane"]).any()


@pytest.mark.parametrize("label", BACKDROPS)
def test_backdrop(drawn, label):
    tile = drawn[1]["text"][label]
    if label == "none":
        assert not black(tile).any()
        return
    assert black(tile).sum() > 60
    grown = numpy.subtract(frame(black(tile) | ink(tile)), frame(ink(drawn[1]["text"]["none"]))) * (-1, 1, -1, 1)
    expected = [label == "outline" or side in label for side in ("left", "right", "top", "bottom")]
    assert [bool(way > 1) for way in grown] == expected, grown


# Whether there is ink, a white frame or cross, and a dark field.
MODES = {
    "text only": (1, 0, 0),
    "bounding box": (1, 1, 0),
    "filled box": (1, 0, 1),
    "box without text": (0, 1, 0),
    "alignment cross": (1, 1, 0),
    "everything": (1, 1, 1),
}


@pytest.mark.parametrize("label", MODES)
def test_draw_mode(drawn, label):
    tile = drawn[1]["text"][label]
    dark = (tile.light < 140) & (numpy.ptp(tile.pixels, axis=2) < 20)
    assert (ink(tile).sum() > 100, white(tile).sum() > 10, dark.sum() > 500) == tuple(map(bool, MODES[label]))


def test_frame_and_cross_differ(drawn):
    box, cross = (white(drawn[1]["text"][label]) for label in ("bounding box", "alignment cross"))
    assert frame(box)[0] < 50 and frame(box)[1] > 110
    assert numpy.allclose(middle(cross), (MIDDLE_X, MIDDLE_Y), atol=1.5) and cross[:, 70].sum() <= 1


REST = {
    "colour": lambda t, plain: t.near((0, 102, 204), 40).sum() > 100 and not ink(t).any(),
    "font face": lambda t, plain: ink(t).sum() > 100 and t.differs(plain).sum() > 300,
    "character size": lambda t, plain: numpy.allclose(size(t), numpy.array(size(plain)) / 2, atol=3),
    "position": lambda t, plain: numpy.allclose(numpy.subtract(middle(ink(t)), middle(ink(plain))), (-13, -24), atol=3),
    "changed text": lambda t, plain: runs(ink(t).any(axis=0)) == 3 and size(t)[1] < 0.7 * size(plain)[1],
}

# How many parts the letters of a word make from left to right: by itself each would be one.
SCRIPTS = {"Arabic": 1, "Hindi": 1, "Thai": 2, "Chinese": 2}


@pytest.mark.parametrize("label", SCRIPTS)
def test_script(drawn, label):
    letters = ink(drawn[1]["text"][label])
    assert runs(letters.any(axis=0)) == SCRIPTS[label]
    assert runs(letters.any(axis=1)) == (3 if label == "Thai" else 1), "vowels and tones stand over each other"


@pytest.mark.parametrize("label", REST)
def test_rest(drawn, label):
    assert REST[label](drawn[1]["text"][label], drawn[1]["text"]["none"])


def test_every_tile_has_a_test():
    assert {*ALIGNMENTS, *PLANES, *BACKDROPS, *MODES, *SCRIPTS, *REST} == set(tiles_of("text"))
