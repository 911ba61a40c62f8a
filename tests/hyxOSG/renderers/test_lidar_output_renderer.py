"""Hit points of a lidar: where they are drawn, in which colours, how long, and what bad input does."""

import gc
import math

import _hyxOSG
import hyx
import hyxCollide
import hyxOSG
import hyxSensor
import osg
import pytest
from hyxOSG import LidarOutputRenderer, LidarOutputRendererColorFunctionCallback, LidarOutputRendererLegendPoint

RED, GREEN, BLUE, WHITE = (255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 255)


def vec4(rgb, alpha=1.0):
    return osg.Vec4(*(channel / 255 for channel in rgb), alpha)


def legend(*points):
    return [LidarOutputRendererLegendPoint(float(intensity), vec4(rgb)) for intensity, rgb in points]


@pytest.fixture
def lidar(stage):
    """A scanner two metres above a floor; near points come back brighter than far ones."""
    floor = hyxCollide.Geometry(hyxCollide.Box(20.0, 20.0, 0.5))
    floor.setLocalPosition(hyx.Vec3(0, 0, -2.5))
    stage.simulation.add(floor)
    scanner = hyxSensor.Lidar(hyx.Frame())
    scanner.setResolution(24, 180)
    scanner.setFieldOfView(2 * math.pi, 2.4)
    stage.simulation.add(scanner)
    stage.floor, stage.scanner = floor, scanner
    return scanner


@pytest.fixture
def renderer(stage, lidar):
    shown = LidarOutputRenderer(lidar)
    stage.root.addChild(shown)
    lidar.scan()
    return shown


def plain(renderer, rgb):
    renderer.setIntensityColorFunctionFromInterpolation(vec4(rgb), vec4(rgb), 1.0)


def test_points_appear_with_the_next_frame_after_a_scan(stage, lidar):
    renderer = LidarOutputRenderer(lidar)
    stage.root.addChild(renderer)
    plain(renderer, RED)
    assert stage.shoot().count(RED) == 0
    lidar.scan()
    assert stage.shoot().count(RED) > 300


def test_interpolation_runs_between_its_two_colors(stage, renderer):
    renderer.setIntensityColorFunctionFromInterpolation(vec4(RED), vec4(BLUE), 1.0)
    picture = stage.shoot()
    mixed = [pixel for pixel in picture.pixels if pixel != (0, 0, 0)]
    assert len({pixel for pixel in mixed}) > 10
    assert all(g == 0 and abs(r + b - 255) <= 2 for r, g, b in mixed)


def test_a_legend_with_a_sharp_edge_has_two_colors(stage, renderer):
    edge = legend((0, GREEN), (0.3, GREEN), (0.3, RED), (1, RED))
    renderer.setIntensityColorFunctionFromLegend(edge, 1.0)
    picture = stage.shoot()
    assert picture.count(GREEN) > 100 and picture.count(RED) > 30
    assert picture.count(GREEN) + picture.count(RED) + picture.count((0, 0, 0)) >= len(picture.pixels) - 20


def test_legend_intensities_are_fractions_of_the_largest(stage, renderer):
    edge = legend((0, GREEN), (0.3, GREEN), (0.3, RED), (1, RED))
    renderer.setIntensityColorFunctionFromLegend(edge, 1.0)
    bright = stage.shoot().count(RED)
    renderer.setIntensityColorFunctionFromLegend(edge, 2.0)
    assert stage.shoot().count(RED) < bright
    renderer.setIntensityScale(2.0)
    assert stage.shoot().count(RED) == bright
    renderer.setIntensityScale(0.0)
    assert stage.shoot().count(RED) == 0


def test_unsorted_and_undefined_legend_points_are_put_in_order(stage, renderer):
    renderer.setIntensityColorFunctionFromLegend(legend((0, RED), (0.5, GREEN), (1, BLUE)), 1.0)
    ordered = stage.shoot()
    mess = legend((1, BLUE), (math.nan, WHITE), (0.5, GREEN), (math.inf, WHITE), (0, RED))
    renderer.setIntensityColorFunctionFromLegend(mess, 1.0)
    assert stage.shoot().differs(ordered) == 0


def test_an_empty_legend_is_white(stage, renderer):
    renderer.setIntensityColorFunctionFromLegend([], 1.0)
    picture = stage.shoot()
    assert picture.count(WHITE) > 300 and picture.count(WHITE) + picture.count((0, 0, 0)) == len(picture.pixels)


def test_modes_are_the_presets(stage, renderer):
    seen = []
    for mode in range(11):
        renderer.setIntensityColorFunctionFromMode(mode)
        seen.append(stage.shoot())
    assert all(a.differs(b) > 100 for i, a in enumerate(seen) for b in seen[:i])
    gray = seen[hyxOSG.ScalarColorMap_GRAYSCALE]
    assert all(r == g == b for r, g, b in gray.pixels)
    with pytest.raises(RuntimeError, match="use 0 to 10"):
        renderer.setIntensityColorFunctionFromMode(11)
    assert stage.shoot().differs(seen[-1]) == 0


class Counting(LidarOutputRendererColorFunctionCallback):
    def __init__(self, colors):
        super().__init__()
        self.colors = colors
        self.calls = 0

    def getLidarPointColor(self, intensity):
        self.calls += 1
        return vec4(self.colors[intensity > 0.3])


def test_an_overridden_callback_colors_the_points(stage, renderer):
    callback = Counting([BLUE, GREEN])
    renderer.setIntensityColorFunction(callback)
    assert callback.calls == 0
    picture = stage.shoot()
    assert picture.count(BLUE) > 100 and picture.count(GREEN) > 30


def test_a_callback_is_asked_once_for_each_point(stage, lidar, renderer):
    callback = Counting([BLUE, GREEN])
    renderer.setIntensityColorFunction(callback)
    points = len(lidar.getHits())
    for _ in range(3):
        stage.shoot()
    assert callback.calls == points
    lidar.scan()
    stage.shoot()
    assert callback.calls == points + len(lidar.getHits())
    callback.colors = [RED, RED]
    renderer.setIntensityColorFunction(callback)
    assert stage.shoot().count(RED) > 300


def test_near_legend_points_have_their_own_colours(stage, renderer):
    """A step within a few millionths of the largest intensity is where the legend has it."""
    edge = legend((0, GREEN), (0.3e-6, GREEN), (0.3e-6, RED), (1, RED))
    renderer.setIntensityScale(1e-6)
    renderer.setIntensityColorFunctionFromLegend(edge, 1.0)
    picture = stage.shoot()
    assert picture.count(GREEN) > 100 and picture.count(RED) > 30
    assert picture.count(GREEN) + picture.count(RED) + picture.count((0, 0, 0)) >= len(picture.pixels) - 20


def test_a_single_hit_is_drawn(stage):
    wall = hyxCollide.Geometry(hyxCollide.Box(1.0, 1.0, 1.0))
    stage.simulation.add(wall)
    scanner = hyxSensor.Lidar(hyx.Frame(hyx.AffineMatrix4x4(hyx.Vec3(0, 0, 3))))
    scanner.setResolution(64, 1)
    scanner.setFieldOfView(2 * math.pi, 3.0)
    stage.simulation.add(scanner)
    scanner.scan()
    hits = scanner.getHits()
    assert hits
    shown = LidarOutputRenderer(scanner, True)
    stage.root.addChild(shown)
    plain(shown, RED)
    stage.look_from(hyx.Vec3(0, -400, 3))  # the whole scan within a pixel
    assert stage.shoot().count(RED, 40) >= 4


def test_a_callback_that_is_not_overridden_draws_gray(stage, renderer):
    callback = LidarOutputRendererColorFunctionCallback()
    renderer.setIntensityColorFunction(callback)
    assert tuple(callback.getLidarPointColor(0.25)) == pytest.approx((0.25, 0.25, 0.25, 1))
    picture = stage.shoot()
    assert len(set(picture.pixels)) > 10 and all(abs(r - g) <= 1 and abs(g - b) <= 1 for r, g, b in picture.pixels)


def test_a_native_color_function_can_be_passed_on(stage, renderer):
    callback = Counting([RED, RED])
    renderer.setIntensityColorFunction(callback.getColorFunction())
    assert stage.shoot().count(RED) > 300


@pytest.mark.parametrize("result", [(1, 0, 0, 1), None, "red"])
def test_a_callback_with_another_result_is_refused(stage, renderer, result):
    class Wrong(LidarOutputRendererColorFunctionCallback):
        def getLidarPointColor(self, intensity):
            return result

    callback = Wrong()
    renderer.setIntensityColorFunction(callback)
    with pytest.raises(TypeError, match="^SWIG director type mismatch in output value of type 'osg::Vec4'$"):
        stage.shoot()


def test_what_a_callback_raises_reaches_the_caller(stage, renderer):
    class Broken(LidarOutputRendererColorFunctionCallback):
        def getLidarPointColor(self, intensity):
            raise KeyError("no such colour")

    callback = Broken()
    renderer.setIntensityColorFunction(callback)
    with pytest.raises(KeyError, match="no such colour"):
        stage.shoot()
    plain(renderer, RED)
    assert stage.shoot().count(RED) > 300


def test_a_callback_that_is_gone_is_not_called(stage, renderer):
    callback = Counting([RED, RED])
    renderer.setIntensityColorFunction(callback)
    _hyxOSG.delete_LidarOutputRendererColorFunctionCallback(callback)
    picture = stage.shoot()
    assert picture.count(RED) == 0 and len(set(picture.pixels)) > 10


def test_larger_points_cover_more(stage, renderer):
    plain(renderer, RED)
    small = stage.shoot().count(RED)
    renderer.setHitPointScale(2.5)
    assert renderer.getHitPointScale() == 2.5
    assert stage.shoot().count(RED) > 1.5 * small


def test_points_behind_a_wall_show_when_always_on_top(stage, renderer):
    plain(renderer, RED)
    wall = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(10.0, 0.1, 10.0)))
    wall.setPosition(hyx.Vec3(0, -4, 0))
    hyxOSG.createVisual(wall, stage.root)
    assert not renderer.isAlwaysRenderedOnTop()
    hidden = stage.shoot().count(RED)
    renderer.setHitPointsAlwaysOnTop(True)
    assert renderer.isAlwaysRenderedOnTop()
    assert hidden == 0 and stage.shoot().count(RED) > 300
    renderer.setHitPointsAlwaysOnTop(False)
    assert stage.shoot().count(RED) == 0


def test_points_live_as_long_as_asked(stage, lidar, renderer):
    plain(renderer, RED)
    alone = stage.shoot().count(RED)
    renderer.setHitPointLifetime(0.5)
    stage.scanner.setEnable(False)
    stage.simulation.setTimeStep(0.1)
    lidar.getFrame().setLocalTranslate(hyx.Vec3(1.5, 0, 0))
    lidar.scan()
    both = stage.shoot().count(RED)
    assert both > 1.2 * alone
    stage.step(4)
    assert stage.shoot().count(RED) == both
    stage.step(3)
    assert stage.shoot().count(RED) == 0


def test_a_copy_shows_the_same_lidar_with_the_same_settings(stage, lidar, renderer):
    plain(renderer, GREEN)
    renderer.setHitPointScale(2.0)
    renderer.setIntensityScale(3.0)
    renderer.setHitPointLifetime(4.0)
    original = stage.shoot()
    copy = LidarOutputRenderer(renderer)
    stage.root.removeChild(renderer)
    assert stage.shoot().count(GREEN) == 0
    stage.root.addChild(copy)
    assert (copy.getHitPointScale(), copy.getIntensityScale(), copy.getHitPointLifetime()) == (2, 3, 4)
    assert stage.shoot().differs(original) == 0


def test_a_renderer_keeps_its_lidar_and_lives_in_the_scene(stage, lidar, renderer):
    plain(renderer, RED)
    del renderer, lidar
    gc.collect()
    assert stage.shoot().count(RED) > 300


def test_no_lidar_shows_nothing(stage):
    renderer = LidarOutputRenderer(None, True)
    stage.root.addChild(renderer)
    assert renderer.isAlwaysRenderedOnTop() and len(set(stage.shoot().pixels)) == 1


@pytest.mark.parametrize(
    "name, values",
    [
        ("setHitPointScale", [0.0, -1.0, math.inf, math.nan]),
        ("setIntensityScale", [math.inf, math.nan]),
        ("setHitPointLifetime", [-1.0, math.nan]),
    ],
)
def test_impossible_settings_are_refused(lidar, name, values):
    renderer = LidarOutputRenderer(lidar)
    before = getattr(renderer, name.replace("set", "get"))()
    for value in values:
        with pytest.raises(RuntimeError):
            getattr(renderer, name)(value)
    assert getattr(renderer, name.replace("set", "get"))() == before


@pytest.mark.parametrize("largest", [0.0, -1.0, math.nan, math.inf])
def test_a_largest_intensity_has_to_be_positive(lidar, largest):
    renderer = LidarOutputRenderer(lidar)
    with pytest.raises(RuntimeError, match="largest intensity must be positive"):
        renderer.setIntensityColorFunctionFromLegend([], largest)
    with pytest.raises(RuntimeError, match="largest intensity must be positive"):
        renderer.setIntensityColorFunctionFromInterpolation(vec4(RED), vec4(RED), largest)


def test_both_native_operations_are_listed(lidar):
    with pytest.raises(TypeError) as refusal:
        LidarOutputRenderer(lidar).setIntensityColorFunction(3)
    assert str(refusal.value) == (
        "LidarOutputRenderer.setIntensityColorFunction() has no form for (int)\n"
        "  Possible C/C++ prototypes are:\n"
        "    hyxOSG::LidarOutputRenderer::setIntensityColorFunction("
        "hyxOSG::LidarOutputRenderer::IntensityState::ColorFunc)\n"
        "    hyxOSG::LidarOutputRenderer::setIntensityColorFunctionReplacement("
        "hyxOSG::LidarOutputRendererColorFunctionCallback *)\n"
    )


def test_a_legend_of_something_else_is_refused(lidar):
    with pytest.raises(TypeError):
        LidarOutputRenderer(lidar).setIntensityColorFunctionFromLegend([1, 2], 1.0)
    with pytest.raises(TypeError, match="not None"):
        LidarOutputRenderer(lidar).setIntensityColorFunctionFromLegend(None, 1.0)


def test_legend_points_hand_out_their_own_color():
    point = LidarOutputRendererLegendPoint(0.5, osg.Vec4(1, 0, 0, 1))
    color = point.color
    color.y = 0.75
    assert point.color.y == 0.75 and not color.this.own()
    point.color = osg.Vec4(0, 0, 1, 1)
    assert color.z == 1
    del point
    gc.collect()
    assert color.z == 1
