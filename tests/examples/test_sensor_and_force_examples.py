"""The examples of lidar, forces and tracks run as a user runs them, and their pictures show what they say."""

import os
import subprocess
import sys
from pathlib import Path

import numpy
import pytest
from PIL import Image
from video_file import frames

# One worker draws for all of them.
pytestmark = pytest.mark.xdist_group("heavy")  # one at a time: each takes 400 MB

ROOT = Path(__file__).resolve().parents[2]
PACKAGES = Path(os.environ.get("HYX_BUILD", ROOT / "build")) / "python"


def run_example(name, folder):
    """Runs an example and returns its pictures by name: red, green and blue of each pixel."""
    variables = {**os.environ, "PYTHONPATH": str(PACKAGES)}
    command = [sys.executable, str(ROOT / "examples" / name), "--output", str(folder)]
    done = subprocess.run(command, capture_output=True, text=True, timeout=500, env=variables)
    assert done.returncode == 0, done.stderr
    return {path.stem: numpy.asarray(Image.open(path).convert("RGB")).astype(int) for path in folder.glob("*.png")}


@pytest.fixture(scope="module")
def lidar(tmp_path_factory):
    return run_example("lidar_colors.py", tmp_path_factory.mktemp("lidar"))


@pytest.fixture(scope="module")
def forces(tmp_path_factory):
    return run_example("forces_and_pressure.py", tmp_path_factory.mktemp("forces"))


def test_the_same_points_are_drawn_in_every_coloring(lidar):
    assert set(lidar) == {"lidar_legend", "lidar_preset", "lidar_callback"}
    background = lidar["lidar_legend"][0, 0]
    drawn = [(picture != background).any(axis=2) for picture in lidar.values()]
    assert drawn[0].sum() > 30_000
    assert all((one != drawn[0]).sum() < 50 for one in drawn)


def test_each_coloring_has_its_own_colors(lidar):
    r, g, b = numpy.moveaxis(lidar["lidar_legend"], 2, 0)
    assert ((g > 150) & (g > r) & (g > b)).sum() > 10_000  # middle intensities are green
    r, g, b = numpy.moveaxis(lidar["lidar_preset"], 2, 0)
    assert ((r > 200) & (g > 90) & (b < 80)).sum() > 3_000 and ((r > 40) & (r < 120) & (b > g + 20)).sum() > 3_000
    bands = lidar["lidar_callback"]
    light = (abs(bands - [230, 204, 77]).max(axis=2) < 12).sum()
    dark = (abs(bands - [51, 102, 230]).max(axis=2) < 12).sum()
    assert light > 10_000 and dark > 10_000


def test_arrows_stand_on_the_box_and_lie_on_the_hinge(forces):
    r, g, b = numpy.moveaxis(forces["force_arrows"], 2, 0)
    red = numpy.argwhere((r > 90) & (g < r / 2) & (b < r / 2))
    green = numpy.argwhere((g > 50) & (r < g / 1.5) & (b < g / 1.5))
    assert len(red) > 300 and len(green) > 100
    assert numpy.ptp(red[:, 0]) > 2 * numpy.ptp(red[:, 1])  # upright
    assert numpy.ptp(green[:, 1]) > numpy.ptp(green[:, 0])  # level


def test_the_pressure_grows_to_the_side_that_is_pushed_down(forces):
    r, g, b = numpy.moveaxis(forces["pressure"], 2, 0)
    field = (r > b + 60) & (r > 150)
    rows, columns = numpy.nonzero(field)
    assert field.sum() > 10_000
    middle = g[int(numpy.median(rows))]
    left, right = int(numpy.quantile(columns, 0.15)), int(numpy.quantile(columns, 0.85))
    assert middle[left] > middle[right] + 15  # the darkest red is the highest pressure


def test_the_wheel_leaves_a_track(tmp_path):
    r, g, b = numpy.moveaxis(run_example("wheel_track.py", tmp_path)["wheel_track"], 2, 0)
    brown = (r > g + 3) & (g > b + 3)
    flat = numpy.median(r[brown])
    assert brown.sum() > 50_000 and (brown & (abs(r - flat) > 12)).sum() > 1_500


def test_the_channels_of_a_sensor_camera_agree(tmp_path):
    pictures = run_example("sensor_camera.py", tmp_path)
    with numpy.load(tmp_path / "sensor_camera.npz") as frame:
        depth, identity, normals, flow = (frame[name] for name in ("depth", "identity", "normals", "flow"))
    assert len(numpy.unique(identity)) > 10 and ((identity > 0) == numpy.isfinite(depth)).all()
    lengths = numpy.linalg.norm(normals, axis=-1)
    assert numpy.abs(lengths[identity > 0] - 1).max() < 1e-3 and not lengths[identity == 0].any()
    assert (flow[identity > 0][:, 0] < 0).mean() > 0.95  # the camera passes to the right
    sky = pictures["sensor_camera_rgb"][identity == 0]
    assert (sky[:, 2] > sky[:, 0] + 5).mean() > 0.95


def test_a_rolling_scan_is_skewed_and_its_files_agree(tmp_path):
    picture = run_example("rolling_lidar.py", tmp_path)["rolling_lidar"]
    points = numpy.load(tmp_path / "rolling_lidar.npz")["points"]
    assert len(points) > 15000 and numpy.ptp(points["time"]) == pytest.approx(0.1, abs=0.001)
    assert set(points["returns"]) == {1, 2}
    wall = points[(abs(points["y"] - 5) < 0.1) & (points["z"] > 0.5)]  # the houses' fronts stand in one plane
    assert len(wall) > 500 and abs(wall["y"].mean() - 5) < 0.01
    sizes = {path.suffix: path.stat().st_size for path in tmp_path.iterdir()}
    assert sizes[".ply"] > 48 * len(points) and sizes[".pcd"] > 48 * len(points) and sizes[".las"] > 44 * len(points)
    colored = numpy.ptp(picture, axis=2) > 90
    assert colored.sum() > 3000


def test_the_film_of_a_paper_shows_the_speeds(tmp_path):
    run_example("publication_film.py", tmp_path)
    film = frames(tmp_path / "publication_film.mp4")
    assert len(film) == 60
    bar = film[:, 80:320, 570:590]
    yellow = lambda part: ((part[..., 1] > 150) & (part[..., 0] > 180) & (part[..., 2] < 90)).sum(axis=(1, 2))
    assert yellow(bar).min() > 50  # in every frame
    boxes = yellow(film[:, 50:380, 200:500])
    assert boxes.max() > 500 and boxes.max() > 5 * boxes[3]  # they are fast in the fall and not before
