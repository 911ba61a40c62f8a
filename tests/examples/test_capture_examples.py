"""The examples of this area run as a user runs them, and their pictures show what they say."""

import os
import subprocess
import sys

import numpy
import pytest
from capture_stage import EXAMPLES, PACKAGES
from PIL import Image
from video_file import frame_count, probe


@pytest.fixture(scope="module")
def display():
    """A virtual display of its own."""
    reader, writer = os.pipe()
    command = ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1024x768x24", "-noreset"]
    server = subprocess.Popen(command, pass_fds=[writer], stderr=subprocess.DEVNULL)
    os.close(writer)
    with os.fdopen(reader) as answer:
        number = answer.readline().strip()
    yield f":{number}"
    server.terminate()
    server.wait()


def run_example(name, *arguments, **environment):
    variables = {**os.environ, "PYTHONPATH": str(PACKAGES), **environment}
    command = [sys.executable, str(EXAMPLES / name), *map(str, arguments)]
    done = subprocess.run(command, capture_output=True, text=True, timeout=300, env=variables)
    assert done.returncode == 0, done.stderr
    return done.stdout


def test_a_qt_application_holds_two_views_of_one_simulation(display, tmp_path):
    pytest.importorskip("PySide6.QtOpenGLWidgets")
    picture = tmp_path / "window.png"
    run_example("06_embedded_window.py", "--seconds", 1, "--picture", picture, DISPLAY=display, QT_QPA_PLATFORM="xcb")
    pixels = numpy.asarray(Image.open(picture).convert("RGB")).astype(int)
    left, right = pixels[:, : pixels.shape[1] // 2], pixels[:, pixels.shape[1] // 2 :]
    for view in (left, right):
        red = (view[..., 0] > view[..., 1] + 40) & (view[..., 0] > view[..., 2] + 40)
        assert red.sum() > 50  # the boxes
        assert len(numpy.unique(view.reshape(-1, 3), axis=0)) > 100
    width = min(left.shape[1], right.shape[1])
    assert (abs(left[:, :width] - right[:, :width]).max(axis=2) > 20).mean() > 0.2  # from different sides


def test_pictures_video_array_and_points_come_out(tmp_path):
    output = run_example("05_pictures_out.py", "--output", tmp_path, "--seconds", 2, HYX_DISPLAY="offscreen")
    assert "10 pictures of the main view, 60 frames" in output
    assert len(list(tmp_path.glob("main_*.png"))) == 10
    assert frame_count(tmp_path / "robot.mp4") == 60
    assert (probe(tmp_path / "robot.mp4")["width"], probe(tmp_path / "robot.mp4")["height"]) == (480, 320)
    assert Image.open(tmp_path / "robot.png").size == (480, 320)
    points, above = (int(word) for word in output.split() if word.isdigit() and int(word) > 60)
    assert points > above > 100
