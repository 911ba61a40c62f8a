"""Rays find what is in their way."""

import math
import random

import hyx
import hyxCollide
import pytest
from physics_scene import body, box, ground, simulation

UP, DOWN = hyx.Vec3(0, 0, 10), hyx.Vec3(0, 0, -10)


def test_a_ray_meets_the_nearest_geometry():
    near, far = box(0.5, (0, 0, 3), name="near"), box(0.5, (0, 0, 1), name="far")
    world = simulation(ground(), far, near)
    space = world.getSpace()
    hit = space.castRay(UP, DOWN)
    assert hit.isValid() and hit.getGeometry().getRigidBody().getName() == "near"
    assert tuple(hit.point) == pytest.approx((0, 0, 3.5))
    assert tuple(hit.normal) == pytest.approx((0, 0, 1))
    assert hit.distance == pytest.approx(6.5)
    assert [round(h.distance, 6) for h in space.castRayAll(UP, DOWN)] == [6.5, 8.5, 10]
    assert space.castRay(UP, DOWN, near).distance == pytest.approx(8.5)


def test_a_ray_that_meets_nothing_is_not_valid():
    world = simulation(box(0.5))
    space = world.getSpace()
    for start, end in ((hyx.Vec3(5, 0, 5), hyx.Vec3(5, 0, -5)), (UP, hyx.Vec3(0, 0, 1)), (UP, UP)):
        hit = space.castRay(start, end)
        assert not hit.isValid() and hit.getGeometry() is None


@pytest.mark.parametrize(
    "start, end, point, normal",
    [
        ((0, 0, 5), (0, 0, -5), (0, 0, 3), (0, 0, 1)),
        ((9, 0, 0), (-9, 0, 0), (1, 0, 0), (1, 0, 0)),
        ((0.5, -9, 2.5), (0.5, 9, 2.5), (0.5, -2, 2.5), (0, -1, 0)),
        ((4, 0, 6), (0, 0, 2), (1, 0, 3), None),
        ((0, 0, 0), (0, 0, 9), None, None),
        ((2, 0, 9), (2, 0, -9), None, None),
        ((0, 0, 9), (0, 0, 4), None, None),
        ((0, 9, 9), (0, 9, -9), None, None),
        ((5, 0, 0), (9, 0, 0), None, None),
    ],
)
def test_a_ray_enters_a_turned_box_where_geometry_says(start, end, point, normal):
    turned = body(hyxCollide.Box(1, 2, 3))
    place = hyx.AffineMatrix4x4(hyx.Quat(0.7, hyx.Vec3(1, 2, 3)), hyx.Vec3(4, 5, 6))
    turned.setTransform(place)
    world = simulation(turned)
    hit = world.getSpace().castRay(place.transformPoint(hyx.Vec3(start)), place.transformPoint(hyx.Vec3(end)))
    assert hit.isValid() == (point is not None)
    if point:
        assert tuple(place.inverse().transformPoint(hit.point)) == pytest.approx(point, abs=1e-9)
    if normal:
        assert tuple(place.inverse().transformVector(hit.normal)) == pytest.approx(normal, abs=1e-9)


@pytest.mark.parametrize("offset", [0, 0.3, 0.49, 0.51])
def test_a_ray_enters_a_ball_on_its_near_side(offset):
    world = simulation(body(hyxCollide.Sphere(0.5), (1, 2, 3)))
    hit = world.getSpace().castRay(hyx.Vec3(9, 2, 3 + offset), hyx.Vec3(-9, 2, 3 + offset))
    if offset > 0.5:
        assert not hit.isValid()
        return
    x = math.sqrt(0.25 - offset**2)
    assert tuple(hit.point) == pytest.approx((1 + x, 2, 3 + offset))
    assert tuple(hit.normal) == pytest.approx((2 * x, 0, 2 * offset), abs=1e-12)


@pytest.mark.parametrize(
    "shape, top",
    [
        (hyxCollide.Sphere(0.5), 0.5),
        (hyxCollide.Cylinder(0.5, 1), 0.5),
        (hyxCollide.Capsule(0.5, 1), 0.5),
        (hyxCollide.Trimesh([(-1, -1, 0.2), (1, -1, 0.2), (0, 1, 0.2)], [0, 1, 2]), 0.2),
        (hyxCollide.HeightField(5, 5, 2, 2, [0.3] * 25), 0.3),
        (hyxCollide.Plane(0.0, 0.0, 1.0, -0.4), 0.4),
    ],
)
def test_a_ray_meets_the_surface_of_every_shape(shape, top):
    world = simulation(body(shape, control=hyx.RigidBody.STATIC))
    hit = world.getSpace().castRay(UP, DOWN)
    assert hit.point.z == pytest.approx(top, abs=2e-3)


def test_rays_tell_apart_the_geometries_of_one_body():
    both = hyx.RigidBody()
    for name, x in (("left", -2), ("right", 2)):
        both.add(hyxCollide.Geometry(hyxCollide.Sphere(0.5), name), hyx.AffineMatrix4x4(hyx.Vec3(x, 0, 0)))
    both.setPosition(hyx.Vec3(0, 0, 1))
    world = simulation(both)
    space = world.getSpace()
    for name, x in (("left", -2), ("right", 2)):
        hit = space.castRay(hyx.Vec3(x, 0, 5), hyx.Vec3(x, 0, -5))
        assert hit.getGeometry().getName() == name and hit.point.z == pytest.approx(1.5)


def test_rays_follow_moved_turned_and_removed_bodies_at_once():
    plate = body(hyxCollide.Box(2, 0.1, 0.5), (0, 0, 0))
    world = simulation(plate)
    start, end = hyx.Vec3(0, 1.5, 5), hyx.Vec3(0, 1.5, -5)
    assert not world.getSpace().castRay(start, end).isValid()
    plate.setRotation(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)))
    assert world.getSpace().castRay(start, end).isValid()
    plate.setPosition(hyx.Vec3(0, 0, 2))
    assert world.getSpace().castRay(start, end).point.z == pytest.approx(2.5)
    plate.getGeometries()[0].setEnableCollisions(False)
    assert not world.getSpace().castRay(start, end).isValid()
    plate.getGeometries()[0].setEnableCollisions(True)
    world.remove(plate)
    assert not world.getSpace().castRay(start, end).isValid()


def test_rays_see_changed_heights_as_the_field_computes_them():
    field = hyxCollide.HeightField(21, 21, 10, 20)
    world = simulation(hyxCollide.Geometry(field))
    space = world.getSpace()
    field.setHeights([math.sin(0.7 * i) * math.cos(0.9 * j) for j in range(21) for i in range(21)])
    for x, y in ((-4.9, -9.8), (0.1, 0.2), (1.31, -7.77), (4.4, 9.1)):
        hit = space.castRay(hyx.Vec3(x, y, 5), hyx.Vec3(x, y, -5))
        assert hit.point.z == pytest.approx(field.getHeightAt(x, y), abs=1e-9)


def test_geometries_are_found_by_the_space_they_take():
    near, far = box(0.5, name="near"), box(0.5, (5, 0, 0), name="far")
    world = simulation(near, far)
    space = world.getSpace()
    found = space.findGeometries(hyx.Vec3(-1, -1, -1), hyx.Vec3(1, 1, 1))
    assert [g.getRigidBody().getName() for g in found] == ["near"]
    assert len(space.findGeometries(hyx.Vec3(-1, -1, -1), hyx.Vec3(5, 1, 1))) == 2
    assert len(space.getGeometries()) == 2


OCTAHEDRON = 0.6  # from the centre to a corner


def inside(shape, p):
    """The depth of a point below a shape's surface along the shape's own measure: positive inside."""
    radial = math.hypot(p.x, p.z)
    if isinstance(shape, hyxCollide.Sphere):
        return shape.getRadius() - p.length()
    if isinstance(shape, hyxCollide.Capsule):
        half = shape.getHeight() / 2
        return shape.getRadius() - math.hypot(radial, p.y - max(-half, min(half, p.y)))
    if isinstance(shape, hyxCollide.Cylinder):
        return min(shape.getRadius() - radial, shape.getHeight() / 2 - abs(p.y))
    if isinstance(shape, hyxCollide.Cone):
        half, radius = shape.getHeight() / 2, shape.getRadius()
        side = (radius * (half - p.y) / (2 * half) - radial) * 2 * half / math.hypot(radius, 2 * half)
        return min(side, p.y + half)
    if isinstance(shape, hyxCollide.Trimesh):
        return (OCTAHEDRON - abs(p.x) - abs(p.y) - abs(p.z)) / math.sqrt(3)
    half = shape.getHalfExtents()
    return min(half.x - abs(p.x), half.y - abs(p.y), half.z - abs(p.z))


def octahedron():
    size = OCTAHEDRON
    corners = [(size, 0, 0), (0, size, 0), (-size, 0, 0), (0, -size, 0), (0, 0, size), (0, 0, -size)]
    around = [(0, 1), (1, 2), (2, 3), (3, 0)]
    faces = [(a, b, 4) for a, b in around] + [(b, a, 5) for a, b in around]
    return hyxCollide.Trimesh(corners, faces)


@pytest.mark.parametrize("parts", [1, 2], ids=["one geometry", "one of two"])
@pytest.mark.parametrize(
    "shape",
    [
        hyxCollide.Box(0.3, 0.5, 0.2),
        hyxCollide.Sphere(0.4),
        hyxCollide.Cylinder(0.3, 0.8),
        hyxCollide.Capsule(0.2, 0.9),
        hyxCollide.Cone(0.4, 0.7),
        octahedron(),
    ],
    ids=lambda shape: type(shape).__name__,
)
def test_rays_from_all_around_end_on_the_surface(shape, parts):
    solid = body(shape)
    if parts == 2:
        solid.add(hyxCollide.Geometry(hyxCollide.Sphere(0.1)), hyx.AffineMatrix4x4(hyx.Vec3(100, 0, 0)))
    place = hyx.AffineMatrix4x4(hyx.Quat(0.7, hyx.Vec3(1, 2, 3)), hyx.Vec3(4, 5, 6))
    solid.setTransform(place)
    world = simulation(solid)
    space = world.getSpace()

    def depth(point):
        return inside(shape, point)

    chance, met, deepest = random.Random(1), 0, 0
    for _ in range(1500):
        start, end = (
            hyx.Vec3(*(chance.gauss(0, 1) for _ in range(3))).normal() * length for length in (3, -chance.random())
        )
        hit = space.castRay(place.transformPoint(start), place.transformPoint(end))
        way = [depth(start + (end - start) * (i / 200)) for i in range(201)]
        if not hit.isValid():
            assert max(way) < 1e-9, "missed"
            continue
        met += 1
        point = place.inverse().transformPoint(hit.point)
        assert depth(point) == pytest.approx(0, abs=1e-9)
        share = (point - start).length() / (end - start).length()
        assert all(d < 1e-9 for i, d in enumerate(way) if i / 200 < share - 1e-9), "met on its far side"
        normal = place.inverse().transformVector(hit.normal)
        assert depth(point - normal * 1e-6) == pytest.approx(1e-6, abs=1e-9), "not the outward normal"
        deepest = max(deepest, *way)
    assert met > 500 and deepest > 0.1


def test_a_ray_meets_a_plane_from_above_only():
    world = simulation(ground())
    space = world.getSpace()
    hit = space.castRay(hyx.Vec3(1, 2, 1000), hyx.Vec3(500, 2, -1))
    assert hit.point.z == pytest.approx(0, abs=1e-9) and hit.normal == hyx.Vec3(0, 0, 1)
    assert not space.castRay(DOWN, UP).isValid(), "below is solid"


@pytest.mark.parametrize("make", [lambda: hyxCollide.HeightField(5, 5, 1.0, 1.0), lambda: hyxCollide.Box(1, 1, 1)])
def test_rays_of_any_length_end_at_once(make):
    world = simulation()
    world.add(hyxCollide.Geometry(make()))
    world.step()
    for reach in (10.0, 1e9, 1e100, 1e154):
        hits = world.getSpace().castRayAll(hyx.Vec3(0.1, 0.1, 5), hyx.Vec3(0.1, 0.1, 5 - reach))
        assert len(hits) == 1 and hits[0].distance == pytest.approx(5, abs=1.01)
        assert world.getSpace().castRayAll(hyx.Vec3(0.1, 0.1, 5), hyx.Vec3(reach, -reach, -1e-3)) == []
