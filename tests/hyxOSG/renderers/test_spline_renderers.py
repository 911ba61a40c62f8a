"""Tubes along splines, made by the graphics processor or as triangles, and the elements they consist of."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxUtil
import pytest
from hyxOSG import SceneDecorator, SplineRenderer, SplineRendererOld, SplineShader
from stage import WIDTH, Stage

KINDS = [SplineRenderer, SplineRendererOld]


@pytest.fixture
def stage(tmp_path):
    return Stage(tmp_path, eye=(0, -8, 0), center=(0, 0, 0))


@pytest.fixture
def spline():
    made = hyxUtil.CubicSpline()
    for x, z in ((-2, 0), (-1, 1), (0, 0), (1, -1), (2, 0)):
        made.add(hyx.Vec3(x, 0, z))
    return made


def covered(picture):
    return len(picture.pixels) - picture.count((0, 0, 0), 0)


def lit(*color):
    return color != (0, 0, 0)


@pytest.mark.parametrize("kind", KINDS)
def test_the_tube_runs_through_the_points(stage, spline, kind):
    renderer = kind(spline, stage.root)
    renderer.setRadius(0.1)
    picture = stage.shoot()
    columns, rows = picture.columns_of(lit), picture.rows_of(lit)
    assert covered(picture) > 300
    assert min(columns) + max(columns) == pytest.approx(199, abs=8)
    assert max(rows) - min(rows) > 25
    assert renderer.getRadius() == 0.1


def test_both_kinds_draw_the_same_tube(stage, spline):
    pictures = []
    for kind in KINDS:
        renderer = kind(spline, stage.root)
        renderer.setRadius(0.15)
        pictures.append(stage.shoot())
        renderer.removeNotification()
    first, second = pictures
    assert covered(first) == pytest.approx(covered(second), rel=0.05)
    assert sum(lit(*a) != lit(*b) for a, b in zip(first.pixels, second.pixels)) < 0.1 * covered(first)


@pytest.mark.parametrize(
    "method", [SceneDecorator.SOFT_SHADOWMAP, SceneDecorator.PARALLELLSPLIT_SHADOWMAP, SceneDecorator.SHADOWTEXTURE]
)
@pytest.mark.parametrize("kind", KINDS)
def test_shadows_fall_on_the_tube(stage, spline, kind, method):
    renderer = kind(spline, stage.root)
    renderer.setRadius(0.2)
    for node in [stage.root.getChild(i) for i in range(stage.root.getNumChildren())]:
        node.setNodeMask(0xFFFFFFFF & ~64)  # the tube receives, and does not cast
    roof = hyxCollide.Geometry(hyxCollide.Box(0.8, 2, 0.1))
    roof.setLocalTransform(hyx.AffineMatrix4x4(hyx.Vec3(1.6, 0, 3)))
    hyxOSG.createVisual(roof, stage.root)
    stage.decorator.getLightSource(1).setPosition(hyx.Vec4(0, -0.5, 1, 0))
    stage.look_from(hyx.Vec3(0, -8, 2))
    stage.shoot()

    def halves():
        """The brightness of the tube's left and right half, below the roof's picture."""
        pixels, width = stage.shoot().pixels, WIDTH
        below = [(i % width, sum(pixel)) for i, pixel in enumerate(pixels) if i // width > 60]
        return sum(light for x, light in below if x < width / 2), sum(light for x, light in below if x >= width / 2)

    plain = halves()
    stage.decorator.setShadowMethod(method)
    stage.decorator.setEnableShadows(True)
    left, right = halves()
    assert left == pytest.approx(plain[0], rel=0.1) and right < 0.85 * plain[1], (plain, left, right)


@pytest.mark.parametrize("kind", KINDS)
def test_radius_segments_and_color_are_seen(stage, spline, kind):
    renderer = kind(spline, stage.root)
    thin = covered(stage.shoot())
    renderer.setRadius(0.2)
    smooth = stage.shoot()
    assert covered(smooth) > 3 * thin
    renderer.setNumSegmentsPerUnitLength(0.5)
    assert renderer.getNumSegmentsPerUnitLength() == 0.5
    assert smooth.differs(stage.shoot()) > 100
    renderer.setColor(hyx.Vec4f(0, 0, 1, 1))
    picture = stage.shoot()
    assert sum(b > 40 and r < 20 and g < 20 for r, g, b in picture.pixels) > 0.7 * covered(picture)
    assert renderer.getColor() == hyx.Vec4f(0, 0, 1, 1)


@pytest.mark.parametrize("kind", KINDS)
def test_values_redden_the_tube_where_they_are_high(stage, spline, kind):
    renderer = kind(spline, stage.root)
    renderer.setRadius(0.15)
    renderer.setColor(hyx.Vec4f(0, 0, 1, 1))
    renderer.update(hyx.RealVector([0, 0, 0, 1, 1]))
    picture = stage.shoot()
    red = picture.columns_of(lambda r, g, b: r > 40 and b < r / 3)
    blue = picture.columns_of(lambda r, g, b: b > 40 and r < b / 3)
    assert red and blue and sum(red) / len(red) > 110 and sum(blue) / len(blue) < 90
    with pytest.raises(RuntimeError, match="one value for each"):
        renderer.update(hyx.RealVector([1, 2]))
    renderer.update([0, 0, 0, 1, 1])


@pytest.mark.parametrize("kind", KINDS)
def test_changes_of_the_spline_show_by_themselves(stage, spline, kind):
    renderer = kind(spline, stage.root)
    renderer.setRadius(0.1)
    before = stage.shoot()
    spline.setPoint(2, hyx.Vec3(0, 0, 1.5))
    assert before.differs(stage.shoot()) > 100
    other = hyxUtil.Spline()
    other.add(hyx.Vec3(-1, 0, 0))
    other.add(hyx.Vec3(1, 0, 0))
    renderer.setSplineModel(other)
    rows = stage.shoot().rows_of(lit)
    assert max(rows) - min(rows) < 8
    assert renderer.getSplineModel().getNumPoints() == 2
    renderer.setSplineModel(None)
    assert covered(stage.shoot()) == 0 and renderer.getSplineModel() is None


@pytest.mark.parametrize("kind", KINDS)
def test_a_removed_tube_is_gone_for_good(stage, spline, kind):
    renderer = kind(spline, stage.root)
    assert covered(stage.shoot()) > 0
    renderer.removeNotification()
    assert covered(stage.shoot()) == 0
    renderer.update()
    spline.add(hyx.Vec3(3, 0, 0))
    assert covered(stage.shoot()) == 0


@pytest.mark.parametrize("kind", KINDS)
@pytest.mark.parametrize("points", [[], [(0, 0, 0)], [(1, 1, 1), (1, 1, 1)]])
def test_degenerate_splines_draw_nothing(stage, kind, points):
    spline = hyxUtil.CubicSpline()
    for point in points:
        spline.add(hyx.Vec3(*point))
    stage.renderer = kind(spline, stage.root)
    assert covered(stage.shoot()) == 0


@pytest.mark.parametrize("kind", KINDS)
def test_bad_settings_are_refused(stage, spline, kind):
    renderer = kind(spline, stage.root)
    for value in (0.0, -1.0, math.nan, math.inf):
        with pytest.raises(RuntimeError, match="radius"):
            renderer.setRadius(value)
        with pytest.raises(RuntimeError, match="segments"):
            renderer.setNumSegmentsPerUnitLength(value)
    with pytest.raises(RuntimeError, match="needs a group"):
        kind(spline, None)


def shader_on(stage, capacity=None):
    shader = SplineShader() if capacity is None else SplineShader(capacity)
    stage.root.addChild(shader)
    return shader


def test_elements_show_after_update_and_go_after_a_reset(stage):
    shader = shader_on(stage, 1)
    shader.add(hyx.Vec3(-1, 0, 0), hyx.Vec3(1, 0, 0), 0.2)
    shader.add(hyx.Vec3(0, 0, 1), hyx.Quat(), 0.2, 0.5)  # more than the capacity
    assert covered(stage.shoot()) == 0
    shader.update()
    both = covered(stage.shoot())
    shader.setNumActiveElements(1)
    one = covered(stage.shoot())
    assert 0 < one < both
    shader.setNumActiveElements(100)
    assert covered(stage.shoot()) == both
    shader.resetCounters()
    assert covered(stage.shoot()) == both
    shader.update()
    assert covered(stage.shoot()) == 0


def test_a_rotated_element_lies_along_its_z_axis(stage):
    shader = shader_on(stage)
    shader.add(hyx.Vec3(0, 0, 0), hyx.Quat(math.pi / 2, hyx.Vec3(0, 1, 0)), 0.1, 2.0)
    shader.update()
    picture = stage.shoot()
    assert min(picture.columns_of(lit)) > 90 and max(picture.columns_of(lit)) > 140


def test_stations_are_joined_until_a_length_of_zero(stage):
    shader = shader_on(stage)
    along_x = hyx.Quat(math.pi / 2, hyx.Vec3(0, 1, 0))
    for x, length in ((-2, 0), (-1, 1), (1, 0), (2, 1)):
        shader.add2(hyx.Vec3(x, 0, 0), along_x, 0.15, length, 0)
    shader.update()
    columns = stage.shoot().columns_of(lit)
    assert min(columns) < 70 and max(columns) > 130
    assert not any(90 < column < 110 for column in columns)


def test_the_red_shift_can_be_switched_off(stage):
    shader = shader_on(stage)
    shader.add(hyx.Vec3(-1, 0, 0), hyx.Vec3(1, 0, 0), 0.2, hyx.Vec2(1, 1))
    shader.update()
    assert stage.shoot().reddish() > 200
    shader.setUseRedShiftScale(False)
    assert stage.shoot().reddish() == 0


def test_the_shader_hands_out_its_parts(stage):
    shader = shader_on(stage)
    for part in (
        "Program",
        "CircleResolutionUniform",
        "CylinderColorUniform",
        "CircleNormalUniform",
        "VertexArray",
        "QuatsInColorArray",
        "RadiusArray",
    ):
        assert getattr(shader, "get" + part)() is not None
    with pytest.raises(RuntimeError, match="radius"):
        shader.add(hyx.Vec3(), hyx.Vec3(1, 0, 0), 0.0)


@pytest.mark.parametrize("kind", KINDS)
def test_a_tube_of_half_opacity_shows_what_is_behind(stage, spline, kind):
    stage.decorator.setBackgroundColor(hyx.Vec3(0, 0, 1))
    renderer = kind(spline, stage.root)
    renderer.setRadius(0.3)
    renderer.setColor(hyx.Vec4f(1, 0, 0, 1))
    opaque = stage.shoot()
    renderer.setColor(hyx.Vec4f(1, 0, 0, 0.5))
    tube = [i for i, (r, g, b) in enumerate(opaque.pixels) if r > 80 and b < 30]
    seen = stage.shoot()
    assert len(tube) > 300 and sum(seen.pixels[i][2] > 50 for i in tube) > 0.9 * len(tube)
    renderer.setColor(hyx.Vec4f(1, 0, 0, 1))
    assert stage.shoot().differs(opaque) == 0
