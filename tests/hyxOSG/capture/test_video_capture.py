"""Videos, read back by an independent decoder."""

import os
import signal
import subprocess
import time

import hyx
import hyxOSG
import numpy
import pytest
from capture_stage import BLUE, GREEN, RED
from PIL import Image
from subprocesses import encoders
from video_file import frame_count, frames, probe

Video = hyxOSG.VideoFFMPEGPipeCapture


@pytest.fixture
def video(stage, tmp_path):
    made = Video(320, 240, 30.0, stage.simulation)
    made.setFilename(str(tmp_path / "video"))
    yield stage.capture(made)
    try:
        made.stopCapture()
    except RuntimeError:
        pass


def record(stage, video, steps=60):
    video.startCapture()
    stage.draw(steps)
    assert video.stopCapture()


@pytest.mark.parametrize(
    "codec, name, pixels",
    [
        ("OutputCodec_H264", "h264", "yuv420p"),
        ("OutputCodec_H264RGB", "h264", "gbrp"),
        ("OutputCodec_XVID", "mpeg4", "yuv420p"),
    ],
)
def test_each_codec_gives_a_video_of_the_size_rate_and_length_asked_for(stage, video, tmp_path, codec, name, pixels):
    video.setOutputVideoCodec(getattr(Video, codec))
    assert video.getOutputCodec() == getattr(Video, codec)
    record(stage, video)
    stream = probe(tmp_path / "video.mp4")
    assert (stream["codec_name"], stream["pix_fmt"]) == (name, pixels)
    assert (stream["width"], stream["height"], stream["r_frame_rate"]) == (320, 240, "30/1")
    assert int(stream["nb_read_frames"]) == 30


def test_frames_show_what_was_drawn(stage, video, tmp_path):
    video.startCapture()
    for color in (RED, GREEN, BLUE):
        stage.fill(color)
        stage.draw(20)
    video.stopCapture()
    shown = frames(tmp_path / "video.mp4").mean(axis=(1, 2)) / 255
    expected = numpy.repeat([RED, GREEN, BLUE], 10, axis=0)
    assert abs(shown - expected).max() < 0.05


def test_lossless_rgb_reproduces_every_bit(stage, video, tmp_path):
    stage.window.getSceneDecorator().setBackgroundColor(hyx.Vec3(0.1, 0.7, 0.4), hyx.Vec3(0.9, 0.2, 0.5))
    stage.window.getSceneDecorator().setText(0, "every bit")
    video.setOutputVideoCodec(Video.OutputCodec_H264RGB)
    video.setEnableLossless(True)
    assert video.getEnableLossless()
    video.setVideoPostFix(".mkv")
    record(stage, video, 4)
    pictures = hyxOSG.ImageCapture(stage.simulation)
    pictures.setDirectoryPath(str(tmp_path))
    stage.capture(pictures).startCapture(1)
    stage.draw(10)
    decoded = frames(tmp_path / "video.mkv")
    assert len(decoded) == 2
    assert (decoded == numpy.asarray(Image.open(tmp_path / "image00000.png"))).all()


def test_without_lossless_bits_are_lost(stage, video, tmp_path):
    """The counterpart of the test above: it could not fail if all videos were lossless."""
    stage.window.getSceneDecorator().setBackgroundColor(hyx.Vec3(0.1, 0.7, 0.4), hyx.Vec3(0.9, 0.2, 0.5))
    sizes = []
    for lossless in (False, True):
        video.setEnableLossless(lossless)
        record(stage, video, 10)
        sizes.append((tmp_path / "video.mp4").stat().st_size)
    assert sizes[0] < sizes[1]


def test_a_larger_rate_factor_makes_a_smaller_file(stage, video, tmp_path):
    stage.window.getSceneDecorator().setText(0, "some detail")
    sizes = []
    for factor in (0, 18, 51):
        video.setVideoCRF(factor)
        assert video.getVideoCRF() == factor
        record(stage, video)
        sizes.append((tmp_path / "video.mp4").stat().st_size)
    assert sizes[0] > sizes[1] > sizes[2]


@pytest.mark.parametrize("video_rate, count", [(60, 60), (15, 15), (30, 30)])
def test_video_and_images_may_have_different_rates(stage, video, tmp_path, video_rate, count):
    video.setVideoFPS(video_rate)
    video.setImageCaptureFPS(30)
    assert (video.getVideoFPS(), video.getImageCaptureFPS(), video.getFps()) == (video_rate, 30, 30)
    record(stage, video)
    stream = probe(tmp_path / "video.mp4")
    assert stream["r_frame_rate"] == f"{video_rate}/1"
    assert int(stream["nb_read_frames"]) == count


def test_frames_rarer_than_drawn_are_left_out_and_denser_ones_repeated(stage, video, tmp_path):
    video.startCapture()
    stage.draw(60, 20)
    video.stopCapture()
    assert frame_count(tmp_path / "video.mp4") == 30


def test_odd_sizes_are_padded_where_the_codec_needs_it(stage, video, tmp_path):
    video.setImageResolution(321, 241)
    record(stage, video, 10)
    stream = probe(tmp_path / "video.mp4")
    assert (stream["width"], stream["height"]) == (322, 242)
    video.setOutputVideoCodec(Video.OutputCodec_H264RGB)
    record(stage, video, 10)
    stream = probe(tmp_path / "video.mp4")
    assert (stream["width"], stream["height"]) == (321, 241)


@pytest.mark.parametrize("postfix", [".mp4", ".mkv", ".avi", ".mov"])
def test_the_postfix_chooses_the_container(stage, video, tmp_path, postfix):
    video.setVideoPostFix(postfix)
    assert video.getVideoPostFix() == postfix
    record(stage, video, 20)
    command = [
        "ffprobe",
        "-v",
        "error",
        "-show_entries",
        "format=format_name",
        "-of",
        "csv=p=0",
        f"{tmp_path}/video{postfix}",
    ]
    names = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    assert {".mkv": "matroska"}.get(postfix, postfix[1:]) in names
    assert frame_count(tmp_path / f"video{postfix}") == 10


def test_names_that_look_like_options_or_protocols_are_names(stage, video, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    for name in ("-y", "pipe:1", "two words"):
        video.setFilename(name)
        assert video.getFilename() == name
        record(stage, video, 4)
        assert frame_count(f"file:{tmp_path}/{name}.mp4") == 2


def test_frames_can_be_written_by_hand(video, tmp_path):
    target = hyxOSG.RenderToImage(64, 48)
    video.init()
    assert video.hasActiveVideo()
    for index in range(5):
        video.writeImage(target.getImage(), index)
    assert video.stopProcess()
    assert not video.hasActiveVideo()
    assert not video.stopProcess()
    assert frames(tmp_path / "video.mp4").shape == (5, 240, 320, 3)


def test_two_videos_at_once_both_end(stage, video, tmp_path):
    other = Video(320, 240, 30.0, stage.simulation)
    other.setFilename(str(tmp_path / "other"))
    other.init()
    target = hyxOSG.RenderToImage(320, 240)
    video.startCapture()
    other.writeImage(target.getImage(), 0)
    stage.draw(20)
    assert video.stopCapture()
    assert other.stopProcess()
    assert (frame_count(tmp_path / "video.mp4"), frame_count(tmp_path / "other.mp4")) == (10, 1)


def test_a_missing_encoder_is_an_error_at_the_start(stage, video, monkeypatch):
    monkeypatch.setenv("PATH", "/nowhere")
    with pytest.raises(RuntimeError, match='"ffmpeg" cannot be started.*imageio-ffmpeg'):
        video.startCapture()
    assert not video.hasActiveVideo()
    assert not video.getCaptureStarted()
    stage.draw(10)


def test_an_encoder_that_dies_is_reported_once_and_the_simulation_goes_on(stage, video, tmp_path):
    video.setVideoPostFix(".mkv")
    video.startCapture()
    stage.draw(240)
    (encoder,) = encoders()
    os.kill(encoder, signal.SIGKILL)
    begin = time.monotonic()
    stage.draw(60)
    assert time.monotonic() - begin < 30
    assert not video.hasActiveVideo()
    assert not video.getCaptureStarted()
    assert stage.simulation.getTimeStamp() == pytest.approx(5)
    with pytest.raises(RuntimeError, match="ended by signal 9"):
        video.stopCapture()
    assert not video.stopCapture()
    assert encoders() == []
    assert frame_count(tmp_path / "video.mkv") > 30  # as far as it went
    record(stage, video)
    assert frame_count(tmp_path / "video.mkv") == 30


def test_an_encoder_that_stops_reading_by_itself_is_seen_without_a_frame(video):
    video.init()
    (encoder,) = encoders()
    os.kill(encoder, signal.SIGKILL)
    limit = time.monotonic() + 10
    while video.hasActiveVideo() and time.monotonic() < limit:
        time.sleep(0.01)
    assert not video.hasActiveVideo()
    with pytest.raises(RuntimeError, match="ended by signal 9"):
        video.stopProcess()


def test_a_full_disk_is_reported(stage, video, tmp_path):
    (tmp_path / "video.mkv").symlink_to("/dev/full")
    video.setVideoPostFix(".mkv")
    video.startCapture()
    stage.draw(120)
    with pytest.raises(RuntimeError, match="No space left on device"):
        video.stopCapture()
    assert encoders() == []


def test_a_folder_that_cannot_be_made_is_an_error_at_the_start(video, tmp_path):
    (tmp_path / "file").write_text("")
    video.setFilename(str(tmp_path / "file" / "video"))
    with pytest.raises(NotADirectoryError, match="file"):
        video.startCapture()


def test_an_encoder_that_refuses_gives_its_own_words(stage, video):
    video.setVideoPostFix(".unheard_of")
    video.startCapture()
    stage.draw(60)
    with pytest.raises(RuntimeError, match="Unable to find a suitable output format"):
        video.stopCapture()


def test_an_interrupt_at_the_terminal_does_not_reach_the_encoder(stage, video, tmp_path):
    video.startCapture()
    stage.draw(30)
    (encoder,) = encoders()
    assert os.getpgid(encoder) != os.getpgid(0)
    video.stopCapture()
    assert frame_count(tmp_path / "video.mp4") == 15


def test_lossless_is_refused_where_the_codec_cannot(video):
    video.setOutputVideoCodec(Video.OutputCodec_XVID)
    video.setEnableLossless(True)
    with pytest.raises(RuntimeError, match="cannot be lossless"):
        video.init()


@pytest.mark.parametrize("arguments", [(0, 10, 30.0), (10, 16385, 30.0), (10, 10, 0.0), (10, 10, float("nan"))])
def test_sizes_and_rates_out_of_range_are_refused(arguments):
    with pytest.raises(RuntimeError):
        Video(*arguments)


@pytest.mark.parametrize(
    "setter, value",
    [
        ("setFps", 0.0),
        ("setVideoFPS", -1.0),
        ("setImageCaptureFPS", float("inf")),
        ("setVideoCRF", 52),
        ("setOutputVideoCodec", 3),
    ],
)
def test_settings_out_of_range_are_refused(video, setter, value):
    with pytest.raises(RuntimeError):
        getattr(video, setter)(value)


def test_a_name_that_is_not_text_is_a_decoding_error(video):
    video.setFilename("ok")
    with pytest.raises((TypeError, UnicodeError)):
        video.setFilename("\udcff")
    assert video.getFilename() == "ok"


def test_a_forked_child_neither_adds_to_the_film_nor_ends_it(stage, video, tmp_path):
    video.startCapture()
    stage.draw(20)
    child = os.fork()
    if child == 0:
        status = 1
        try:
            video.stopCapture()
            status = 0
        finally:
            os._exit(status)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 0
    stage.draw(40)
    assert video.stopCapture() and frame_count(tmp_path / "video.mp4") == 30
