"""Wires redden with their tension, cables show the damage of each segment."""

import hyx
import hyxCable
import hyxUtil
import hyxWire
import pytest
from hyxOSG import CableDamageRenderer, WireRenderer, WireRendererOld
from stage import Stage

STEP = 1 / 60


@pytest.fixture
def stage(tmp_path):
    return Stage(tmp_path, eye=(0, -8, 0), center=(0, 0, 0))


def covered(picture):
    return len(picture.pixels) - picture.count((0, 0, 0), 0)


def lit(*color):
    return color != (0, 0, 0)


def red(r, g, b):
    return r > 50 and g < 0.5 * r and b < 0.5 * r


def paleness(picture, first, last):
    """How much green there is beside the red between two columns; 0 is all red."""
    pixels = [picture.pixels[i] for i in range(len(picture.pixels)) if first <= i % picture.size[0] < last]
    shares = [g / r for r, g, b in pixels if r > 30]
    return sum(shares) / len(shares)


def hanging(sag=1.5, steps=200):
    wire = hyxWire.Wire(0.08, 10)
    for corner in ((-2, 0, 1), (0, 0, 1 - sag), (2, 0, 1)):
        wire.add(hyx.Vec3(*corner))
    for _ in range(steps):
        wire.step(STEP)
    return wire


def test_a_wire_is_reddest_where_it_is_tightest(stage):
    wire = hanging()
    renderer = WireRenderer(wire, stage.root)
    renderer.setReferenceMaxTension(wire.getMaximumTension())
    picture = stage.shoot()
    assert covered(picture) > 300
    left, right = min(picture.columns_of(lit)), max(picture.columns_of(lit))
    ends = paleness(picture, left, left + 8), paleness(picture, right - 8, right)
    assert max(ends) < 0.5 * paleness(picture, 90, 110)  # the lowest part is the slackest


def test_the_reference_tension_scales_the_red(stage):
    wire = hanging()
    renderer = WireRenderer(wire, stage.root)
    assert renderer.getReferenceMaxTension() == 0
    renderer.setReferenceMaxTension(wire.getMaximumTension() / 3)
    assert renderer.getReferenceMaxTension() == pytest.approx(wire.getMaximumTension() / 3)
    tight = len(stage.shoot().columns_of(red))
    renderer.setReferenceMaxTension(1e9)
    assert len(stage.shoot().columns_of(red)) == 0 < tight
    with pytest.raises(RuntimeError, match="reference tension"):
        renderer.setReferenceMaxTension(-1.0)


@pytest.mark.parametrize("kind", [WireRenderer, WireRendererOld])
def test_the_picture_follows_the_wire(stage, kind):
    wire = hanging(steps=1)
    stage.renderer = kind(wire, stage.root)
    before = stage.shoot()
    assert covered(before) > 50
    wire.setWinchSpeed(0.5)
    for _ in range(120):
        wire.step(STEP)
    after = stage.shoot()
    assert max(after.rows_of(lit)) > max(before.rows_of(lit)) + 3


def test_the_wire_goes_through_a_given_spline(stage):
    spline = hyxUtil.CubicSpline()
    wire = hanging(steps=10)
    stage.renderer = WireRenderer(wire, stage.root, spline)
    assert spline.getNumPoints() == wire.getNumPoints()
    assert spline.getPoint(3) == wire.getPoint(3)


def test_a_wire_without_points_draws_nothing(stage):
    wire = hyxWire.Wire(0.05, 10)
    stage.renderers = [WireRenderer(wire, stage.root), WireRendererOld(wire, stage.root)]
    assert covered(stage.shoot()) == 0
    for kind in (WireRenderer, WireRendererOld):
        with pytest.raises(RuntimeError, match="needs a wire"):
            kind(None, stage.root)
        with pytest.raises(RuntimeError, match="needs a group"):
            kind(wire, None)


def bent():
    """A cable that was bent and straightened a little, again and again."""
    cable = hyxCable.Cable(0.01, 20)
    for corner in ((-1.5, 0, 0), (0, 0, -0.4), (1.5, 0, 0)):
        cable.add(hyx.Vec3(*corner))
    damage = hyxCable.CableDamage(cable)
    for i in range(240):
        cable.setEndPoint(False, hyx.Vec3(1.5 - 0.1 * (i // 60 % 2), 0, 0))
        cable.step(STEP)
        damage.update()
    return cable, damage


def test_the_most_bent_part_of_a_cable_is_red_and_the_ends_are_blue(stage):
    cable, damage = bent()
    stage.renderer = CableDamageRenderer(damage, 0.08, stage.root)
    picture = stage.shoot()
    reds = picture.columns_of(lambda r, g, b: r > 60 and g < r / 2 and b < r / 2)
    blues = picture.columns_of(lambda r, g, b: b > 60 and g < b / 2 and r < b / 2)
    assert reds and blues
    assert 80 < sum(reds) / len(reds) < 120 and min(blues) < min(reds) and max(blues) > max(reds)


def test_current_and_accumulated_damage_are_told_apart(stage):
    cable, damage = bent()
    renderer = CableDamageRenderer(damage, 0.08, stage.root)
    assert renderer.isRenderingCurrent() and not renderer.isRenderingAccumulated()
    current = stage.shoot()
    renderer.renderAccumulated()
    assert renderer.isRenderingAccumulated() and not renderer.isRenderingCurrent()
    assert current.differs(stage.shoot()) > 10
    renderer.renderCurrent()
    assert current.differs(stage.shoot()) == 0


def test_the_color_range_can_be_fixed(stage):
    cable, damage = bent()
    renderer = CableDamageRenderer(damage, 0.08, stage.root)
    assert renderer.getColorRangeMax() == 0
    renderer.setColorRangeMax(1e6)
    assert renderer.getColorRangeMax() == 1e6
    picture = stage.shoot()
    assert picture.reddish() == 0 and covered(picture) > 200
    with pytest.raises(RuntimeError, match="damage colour range"):
        renderer.setColorRangeMax(-1.0)


def test_a_cable_can_be_hidden_and_its_segments_asked_for(stage):
    cable, damage = bent()
    renderer = CableDamageRenderer(damage, 0.08, stage.root)
    assert renderer.getEnableRendering()
    renderer.setEnableRendering(False)
    assert not renderer.getEnableRendering() and covered(stage.shoot()) == 0
    renderer.setEnableRendering(True)
    assert covered(stage.shoot()) > 200
    count = cable.getNumSegments()
    assert renderer.getOsgNode(0).className() == "GeometryNode"
    assert renderer.getOsgNode(count - 1) is not None and renderer.getOsgNode(count) is None


def test_last_brings_the_picture_up_to_date(stage):
    cable, damage = bent()
    renderer = CableDamageRenderer(damage, 0.08, stage.root)
    before = renderer.getOsgNode(10).getMatrix().getTrans().z
    cable.setEndPoint(True, hyx.Vec3(-1.2, 0, 0.6))
    for _ in range(60):
        cable.step(STEP)
    assert renderer.getOsgNode(10).getMatrix().getTrans().z == before
    renderer.last(4.0)
    assert renderer.getOsgNode(10).getMatrix().getTrans().z > before + 0.05


def test_a_cable_renderer_needs_damage_a_radius_and_a_group(stage):
    cable, damage = bent()
    with pytest.raises(RuntimeError, match="needs the damage"):
        CableDamageRenderer(None, 0.1, stage.root)
    with pytest.raises(RuntimeError, match="radius"):
        CableDamageRenderer(damage, 0.0, stage.root)
    with pytest.raises(RuntimeError, match="needs a group"):
        CableDamageRenderer(damage, 0.1, None)
