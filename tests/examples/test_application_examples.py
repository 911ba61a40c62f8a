"""The examples of the application, run as a user runs them."""

import math
import os
import subprocess
import sys

import numpy
import pytest
from PIL import Image
from subprocesses import BUILD, ROOT


def run(name, *arguments):
    environment = {**os.environ, "HYX_DISPLAY": "offscreen", "PYTHONPATH": str(BUILD / "python")}
    done = subprocess.run(
        [sys.executable, str(ROOT / "examples" / name), *map(str, arguments)],
        capture_output=True,
        text=True,
        timeout=300,
        env=environment,
    )
    assert (done.returncode, done.stderr) == (0, ""), done.stderr
    return done.stdout


def test_the_scene_browser_shows_each_scene(tmp_path):
    assert run("02_scene_browser.py", "--seconds", "0.5", "--output", tmp_path).splitlines() == [
        "tower: 10 bodies",
        "dominoes: 16 bodies",
        "rain: 61 bodies",
    ]
    sizes = {path.stem: path.stat().st_size for path in tmp_path.glob("*.png")}
    assert set(sizes) == {"tower", "dominoes", "rain"} and len(set(sizes.values())) == 3


def test_the_journal_is_replayed_and_plotted(tmp_path):
    lowest = float(run("03_journal.py", "--output", tmp_path).split()[-2])
    assert lowest == pytest.approx(0.5, abs=0.03)  # a pendulum of 1.5 m that hangs at 2 m
    assert (tmp_path / "swing.svg").read_text().count(",") == 301


def angles_of(*arguments):
    lines = run("04_robot.py", *arguments).splitlines()
    return {name: float(angle) for name, angle in (line.split(": ") for line in lines)}


def test_the_robots_joints_move_within_their_limits(tmp_path):
    model = ROOT / "examples" / "data" / "arm.urdf"
    angles = angles_of(model, "--seconds", "1", "--output", tmp_path / "robot.png")
    assert set(angles) == {"shoulder", "rail"} and 0.1 < angles["shoulder"] < 1.5 and 0 <= angles["rail"] <= 2


def test_a_humanoid_that_others_described_moves(tmp_path):
    angles = angles_of("--seconds", "0.5", "--output", tmp_path / "robot.png")
    assert len(angles) == 34  # of 44 joints; 10 of the fingers follow the thumbs
    targets = [0.5 * math.sin(2 * 0.5 + index) for index in range(34)]
    assert (
        sum(abs(angle - target) < 0.15 for angle, target in zip(angles.values(), targets)) > 20
    )  # the others are at their limits
    picture = numpy.asarray(Image.open(tmp_path / "robot.png").convert("RGB")).astype(int)
    orange = (picture[..., 0] > 150) & (picture[..., 2] < 60)
    light = (picture.min(axis=2) > 180) & (picture.max(axis=2) - picture.min(axis=2) < 8)
    assert orange.sum() > 5000 and light[60:420, 200:460].sum() > 500
