"""Shapes know their size, and refuse to have none."""

import math

import hyx
import hyxCollide
import pytest
from cube_mesh import CUBE_TRIANGLES, box_corners

TETRAHEDRON = [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)], [(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)]


@pytest.mark.parametrize(
    "shape, volume, upper",
    [
        (hyxCollide.Box(1, 2, 3), 48, (1, 2, 3)),
        (hyxCollide.Sphere(2), 32 / 3 * math.pi, (2, 2, 2)),
        (hyxCollide.Cylinder(1, 4), 4 * math.pi, (1, 2, 1)),
        (hyxCollide.Capsule(1, 4), (4 + 4 / 3) * math.pi, (1, 3, 1)),
        (hyxCollide.Cone(1, 3), math.pi, (1, 1.5, 1)),
        (hyxCollide.Trimesh(*TETRAHEDRON), 1 / 6, (1, 1, 1)),
    ],
)
def test_volume_and_bound(shape, volume, upper):
    assert shape.getVolume() == pytest.approx(volume)
    low, high = hyx.Vec3(), hyx.Vec3()
    shape.getBound(low, high)
    assert tuple(high) == pytest.approx(upper)
    assert all(a < b for a, b in zip(low, high))


@pytest.mark.parametrize(
    "make",
    [
        lambda: hyxCollide.Box(1, 0, 1),
        lambda: hyxCollide.Box(hyx.Vec3(1, math.nan, 1)),
        lambda: hyxCollide.Sphere(-1),
        lambda: hyxCollide.Cylinder(1, math.inf),
        lambda: hyxCollide.Cone(0, 1),
        lambda: hyxCollide.Plane(0.0, 0.0, 0.0, 1.0),
        lambda: hyxCollide.Geometry(None),
        lambda: hyxCollide.Trimesh([(0, 0, 0)], [0, 1, 2]),
        lambda: hyxCollide.Trimesh([], []),
        lambda: hyxCollide.Trimesh([(0, 0, 0)] * 3, [0, 1]),
        lambda: hyxCollide.Trimesh([(0, 0, math.inf)] * 3, [0, 1, 2]),
        lambda: hyxCollide.HeightField(1, 5, 1, 1),
        lambda: hyxCollide.HeightField(2, 2, 1, 1, [0, 0, 0]),
        lambda: hyxCollide.Compound().add(None),
        lambda: hyxCollide.Compound().add(hyxCollide.Plane()),
    ],
)
def test_impossible_shapes_are_refused(make):
    with pytest.raises((RuntimeError, ValueError)):
        make()


@pytest.mark.parametrize(
    "points, indices", [(["abc"], [0, 1, 2]), ([(0, 0, 0)] * 3, "abc"), (None, None), ([(0, 0, 0)] * 3, [0, 1, 2.5])]
)
def test_a_mesh_is_made_of_numbers_only(points, indices):
    with pytest.raises(TypeError):
        hyxCollide.Trimesh(points, indices)


def test_a_mesh_knows_whether_it_is_closed():
    points, triangles = TETRAHEDRON
    closed, open_ = hyxCollide.Trimesh(points, triangles), hyxCollide.Trimesh(points, triangles[:3])
    assert closed.isClosed() and not open_.isClosed()
    assert open_.getVolume() == 0
    assert tuple(closed.getTriangleNormal(0)) == pytest.approx((0, 0, -1))
    assert closed.getIndices() == [i for triangle in triangles for i in triangle]


def test_a_mesh_and_a_box_of_the_same_form_have_the_same_inertia():
    mesh = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Trimesh(box_corners(1, 2, 3), CUBE_TRIANGLES)))
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 2, 3)))
    assert mesh.getMass() == pytest.approx(box.getMass())
    assert tuple(mesh.getInertia()) == pytest.approx(tuple(box.getInertia()))


def test_a_compound_weighs_what_its_parts_weigh():
    compound = hyxCollide.Compound()
    for x in (-1, 1):
        compound.add(hyxCollide.Box(0.5, 0.5, 0.5), hyx.AffineMatrix4x4(hyx.Vec3(x, 0, 0)))
    solid = hyx.RigidBody(hyxCollide.Geometry(compound))
    assert solid.getMass() == pytest.approx(2000)
    assert tuple(solid.getInertia()) == pytest.approx((2000 / 6, 2000 / 6 + 2000, 2000 / 6 + 2000))
    assert isinstance(compound.getShape(1), hyxCollide.Box)
    compound.getShape(1).setHalfExtents(hyx.Vec3(0.5, 0.5, 1))
    solid.updateMassProperties()
    assert solid.getMass() == pytest.approx(3000)


def test_a_height_field_answers_between_its_knots():
    field = hyxCollide.HeightField(3, 3, 4, 2)
    field.setHeight(1, 1, 2.0)
    assert tuple(field.getVertex(1, 1)) == (0, 0, 2)
    assert field.getHeightAt(0, 0) == 2
    assert field.getHeightAt(1, 0) == pytest.approx(1)
    assert field.getHeightAt(9, 9) == 0
    with pytest.raises(IndexError):
        field.setHeight(3, 0, 1.0)
    with pytest.raises(ValueError):
        field.setHeight(0, 0, math.nan)


def test_meshes_and_heights_are_taken_from_arrays():
    numpy = pytest.importorskip("numpy")
    points, triangles = TETRAHEDRON
    mesh = hyxCollide.Trimesh(numpy.array(points, dtype=numpy.float32), numpy.array(triangles))
    assert mesh.getVolume() == pytest.approx(1 / 6)
    field = hyxCollide.HeightField(3, 2, 1, 1, numpy.arange(6.0).reshape(2, 3))
    assert [field.getHeight(i, j) for j in (0, 1) for i in (0, 1, 2)] == [0, 1, 2, 3, 4, 5]
    with pytest.raises(ValueError, match="expected 3 numbers"):
        hyxCollide.Trimesh(numpy.zeros(4), [0, 1, 2])


def test_a_shape_serves_several_geometries_and_changes_in_all():
    shape = hyxCollide.Sphere(1)
    bodies = [hyx.RigidBody(hyxCollide.Geometry(shape)) for _ in range(2)]
    before = shape.getRevision()
    shape.setRadius(2)
    assert shape.getRevision() > before
    assert all(one.getMass() == pytest.approx(1000 * shape.getVolume()) for one in bodies)
    assert all(one.getGeometries()[0].getShape().getRadius() == 2 for one in bodies)


def test_a_geometry_is_where_its_body_carries_it():
    geometry = hyxCollide.Geometry(hyxCollide.Box(1, 1, 1))
    carrier = hyx.RigidBody()
    carrier.add(geometry, hyx.AffineMatrix4x4(hyx.Vec3(2, 0, 0)))
    carrier.setPosition(hyx.Vec3(0, 0, 5))
    carrier.setRotation(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)))
    assert tuple(geometry.getPosition()) == pytest.approx((0, 2, 5))
    low, high = hyx.Vec3(), hyx.Vec3()
    geometry.getBound(low, high)
    assert tuple(low) == pytest.approx((-1, 1, 4), abs=0.1)
    assert tuple(high) == pytest.approx((1, 3, 6), abs=0.1)
