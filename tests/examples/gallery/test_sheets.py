"""The contact sheets as a whole."""

import pytest
from gallery import SHEETS, tiles_of
from PIL import Image

# One worker draws for all of them.
pytestmark = pytest.mark.xdist_group("gallery")


def test_every_tile_is_drawn_and_on_its_sheet(drawn):
    folder, tiles = drawn
    assert tiles.keys() == SHEETS.keys()
    for sheet, shown in tiles.items():
        labels = list(tiles_of(sheet))
        assert sorted(labels) == sorted(shown)
        with Image.open(folder / f"{sheet}_gallery.png") as image:
            picture = image.convert("RGB")
        for place in (0, len(labels) - 1):
            left, top = 4 + place % 8 * 164, 4 + place // 8 * 142
            copied = picture.crop((left, top, left + 160, top + 120))
            assert copied.tobytes() == shown[labels[place]].pixels.astype("uint8").tobytes(), labels[place]
            label = picture.crop((left, top + 120, left + 160, top + 138))
            assert min(label.convert("L").tobytes()) < 90, "its label is under it"


def test_neighbours_differ(drawn):
    for sheet, tiles in drawn[1].items():
        labels = list(tiles_of(sheet))
        for one, other in zip(labels, labels[1:]):
            assert tiles[one].differs(tiles[other]).sum() > 25, (one, other)
        for label in labels:
            assert tiles[label].shown.sum() > 100, label
