"""Text nodes: every option is seen in the picture."""

import gc
import math
import warnings

import _hyxOSG
import hyx
import hyxOSG
import pytest
from decorated_stage import changed, frame, near, stage
from hyxOSG import Text

MAGENTA = (1, 0, 1)


@pytest.fixture
def show(stage):
    """Draws one text, magenta, before a black background, and returns where it is."""
    for visual in stage.visuals.values():
        visual.setNodeMask(0)
    stage.app.setCameraHome(hyx.Vec3(0, -8, 0), hyx.Vec3(0, 0, 0))
    shown = []

    def draw(text="HxH", change=lambda text: None):
        for old in shown:
            stage.decorator.removeChild(old)
        shown[:] = [Text(text, hyx.Vec3(), hyx.Vec4(1, 0, 1, 1))]
        change(shown[0])
        stage.decorator.addChild(shown[0])
        return stage.picture()

    yield draw
    for old in shown:
        stage.decorator.removeChild(old)
    stage.app.setCameraHome(hyx.Vec3(0, -7, 5), hyx.Vec3(0, 0, 0.4))


def test_constructor_takes_text_position_and_color(stage, show):
    show("")
    pictures = []
    for arguments in ((), ("H",), ("H", hyx.Vec3(1, 0, 0)), ("H", hyx.Vec3(1, 0, 0), hyx.Vec4(0, 1, 0, 1))):
        text = Text(*arguments)
        stage.decorator.addChild(text)
        pictures.append(stage.picture())
        stage.decorator.removeChild(text)
    assert not pictures[0].any()
    assert near(pictures[1], (1, 1, 1)).any()
    assert frame(near(pictures[2], (1, 1, 1)))[0] > frame(near(pictures[1], (1, 1, 1)))[0] + 20
    assert near(pictures[3], (0, 1, 0)).any() and not near(pictures[3], (1, 1, 1)).any()


def test_constructor_color_is_double_and_the_setter_single():
    with pytest.raises(TypeError, match="hyxOSG::Text::Text"):
        Text("H", hyx.Vec3(), hyx.Vec4f(1, 0, 1, 1))
    with pytest.raises(TypeError, match="Text.setColor.. argument 1 '"):
        Text("H").setColor(hyx.Vec4(1, 0, 1, 1))


def test_color_position_and_size(show):
    plain = frame(near(show(), MAGENTA))
    assert near(show(change=lambda t: t.setColor(hyx.Vec4f(0, 1, 0, 1))), (0, 1, 0)).any()
    moved = frame(near(show(change=lambda t: t.setPosition(hyx.Vec3(1, 0, 1))), MAGENTA))
    assert moved[0] > plain[0] + 20 and moved[2] < plain[2] - 20
    large = frame(near(show(change=lambda t: t.setCharacterSize(2)), MAGENTA))
    assert math.isclose(large[1] - large[0], 2 * (plain[1] - plain[0]), rel_tol=0.06)


def test_text_changes_and_has_lines(show):
    one = frame(near(show("H"), MAGENTA))
    assert not near(show("H", lambda t: t.setText("")), MAGENTA).any()
    two = frame(near(show("H", lambda t: t.setText("H\nH")), MAGENTA))
    assert two[3] > one[3] + 20


def test_fonts_differ(show):
    sans = show("Hag")
    assert changed(show("Hag", lambda t: t.setFont("DejaVuSerif")), sans).any()
    assert not changed(show("Hag", lambda t: t.setFont("no/such/font.ttf")), sans).any()


def test_alignments_put_the_text_around_its_position(show):
    """Left, centre and right lie across; top, centre, bottom and base line lie along."""
    middle = {}
    for name in (
        "LEFT_TOP",
        "LEFT_CENTER",
        "LEFT_BOTTOM",
        "CENTER_TOP",
        "CENTER_CENTER",
        "CENTER_BOTTOM",
        "RIGHT_TOP",
        "RIGHT_CENTER",
        "RIGHT_BOTTOM",
        "LEFT_BASE_LINE",
        "CENTER_BASE_LINE",
        "RIGHT_BASE_LINE",
        "LEFT_BOTTOM_BASE_LINE",
        "CENTER_BOTTOM_BASE_LINE",
        "RIGHT_BOTTOM_BASE_LINE",
    ):
        left, right, upper, lower = frame(
            near(show("HgH\nHgH", lambda t: t.setAlignment(getattr(Text, name))), MAGENTA)
        )
        middle[name] = ((left + right) / 2, (upper + lower) / 2)
    for end in ("TOP", "CENTER", "BOTTOM", "BASE_LINE", "BOTTOM_BASE_LINE"):
        x = [middle[f"{side}_{end}"][0] for side in ("RIGHT", "CENTER", "LEFT")]
        assert x[0] + 10 < x[1] < x[2] - 10
    for side in ("LEFT", "CENTER", "RIGHT"):
        y = [middle[f"{side}_{end}"][1] for end in ("BOTTOM", "BOTTOM_BASE_LINE", "CENTER", "BASE_LINE", "TOP")]
        assert y == sorted(y) and len(set(y)) == 5, y


def test_base_line_is_the_left_one():
    assert Text.BASE_LINE == Text.LEFT_BASE_LINE == 9


def test_planes_turn_the_text(show):
    def width_and_area(alignment):
        mask = near(show("HHHH", lambda t: t.setAxisAlignment(alignment)), MAGENTA, 60)
        return mask.sum()

    facing = {Text.XZ_PLANE, Text.SCREEN}
    away = {Text.REVERSED_XZ_PLANE}
    for alignment in facing | away:
        assert width_and_area(alignment) > 300, alignment
    for alignment in (Text.XY_PLANE, Text.YZ_PLANE, Text.REVERSED_XY_PLANE, Text.REVERSED_YZ_PLANE):
        assert width_and_area(alignment) < 100, alignment
    front = show("HHHx", lambda t: t.setAxisAlignment(Text.XZ_PLANE))
    back = show("HHHx", lambda t: t.setAxisAlignment(Text.REVERSED_XZ_PLANE))
    assert frame(near(front, MAGENTA))[0] >= frame(near(back, MAGENTA))[1] - 4, "runs the other way"


def test_each_backdrop_looks_different(stage, show):
    stage.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1))
    pictures = [show(change=lambda t: t.setBackdropType(kind)) for kind in range(10)]
    plain = pictures[Text.NONE]
    for kind in range(9):
        assert (pictures[kind].sum(axis=2) < 60).sum() > 20, f"backdrop {kind} is black"
        for other in range(kind):
            assert changed(pictures[kind], pictures[other]).any(), (kind, other)
    assert not (plain.sum(axis=2) < 60).any()


def test_draw_modes(stage, show):
    stage.decorator.setBackgroundColor(hyx.Vec3(0.5, 0.5, 0.5))

    def drawn(mode):
        """How many pixels have the text's colour, are white, and are darker than the background."""
        picture = show(change=lambda t: t.setDrawMode(mode))
        return near(picture, MAGENTA).sum(), near(picture, (1, 1, 1)).sum(), (picture.sum(axis=2) < 300).sum()

    text, white, dark = drawn(Text.TEXT)
    assert text > 100 and white == 0 and dark == 0
    text, frame_alone, dark = drawn(Text.BOUNDINGBOX)
    assert text == 0 and frame_alone > 60 and dark == 0
    text, white, dark = drawn(Text.TEXT | Text.BOUNDINGBOX)
    assert text > 60 and white > 60
    text, white, dark = drawn(Text.FILLEDBOUNDINGBOX)
    assert text == 0 and white == 0 and dark > 400
    text, white, dark = drawn(Text.ALIGNMENT)
    assert text == 0 and 5 < white < frame_alone
    assert drawn(0) == (0, 0, 0)


@pytest.mark.parametrize(
    "call, value, message",
    [
        ("setAlignment", 15, "no alignment has the value 15"),
        ("setAxisAlignment", 8, "no axis alignment has the value 8"),
        ("setBackdropType", 10, "no backdrop has the value 10"),
        ("setDrawMode", 16, "no sum of draw modes has the value 16"),
        ("setCharacterSize", 0.0, "the character size must be positive"),
        ("setPosition", hyx.Vec3(math.nan, 0, 0), "position must be finite"),
    ],
)
def test_values_out_of_range_are_refused(call, value, message):
    with pytest.raises(RuntimeError, match=message):
        getattr(Text("H"), call)(value)


def test_no_match_lists_the_prototypes():
    with pytest.raises(TypeError) as refused:
        _hyxOSG.new_Text(1)
    assert str(refused.value) == (
        "Wrong number or type of arguments for overloaded function 'new_Text'.\n"
        "  Possible C/C++ prototypes are:\n"
        "    hyxOSG::Text::Text()\n"
        "    hyxOSG::Text::Text(hyx::String const &,hyx::Vec3 const &,hyx::Vec4 const &)\n"
        "    hyxOSG::Text::Text(hyx::String const &,hyx::Vec3 const &)\n"
        "    hyxOSG::Text::Text(hyx::String const &)\n"
    )


def test_a_text_in_the_scene_outlives_its_proxy(stage, show):
    show("")
    text = Text("H", hyx.Vec3(), hyx.Vec4(1, 0, 1, 1))
    group = hyxOSG.Transform()
    group.addChild(text)
    assert text.referenceCount() == 2
    del text
    gc.collect()
    stage.decorator.addChild(group)
    assert near(stage.picture(), MAGENTA).any()
    assert group.getChild(0).referenceCount() == 2, "the group's and that of the proxy just made"
    stage.decorator.removeChild(group)


@pytest.mark.parametrize("content", [None, b"no letters"])
def test_a_font_that_is_none_is_told_of(tmp_path, content):
    file = tmp_path / "letters.ttf"
    if content:
        file.write_bytes(content)
    with pytest.warns(RuntimeWarning, match="cannot be read" if content else "there is no font"):
        hyxOSG.Text().setFont(str(file))


@pytest.mark.parametrize(
    "name", ["DejaVuSans", "DejaVu Sans", "dejavu sans:bold", "DejaVuSerif.ttf", "DejaVu Sans Mono", "sans-serif"]
)
def test_fonts_that_are_installed_are_found_in_silence(name):
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        hyxOSG.Text().setFont(name)


@pytest.mark.parametrize("name", ["No Such Family", "NoSuchFamily:bold"])
def test_a_font_that_stands_for_another_is_told_of(name):
    with pytest.warns(RuntimeWarning, match=f'there is no font "{name}"; ".*" stands for it'):
        hyxOSG.Text().setFont(name)
    with pytest.warns(RuntimeWarning, match="there is no font"):
        hyxOSG.Text().setFont("NoSuchFile.ttf")


@pytest.mark.parametrize(
    "text, from_left",
    [
        ("שלום", "םולש"),
        ("ab שלום cd", "ab םולש cd"),
        ("שלום 12 (a)", "(a) 12 םולש"),
        ("one\nשלום", "one\nםולש"),
        ("سلام", "\ufee1\ufefc\ufeb3"),  # of the three drawn forms the middle one is two letters
    ],
)
def test_right_to_left_lines_are_turned_and_joined(show, text, from_left):
    """As if their letters were given from left to right, which the mark for that order makes stay."""
    given = show("\n".join("\u202d" + line for line in from_left.split("\n")))
    assert given.any() and not changed(show(text), given).any()
    backwards = "\n".join("\u202d" + line for line in text.split("\n"))
    assert changed(show(backwards), given).any()
