"""Numbered image files: how many there are, what they are called and what they show."""

import time

import _hyxOSG
import hyx
import hyxOSG
import numpy
import osg
import pytest
from capture_stage import BLUE, GREEN, RED
from PIL import Image


@pytest.fixture
def capture(stage, tmp_path):
    made = hyxOSG.ImageCapture(stage.simulation)
    made.setDirectoryPath(str(tmp_path))
    return stage.capture(made)


def files(folder):
    return sorted(path.name for path in folder.iterdir())


def picture(file):
    return numpy.asarray(Image.open(file).convert("RGB"))


def color_of(file):
    """The one colour of a picture, as numbers from 0 to 1."""
    pixels = picture(file)
    assert (pixels == pixels[0, 0]).all()
    return tuple(round(value / 255) for value in pixels[0, 0])


@pytest.mark.parametrize("rate", [1, 7, 24, 30, 60, 100])
@pytest.mark.parametrize("steps_a_frame", [1, 2, 3, 10])
def test_a_simulated_second_has_the_same_number_of_images_at_every_frame_rate(
    stage, capture, tmp_path, rate, steps_a_frame
):
    capture.setFps(rate)
    capture.setImageResolution(8, 6)
    capture.startCapture()
    stage.draw(60, steps_a_frame)
    assert capture.getImageNum() == rate
    assert len(files(tmp_path)) == rate
    stage.draw(60, steps_a_frame)
    assert capture.getImageNum() == 2 * rate


def test_what_is_drawn_before_time_goes_on_is_the_first_image(stage, capture, tmp_path):
    capture.setFps(30)
    capture.setImageResolution(8, 6)
    stage.fill(BLUE)
    capture.startCapture()
    stage.window.frame()
    stage.window.frame()  # of the same time
    stage.fill(RED)
    stage.draw(60)
    assert [color_of(tmp_path / file) for file in files(tmp_path)] == [BLUE] + 30 * [RED]


def test_the_clock_starts_with_the_capture_wherever_the_simulation_is(stage, capture):
    stage.draw(13)
    capture.setFps(10)
    capture.startCapture()
    stage.draw(60)
    assert capture.getImageNum() == 10


def test_file_names_are_prefix_number_postfix(stage, capture, tmp_path):
    capture.setPrefix("view_")
    capture.setPostfix("_left.png")
    capture.setFps(3)
    assert (capture.getPrefix(), capture.getPostfix(), capture.getDirectoryPath()) == (
        "view_",
        "_left.png",
        str(tmp_path),
    )
    capture.startCapture()
    stage.draw(60)
    assert files(tmp_path) == ["view_00000_left.png", "view_00001_left.png", "view_00002_left.png"]


def test_images_show_what_was_drawn(stage, capture, tmp_path):
    capture.setFps(3)
    capture.startCapture()
    for color in (RED, GREEN, BLUE):
        stage.fill(color)
        stage.draw(20)
    capture.stopCapture()
    assert [color_of(tmp_path / name) for name in files(tmp_path)] == [RED, GREEN, BLUE]


@pytest.mark.parametrize("postfix", [".png", ".jpg", ".bmp", ".tga", ".ppm"])
def test_the_postfix_chooses_the_format(stage, capture, tmp_path, postfix):
    capture.setPostfix(postfix)
    stage.fill(GREEN)
    capture.startCapture(1)
    stage.draw(60)
    (name,) = files(tmp_path)
    assert color_of(tmp_path / name) == GREEN
    assert picture(tmp_path / name).shape == (240, 320, 3)


def test_a_missing_folder_is_created(stage, capture, tmp_path):
    capture.setDirectoryPath(str(tmp_path / "new" / "folder"))
    capture.startCapture(1)
    stage.draw(10)
    assert files(tmp_path / "new" / "folder") == ["image00000.png"]


def test_a_limit_given_at_the_start_stops_the_capture(stage, capture):
    capture.startCapture(4)
    stage.draw(60)
    assert capture.getImageNum() == 4
    assert not capture.getCaptureStarted()
    assert not capture.stopCapture()


def test_the_limit_set_before_holds_for_a_start_without_one(stage, capture):
    capture.setMaxImages(2)
    capture.startCapture()
    stage.draw(60)
    assert capture.getImageNum() == 2
    capture.startCapture(5)
    stage.draw(60)
    assert capture.getImageNum() == 5


def test_stopping_tells_whether_a_capture_ran(stage, capture):
    assert not capture.stopCapture()
    capture.startCapture()
    assert capture.getCaptureStarted()
    assert capture.stopCapture()
    assert not capture.getCaptureStarted()
    stage.draw(60)
    assert capture.getImageNum() == 0


@pytest.mark.parametrize("size", [(640, 480), (160, 120), (33, 77)])
def test_images_are_scaled_to_the_resolution_asked_for(stage, capture, tmp_path, size):
    stage.window.getSceneDecorator().setBackgroundColor(hyx.Vec3(1, 1, 1), hyx.Vec3(0, 0, 0))
    capture.setImageResolution(*size)
    assert tuple(capture.getImageResolution()) == size
    capture.startCapture(1)
    stage.draw(10)
    (name,) = files(tmp_path)
    pixels = picture(tmp_path / name)
    assert pixels.shape == (size[1], size[0], 3)
    # White above and black below, evenly between: the rows must keep that whatever their number.
    rows = pixels[..., 0].mean(axis=1) / 255
    expected = 1 - (numpy.arange(size[1]) + 0.5) / size[1]
    assert abs(rows - expected).max() < 0.02


def test_zero_images_a_second_means_one_for_each_drawn_frame(stage, capture):
    capture.setFps(0)
    assert capture.getFps() == 0
    capture.startCapture()
    stage.draw(60, 4)
    assert capture.getImageNum() == 15


def test_without_synchronisation_the_wall_clock_counts(stage, capture):
    capture.setEnableSyncWithSimulation(False)
    assert not capture.getEnableSyncWithSimulation()
    capture.setImageResolution(8, 6)
    capture.setFps(50)
    capture.startCapture()
    begin = time.monotonic()
    drawn = 0
    while drawn < 0.5:
        drawn = time.monotonic() - begin
        stage.window.frame()
    assert 50 * drawn - 1 <= capture.getImageNum() <= 50 * (time.monotonic() - begin)


def test_without_a_simulation_the_wall_clock_counts(stage, capture):
    capture.setSimulation(None)
    assert capture.getSimulation() is None
    capture.setImageResolution(8, 6)
    capture.startCapture()
    stage.draw(600, 600)
    assert capture.getImageNum() <= 30
    capture.setSimulation(stage.simulation)
    assert capture.getSimulation() is not None
    before = capture.getImageNum()
    stage.draw(60, 60)
    assert capture.getImageNum() == before + 30


def test_resetting_the_time_puts_off_the_next_image(stage, capture):
    capture.setFps(1)
    capture.startCapture()
    stage.draw(59)
    capture.resetTime()
    stage.draw(59)
    assert capture.getImageNum() == 0
    stage.draw(1)
    assert capture.getImageNum() == 1


def test_a_simulation_that_is_set_back_goes_on_being_captured(stage, capture):
    capture.setFps(10)
    capture.startCapture()
    stage.draw(60)
    stage.simulation.setTimeStamp(0)
    stage.window.frame()
    stage.draw(60)
    assert capture.getImageNum() == 20


def test_the_draw_callback_is_the_same_object_each_time(stage, capture):
    assert capture.getDrawCallback() == capture.getDrawCallback()


def test_an_image_can_be_written_by_hand(stage, capture, tmp_path):
    target = hyxOSG.RenderToImage(5, 4)
    capture.writeImage(target.getImage(), 7)
    _hyxOSG.ImageCaptureBase_writeImage(capture, target.getImage(), 123456)
    assert files(tmp_path) == ["image00007.png", "image123456.png"]
    assert picture(tmp_path / "image00007.png").shape == (4, 5, 3)


def test_a_negative_index_is_out_of_range(capture):
    for function in (_hyxOSG.ImageCapture_writeImage, _hyxOSG.ImageCaptureBase_writeImage):
        with pytest.raises(OverflowError, match=f"in method '{function.__name__}', argument 3 of type 'hyx::Index'"):
            function(capture, None, -1)


def test_no_image_is_refused(capture):
    with pytest.raises(RuntimeError, match="holds no pixels"):
        capture.writeImage(None, 0)
    with pytest.raises(RuntimeError, match="holds no pixels"):
        capture.writeImage(osg.Image(), 0)


def test_applying_needs_a_render_info(capture):
    message = "ImageCaptureBase.apply.. argument 1 .* not None"
    with pytest.raises(TypeError, match=message):
        capture.apply(None)


@pytest.mark.parametrize("rate", [-1.0, float("nan"), float("inf")])
def test_a_rate_that_is_none_is_refused(capture, rate):
    with pytest.raises(RuntimeError, match="images a second"):
        capture.setFps(rate)
    assert capture.getFps() == 30


@pytest.mark.parametrize("size", [(0, 10), (10, 0), (16385, 10)])
def test_a_resolution_that_is_none_is_refused(capture, size):
    with pytest.raises(RuntimeError, match="image resolution"):
        capture.setImageResolution(*size)
    assert tuple(capture.getImageResolution()) == (0, 0)


def test_a_folder_that_cannot_be_made_is_an_error_at_the_start(stage, capture, tmp_path):
    (tmp_path / "file").write_text("")
    capture.setDirectoryPath(str(tmp_path / "file" / "folder"))
    with pytest.raises(NotADirectoryError, match="file/folder") as caught:
        capture.startCapture()
    assert "cannot write to the folder" in str(caught.value.__cause__)
    assert not capture.getCaptureStarted()


def test_a_failing_write_ends_the_capture_and_not_the_simulation(stage, capture, tmp_path):
    capture.setPostfix(".unheard_of")
    capture.startCapture()
    stage.draw(60)
    assert not capture.getCaptureStarted()
    assert capture.getImageNum() == 0
    assert stage.simulation.getTimeStamp() == pytest.approx(1)
    with pytest.raises(RuntimeError, match='no writer for the extension "unheard_of"'):
        capture.stopCapture()
    assert not capture.stopCapture()
    capture.setPostfix(".png")
    capture.startCapture(1)
    stage.draw(10)
    assert len(files(tmp_path)) == 1


def test_outside_of_drawing_there_is_nothing_to_take(stage, capture):
    stage.draw(1)
    capture.startCapture()
    with pytest.raises(RuntimeError, match="nothing is being drawn"):
        capture.apply(osg.RenderInfo())
