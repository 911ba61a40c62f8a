"""The contact sheet of visuals: every tile shows something, and something else than its neighbours."""
import os
import pathlib
import subprocess
import sys

import pytest
from studio import Picture

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROWS, COLUMNS = 5, 8


@pytest.fixture(scope="module")
def sheet(tmp_path_factory):
    folder = tmp_path_factory.mktemp("gallery")
    command = [sys.executable, str(ROOT / "examples" / "visuals_gallery.py"), "--output", str(folder)]
    paths = os.pathsep.join(sys.path)
    result = subprocess.run(command, capture_output=True, text=True, timeout=120,
                            env={**os.environ, "PYTHONPATH": paths, "HYX_DISPLAY": "offscreen"})
    assert f"{ROWS * COLUMNS} tiles" in result.stdout, result.stderr
    return Picture(folder / "visuals_gallery.png")


def tile(sheet, row, column):
    """Every third pixel of a tile's middle, without its label."""
    width, height = sheet.width // COLUMNS, sheet.height // ROWS
    left, top = column * width, sheet.height - row * height
    return [sheet.pixel(x, y) for y in range(top - height + 30, top - 20, 3) for x in range(left + 10, left + width - 10, 3)]


def differing(one, other):
    return sum(max(abs(a - b) for a, b in zip(p, q)) > 24 for p, q in zip(one, other))


def test_every_tile_shows_something_of_its_own(sheet):
    background = sheet.pixel(2, sheet.height - 2)
    tiles = {(row, column): tile(sheet, row, column) for row in range(ROWS) for column in range(COLUMNS)}
    for place, pixels in tiles.items():
        assert sum(max(abs(a - b) for a, b in zip(pixel, background)) > 24 for pixel in pixels) > 20, place
    for (row, column), pixels in tiles.items():
        if column + 1 < COLUMNS:
            assert differing(pixels, tiles[row, column + 1]) > 30, (row, column)
