"""The background and what is switched on and off with the whole decoration."""

import _hyxOSG
import hyx
import hyxOSG
import numpy
import pytest
from decorated_stage import HEIGHT, WIDTH, changed, decorator, near, stage, write_image

CORNERS = [(2, 2), (2, WIDTH - 3), (HEIGHT - 3, 2), (HEIGHT - 3, WIDTH - 3)]
RED, GREEN, BLUE, YELLOW = (1, 0, 0), (0, 1, 0), (0, 0, 1), (1, 1, 0)


def double(color):
    return hyx.Vec3(*color)


def single(color):
    return hyx.Vec4f(*color, 1)


@pytest.fixture
def empty(stage):
    """The stage without anything before the background."""
    for visual in stage.visuals.values():
        visual.setNodeMask(0)
    return stage


@pytest.mark.parametrize("kind", [double, single])
@pytest.mark.parametrize(
    "colors, seen",
    [
        ([RED], [RED] * 4),
        ([RED, BLUE], [RED, RED, BLUE, BLUE]),
        ([RED, GREEN, BLUE, YELLOW], [RED, GREEN, BLUE, YELLOW]),
    ],
)
def test_background_shows_its_colors_in_the_corners(empty, kind, colors, seen):
    empty.decorator.setBackgroundColor(*map(kind, colors))
    picture = empty.picture()
    for corner, color in zip(CORNERS, seen):
        assert numpy.abs(picture[corner] - numpy.array(color) * 255).max() < 12, (corner, picture[corner])


@pytest.mark.parametrize("color", [(0.1, 0.503, 0.9), (1.4, -0.2, 0.777), (0.0, 1 / 3, 1.0)])
def test_one_color_is_that_of_equal_corners(empty, color):
    """One colour is cleared to, different ones are drawn."""
    nearly = tuple(numpy.nextafter(numpy.float32(part), numpy.float32(2)) for part in color)
    empty.decorator.setBackgroundColor(*map(single, [color, color, color, map(float, nearly)]))
    drawn = empty.picture()
    empty.decorator.setBackgroundColor(single(color))
    assert not changed(empty.picture(), drawn).any()
    assert numpy.abs(drawn - 255 * numpy.clip(color, 0, 1)).max() <= 1


def test_two_colors_run_into_each_other(empty):
    empty.decorator.setBackgroundColor(double((1, 1, 1)), double((0, 0, 0)))
    column = empty.picture()[:, WIDTH // 2, 0]
    assert (numpy.diff(column) <= 0).all() and abs(column[HEIGHT // 2] - 127) < 6


def test_mixed_color_types_are_refused(decorator):
    with pytest.raises(TypeError, match="SceneDecorator.setBackgroundColor.. has no form for .Vec4f, Vec3."):
        decorator.setBackgroundColor(single(RED), double(RED))
    with pytest.raises(TypeError):
        decorator.setBackgroundColor(double(RED), double(RED), double(RED))


def test_background_is_behind_the_scene(stage):
    stage.decorator.setBackgroundColor(double(GREEN))
    picture = stage.picture()
    assert near(picture, GREEN)[:10].all()
    assert not near(picture, GREEN)[HEIGHT // 2, WIDTH // 2]


def test_disabled_decoration_leaves_only_the_scene(stage):
    decorator = stage.decorator
    decorator.setBackgroundColor(double(GREEN))
    decorator.setText(0, "text")
    decorator.setEnableShadows(True)
    decorated = stage.picture()
    assert decorator.getEnable() is True and decorator.isEnabled() is True
    decorator.setEnable(False)
    assert decorator.getEnable() is False and decorator.isEnabled() is False
    plain = stage.picture()
    assert not near(plain, GREEN).any()
    assert plain[HEIGHT // 2, WIDTH // 2].max() > 30, "the scene is still drawn, lit"
    decorator.setEnable(True)
    assert not changed(stage.picture(), decorated).any()


def test_base_texture_colors_what_has_none(stage, tmp_path):
    plain = stage.picture()
    assert stage.decorator.setBaseTexture(write_image(tmp_path / "blue.png", (0.2, 0.2, 1))) is True
    textured = stage.picture()
    middle = textured[HEIGHT // 2 + 60, WIDTH // 2]
    assert middle[2] > 2 * middle[0]
    assert stage.decorator.setBaseTexture("no/such/file.png") is False
    assert not changed(stage.picture(), textured).any(), "a file that is not there changes nothing"
    assert stage.decorator.setBaseTexture("") is True
    assert not changed(stage.picture(), plain).any()


def test_default_material_is_one_for_all():
    material = hyxOSG.SceneDecorator.getDefaultDecoratorMaterial()
    assert material is not None
    assert _hyxOSG.SceneDecorator_getDefaultDecoratorMaterial().this == material.this


@pytest.mark.parametrize("sizes", [(0, 10), (10, -1), (10, 10, 15), (10, 10, 8193)])
def test_a_decorator_of_impossible_size_is_refused(sizes):
    with pytest.raises(RuntimeError, match="must be"):
        hyxOSG.SceneDecorator(*sizes)


def test_a_decorator_can_be_made_by_hand():
    assert hyxOSG.SceneDecorator(64, 48).getEnable() is True
    assert hyxOSG.SceneDecorator(64, 48, 256).getShadowMethod() == hyxOSG.SceneDecorator.SOFT_SHADOWMAP


def test_state_of_the_decorator_reaches_the_scene(stage):
    state = stage.decorator.getDecoratorStateSet()
    assert state is not None
    plain = stage.picture()
    state.setMode(0x0B50, 0)  # GL_LIGHTING
    assert changed(stage.picture(), plain).any()
    state.setMode(0x0B50, 1)
    assert not changed(stage.picture(), plain).any()
