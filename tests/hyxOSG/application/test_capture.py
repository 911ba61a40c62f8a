"""Pictures, films and render targets of the application."""

import shutil
import subprocess

import hyx
import hyxOSG
import pytest
from application_stage import add_box


def test_a_screenshot_without_a_name_takes_the_next_number(window, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    window.takeScreenShot()
    window.takeScreenShot("")
    assert sorted(path.name for path in tmp_path.iterdir()) == ["screenshot_0001.png", "screenshot_0002.png"]
    assert (tmp_path / "screenshot_0001.png").read_bytes()[:4] == b"\x89PNG"


def test_a_screenshot_shows_the_scene(window, shoot):
    empty = shoot(window)
    add_box(window, static=True)
    window.createVisual(window.getSimulation())
    picture = shoot(window)
    changed = abs(picture - empty).max(axis=2) > 24
    assert changed[60, 80] and not changed[5, 5] and 200 < changed.sum() < 2000


@pytest.mark.parametrize(
    "name, error, reason",
    [("/nowhere/shot.png", FileNotFoundError, "/nowhere/shot.png"), ("shot.nothing", RuntimeError, "nothing")],
)
def test_a_picture_that_cannot_be_written_is_an_exception(window, tmp_path, monkeypatch, name, error, reason):
    monkeypatch.chdir(tmp_path)
    with pytest.raises(error, match=reason):
        window.takeScreenShot(name)
    assert not list(tmp_path.iterdir())


def test_pictures_follow_simulated_time(window, tmp_path):
    assert window.getEnableCaptureSyncWithSimulation()
    capture = window.getImageCapture()
    assert window.getImageCapture() == capture
    capture.setDirectoryPath(str(tmp_path))
    capture.setPrefix("frame")
    capture.setPostfix(".ppm")
    capture.setFps(10)
    capture.startCapture()
    for _ in range(61):
        window.step()
    window.postExecution()
    assert len(list(tmp_path.glob("frame*.ppm"))) == 10
    window.setEnableCaptureSyncWithSimulation(False)
    assert not window.getEnableCaptureSyncWithSimulation() and not capture.getEnableSyncWithSimulation()


@pytest.mark.skipif(not shutil.which("ffmpeg"), reason="ffmpeg is not installed")
@pytest.mark.parametrize("through_texture", [False, True])
def test_a_film_has_its_frames(window, tmp_path, through_texture):
    capture = window.getVideoServerCapture()
    capture.setFilename(str(tmp_path / "film"))
    assert window.getVideoCaptureRendertoTexture() is None and window.getTextureCamera() is None
    if through_texture:
        window.setupVideoCaptureRenderTotexture()
        assert window.getVideoCaptureRendertoTexture() is not None and window.getTextureCamera() is not None
    capture.startCapture()
    for _ in range(61):
        window.step()
    window.postExecution()
    counted = subprocess.run(
        [
            "ffprobe",
            "-v",
            "error",
            "-count_frames",
            "-show_entries",
            "stream=nb_read_frames,width,height",
            "-of",
            "csv=p=0",
            str(tmp_path / "film.mp4"),
        ],
        capture_output=True,
        text=True,
    )
    assert counted.stdout.strip() == "160,120,30"


def test_a_render_target_draws_the_scene_until_it_is_removed(window):
    add_box(window, static=True)
    window.createVisual(window.getSimulation())
    target = hyxOSG.RenderToImage(64, 48)
    target.setViewMatrixAsLookAt(hyx.Vec3(0, -6, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    target.setProjectionMatrixAsPerspective(45, 64 / 48, 0.1, 100)
    children = window.getRoot().getNumChildren()
    window.addRenderTarget(target)
    window.addRenderTarget(target)
    assert window.getRoot().getNumChildren() == children + 1
    window.step()
    assert window.removeRenderTarget(target) and not window.removeRenderTarget(target)
    assert window.getRoot().getNumChildren() == children
    with pytest.raises(RuntimeError):
        window.addRenderTarget(None)
