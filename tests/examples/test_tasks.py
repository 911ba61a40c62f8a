"""What newcomers ask for first works as it stands, in at most 30 lines each, and its picture or file shows it."""

import csv
import json
import os
import subprocess
import sys

import numpy
import pytest
from PIL import Image
from subprocesses import BUILD, ROOT, has_display
from video_file import frames

TASKS = ROOT / "examples" / "tasks"


def run(name, folder, *wrapper, **variables):
    environment = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "HYX_DISPLAY": "offscreen", **variables}
    command = [*wrapper, sys.executable, TASKS / name]
    done = subprocess.run(command, cwd=folder, env=environment, capture_output=True, text=True, timeout=120)
    assert done.returncode == 0, done.stderr


def pixels(file):
    return numpy.asarray(Image.open(file).convert("RGB")).astype(int)


def test_each_is_short():
    assert {file.name: len(file.read_text().splitlines()) for file in TASKS.glob("*.py")}
    assert not [file.name for file in TASKS.glob("*.py") if len(file.read_text().splitlines()) > 30]


def test_first_picture(tmp_path):
    run("first_picture.py", tmp_path)
    picture = pixels(tmp_path / "first_picture.png")
    lower = picture[len(picture) // 2 :]
    assert (numpy.ptp(lower, axis=2) < 10).mean() > 0.3  # the grey ground and the box on it, below the blue sky


def test_tower_and_ball(tmp_path):
    run("tower_and_ball.py", tmp_path)
    shown = frames(tmp_path / "tower_and_ball.mp4")
    assert len(shown) == 60
    assert (numpy.abs(shown[0].astype(int) - shown[-1]) > 40).mean() > 0.005


def test_arm_with_camera(tmp_path):
    run("arm_with_camera.py", tmp_path)
    views = [pixels(tmp_path / f"arm_{number}.png") for number in range(4)]
    places = [numpy.nonzero(numpy.ptp(view, axis=2) < 5)[1].mean() for view in views]  # of the grey target
    assert max(places) - min(places) > 15


def test_lidar_points(tmp_path):
    run("lidar_points.py", tmp_path)
    points = numpy.loadtxt(tmp_path / "lidar_points.csv", delimiter=",")
    assert points.shape[1] == 4 and len(points) > 500
    distances = numpy.hypot(points[:, 0], points[:, 1])
    assert distances.min() > 4.2 and distances.max() < 6


def test_scalars_on_mesh(tmp_path):
    run("scalars_on_mesh.py", tmp_path)
    picture = pixels(tmp_path / "scalars_on_mesh.png")
    red, green, blue = numpy.moveaxis(picture, 2, 0)
    assert ((red > 200) & (green > 180) & (blue < 100)).sum() > 50  # the highest value's yellow
    assert ((red < 90) & (blue > 1.5 * red)).sum() > 500  # and the lower ones' blue


def test_fifty_runs(tmp_path):
    run("fifty_runs.py", tmp_path)
    rows = list(csv.DictReader(open(tmp_path / "fifty_runs.csv")))
    assert len(rows) == 50
    for row in rows:
        braking = 9.80665 * float(row["friction"])
        stop = float(row["speed"]) / braking
        time = min(4, stop)
        assert float(row["way"]) == pytest.approx(
            float(row["speed"]) * time - braking * time**2 / 2, rel=0.02, abs=0.02
        )


def test_inline_picture(tmp_path):
    pytest.importorskip("nbmake")
    environment = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "HYX_DISPLAY": "offscreen"}
    notebook = tmp_path / "inline_picture.ipynb"
    notebook.write_text((TASKS / notebook.name).read_text())
    command = [sys.executable, "-m", "pytest", "-q", "--nbmake", "--overwrite", "-p", "no:cacheprovider", notebook]
    done = subprocess.run(command, cwd=tmp_path, env=environment, capture_output=True, text=True, timeout=180)
    assert done.returncode == 0, done.stdout
    (output,) = [out for cell in json.loads(notebook.read_text())["cells"] for out in cell.get("outputs", ())]
    assert len(output["data"]["image/png"]) > 1000


@pytest.mark.skipif(not has_display, reason="needs xvfb-run")
@pytest.mark.parametrize("name", ["interactive_window.py", "qt_application.py"])
def test_windows_show_their_simulation(name, tmp_path):
    if name.startswith("qt"):
        pytest.importorskip("PySide6")
    shoot = "ffmpeg -loglevel error -f x11grab -video_size 800x600 -i $DISPLAY -frames:v 1 -y screen.png"
    # What a picture of two colours or more shows is there: the desktop behind it has one.
    script = f"""{sys.executable} {TASKS / name} & program=$!
for _ in $(seq 60); do sleep 1; {shoot}; [ $(stat -c %s screen.png) -gt 4000 ] && break; done
kill $program"""
    environment = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "HYX_DISPLAY": "window"}
    command = ["xvfb-run", "-a", "-s", "-screen 0 800x600x24", "bash", "-c", script]
    subprocess.run(command, cwd=tmp_path, env=environment, timeout=120)
    picture = pixels(tmp_path / "screen.png")
    assert picture.max() > 60 and numpy.ptp(picture, axis=(0, 1)).min() > 60
