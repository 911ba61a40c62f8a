"""Logo, text rows, head-up display and cursor: what is drawn over the scene, in pixels."""

import hyx
import hyxOSG
import pytest
from decorated_stage import HEIGHT, WIDTH, changed, decorator, frame, near, stage, write_image
from hyxOSG import SceneDecorator

MAGENTA, CYAN = (1, 0, 1), (0, 1, 1)


@pytest.fixture
def logo(tmp_path):
    return write_image(tmp_path / "logo.png", MAGENTA)


PLACES = {
    SceneDecorator.UPPER_LEFT: (6, 5),
    SceneDecorator.UPPER_RIGHT: (WIDTH - 46, 5),
    SceneDecorator.LOWER_LEFT: (6, HEIGHT - 25),
    SceneDecorator.LOWER_RIGHT: (WIDTH - 46, HEIGHT - 25),
}


@pytest.mark.parametrize("location", PLACES)
def test_logo_stands_in_each_corner(stage, logo, location):
    assert stage.decorator.setLogoFile(logo) is True
    stage.decorator.setLogoLocation(location)
    assert stage.decorator.getLogoLocation() == location
    left, right, upper, lower = frame(near(stage.picture(), MAGENTA))
    x, y = PLACES[location]
    assert abs(left - x) <= 2 and abs(upper - y) <= 2
    assert abs(right - left - 39) <= 1 and abs(lower - upper - 19) <= 1


def test_free_logo_stands_at_its_position(stage, logo):
    stage.decorator.setLogoFile(logo)
    stage.decorator.setLogoLocation(SceneDecorator.FREE)
    stage.decorator.setLogoPosition(0.5, 0.25)
    left, _, _, lower = frame(near(stage.picture(), MAGENTA))
    assert abs(left - WIDTH / 2) <= 1 and abs(lower - (0.75 * HEIGHT - 1)) <= 1


def test_default_position_is_that_of_a_new_decorator():
    first, second = SceneDecorator.getDefaultLogoPosition(), SceneDecorator.getDefaultLogoPosition()
    assert tuple(first) == tuple(second) and 0 < first[0] < 0.1
    first[0] = 0.9
    assert SceneDecorator.getDefaultLogoPosition()[0] == second[0]


def test_logo_can_be_hidden_and_taken_away(stage, logo):
    plain = stage.picture()
    stage.decorator.setLogoFile(logo)
    stage.decorator.setEnableLogo(False)
    assert stage.decorator.getEnableLogo() is False
    assert not changed(stage.picture(), plain).any()
    stage.decorator.setEnableLogo(True)
    assert stage.decorator.getEnableLogo() is True
    assert near(stage.picture(), MAGENTA).any()
    stage.decorator.setLogo(None)
    assert stage.decorator.getLogo() is None
    assert not changed(stage.picture(), plain).any()


def test_a_logo_that_cannot_be_read_changes_nothing(stage, logo):
    stage.decorator.setLogoFile(logo)
    before = stage.picture()
    assert stage.decorator.setLogoFile("no/such/file.png") is False
    assert not changed(stage.picture(), before).any()


def test_a_texture_makes_a_logo(stage, tmp_path):
    texture = hyxOSG.createTexture(write_image(tmp_path / "cyan.png", CYAN))
    stage.decorator.setLogo(texture)
    assert stage.decorator.getLogo() == texture
    assert near(stage.picture(), CYAN).sum() == 40 * 20


def test_logo_can_be_seen_through(stage, logo):
    stage.decorator.setLogoLocation(SceneDecorator.UPPER_LEFT)
    stage.decorator.setLogoFile(logo, 0.5)
    pixel = stage.picture()[10, 10]
    assert abs(pixel[0] - 127) < 6 and pixel[1] == 0, "half of it over a black background"


def test_writing_the_dimension_changes_the_logo(stage, logo):
    stage.decorator.setLogoFile(logo)
    dimension = stage.decorator.getLogoDimension()
    assert tuple(dimension) == (40, 20)
    dimension[0] = 80
    assert tuple(stage.decorator.getLogoDimension()) == (80, 20)
    left, right, _, _ = frame(near(stage.picture(), MAGENTA))
    assert abs(right - left - 79) <= 1


def test_the_maximum_is_a_copy_and_keeps_proportions(stage, logo):
    stage.decorator.setLogoFile(logo)
    maximum = stage.decorator.getMaximumLogoDimension()
    maximum[0] = 1
    assert tuple(stage.decorator.getMaximumLogoDimension()) == (256, 128)
    stage.decorator.setMaximumLogoDimension(20, 128)
    assert tuple(stage.decorator.getLogoDimension()) == (20, 10)
    assert near(stage.picture(), MAGENTA).sum() == 20 * 10
    with pytest.raises(RuntimeError, match="must be positive"):
        stage.decorator.setMaximumLogoDimension(0, 5)


def test_unknown_locations_are_refused(decorator):
    with pytest.raises(RuntimeError, match="no logo location has the value 6"):
        decorator.setLogoLocation(6)


def test_rows_stand_below_each_other(stage):
    plain = stage.picture()
    stage.decorator.setText(0, "HHHH", hyx.Vec4f(1, 0, 1, 1))
    upper = frame(near(stage.picture(), MAGENTA, 60))
    stage.decorator.setText(0, "")
    assert not changed(stage.picture(), plain).any(), "an empty text clears the row"
    stage.decorator.setText(3, "HHHH", hyx.Vec4f(1, 0, 1, 1))
    lower = frame(near(stage.picture(), MAGENTA, 60))
    assert upper[2] < 20 and upper[0] == lower[0]
    assert abs((lower[2] - upper[2]) - 3 * 1.3 * 14) <= 3
    stage.decorator.clearText()
    assert not changed(stage.picture(), plain).any()


def test_text_is_white_unless_told_otherwise(stage):
    stage.decorator.setText(0, "HHHH")
    assert near(stage.picture()[:30], (1, 1, 1), 90).any()


def test_text_beyond_ascii_is_drawn(stage):
    stage.decorator.setText(0, "a")
    ascii_only = stage.picture()
    stage.decorator.setText(0, "å")
    ring = stage.picture()
    assert changed(ring, ascii_only).any()
    stage.decorator.setText(0, "α")
    assert changed(stage.picture(), ring).any()


def text_height(stage):
    stage.decorator.setText(0, "H")
    _, _, upper, lower = frame(near(stage.picture()[:120], (1, 1, 1), 190))
    return lower - upper + 1


def test_size_and_pixel_scale_enlarge_the_text(stage):
    for visual in stage.visuals.values():
        visual.setNodeMask(0)
    small = text_height(stage)
    assert stage.decorator.getFontSize() == 14
    stage.decorator.setFontSize(42)
    assert stage.decorator.getFontSize() == 42
    assert abs(text_height(stage) - 3 * small) <= 4
    stage.decorator.setFontSize(14)
    stage.decorator.setScreenPixelScale(3)
    assert abs(text_height(stage) - 3 * small) <= 4


def test_fonts_differ(stage):
    stage.decorator.setText(0, "Sphinx of black quartz")
    sans = stage.picture()
    assert stage.decorator.getFontName() == "DejaVuSans"
    stage.decorator.setFontName("DejaVuSerif")
    assert stage.decorator.getFontName() == "DejaVuSerif"
    assert changed(stage.picture(), sans).any()


@pytest.mark.parametrize(
    "call, value", [("setFontSize", 0.0), ("setFontSize", float("nan")), ("setScreenPixelScale", -1.0)]
)
def test_sizes_that_are_none_are_refused(decorator, call, value):
    with pytest.raises(RuntimeError, match="must be positive and finite"):
        getattr(decorator, call)(value)


@pytest.mark.parametrize("row", [-1, 1000])
def test_rows_out_of_range_are_refused(decorator, row):
    with pytest.raises(RuntimeError, match="a text row must be 0 to 999"):
        decorator.setText(row, "text")


def test_a_null_color_is_refused(decorator):
    with pytest.raises(TypeError, match="SceneDecorator.setText.. argument 3 .* not None"):
        decorator.setText(0, "text", None)


def test_the_overlay_follows_the_window(stage):
    stage.decorator.setText(0, "HHHH")
    before = frame(near(stage.picture()[:30], (1, 1, 1), 190))
    stage.decorator.updateWindowSize(2 * WIDTH, 2 * HEIGHT)
    after = frame(near(stage.picture()[:30], (1, 1, 1), 190))
    assert after[1] < 0.7 * before[1], "half as large in a window twice the size"
    stage.decorator.updateWindowSize(0, -5)
    assert frame(near(stage.picture()[:30], (1, 1, 1), 190)) == after, "a minimised window is no window"


def test_nodes_on_the_display_are_in_pixels(stage):
    plain = stage.picture()
    hud = stage.decorator.getHud()
    text = hyxOSG.Text("HHHH", hyx.Vec3(50, 60, 0), hyx.Vec4(1, 0, 1, 1))
    text.setAxisAlignment(hyxOSG.Text.XY_PLANE)
    text.setCharacterSize(30)
    hud.addChild(text)
    left, _, _, lower = frame(near(stage.picture(), MAGENTA, 40))
    assert 50 <= left <= 56 and abs(lower - (HEIGHT - 61)) <= 2
    stage.decorator.setText(0, "row")
    stage.decorator.resetHUD()
    assert not changed(stage.picture(), plain).any()


def test_cursor_is_drawn_where_it_is_told(stage):
    plain = stage.picture()
    stage.decorator.updateCursorPosition(100, 80)
    assert stage.decorator.getEnableRenderedCursor() is False
    assert not changed(stage.picture(), plain).any()
    stage.decorator.setEnableRenderedCursor(True)
    assert stage.decorator.getEnableRenderedCursor() is True
    left, right, upper, lower = frame(changed(stage.picture(), plain))
    assert abs(left - 98) <= 3 and abs(upper - (HEIGHT - 83)) <= 3
    assert right - left < 22 and lower - upper < 26
    stage.decorator.updateCursorPosition(200, 80)
    assert abs(frame(changed(stage.picture(), plain))[0] - 198) <= 3
