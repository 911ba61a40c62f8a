"""Films keep every image and its colours, at any rate, whatever ends their encoder."""

import os
import signal
import stat
import subprocess
import threading
import time

import hyxOSG
import numpy
import osg
import pytest
from mounts import mounted
from PIL import Image, ImageSequence
from subprocesses import encoders, run_python
from video_file import frame_count, frames, probe

Video = hyxOSG.VideoFFMPEGPipeCapture
SIZE = (96, 64)
COLORS = [(255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 255), (0, 0, 0), (200, 40, 90), (70, 130, 180)]


def flat(color, size=SIZE):
    image = osg.Image(*size)
    image.setData(bytes(color) * (size[0] * size[1]))
    return image


def film(path, images, rate=30.0, encoder=None, codec=Video.OutputCodec_H264, **settings):
    """Records the images; the encoder's name stands for its codec meanwhile."""
    video = Video(*SIZE, rate)
    video.setFilename(str(path.with_suffix("")))
    video.setVideoPostFix(path.suffix)
    video.setOutputVideoCodec(codec)
    for name, value in settings.items():
        getattr(video, f"set{name}")(value)
    names = Video.OutputCodecStrings
    before = names[codec]
    names[codec] = encoder or before
    try:
        video.init()
    finally:
        names[codec] = before
    for number, image in enumerate(images):
        video.writeImage(image, number)
    assert video.stopProcess()
    return path


def tags(path):
    fields = "color_space,color_range,color_transfer,color_primaries"
    command = ["ffprobe", "-v", "error", "-show_entries", f"stream={fields}", "-of", "csv=p=0", str(path)]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip().split(",")


@pytest.mark.parametrize("postfix", [".mp4", ".mkv", ".mov", ".avi"])
def test_colours_are_kept_and_the_file_says_which_they_are(tmp_path, postfix):
    path = film(tmp_path / f"colors{postfix}", [flat(color) for color in COLORS for _ in range(3)])
    shown = frames(path).reshape(len(COLORS), -1, 3).astype(int)
    assert abs(shown - numpy.array(COLORS)[:, None]).max() <= 3
    assert sorted(tags(path)) == ["bt709", "bt709", "bt709", "tv"]


@pytest.mark.parametrize(
    "encoder, postfix", [("libx265", ".mp4"), ("libvpx-vp9", ".webm"), ("prores_ks", ".mov"), ("libsvtav1", ".mp4")]
)
def test_other_encoders_are_told_what_they_know(tmp_path, encoder, postfix):
    path = film(tmp_path / f"film{postfix}", [flat(color) for color in COLORS for _ in range(3)], encoder=encoder)
    shown = frames(path).reshape(len(COLORS), -1, 3).astype(int)
    assert abs(shown.mean(axis=1) - numpy.array(COLORS)).max() <= 4


@pytest.mark.parametrize("postfix, codec, error", [(".webm", "vp9", 3), (".gif", "gif", 3)])
def test_endings_that_browsers_know_choose_their_encoder(tmp_path, postfix, codec, error):
    path = film(tmp_path / f"film{postfix}", [flat(color) for color in COLORS for _ in range(3)])
    shown = frames(path).reshape(len(COLORS), -1, 3).astype(int)
    assert probe(path)["codec_name"] == codec
    assert abs(shown.mean(axis=1) - numpy.array(COLORS)).max() <= error


@pytest.mark.parametrize("encoder", ["ffv1", "libx264rgb"])
def test_lossless_encoders_lose_nothing(tmp_path, encoder):
    noise = numpy.random.default_rng(1).integers(0, 256, (4, SIZE[1], SIZE[0], 3), numpy.uint8)
    images = [osg.Image(*SIZE) for _ in noise]
    for image, pixels in zip(images, noise):
        image.setData(pixels.tobytes())
    path = film(tmp_path / "noise.mkv", images, encoder=encoder, EnableLossless=True)
    assert (frames(path)[:, ::-1] == noise).all()


@pytest.mark.parametrize("rate", [1.0, 24000 / 1001, 60.0, 1000.0])
@pytest.mark.parametrize("postfix", [".mp4", ".mkv", ".avi"])
def test_so_many_images_are_so_many_frames(tmp_path, rate, postfix):
    for count in (1, 2, 7):
        path = film(tmp_path / f"film{count}{postfix}", [flat((9, 99, 199))] * count, rate)
        assert frame_count(path) == count
    expected = {24000 / 1001: "24000/1001"}.get(rate, f"{rate:.0f}/1")
    assert probe(path)["r_frame_rate"] == expected


def test_rates_that_a_container_cannot_keep_are_refused(tmp_path):
    assert frame_count(film(tmp_path / "fast.mp4", [flat((1, 2, 3))] * 5, 2400.0)) == 5
    for postfix in (".mkv", ".avi"):
        with pytest.raises(RuntimeError, match="1000 frames a second at most"):
            film(tmp_path / f"fast{postfix}", [], 2400.0)
    with pytest.raises(RuntimeError, match="0.001 to 10000"):
        Video(*SIZE, 1e6)


def test_a_film_without_images_is_told_of(tmp_path, capfd):
    film(tmp_path / "empty.mp4", [])
    assert "has no images" in capfd.readouterr().err


def test_a_new_size_waits_for_the_next_film(tmp_path):
    video = Video(*SIZE, 30.0)
    video.setFilename(str(tmp_path / "first"))
    video.init()
    video.setImageResolution(32, 24)
    checks = numpy.indices((SIZE[1], SIZE[0])).sum(axis=0) % 2 * 255
    image = osg.Image(*SIZE)
    image.setData(numpy.repeat(checks[..., None], 3, axis=2).astype(numpy.uint8).tobytes())
    video.writeImage(image, 0)
    assert video.getImageResolution()[0] == SIZE[0]
    assert video.stopProcess() and video.getImageResolution()[0] == 32
    assert frames(tmp_path / "first.mp4").std() > 100  # scaled down and up again it would be grey


def test_a_jump_of_the_simulation_does_not_fill_the_disk(stage, tmp_path, capfd):
    pictures = hyxOSG.ImageCapture(stage.simulation)
    pictures.setDirectoryPath(str(tmp_path))
    pictures.setPostfix(".ppm")
    stage.capture(pictures).startCapture()
    stage.draw(2)
    stage.simulation.setTimeStamp(1e6)
    stage.draw(20)
    assert pictures.stopCapture()
    assert "the capture goes on from here" in capfd.readouterr().err
    assert len(list(tmp_path.glob("*.ppm"))) == 1 + 1 + 9  # before it, at it, and behind it


RECORDER = """
import os, sys, hyx, hyxOSG, osg
video = hyxOSG.VideoFFMPEGPipeCapture(320, 240, 30.0)
video.setFilename(sys.argv[1])
video.setVideoPostFix(sys.argv[2])
video.init()
image = osg.Image(320, 240)
for number in range(90):
    image.setData(bytes([number * 2, 255 - number, 90] * (320 * 240)))
    video.writeImage(image, number)
"""
ENDINGS = {
    "the end of the script": ("", 90),
    "an error": ("raise ValueError('by the test')", 90),
    "sys.exit": ("sys.exit(3)", 90),
    "SIGTERM": ("os.kill(os.getpid(), 15)", 80),
    "SIGKILL": ("os.kill(os.getpid(), 9)", 80),
}


@pytest.mark.parametrize("ending, least", ENDINGS.values(), ids=ENDINGS.keys())
def test_a_script_that_ends_without_stopping_leaves_a_whole_film(tmp_path, ending, least):
    done = run_python("-c", RECORDER + ending, str(tmp_path / "film"), ".mp4")
    deadline = time.monotonic() + 20  # a kill leaves the encoder to end by itself
    while (kept := readable_frames(tmp_path / "film.mp4")) < least and time.monotonic() < deadline:
        time.sleep(0.2)
    assert kept >= least, done.stderr


def readable_frames(path):
    try:
        if path.suffix == ".webp":  # no animation to ffmpeg
            with Image.open(path) as animation:
                return sum(1 for _ in ImageSequence.Iterator(animation))
        return frame_count(path)
    except (subprocess.CalledProcessError, KeyError, IndexError, OSError):
        return 0


KILLED = [(ending, "") for ending in (".mp4", ".mov", ".mkv", ".avi", ".webp")]


@pytest.mark.parametrize("postfix, encoder", [*KILLED, (".mp4", "libx265"), (".mp4", "libsvtav1")])
def test_a_killed_encoder_leaves_all_but_the_last_ten_images(tmp_path, postfix, encoder):
    video = Video(320, 240, 30.0)
    video.setFilename(str(tmp_path / "killed"))
    video.setVideoPostFix(postfix)
    video.setEncoder(encoder)
    video.init()
    for number in range(90):
        video.writeImage(flat((number * 2, 255 - number, 90), (320, 240)), number)
        time.sleep(0.005)
    time.sleep(1)  # what it has, it has
    (encoder,) = encoders()
    os.kill(encoder, signal.SIGKILL)
    with pytest.raises(RuntimeError, match="signal 9"):
        video.stopProcess()
    assert readable_frames(tmp_path / f"killed{postfix}") >= 80


@pytest.mark.parametrize("postfix", [".mp4", ".mov", ".mkv", ".avi", ".webp"])
def test_a_full_disk_ends_the_film_with_an_error_and_keeps_what_fits(tmp_path, postfix):
    random = numpy.random.default_rng(1)
    with mounted(tmp_path, "-t", "tmpfs", "-o", "size=600k", "tmpfs"):
        video = Video(320, 240, 30.0)
        video.setFilename(str(tmp_path / "film"))
        video.setVideoPostFix(postfix)
        video.init()
        image = osg.Image(320, 240)
        with pytest.raises(RuntimeError, match="No space left on device"):
            for number in range(300):
                image.setData(random.bytes(320 * 240 * 3))
                video.writeImage(image, number)
            video.stopProcess()
        path = tmp_path / f"film{postfix}"  # readable at once, while the video is not stopped yet
        assert path.stat().st_size > 500_000 and readable_frames(path) >= 10  # of 43 kB each


def test_an_encoder_that_talks_says_only_what_went_wrong(tmp_path):
    video = Video(48, 32, 30.0)
    video.setFilename(str(tmp_path / "small"))
    video.setEncoder("libsvtav1")
    with pytest.raises(RuntimeError, match="Width must be at least 64") as refusal:
        video.init()
        for number in range(20):
            video.writeImage(flat((9, 9, 9), (48, 32)), number)
        video.stopProcess()
    assert "version" not in str(refusal.value) and "[info]" not in str(refusal.value)


SLOW = """#!/bin/sh
for last; do :; done
cat > /dev/null
for time in 1 2 3 4; do sleep 10; echo written >> "${last#file:}"; done
"""


@pytest.fixture
def slow_encoder(tmp_path, monkeypatch):
    """Takes the images at once, and then writes a little every ten seconds for longer than one may be silent."""
    slow = tmp_path / "ffmpeg"
    slow.write_text(SLOW)
    slow.chmod(slow.stat().st_mode | stat.S_IXUSR)
    monkeypatch.setenv("PATH", str(tmp_path), prepend=os.pathsep)


def test_an_interrupt_leaves_a_slow_encoder_to_end_by_itself(tmp_path, slow_encoder):
    sent = []

    def interrupt():
        sent.append(time.monotonic())
        os.kill(os.getpid(), signal.SIGINT)

    threading.Timer(0.5, interrupt).start()
    with pytest.raises(KeyboardInterrupt):
        film(tmp_path / "left.mp4", [flat((1, 2, 3))])
    assert time.monotonic() - sent[0] < 0.1
    deadline = time.monotonic() + 15
    while not (tmp_path / "left.mp4").exists() and time.monotonic() < deadline:
        time.sleep(0.1)
    assert (tmp_path / "left.mp4").read_text() == "written\n"
    (left,) = encoders()
    os.kill(left, signal.SIGKILL)
    os.waitpid(left, 0)


def test_a_slow_encoder_is_waited_for_while_its_file_grows(tmp_path, slow_encoder):
    begun = time.monotonic()
    assert film(tmp_path / "slow.mp4", [flat((1, 2, 3))]).read_text().split() == 4 * ["written"]
    assert time.monotonic() - begun > 35
