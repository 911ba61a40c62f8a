"""Films of any size, rate and name are whole, or it is said in words why there is none."""

import time

import hyx
import hyxOSG
import numpy
import osg
import pytest
from video_file import frame_count, probe

Video = hyxOSG.VideoFFMPEGPipeCapture
CODECS = ["h264", "h264rgb", "h265", "av1", "vp9", "mpeg4", "prores", "ffv1", "gif", "webp", "png"]
ENDINGS = [".mp4", ".mov", ".mkv", ".webm", ".gif", ".avi"]


def picture(size, seed):
    image = osg.Image(*size)
    image.setData(numpy.random.default_rng(seed).integers(0, 256, 3 * size[0] * size[1], numpy.uint8).tobytes())
    return image


def film(path, size=(66, 68), images=7, **encoding):
    video = Video(*size, 30.0)
    video.encode(path=path, **encoding)
    for number in range(images):
        video.writeImage(picture(size, number), number)
    video.stopProcess()


@pytest.mark.parametrize("ending", ENDINGS)
@pytest.mark.parametrize("size", [(1, 1), (3, 50)], ids=str)
def test_no_size_is_too_small_or_odd(tmp_path, ending, size):
    film(tmp_path / f"film{ending}", size)
    stream = probe(tmp_path / f"film{ending}")
    assert frame_count(tmp_path / f"film{ending}") == 7
    assert 0 <= stream["width"] - size[0] <= 1 and 0 <= stream["height"] - size[1] <= 1


@pytest.mark.parametrize("ending", [".avi", *(pytest.param(ending, marks=pytest.mark.slow) for ending in ENDINGS)])
def test_a_codec_in_a_container_gives_all_images_or_an_error(tmp_path, ending):
    kept = set()
    for codec in CODECS:
        path = tmp_path / f"{codec}{ending}"
        try:
            film(path, codec=codec)
        except RuntimeError as refusal:
            assert len(str(refusal)) > 40
        else:
            assert frame_count(path) == 7, codec
            kept.add(codec)
    assert kept


def test_an_encoder_that_has_failed_and_does_not_end_is_not_waited_for(tmp_path):
    begun = time.monotonic()
    with pytest.raises(RuntimeError, match="av1 only supported"):
        film(tmp_path / "film.mov", codec="av1")
    assert time.monotonic() - begun < 20


@pytest.mark.parametrize("ending, codec", [(".mkv", "gif"), (".avi", "h265"), (".avi", "webp")])
def test_films_that_nothing_could_read_are_not_begun(tmp_path, ending, codec):
    video = Video(66, 68, 30.0)
    video.encode(codec, path=tmp_path / f"film{ending}")
    with pytest.raises(RuntimeError, match=f'cannot be read from "{ending}"'):
        video.init()
    assert not any(tmp_path.iterdir())


def test_names_are_taken_to_the_letter_or_not_at_all(tmp_path):
    for name in ("a b", "größe ☃", "%05d", "-y", "pipe:1", "line\nbreak", "a.b"):
        film(tmp_path / f"{name}.mp4", (16, 16), 2)
        assert frame_count(tmp_path / f"{name}.mp4") == 2
        (tmp_path / f"{name}.mp4").unlink()
    video = Video(16, 16, 30.0)
    for setting in ({"path": tmp_path / "a.mp4\0b.mp4"}, {"path": tmp_path / "a.mp4", "preset": "slow\0"}):
        video.encode(**setting)
        with pytest.raises(RuntimeError, match="null bytes"):
            video.init()
    for name in ("film.xyz", "film.mp3"):
        with pytest.raises(RuntimeError):
            film(tmp_path / name, (16, 16), 9)
    assert not any(tmp_path.iterdir())


def test_what_is_no_setting_is_told_at_once():
    video = Video(16, 16, 30.0)
    with pytest.raises(ValueError, match="alpha"):
        video.encode(path="film.mp4", alpha=True)
    with pytest.raises(TypeError, match="dictionary"):
        video.encode(options="-tune animation")
    for wrong in ({"fps": -1}, {"fps": float("nan")}, {"quality": 52}, {"bitrate": -1.0}):
        with pytest.raises(ValueError, match="must be"):
            video.encode(path="film.mp4", **wrong)


@pytest.fixture
def filmed(app):
    app.initViewer(64, 48)
    app.getSimulation().setTimeStep(1 / 60)
    timer = hyx.HighAccuracyTimer()

    def draw(frames):
        for _ in range(frames):
            app.executeOneStepWithGraphics(timer)

    return app, draw


def test_the_window_has_one_film_at_a_time_and_says_so(filmed, tmp_path):
    app, draw = filmed
    first, second = (app.film(tmp_path / f"{name}.mp4", fps=60, title=name) for name in ("first", "second"))
    with first:
        draw(10)
        for begin in (second.__enter__, lambda: app.film(tmp_path / "third.mp4", fps=60)):
            with pytest.raises(RuntimeError, match="filmed already"):
                begin()
        draw(10)
    with second:
        draw(5)
    assert [frame_count(tmp_path / f"{name}.mp4") for name in ("first", "second")] == [20, 5]
    assert len(list(tmp_path.iterdir())) == 2


def test_a_film_that_cannot_begin_leaves_nothing_on_the_picture(filmed, tmp_path):
    app, draw = filmed
    before = app.render()
    for wrong in ({"color_bar": 5}, {"codec": "gif", "path": tmp_path / "film.mkv"}):
        with pytest.raises((TypeError, RuntimeError)):
            with app.film(**{"path": tmp_path / "film.mp4", "title": "TITLE", "clock": True, **wrong}):
                draw(1)
    assert (app.render() == before).all()


def test_an_application_that_is_closed_in_a_film_has_finished_it(tmp_path):
    app = hyxOSG.ExampleApplication()
    app.initViewer(64, 48)
    app.getSimulation().setTimeStep(1 / 60)
    with app.film(tmp_path / "film.mp4", fps=60, title="TITLE", clock=True):
        for _ in range(20):
            app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
        app.close()
    assert frame_count(tmp_path / "film.mp4") == 20
