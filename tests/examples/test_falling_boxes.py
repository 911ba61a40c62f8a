"""The first example, as a user runs it: what it prints, and what must be in its picture and its video."""

import colorsys
import json
import os
import subprocess
import sys
from pathlib import Path

import numpy
import pytest
from PIL import Image
from subprocesses import BUILD

# One worker draws for all of them.
pytestmark = pytest.mark.xdist_group("falling_boxes")

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "examples" / "01_falling_boxes.py"
SECONDS = 1.5


def run(*arguments, folder, **variables):
    environment = os.environ | {"PYTHONPATH": str(BUILD / "python")} | variables
    return subprocess.run(
        [sys.executable, SCRIPT, *map(str, arguments)],
        capture_output=True,
        text=True,
        env=environment,
        cwd=folder,
        timeout=300,
    )


@pytest.fixture(scope="module")
def finished(tmp_path_factory):
    folder = tmp_path_factory.mktemp("example")
    result = run("--output", "out", "--seconds", SECONDS, "--bodies", 80, folder=folder)
    assert result.returncode == 0, result.stderr
    return folder, result


@pytest.fixture(scope="module")
def picture(finished):
    return numpy.asarray(Image.open(finished[0] / "out" / "falling_boxes.png").convert("RGB")).astype(int)


def hues(pixels):
    """Hue in degrees of the strongly coloured pixels."""
    strong = pixels[pixels.max(axis=1) - pixels.min(axis=1) > 35]
    return numpy.array([colorsys.rgb_to_hsv(*(p / 255))[0] * 360 for p in strong])


def test_only_the_script_prints(finished):
    folder, result = finished
    assert result.stderr == ""
    assert result.stdout.splitlines() == ["picture: out/falling_boxes.png", "video:   out/falling_boxes.mp4"]


def test_the_background_runs_from_blue_to_pale(picture):
    column = picture[60:100, 480]
    assert picture.shape == (540, 960, 3)
    assert (column[:, 2] > column[:, 0] + 30).all()
    assert numpy.ptp(column[:, 0]) > 3 and (numpy.diff(column[:, 0]) >= -1).all()


def test_bodies_of_every_colour_lie_on_the_ground(picture):
    ground = picture[220:].reshape(-1, 3)
    found = hues(ground)
    for name, low, high in (
        ("red", 0, 18),
        ("amber", 25, 48),
        ("teal", 185, 205),
        ("green", 115, 145),
        ("violet", 260, 285),
    ):
        assert ((found >= low) & (found <= high)).sum() > 150, name


def test_the_model_stands_among_them_in_its_own_white(picture):
    grey = picture[200:].reshape(-1, 3)
    white = (grey.min(axis=1) > 195) & (numpy.ptp(grey, axis=1) < 25)
    assert white.sum() > 800


def test_the_light_throws_shadows(picture):
    lower = picture[330:]
    plain = numpy.ptp(lower, axis=2) < 25
    brightness = lower.mean(axis=2)
    lit = numpy.median(brightness[plain])
    assert 80 < lit < 235
    assert (plain & (brightness < 0.55 * lit)).sum() > 800


def test_the_display_shows_the_number_of_bodies_and_the_time(picture):
    corner = picture[4:34, 4:190]
    assert (corner.min(axis=2) > 200).sum() > 150  # white letters
    assert (picture[4:34, 500:690].min(axis=2) > 200).sum() == 0


def test_the_video_has_a_frame_for_every_thirtieth_of_a_second(finished):
    command = [
        "ffprobe",
        "-v",
        "error",
        "-count_frames",
        "-of",
        "json",
        "-show_entries",
        "stream=codec_name,width,height,nb_read_frames,avg_frame_rate",
        finished[0] / "out" / "falling_boxes.mp4",
    ]
    stream = json.loads(subprocess.run(command, capture_output=True, text=True, check=True).stdout)["streams"][0]
    assert (stream["codec_name"], stream["width"], stream["height"]) == ("h264", 960, 540)
    assert abs(int(stream["nb_read_frames"]) - 30 * SECONDS) <= 1 and stream["avg_frame_rate"] == "30/1"


def test_things_move_in_the_video(finished):
    command = [
        "ffmpeg",
        "-v",
        "error",
        "-i",
        finished[0] / "out" / "falling_boxes.mp4",
        "-vf",
        "scale=240:135",
        "-f",
        "rawvideo",
        "-pix_fmt",
        "gray",
        "-",
    ]
    raw = subprocess.run(command, capture_output=True, check=True).stdout
    frames = numpy.frombuffer(raw, numpy.uint8).reshape(-1, 135, 240).astype(int)
    assert (abs(frames[30] - frames[5]) > 25).mean() > 0.02


def test_a_model_that_cannot_be_read_ends_with_its_reason(tmp_path):
    broken = tmp_path / "broken.obj"
    broken.write_text("this is no model\n")
    for file in (broken, tmp_path / "missing.obj"):
        result = run(file, "--seconds", 0.1, "--bodies", 1, folder=tmp_path)
        assert result.returncode == 1 and file.name in result.stderr and "Traceback" not in result.stderr


def test_a_folder_that_cannot_be_written_ends_with_its_reason(tmp_path):
    blocker = tmp_path / "file"
    blocker.write_text("")
    result = run("--output", blocker / "out", "--seconds", 0.1, "--bodies", 1, folder=tmp_path)
    assert result.returncode != 0 and str(blocker) in result.stderr


def test_without_ffmpeg_the_reason_is_an_exception(tmp_path):
    result = run("--output", "out", "--seconds", 0.1, "--bodies", 1, folder=tmp_path, PATH=str(tmp_path))
    assert result.returncode == 1 and "RuntimeError" in result.stderr and "ffmpeg" in result.stderr


def test_a_window_that_is_demanded_without_a_display_is_refused(tmp_path):
    result = run("--seconds", 0.1, "--bodies", 1, folder=tmp_path, HYX_DISPLAY="window", DISPLAY="")
    assert result.returncode == 1 and "RuntimeError" in result.stderr and "display" in result.stderr.lower()
