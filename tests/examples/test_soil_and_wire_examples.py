"""The examples of soil and wires run as a user runs them, and their pictures show what they say."""

import os
import subprocess
import sys
from pathlib import Path

import numpy
import pytest
from PIL import Image

# One worker draws for all of them.
pytestmark = pytest.mark.xdist_group("heavy")  # one at a time: each takes 400 MB

ROOT = Path(__file__).resolve().parents[2]
PACKAGES = Path(os.environ.get("HYX_BUILD", ROOT / "build")) / "python"


def run_example(name, folder, *arguments):
    variables = {**os.environ, "PYTHONPATH": str(PACKAGES)}
    command = [sys.executable, str(ROOT / "examples" / name), "--output", str(folder), *map(str, arguments)]
    done = subprocess.run(command, capture_output=True, text=True, timeout=500, env=variables)
    assert done.returncode == 0, done.stderr
    return done.stdout


def pixels(path):
    return numpy.asarray(Image.open(path).convert("RGB")).astype(int)


@pytest.fixture(scope="module")
def soil(tmp_path_factory):
    folder = tmp_path_factory.mktemp("soil")
    said = run_example("dug_terrain.py", folder)
    return said, {path.stem.removeprefix("dug_terrain_"): pixels(path) for path in folder.glob("*.png")}


def test_the_dug_terrain_keeps_its_mass(soil):
    said, _ = soil
    kept = float(said.split("mass kept to ")[1].split(",")[0])
    grains = int(said.split(", ")[-1].split()[0])
    assert kept < 1e-9 and grains > 500


def test_every_overlay_shows_something_else(soil):
    _, pictures = soil
    assert len(pictures) == 8
    names = sorted(pictures)
    for i, one in enumerate(names):
        for other in names[:i]:
            assert (pictures[one] != pictures[other]).any(axis=2).sum() > 200, (one, other)


def test_the_hill_is_the_highest_and_the_trench_the_loosest(soil):
    _, pictures = soil
    r, g, b = numpy.moveaxis(pictures["heights"], 2, 0)
    top = numpy.argwhere((r > 170) & (g > 170) & (b < 80))
    assert len(top) > 100 and 400 < top[:, 1].mean() < 900
    r, g, b = numpy.moveaxis(pictures["compaction"], 2, 0)
    loose = numpy.argwhere((b > r + 60) & (b > 180) & (r < 190) & (numpy.arange(540)[:, None] > 150))
    assert len(loose) > 100


def test_the_loaded_wire_is_red_and_the_slack_one_is_not(tmp_path):
    said = run_example("wire_under_tension.py", tmp_path)
    assert 2500 < float(said.split("largest tension ")[1].split()[0]) < 6000
    picture = pixels(tmp_path / "wire_under_tension.png")
    r, g, b = numpy.moveaxis(picture, 2, 0)
    red = numpy.argwhere((r > 90) & (g < 0.6 * r) & (b < 0.6 * r))
    assert len(red) > 100
    columns = red[:, 1]
    assert (columns < 480).sum() > 100  # the load hangs on the left
    worn = numpy.argwhere((r > 100) & (g < 60) & (b < 60))
    blue = numpy.argwhere((b > 90) & (r < 50) & (g < 80))
    # The cable is on the right; smoothed edges on the left come near to its colour.
    assert len(worn) and len(blue) > 20 and (blue[:, 1] > 480).mean() > 0.9
