"""Bars of renderers: at each number the colour that the scene has there, also after the numbers have changed."""

import math

import hyx
import hyxCable
import hyxCollide
import hyxModel
import hyxOSG
import hyxSensor
import hyxTerrain
import numpy
import osg
import pytest
from off_screen import OffScreen

SIZE = 240
PLACE, BAR = (200, 20), (12, 200)
IDENTITY = hyx.AffineMatrix4x4()


@pytest.fixture
def stage():
    made = OffScreen(SIZE, SIZE)
    made.kept = []
    yield made
    made.app.close()


def bar_of(stage, renderer):
    return hyxOSG.ColorBar.of(stage.app, renderer, place=PLACE, size=BAR)


def picture(stage):
    return stage.app.render().astype(int)


def shown_in_bar(drawn, scale, number):
    """The colour beside a number; the bar is read in the picture, its ends from its scale."""
    share = (number - scale.low) / (scale.high - scale.low)
    row = SIZE - 1 - math.floor(PLACE[1] + min(max(share, 0), 1) * BAR[1])
    return drawn[min(max(row, SIZE - PLACE[1] - BAR[1] + 1), SIZE - PLACE[1] - 2), PLACE[0] + BAR[0] // 2]


def middle(drawn):
    return drawn[SIZE // 2, SIZE // 2]


def unlit(node):
    node.getOrCreateStateSet().setMode(0x0B50, osg.StateAttribute.OFF | osg.StateAttribute.PROTECTED)


def pressed(renderer, *pressures):
    """A large triangle for each pressure, the last on top."""
    renderer.clear()
    for height, pressure in enumerate(pressures):
        data = hyxModel.TriangleData()
        for corner, (x, y) in enumerate([(-3, -2), (3, -2), (0, 4)]):
            data.setVertex(corner, hyx.Vec3(x, y, 0.1 * height))
            data.setPressure(corner, pressure)
        renderer.addTriangle(data, IDENTITY)
    renderer.done()


@pytest.mark.parametrize("limit", [0, 900])
def test_pressure(stage, limit):
    stage.look_from(hyx.Vec3(0, -0.01, 5))
    field = hyxOSG.PressureFieldRenderer(stage.root, limit)
    pressed(field, 600, 150)
    bar = bar_of(stage, field)
    assert (bar.scale.low, bar.scale.high) == (0, limit or 600)
    drawn = picture(stage)
    assert abs(middle(drawn) - shown_in_bar(drawn, bar.scale, 150)).max() < 6
    pressed(field, 400, 300)
    drawn = picture(stage)
    assert bar.scale.high == (limit or 400), "the bar follows the round"
    assert abs(middle(drawn) - shown_in_bar(drawn, bar.scale, 300)).max() < 6


@pytest.mark.parametrize("quantity", ["height", "compaction"])
def test_terrain(stage, quantity):
    terrain = hyxTerrain.Terrain(24, 24, 0.25, 1.0)
    terrain.setPosition(hyx.Vec3(-3, -3, 2))
    for x in range(24):
        for y in range(24):
            terrain.setHeight(x, y, 0.05 * x)
        terrain.compact(x, 12, 3e5)
        terrain.compact(x, 13, 3e5)
    shown = hyxOSG.TerrainVoxelRenderer(terrain, stage.root)
    shown.setRenderVoxelBoundingBox(False)
    if quantity == "height":
        shown.setRenderHeights(True)
    else:
        shown.setRenderCompaction(True, hyx.RangeReal(0.9, 1.4))
    unlit(shown.getNode())
    stage.look_from(hyx.Vec3(0.1, 0.1, 6), hyx.Vec3(0.1, 0.101, 0))
    bar = bar_of(stage, shown)
    drawn = picture(stage)
    if quantity == "height":
        heights = numpy.asarray(terrain.getHeights()) + 2
        assert (bar.scale.low, bar.scale.high) == pytest.approx((heights.min(), heights.max()), abs=1e-5)
        number = 2 + terrain.getHeight(12, 12) + 0.05 * 0.1 / 0.25
    else:
        assert (bar.scale.low, bar.scale.high) == (0.9, 1.4)
        number = terrain.getSurfaceCompaction(12, 12)
        assert 0.95 < number < 1.35
    assert abs(middle(drawn) - shown_in_bar(drawn, bar.scale, number)).max() < 9
    terrain.setHeight(0, 0, -0.7)
    picture(stage)
    assert bar.scale.low == pytest.approx(1.3 if quantity == "height" else 0.9), "the bar follows the picture"


def test_voxels_of_a_terrain(stage):
    terrain = hyxTerrain.Terrain(8, 8, 0.5, 1.0)
    shown = hyxOSG.TerrainVoxelRenderer(terrain, stage.root)
    with pytest.raises(ValueError, match="colours nothing by a number"):
        bar_of(stage, shown)
    shown.setRenderHeightField(False)
    shown.setRenderVoxelSolidMass(True)
    shown.setMaxVoxelValueColor(hyx.Vec4f(0.2, 0.9, 0.4, 1))
    unlit(shown.getNode())
    stage.look_from(hyx.Vec3(2, 1.99, 6), hyx.Vec3(2, 2, 0))
    bar = bar_of(stage, shown)
    drawn = picture(stage)
    top = shown_in_bar(drawn, bar.scale, bar.scale.high)
    assert bar.scale.high > 0 and abs(top - 255 * numpy.array((0.2, 0.9, 0.4))).max() < 5
    assert abs(middle(drawn) - top).max() < 5
    shown.setRenderVoxelSolidMass(False)
    assert abs(shown_in_bar(picture(stage), bar.scale, bar.scale.high)).max() == 0, "no number is a colour any more"


@pytest.mark.parametrize("maximum", [0, 2])
def test_cable_damage(stage, maximum):
    cable = hyxCable.Cable(0.01, 20)
    for corner in ((-1.5, 0, 0), (0, 0, -0.4), (1.5, 0, 0)):
        cable.add(hyx.Vec3(*corner))
    damage = hyxCable.CableDamage(cable)
    for i in range(240):
        cable.setEndPoint(False, hyx.Vec3(1.5 - 0.1 * (i // 60 % 2), 0, 0))
        cable.step(1 / 60)
        damage.update()
    shown = hyxOSG.CableDamageRenderer(damage, 0.3, stage.root)
    shown.renderAccumulated()
    amounts = [damage.getAccumulatedDamage(i) for i in range(cable.getNumSegments())]
    shown.setColorRangeMax(maximum * max(amounts))
    segment = min(range(len(amounts)), key=lambda i: abs(amounts[i] - 0.7 * max(amounts)))
    center = shown.getOsgNode(segment).getBound().center()
    stage.look_from(hyx.Vec3(center.x, -6, center.z), hyx.Vec3(center.x, 0, center.z))
    stage.decorator.setEnableSkyLight(False)
    bar = bar_of(stage, shown)
    assert bar.scale.high == pytest.approx(max(amounts) * (maximum or 1))
    drawn = picture(stage)
    lit, plain = middle(drawn), shown_in_bar(drawn, bar.scale, amounts[segment])
    assert lit.max() > 60 and abs(lit / lit.max() - plain / plain.max()).max() < 0.06


def lidar_of(stage, intensities):
    scanner = hyxSensor.Lidar(hyx.Frame())
    scanner.setHits([(0.5 * i, 0, 0) for i in range(len(intensities))], intensities)
    shown = hyxOSG.LidarOutputRenderer(scanner)
    shown.setHitPointScale(4)
    stage.root.addChild(shown)
    stage.kept.append(scanner)
    return shown


def legend(*points):
    made = hyxOSG.LidarOutputRendererLegend()
    for intensity, color in points:
        made.append(hyxOSG.LidarOutputRendererLegendPoint(intensity, osg.Vec4(*color, 1)))
    return made


COLORINGS = {
    "preset": (lambda r: r.setIntensityColorFunctionFromMode(hyxOSG.ScalarColorMap.PLASMA), 1, 1),
    "scaled preset": (lambda r: r.setIntensityColorFunctionFromMode(hyxOSG.ScalarColorMap.VIRIDIS), 0.02, 50),
    "two colours": (
        lambda r: r.setIntensityColorFunctionFromInterpolation(osg.Vec4(1, 0, 0, 1), osg.Vec4(0, 0, 1, 1), 40), 1, 40,
    ),
    "legend": (
        lambda r: r.setIntensityColorFunctionFromLegend(
            legend((0, (1, 1, 1)), (0.2, (1, 0, 0)), (0.2, (0, 1, 0)), (3, (0, 0, 1))), 10), 1, 30,
    ),
}  # fmt: skip


@pytest.mark.parametrize("coloring", COLORINGS)
def test_lidar(stage, coloring):
    color, factor, highest = COLORINGS[coloring]
    shares = [0.0425, 0.3, 0.55, 0.9]
    shown = lidar_of(stage, [share * highest for share in shares])
    color(shown)
    shown.setIntensityScale(factor)
    bar = bar_of(stage, shown)
    assert (bar.scale.low, bar.scale.high) == pytest.approx((0, highest))
    for i, share in enumerate(shares):
        stage.look_from(hyx.Vec3(0.5 * i, -3, 0), hyx.Vec3(0.5 * i, 0, 0))
        drawn = picture(stage)
        assert abs(middle(drawn) - shown_in_bar(drawn, bar.scale, share * highest)).max() < 9
    shown.setIntensityScale(2 * factor)
    picture(stage)
    assert bar.scale.high == pytest.approx(highest / 2)


def test_a_function_of_lidar_colours_is_asked_when_it_is_new_only(stage):
    asked = []

    class Stripes(hyxOSG.LidarOutputRendererColorFunctionCallback):
        def getLidarPointColor(self, intensity):
            asked.append(intensity)
            return osg.Vec4(math.floor(4 * intensity) / 4, 0, 1, 1)

    shown = lidar_of(stage, [0.6])
    shown.setIntensityColorFunction(Stripes())
    bar = bar_of(stage, shown)
    stage.look_from(hyx.Vec3(0, -3, 0), hyx.Vec3(0, 0, 0))
    drawn = picture(stage)
    assert abs(middle(drawn) - shown_in_bar(drawn, bar.scale, 0.6)).max() < 4
    count = len(asked)
    for _ in range(3):
        picture(stage)
    assert len(asked) == count


def test_bars_end_and_keep_what_is_assigned(stage):
    field = hyxOSG.PressureFieldRenderer(stage.root)
    before = picture(stage)
    bar = bar_of(stage, field)
    own = hyxOSG.ColorScale([(1, 0, 0), (0, 0, 1)], 0, 8)
    bar.scale = own
    pressed(field, 50)
    drawn = picture(stage)
    assert bar.scale is own and abs(shown_in_bar(drawn, own, 4) - (127, 0, 127)).max() < 5
    bar.remove()
    pressed(field)
    assert (picture(stage) == before).all()


def test_maps_have_bars(stage):
    colors = hyxOSG.ScalarColorMap(hyxOSG.ScalarColorMap.COPPER, -2, 5)
    bar = bar_of(stage, colors)
    drawn = picture(stage)
    assert (bar.scale.low, bar.scale.high) == (-2, 5)
    expected = 255 * numpy.array(tuple(colors.getColor(3)))[:3]
    assert abs(shown_in_bar(drawn, bar.scale, 3) - expected).max() < 5
    with pytest.raises(TypeError, match="a ScalarColorMap or of a renderer"):
        bar_of(stage, stage.app)
