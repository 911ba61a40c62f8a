"""Films as publications want them, read back by an independent decoder."""

import os
import subprocess

import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import pytest
from video_file import frame_count, frames, probe

Video = hyxOSG.VideoFFMPEGPipeCapture


def picture(seed=1):
    image = osg.Image(128, 96)
    image.setData(numpy.random.default_rng(seed).integers(0, 256, (96, 128, 3), numpy.uint8).tobytes())
    return image


def film(path, images=12, **encoding):
    video = Video(128, 96, 30.0)
    encoder = video.encode(path=path, **encoding)
    for number in range(images):
        video.writeImage(picture(number), number)
    video.stopProcess()
    return encoder


@pytest.mark.parametrize(
    "name, encoding, codec, pixels",
    [
        ("film.mp4", {}, "h264", "yuv420p"),
        ("film", {"preset": "slow", "pixel_format": "yuv444p", "options": {"tune": "animation"}}, "h264", "yuv444p"),
        ("film.mkv", {"lossless": True}, "h264", "gbrp"),
        ("film.webm", {}, "vp9", "yuv420p"),
        ("film.mp4", {"codec": "h265", "bitrate": 300_000}, "hevc", "yuv420p"),
        ("film.mkv", {"codec": "av1", "preset": "10"}, "av1", "yuv420p"),
        ("film.mov", {"codec": "prores"}, "prores", "yuv422p10le"),
        ("film.mkv", {"codec": "ffv1"}, "ffv1", "bgr0"),
        ("film.gif", {"fps": 25}, "gif", "bgra"),
        ("film.mp4", {"codec": "h264", "hardware": True}, "h264", "yuv420p"),
    ],
    ids=str,
)
def test_one_call_says_all_about_a_film(tmp_path, name, encoding, codec, pixels):
    film(tmp_path / name, **encoding)
    (made,) = tmp_path.iterdir()
    stream = probe(made)
    assert (stream["codec_name"], stream["pix_fmt"]) == (codec, pixels)
    assert int(stream["nb_read_frames"]) == 12


def test_a_bitrate_is_kept_and_presets_matter(tmp_path):
    sizes = {}
    for name, encoding in {
        "small": {"bitrate": 200_000},
        "large": {"bitrate": 2_000_000},
        "fast": {"quality": 30, "preset": "ultrafast"},
        "slow": {"quality": 30, "preset": "veryslow"},
    }.items():
        film(tmp_path / f"{name}.mp4", images=60, **encoding)
        sizes[name] = (tmp_path / f"{name}.mp4").stat().st_size
    assert sizes["large"] == pytest.approx(2_000_000 / 8 * 2, rel=0.3) and sizes["small"] < 0.3 * sizes["large"]
    assert sizes["slow"] < sizes["fast"]


@pytest.mark.parametrize(
    "encoding", [{"codec": "no_such_encoder"}, {"preset": "no such preset"}, {"codec": "h264", "alpha": True}], ids=str
)
def test_what_cannot_be_encoded_is_an_error(tmp_path, encoding):
    with pytest.raises(RuntimeError):
        film(tmp_path / "film.mp4", images=60, **encoding)


def test_a_film_is_a_file_not_a_folder(tmp_path):
    folder = tmp_path / "films"
    for path in (f"{folder}/", tmp_path):
        with pytest.raises(IsADirectoryError, match=r"name a file in it, such as '.*film\.mp4'"):
            Video(64, 48, 30.0).encode(path=path)
    assert list(tmp_path.iterdir()) == []


def test_one_rate_rules_until_another_is_asked_for():
    video = Video(64, 48, 30.0)
    video.setFps(50)
    assert video.getVideoFPS() == 50
    video.setVideoFPS(25)
    video.setFps(100)
    assert video.getVideoFPS() == 25
    video.encode(fps=24)
    assert (video.getFps(), video.getVideoFPS()) == (24, 24)


@pytest.fixture
def ball(app):
    """A red ball before nothing, in the middle of the picture."""
    app.initViewer(320, 240)
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)))
    body.setMotionControl(hyx.RigidBody.STATIC)
    app.getSimulation().add(body)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, app.getSceneRoot()), hyx.Vec4f(1, 0, 0, 1))
    app.setCameraHome(hyx.Vec3(0, -6, 0), hyx.Vec3(0, 0, 0))
    return app


def draw(app, frames):
    timer = hyx.HighAccuracyTimer()
    for _ in range(frames):
        app.executeOneStepWithGraphics(timer)


@pytest.mark.parametrize("name, decoder", [("film.mov", "prores"), ("film.webm", "libvpx-vp9"), ("film.mkv", "ffv1")])
def test_what_is_transparent_stays_so(ball, tmp_path, name, decoder):
    Target = hyxOSG.RenderToImage
    target = Target(160, 120, hyxOSG.RenderTarget.COLOR_BUFFER, 4, hyxOSG.RenderTarget.RGBA)
    target.setViewMatrixAsLookAt(hyx.Vec3(0, -6, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    target.setProjectionMatrixAsPerspective(45, 4 / 3, 0.1, 100)
    target.getCamera().setClearColor(osg.Vec4(0, 0, 0, 0))
    ball.addRenderTarget(target, ball.getSceneRoot())
    video = Video(160, 120, 60.0, ball.getSimulation())
    video.encode(path=tmp_path / name, alpha=True)
    target.setImageCapture(video)
    with video:
        draw(ball, 20)
    command = ["ffmpeg", "-v", "error", "-c:v", decoder, "-i", str(tmp_path / name), "-f", "rawvideo", "-pix_fmt"]
    output = subprocess.run([*command, "rgba", "-"], capture_output=True, check=True, timeout=60).stdout
    shown = numpy.frombuffer(output, numpy.uint8).reshape(-1, 120, 160, 4)
    assert len(shown) >= 19
    last = shown[-1].astype(int)
    assert last[:20, :, 3].max() < 8 and last[60, 80, 3] > 247
    edge = (last[..., 3] > 60) & (last[..., 3] < 200)  # smooth, and as red as the ball
    solid = last[..., 3] > 250
    assert edge.sum() > 20 and solid.sum() > 1000
    assert last[edge][:, 0].mean() > 0.5 * last[solid][:, 0].mean() and last[edge][:, 2].mean() < 40


def test_a_film_of_the_window_has_its_overlays_while_it_lasts(ball, tmp_path):
    before = ball.render().astype(int)
    scale = hyxOSG.ColorScale("viridis", 0, 10)
    with ball.film(tmp_path / "film.mp4", title="TITLE", clock=True, color_bar=scale, fps=60, quality=5) as film:
        with film.progress(seconds=0.5, file=open(os.devnull, "w")) as bar:
            draw(ball, 30)
        assert bar.total == 30 and bar.n == film.video.getNumFrames() >= 29
    assert numpy.abs(ball.render().astype(int) - before).max() <= 2
    shown = frames(tmp_path / "film.mp4").astype(int)
    written = numpy.abs(shown - before).max(axis=-1) > 50
    assert written[:, :30, 100:220].sum(axis=(1, 2)).min() > 60  # the title
    assert written[1:, -40:, :90].sum(axis=(1, 2)).min() > 40
    clock = shown[:, -40:, :90]
    assert numpy.abs(clock[-1] - clock[2]).max() > 60  # it runs
    bar = shown[10][:, 230:]
    assert ((bar[..., 1] > bar[..., 2] + 60) & (bar[..., 0] > 200)).sum() > 20  # the yellow end of the map


def test_a_film_survives_an_error_of_its_script(ball, tmp_path):
    with pytest.raises(KeyError):
        with ball.film(tmp_path / "film.mp4", title="TITLE", fps=60):
            draw(ball, 20)
            raise KeyError("of the script")
    assert frame_count(tmp_path / "film.mp4") >= 19
