"""Off-screen cameras: what they draw, in which pixels, from where."""

import math

import _hyxOSG
import hyx
import hyxOSG
import numpy
import osg
import osgDB
import pytest
from capture_stage import BLUE, GREEN, RED
from PIL import Image

Target = hyxOSG.RenderTarget
DEPTH, COLOR = Target.DEPTH_BUFFER, Target.COLOR_BUFFER


@pytest.fixture
def sphere():
    """One metre of radius around the origin, white all over."""
    node = hyxOSG.createSphere(hyx.Vec3(0, 0, 0), hyx.Vec4(1, 1, 1, 1), 1.0)
    node.getOrCreateStateSet().setMode(0x0B50, 0)  # no lighting
    return node


def look(target, eye=(0, -5, 0), scene=None, window=None):
    """Aims the target along +Y at the origin and puts it into the window's scene."""
    target.setViewMatrixAsLookAt(hyx.Vec3(*eye), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    target.setProjectionMatrixAsPerspective(60.0, target.getSize()[0] / target.getSize()[1], 0.5, 50.0)
    if scene is not None:
        target.getCamera().addChild(scene)
    if window is not None:
        window.getRoot().addChild(target.getCamera())
    return target


def clear_to(target, color):
    target.getCamera().setClearColor(osg.Vec4(*color, 1))


def drawn(window, target):
    window.frame()
    return target.pixels


def test_the_image_shows_the_scene_on_the_clear_colour(window, sphere):
    target = look(hyxOSG.RenderToImage(64, 48), scene=sphere, window=window)
    clear_to(target, BLUE)
    pixels = drawn(window, target)
    assert tuple(pixels[24, 32]) == (255, 255, 255, 255)
    assert tuple(pixels[0, 0]) == tuple(pixels[47, 63]) == (0, 0, 255, 255)


def test_rows_are_stored_from_the_lowest(window, sphere):
    target = look(hyxOSG.RenderToImage(64, 48), eye=(0, -5, 2), scene=sphere, window=window)
    target.setViewMatrixAsLookAt(hyx.Vec3(0, -5, 1.5), hyx.Vec3(0, 0, 1.5), hyx.Vec3(0, 0, 1))
    rows = numpy.flatnonzero(drawn(window, target)[..., 0].any(axis=1))
    assert rows.max() < 24  # the camera is above the sphere, so the sphere is low in the image


def test_the_size_of_a_sphere_in_the_image_is_that_of_the_projection(window, sphere):
    target = look(hyxOSG.RenderToImage(201, 201), scene=sphere, window=window)
    columns = numpy.flatnonzero(drawn(window, target)[..., 0].any(axis=0))
    angle = math.asin(1 / 5)
    expected = 201 * math.tan(angle) / math.tan(math.radians(30))
    assert abs(len(columns) - expected) <= 3


@pytest.mark.parametrize("format, channels", [(Target.RGBA, 4), (Target.RGB, 3)])
def test_a_colour_image_has_the_channels_of_its_format(window, sphere, format, channels):
    target = look(hyxOSG.RenderToImage(31, 17, COLOR, 0, format), scene=sphere, window=window)
    clear_to(target, GREEN)
    pixels = drawn(window, target)
    assert pixels.shape == (17, 31, channels)
    assert pixels.dtype == numpy.uint8
    assert tuple(pixels[0, 0][:3]) == (0, 255, 0)


def test_the_constructor_forms_differ_by_their_defaults(window):
    assert hyxOSG.RenderToImage(4, 3).pixels.shape == (3, 4, 4)
    assert hyxOSG.RenderToImage(4, 3, COLOR).pixels.shape == (3, 4, 4)
    assert hyxOSG.RenderToImage(4, 3, DEPTH).pixels.shape == (3, 4)
    assert hyxOSG.RenderToImage(4, 3, COLOR, 4).pixels.shape == (3, 4, 4)
    assert hyxOSG.RenderToImage(4, 3, COLOR, 0, Target.RGB).pixels.shape == (3, 4, 3)


def test_samples_smooth_the_edges(window, sphere):
    greys = []
    for samples in (0, 4):
        target = look(hyxOSG.RenderToImage(64, 64, COLOR, samples), scene=sphere, window=window)
        pixels = drawn(window, target)[..., 0]
        greys.append(int(((pixels > 0) & (pixels < 255)).sum()))
    assert greys[0] == 0
    assert greys[1] > 20


@pytest.mark.parametrize("samples", [0, 4, 16])
def test_depth_is_the_distance_between_the_planes(window, sphere, samples):
    target = look(hyxOSG.RenderToImage(65, 65, DEPTH, samples), scene=sphere, window=window)
    near, far = 0.5, 50.0
    pixels = drawn(window, target)
    assert pixels.shape == (65, 65)
    assert pixels.dtype == numpy.float32
    assert pixels[0, 0] == 1
    distance = near * far / (far - pixels[32, 32] * (far - near))
    assert distance == pytest.approx(4, abs=0.01)


def test_the_array_is_the_memory_of_the_image_and_not_a_copy(window, sphere):
    target = look(hyxOSG.RenderToImage(32, 32), scene=sphere, window=window)
    clear_to(target, RED)
    pixels = drawn(window, target)
    assert tuple(pixels[0, 0]) == (255, 0, 0, 255)
    clear_to(target, GREEN)
    window.frame()
    assert tuple(pixels[0, 0]) == (0, 255, 0, 255)
    assert pixels.ctypes.data == int(target.getImageData())


def test_an_array_survives_changes_of_the_size(window, sphere):
    target = look(hyxOSG.RenderToImage(32, 32), scene=sphere, window=window)
    views = [drawn(window, target)]
    for size in (200, 10, 300, 700):
        target.setSize(size, size)
        views.append(drawn(window, target))
        assert views[-1].shape == (size, size, 4)
        assert tuple(views[-1][size // 2, size // 2]) == (255, 255, 255, 255)
    assert [int(view.sum()) > 0 for view in views] == [True] * 5


def test_extracting_copies_into_a_buffer_that_is_large_enough(window, sphere):
    source = look(hyxOSG.RenderToImage(16, 16), scene=sphere, window=window)
    clear_to(source, BLUE)
    window.frame()
    larger = hyxOSG.RenderToImage(16, 17)
    assert source.extractImageData(larger.getImageData(), 16 * 16 * 4)
    assert (larger.pixels[:16] == source.pixels).all()
    assert not larger.pixels[16].any()
    assert not source.extractImageData(larger.getImageData(), 16 * 16 * 4 - 1)
    assert not larger.extractImageData(source.getImageData(), 10**6), "it has less than was said"
    assert not source.extractImageData(None, 5000)
    assert not source.extractImageData(larger.getImageData(), -1)


@pytest.mark.parametrize("name", ["image.png", "image.bmp", "image.ppm"])
def test_an_image_is_saved_upright(window, sphere, tmp_path, name):
    target = look(hyxOSG.RenderToImage(64, 48, COLOR, 0, Target.RGB), scene=sphere, window=window)
    target.setViewMatrixAsLookAt(hyx.Vec3(0, -5, 1.5), hyx.Vec3(0, 0, 1.5), hyx.Vec3(0, 0, 1))
    window.frame()
    assert target.saveImage(str(tmp_path / name))
    assert (numpy.asarray(Image.open(tmp_path / name)) == target.pixels[::-1]).all()


@pytest.mark.parametrize("name, most", [("depth.png", 65535), ("depth.bmp", 255)])
def test_a_depth_image_is_saved_as_greys(window, sphere, tmp_path, name, most):
    target = look(hyxOSG.RenderToImage(64, 48, DEPTH), scene=sphere, window=window)
    target.setProjectionMatrixAsPerspective(60.0, 64 / 48, 3.0, 60.0)
    window.frame()
    assert target.saveImage(str(tmp_path / name))
    saved = Image.open(tmp_path / name)
    greys = numpy.asarray(saved if most > 255 else saved.convert("L")).astype(float)
    assert abs(greys / most - target.pixels[::-1]).max() <= 0.51 / most
    assert greys[0, 0] == most > greys[24, 32]


def test_transparency_is_left_out_where_the_format_has_none(window, sphere, tmp_path):
    target = look(hyxOSG.RenderToImage(64, 48), scene=sphere, window=window)
    clear_to(target, BLUE)
    window.frame()
    assert target.saveImage(str(tmp_path / "image.jpg"))
    saved = numpy.asarray(Image.open(tmp_path / "image.jpg")).astype(int)
    assert saved.shape == (48, 64, 3)
    assert abs(saved - target.pixels[::-1, :, :3]).mean() < 3
    assert target.saveImage(str(tmp_path / "image.png"))
    assert Image.open(tmp_path / "image.png").mode == "RGBA"


def test_saving_tells_whether_it_worked(tmp_path):
    target = hyxOSG.RenderToImage(4, 4)
    assert not target.saveImage(str(tmp_path / "missing" / "image.png"))
    assert not target.saveImage(str(tmp_path / "image.unheard_of"))


def test_the_size_can_be_given_as_two_numbers_or_as_one_value():
    target = Target(10, 20)
    assert tuple(target.getSize()) == (10, 20)
    target.setSize(30, 40)
    assert tuple(target.getSize()) == (30, 40)
    target.setSize(hyx.Vec2u(50, 60))
    assert tuple(target.getSize()) == (50, 60)
    with pytest.raises(TypeError, match=r"setSize\(hyx::UInt,hyx::UInt\)\n.*setSize\(hyx::Vec2u\)"):
        target.setSize("large")


@pytest.mark.parametrize(
    "arguments",
    [
        (0, 4),
        (4, 16385),
        (4, 4, 1),
        (4, 4, COLOR, 17),
        (4, 4, COLOR, 0, Target.DEPTH_COMPONENT),
        (4, 4, COLOR, 0, 7),
        (4, 4, DEPTH, 0, 7),
    ],
)
def test_what_does_not_go_together_is_refused(arguments):
    for kind in (hyxOSG.RenderToImage, hyxOSG.RenderToTexture):
        with pytest.raises(RuntimeError):
            kind(*arguments)


def test_the_texture_shows_what_the_target_drew(window, sphere, tmp_path):
    """The target's picture on the sphere of the main scene."""
    target = look(hyxOSG.RenderToTexture(64, 64), window=window)
    clear_to(target, GREEN)
    texture = target.getTexture()
    assert texture.getTexture().getTextureWidth() == 64
    shown = look(hyxOSG.RenderToImage(32, 32), scene=sphere, window=window)
    hyxOSG.setTexture(sphere, texture)
    window.frame()
    window.frame()
    assert tuple(shown.pixels[16, 16][:3]) == (0, 255, 0)
    target.setSize(128, 32)
    window.frame()
    assert texture.getTexture().getTextureWidth() == 128


def test_a_reference_camera_is_followed_from_frame_to_frame(window, sphere):
    leader = look(Target(32, 32))
    target = look(hyxOSG.RenderToImage(32, 32), scene=sphere, window=window)
    target.setReferenceCamera(leader.getCamera())
    assert drawn(window, target)[16, 16].all()
    leader.setViewMatrixAsLookAt(hyx.Vec3(0, -5, 0), hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 1))
    assert not drawn(window, target)[16, 16, :3].any()
    target.setReferenceCamera(None)
    leader.setViewMatrixAsLookAt(hyx.Vec3(0, -5, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    assert not drawn(window, target)[16, 16, :3].any()


def test_view_and_projection_can_be_copied_once(window, sphere):
    other = look(Target(32, 32))
    target = hyxOSG.RenderToImage(32, 32)
    target.getCamera().addChild(sphere)
    window.getRoot().addChild(target.getCamera())
    target.setViewMatrixFromOtherCamera(other.getCamera())
    target.setProjectionMatrixFromOtherCamera(other.getCamera())
    assert drawn(window, target)[16, 16].all()
    point = hyx.Vec3(0.4, 0, 0.7)
    assert tuple(target.calculateScreenCoords(point)) == pytest.approx(tuple(other.calculateScreenCoords(point)))
    other.setViewMatrixAsLookAt(hyx.Vec3(0, -5, 0), hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 1))
    assert drawn(window, target)[16, 16].all()
    with pytest.raises(RuntimeError, match="no camera"):
        target.setViewMatrixFromOtherCamera(None)
    with pytest.raises(RuntimeError, match="no camera"):
        target.setProjectionMatrixFromOtherCamera(None)


def test_screen_coordinates_are_pixels_from_the_lower_left(window):
    target = look(Target(200, 100))
    target.setProjectionMatrixAsOrtho(-10, 10, -5, 5, 0.1, 100)
    assert tuple(target.calculateScreenCoords(hyx.Vec3(0, 0, 0))) == pytest.approx((100, 50))
    assert tuple(target.calculateScreenCoords(hyx.Vec3(-10, 3, -5))) == pytest.approx((0, 0))
    assert tuple(target.calculateScreenCoords(hyx.Vec3(10, 3, 5))) == pytest.approx((200, 100))
    target.setProjectionMatrixAsPerspective(90.0, 2.0, 0.1, 100.0)
    point = hyx.Vec3(2, 0, 1)
    assert tuple(target.calculateScreenCoords(point)) == pytest.approx((100 * (1 + 2 / 5 / 2), 50 * (1 + 1 / 5)))
    assert tuple(point) == (2, 0, 1)
    assert all(map(math.isnan, target.calculateScreenCoords(hyx.Vec3(0, -6, 0))))
    with pytest.raises(TypeError, match="argument 1 .* not None"):
        target.calculateScreenCoords(None)


def test_an_orthographic_picture_is_to_scale(window, sphere):
    target = look(hyxOSG.RenderToImage(100, 100), scene=sphere, window=window)
    target.setProjectionMatrixAsOrtho(-2, 2, -2, 2, 0.1, 100)
    columns = numpy.flatnonzero(drawn(window, target)[..., 0].any(axis=0))
    assert abs(len(columns) - 50) <= 2


@pytest.mark.parametrize(
    "call",
    [
        lambda target: target.setViewMatrixAsLookAt(hyx.Vec3(1, 1, 1), hyx.Vec3(1, 1, 1), hyx.Vec3(0, 0, 1)),
        lambda target: target.setViewMatrixAsLookAt(hyx.Vec3(0, 0, 5), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1)),
        lambda target: target.setProjectionMatrixAsPerspective(180.0, 1.0, 0.1, 10.0),
        lambda target: target.setProjectionMatrixAsPerspective(60.0, 1.0, 10.0, 1.0),
        lambda target: target.setProjectionMatrixAsPerspective(60.0, 1.0, 0.0, 1.0),
        lambda target: target.setProjectionMatrixAsOrtho(1, 1, 0, 1, 0, 1),
        lambda target: target.setComputeNearFarMode(4),
        lambda target: target.setSize(0, 1),
    ],
)
def test_impossible_views_are_refused(call):
    with pytest.raises(RuntimeError):
        call(Target(10, 10))


@pytest.mark.parametrize("mode, seen", [(0, False), (1, True), (2, True), (3, True)])
def test_the_near_and_far_mode_decides_whether_the_planes_cut(window, sphere, mode, seen):
    target = look(hyxOSG.RenderToImage(32, 32), scene=sphere, window=window)
    target.setProjectionMatrixAsPerspective(60.0, 1.0, 20.0, 50.0)
    target.setComputeNearFarMode(mode)
    assert bool(drawn(window, target)[16, 16, 0]) == seen


def test_the_cull_mask_chooses_what_is_drawn(window, sphere):
    target = look(hyxOSG.RenderToImage(32, 32), scene=sphere, window=window)
    assert target.getCameraCullMask() == ~hyxOSG.ExampleApplication.HUD_MASK
    sphere.setNodeMask(4)
    target.setCameraCullMask(3)
    assert target.getCameraCullMask() == 3
    assert not drawn(window, target)[16, 16, 0]
    target.setCameraCullMask(4)
    assert drawn(window, target)[16, 16, 0]


def test_the_image_capture_of_a_target_takes_its_pictures(stage, tmp_path):
    target = look(hyxOSG.RenderToTexture(48, 32), window=stage.window)
    clear_to(target, GREEN)
    capture = hyxOSG.ImageCapture(stage.simulation)
    capture.setDirectoryPath(str(tmp_path))
    assert target.getImageCapture() is None
    target.setImageCapture(capture)
    assert target.getImageCapture() == capture
    capture.startCapture(2)
    stage.draw(30)
    assert capture.getImageNum() == 2
    saved = numpy.asarray(Image.open(tmp_path / "image00001.png"))
    assert saved.shape == (32, 48, 3)
    assert (saved == (0, 255, 0)).all()
    target.setImageCapture(None)
    assert target.getImageCapture() is None
    with pytest.raises(RuntimeError, match="no colours"):
        hyxOSG.RenderToImage(4, 4, DEPTH).setImageCapture(capture)


def test_pre_render_callbacks_run_in_the_draw_of_each_frame(stage, tmp_path):
    """A capture's callback stands for any: it photographs what is bound before the target is drawn."""
    target = look(Target(16, 16), window=stage.window)
    captures = [hyxOSG.ImageCapture(stage.simulation) for _ in range(2)]
    for index, capture in enumerate(captures):
        capture.setDirectoryPath(str(tmp_path / str(index)))
        capture.setFps(0)
        target.addPreRenderCallback(capture.getDrawCallback())
        capture.startCapture()
    target.addPreRenderCallback(captures[1].getDrawCallback())
    target.addPreRenderCallback(None)
    stage.draw(3)
    assert [capture.getImageNum() for capture in captures] == [3, 6]


def test_drawing_targets_leaves_no_error_behind(host, window, sphere):
    for component in (COLOR, DEPTH):
        for samples in (0, 4):
            look(hyxOSG.RenderToImage(32, 32, component, samples), scene=sphere, window=window)
            look(hyxOSG.RenderToTexture(32, 32, component, samples), scene=sphere, window=window)
    window.frame()
    window.frame()
    assert host.error() == 0


def test_constants_are_those_of_the_graphics_library():
    assert (_hyxOSG.RenderTarget_DEPTH_BUFFER, _hyxOSG.RenderTarget_COLOR_BUFFER) == (0, 3)
    assert (_hyxOSG.RenderTarget_RGBA, _hyxOSG.RenderTarget_RGB, _hyxOSG.RenderTarget_DEPTH_COMPONENT) == (
        6408,
        6407,
        6402,
    )


def test_an_image_outlives_its_target(tmp_path):
    image = hyxOSG.RenderToImage(320, 240).getImage()
    others = [bytearray(b"other") * 61440 for _ in range(50)]  # take the memory that was given back
    assert osgDB.writeImageFile(image, str(tmp_path / "black.ppm")) and others
    assert not numpy.asarray(Image.open(tmp_path / "black.ppm")).any()
