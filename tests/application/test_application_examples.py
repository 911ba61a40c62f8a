"""The examples of the application, run as a user runs them."""
import os
import subprocess
import sys

import pytest

from subprocesses import BUILD, ROOT


def run(name, *arguments):
    environment = {**os.environ, "HYX_DISPLAY": "offscreen", "PYTHONPATH": str(BUILD / "python")}
    done = subprocess.run([sys.executable, str(ROOT / "examples" / name), *map(str, arguments)], capture_output=True, text=True,
                          timeout=300, env=environment)
    assert (done.returncode, done.stderr) == (0, ""), done.stderr
    return done.stdout


def test_the_scene_browser_shows_each_scene(tmp_path):
    assert run("02_scene_browser.py", "--seconds", "0.5", "--output", tmp_path).splitlines() == [
        "tower: 10 bodies", "dominoes: 16 bodies", "rain: 61 bodies"]
    sizes = {path.stem: path.stat().st_size for path in tmp_path.glob("*.png")}
    assert set(sizes) == {"tower", "dominoes", "rain"} and len(set(sizes.values())) == 3


def test_the_journal_is_replayed_and_plotted(tmp_path):
    lowest = float(run("03_journal.py", "--output", tmp_path).split()[-2])
    assert lowest == pytest.approx(0.5, abs=0.03)  # a pendulum of 1.5 m that hangs at 2 m
    assert (tmp_path / "swing.svg").read_text().count(",") == 301


def test_the_robots_joints_move_within_their_limits(tmp_path):
    angles = dict(line.split(": ") for line in run("04_robot.py", "--seconds", "1", "--output", tmp_path / "robot.png").splitlines())
    assert set(angles) == {"shoulder", "rail"} and 0.1 < float(angles["shoulder"]) < 1.5 and 0 <= float(angles["rail"]) <= 2
    assert (tmp_path / "robot.png").exists()
