"""The picture of an application's window as an array, drawn once."""

import hyx
import hyxOSG
import numpy
import osg
import pytest

from tests.application_stage import add_box, read_picture


@pytest.fixture
def staged(app):
    """An application with a red box in the upper half of its picture, 64 x 48."""
    app.initViewer(64, 48)
    body = add_box(app, position=(0, 0, 1.5), static=True)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, app.getSceneRoot()), hyx.Vec4f(1, 0, 0, 1))
    app.setCameraHome(hyx.Vec3(0, -6, 0), hyx.Vec3(0, 0, 0))
    return app


def body_of(app):
    return app.getSimulation().getRigidBodies()[0]


def redness(picture):
    """How much redder than blue each row is."""
    return (picture[:, :, 0].astype(int) - picture[:, :, 2]).clip(0).sum(axis=1)


def test_a_picture_is_an_array_of_the_present_state(staged, tmp_path):
    picture, time = staged.render(), staged.getTimeStamp()
    assert (picture.shape, picture.dtype) == ((48, 64, 3), numpy.uint8)
    assert picture.flags.c_contiguous and picture.flags.writeable
    assert redness(picture)[:24].sum() > 1000 and redness(picture)[30:].sum() == 0, "rows come from the top"
    staged.takeScreenShot(str(tmp_path / "same.ppm"))
    assert numpy.array_equal(picture, read_picture(tmp_path / "same.ppm"))
    body_of(staged).setPosition(hyx.Vec3(0, 0, -1.5))
    assert redness(staged.render())[:18].sum() == 0
    assert staged.getTimeStamp() == time, "nothing steps"


def test_notes_in_a_picture_are_of_the_present(app):
    app.initViewer(400, 300)
    bare = app.render()
    app.setEnableStatus(True)
    first = app.render()
    assert (first != bare).any()
    app.getSimulation().stepTo(1.5)
    assert (app.render() != first).any(), "the time stands in the status"
    app.setEnableStatus(False)
    assert numpy.array_equal(app.render(), bare)
    app.setEnableHelp(True)
    assert (app.render() != bare).any()


def test_the_pixels_are_those_of_the_last_frame(staged):
    staged.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
    drawn = staged.pixels
    body_of(staged).setPosition(hyx.Vec3(0, 0, -1.5))
    assert numpy.array_equal(staged.pixels, drawn)
    assert not numpy.array_equal(staged.render(), drawn)


def test_an_array_can_be_filled_again(staged):
    frames = numpy.zeros((2, 48, 64, 3), numpy.uint8)
    assert staged.render(frames[1]) is not None
    assert numpy.array_equal(frames[1], staged.pixels) and not frames[0].any()
    for wrong in (numpy.zeros((64, 48, 3), numpy.uint8), numpy.zeros((48, 64, 3)), [0]):
        with pytest.raises(ValueError, match=r"uint8 of shape \(48, 64, 3\)"):
            staged.render(wrong)


def test_a_resized_window_gives_pictures_of_its_size(staged):
    staged.render()
    staged.setWindowRectangle(0, 0, 33, 21)
    assert staged.render().shape == staged.pixels.shape == (21, 33, 3)


class Backdrop:
    """A render target, and whether a frame of the loop has drawn the view beside it."""

    def __init__(self, app):
        self.target = hyxOSG.RenderToImage(64, 48, hyxOSG.RenderTarget.COLOR_BUFFER, 0, hyxOSG.RenderTarget.RGB)
        self.target.setReferenceCamera(app.getCamera())
        app.addRenderTarget(self.target)


def frame(app):
    app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())


def test_beside_render_targets_the_view_is_drawn_when_it_is_asked_for(staged):
    target = Backdrop(staged).target
    for height in (1.5, 0.5, -1.5):
        body_of(staged).setPosition(hyx.Vec3(0, 0, height))
        frame(staged)
        alone = target.pixels.copy()
        assert numpy.array_equal(redness(staged.pixels) > 0, redness(alone[::-1]) > 0)
        assert numpy.array_equal(target.pixels, alone), "the targets are left alone"
    staged.removeRenderTarget(target)
    body_of(staged).setPosition(hyx.Vec3(0, 0, 1.5))
    frame(staged)
    assert redness(staged.pixels)[:24].sum() > 1000


def test_a_view_that_is_recorded_is_drawn_beside_targets(staged, tmp_path):
    Backdrop(staged)
    capture = staged.getImageCapture()
    capture.setDirectoryPath(str(tmp_path))
    capture.setPostfix(".ppm")
    capture.setFps(0)
    frame(staged)
    with capture:
        frame(staged)
    picture = read_picture(next(tmp_path.glob("*.ppm")))
    assert redness(picture)[:24].sum() > 1000


def test_the_view_costs_nothing_while_only_targets_are_seen(staged):
    """A mesh that only the view shows slows down a frame of the loop only while somebody looks."""
    import time

    Backdrop(staged)
    mesh = osg.Geometry()
    mesh.vertices = numpy.random.default_rng(1).random((400_000, 3), numpy.float32)
    mesh.addElements(4, numpy.arange(399_999))
    costly = osg.Geode()
    costly.addDrawable(mesh)
    for index in range(staged.getRoot().getNumChildren()):
        if staged.getRoot().getChild(index).getName() == "RenderTarget":
            staged.getRoot().getChild(index).setCullMask(1)
    costly.setNodeMask(2)
    staged.getSceneRoot().addChild(costly)
    staged.render()

    def fastest(draw):
        times = []
        for _ in range(3):
            start = time.process_time()
            draw()
            times.append(time.process_time() - start)
        return min(times)

    assert fastest(lambda: frame(staged)) < 0.5 * fastest(staged.render)
