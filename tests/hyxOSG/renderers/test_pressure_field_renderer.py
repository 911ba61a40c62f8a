"""Pressure fields: what is added is shown by done(), coloured by pressure, moved as a whole."""

import math

import hyx
import hyxCollide
import hyxModel
import pytest
from hyxOSG import PressureFieldRenderer
from physics_scene import GRAVITY

IDENTITY = hyx.AffineMatrix4x4()
COLD, HOT = (59, 76, 192), (180, 4, 38)


def triangle(pressures, size=2.0):
    data = hyxModel.TriangleData()
    corners = [(-size, -size, 0), (size, -size, 0), (0, size, 0)]
    for i, (corner, pressure) in enumerate(zip(corners, pressures)):
        data.setVertex(i, hyx.Vec3(*corner))
        data.setPressure(i, pressure)
    return data


def drawn(picture):
    return len(picture.pixels) - picture.count((0, 0, 0), 0)


def test_triangles_show_at_done_only(stage):
    field = PressureFieldRenderer(stage.root)
    field.addTriangle(triangle([5.0, 5.0, 5.0]), IDENTITY)
    assert drawn(stage.shoot()) == 0
    field.done()
    picture = stage.shoot()
    assert picture.count(HOT, 3) > 500 and picture.count(HOT, 3) == drawn(picture)
    field.clear()
    assert drawn(stage.shoot()) > 500
    field.done()
    assert drawn(stage.shoot()) == 0


def test_colors_run_from_no_pressure_to_the_highest(stage):
    field = PressureFieldRenderer(stage.root)
    field.addTriangle(triangle([0.0, 0.0, 100.0]), IDENTITY)
    field.done()
    picture = stage.shoot()
    assert picture.count(COLD, 20) > 30 and picture.count(HOT, 30) > 3 and len(set(picture.pixels)) > 20


def test_a_given_highest_pressure_fixes_the_colors(stage):
    field = PressureFieldRenderer(stage.root, 10.0)
    field.addTriangle(triangle([5.0, 5.0, 5.0]), IDENTITY)
    field.done()
    middle = stage.shoot()
    assert middle.count((221, 221, 221), 4) == drawn(middle) > 500
    field.addTriangle(triangle([50.0, 50.0, 50.0]), hyx.AffineMatrix4x4.translate(hyx.Vec3(0, 0, 0.1)))
    field.done()
    assert stage.shoot().count(HOT, 3) > 500


def test_transforms_place_triangles_and_the_field(stage):
    field = PressureFieldRenderer(stage.root)
    field.addTriangle(triangle([1.0] * 3, 0.5), hyx.AffineMatrix4x4.translate(hyx.Vec3(-2, 0, 0)))
    field.done()
    lit = lambda r, g, b: r > 100  # noqa: E731
    left = stage.shoot().columns_of(lit)
    assert max(left) < 100
    field.updateTransform(hyx.AffineMatrix4x4.translate(hyx.Vec3(4, 0, 0)))
    right = stage.shoot().columns_of(lit)
    assert min(right) > 100 and max(right) - min(right) == pytest.approx(max(left) - min(left), abs=3)


def test_values_that_are_not_finite_are_left_out(stage):
    field = PressureFieldRenderer(stage.root)
    field.addTriangle(triangle([math.nan, 1.0, 1.0]), IDENTITY)
    field.addTriangle(triangle([math.inf, 1.0, 1.0]), IDENTITY)
    field.addTriangle(triangle([1.0] * 3, math.nan), IDENTITY)
    field.done()
    assert drawn(stage.shoot()) == 0


def test_no_pressure_at_all_is_cold(stage):
    field = PressureFieldRenderer(stage.root)
    field.addTriangle(triangle([0.0] * 3), IDENTITY)
    field.done()
    assert stage.shoot().count(COLD, 3) > 500


def test_without_a_group_nothing_is_drawn():
    field = PressureFieldRenderer(None)
    field.addTriangle(triangle([1.0] * 3), IDENTITY)
    field.done()


@pytest.mark.parametrize("pressure", [-1.0, math.nan, math.inf])
def test_impossible_limits_are_refused(stage, pressure):
    with pytest.raises(RuntimeError, match="highest pressure"):
        PressureFieldRenderer(stage.root, pressure)


def test_null_references_are_refused(stage):
    field = PressureFieldRenderer(stage.root)
    with pytest.raises(TypeError, match="PressureFieldRenderer.addTriangle.. argument 1 .* not None"):
        field.addTriangle(None, IDENTITY)
    with pytest.raises(TypeError, match="updateTransform.. argument 1 .* not None"):
        field.updateTransform(None)


def test_the_pressure_under_a_box_is_drawn_on_its_underside(stage):
    floor = hyxCollide.Geometry(hyxCollide.Box(5.0, 5.0, 0.1))
    floor.setLocalPosition(hyx.Vec3(0, 0, -0.1))
    stage.simulation.add(floor)
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1.0, 1.0, 1.0)))
    box.setPosition(hyx.Vec3(0, 0, 1))
    stage.simulation.add(box)
    stage.step(60)
    source = hyxModel.PressureField(box, 0.25)
    stage.simulation.add(source)
    stage.step()
    field = PressureFieldRenderer(stage.root)
    for data in source.getTriangles():
        field.addTriangle(data, IDENTITY)
    field.updateTransform(box.getTransform())
    field.done()
    stage.app.setCameraHome(hyx.Vec3(0, -4, -4), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    assert source.getForce() == pytest.approx(box.getMass() * GRAVITY, rel=0.1)
    assert drawn(stage.shoot()) > 500
