"""Bodies rest on, slide on, roll on and bounce off each other as their materials say."""

import math

import hyx
import hyxCollide
import hyxSDK
import pytest
from cube_mesh import CUBE_TRIANGLES, box_corners
from physics_scene import GRAVITY, body, box, ground, run, simulation

UPRIGHT = hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0))  # turns a shape's Y axis up


def cube_mesh():
    return hyxCollide.Trimesh(box_corners(0.5, 0.5, 0.5), CUBE_TRIANGLES)


def slope(degrees, friction):
    """A tilted plate and a flat box that lies on it, both of one material."""
    turn = hyx.Quat(math.radians(degrees), hyx.Vec3(0, 1, 0))
    plate = body(hyxCollide.Box(10, 10, 0.5), control=hyx.RigidBody.STATIC)
    slider = body(hyxCollide.Box(0.5, 0.5, 0.1))
    material = hyx.Material()
    material.setFriction(friction)
    for one in (plate, slider):
        one.setRotation(turn)
        one.getGeometries()[0].setMaterial(material)
    slider.setPosition(turn * hyx.Vec3(0, 0, 0.6))
    return simulation(plate, slider), slider


@pytest.mark.parametrize(
    "shape, rest",
    [
        (hyxCollide.Box(0.3, 0.4, 0.5), 0.4),
        (hyxCollide.Sphere(0.3), 0.3),
        (hyxCollide.Cylinder(0.3, 0.8), 0.4),
        (hyxCollide.Capsule(0.3, 0.8), 0.7),
        (hyxCollide.Cone(0.3, 0.8), 0.4),
        (cube_mesh(), 0.5),
    ],
)
def test_every_shape_rests_on_the_ground_with_its_weight(shape, rest):
    solid = body(shape, (0, 0, rest + 0.05))
    solid.setRotation(UPRIGHT)
    floor = ground()
    world = simulation(floor, solid)
    run(world, 4)
    assert solid.getPosition().z == pytest.approx(rest, abs=2e-3)
    assert solid.getVelocity().length() < 2e-2
    contact = world.getSpace().getGeometryContact(floor.getGeometries()[0], solid.getGeometries()[0])
    up = contact.getForce() if contact.getRigidBody(1).getName() != "ground" else -contact.getForce()
    assert up.z == pytest.approx(solid.getMass() * GRAVITY, rel=2e-2)


@pytest.mark.parametrize("solver", [hyxSDK.Simulation.MULTI, hyxSDK.Simulation.ITERATIVE, hyxSDK.Simulation.DIRECT])
def test_a_stack_stands(solver):
    stack = [box(0.5, (0, 0, 0.5 + i)) for i in range(5)]
    world = simulation(ground(), *stack)
    world.setSolver(solver)
    run(world, 10)
    for i, one in enumerate(stack):
        assert tuple(one.getPosition()) == pytest.approx((0, 0, 0.5 + i), abs=1e-2)


@pytest.mark.parametrize("friction", [0.3, 0.5])
def test_a_box_slides_beyond_the_friction_angle_only(friction):
    angle = math.degrees(math.atan(friction))
    world, slider = slope(angle - 2, friction)
    run(world, 2)
    assert slider.getVelocity().length() < 1e-2
    world, slider = slope(angle + 8, friction)
    run(world, 2)
    tilt = math.radians(angle + 8)
    assert slider.getVelocity().length() == pytest.approx(
        2 * GRAVITY * (math.sin(tilt) - friction * math.cos(tilt)), rel=4e-2
    )


@pytest.mark.parametrize("restitution", [0, 0.5, 0.8, 1])
def test_a_ball_bounces_to_the_square_of_its_restitution(restitution):
    ball = body(hyxCollide.Sphere(0.1), (0, 0, 1.1))
    rubber = hyx.Material()
    rubber.setRestitution(float(restitution))
    ball.getGeometries()[0].setMaterial(rubber)
    world = simulation(ground(), ball)
    world.setTimeStep(1 / 240)
    run(world, 0.46)
    assert ball.getVelocity().z >= -1e-3
    top = 0
    for _ in range(int(240 * 0.6)):
        world.step()
        top = max(top, ball.getPosition().z - 0.1)
    assert top == pytest.approx(restitution**2, abs=0.04)


def test_a_contact_material_replaces_what_follows_from_the_materials():
    world, slider = slope(10, 0.5)
    material = slider.getGeometries()[0].getMaterial()
    ice = hyx.ContactMaterial(material, material)
    assert ice.getFriction() == pytest.approx(0.5)
    ice.setFriction(0.0)
    world.add(ice)
    run(world, 1)
    assert slider.getVelocity().length() == pytest.approx(GRAVITY * math.sin(math.radians(10)), rel=1e-2)
    assert world.remove(ice)
    run(world, 2)
    assert slider.getVelocity().length() < 1e-2


def test_a_soft_contact_gives_way_by_its_stiffness():
    load, floor = box(0.5, (0, 0, 0.5), mass=100), ground()
    soft, hard = hyx.Material(), hyx.Material()
    load.getGeometries()[0].setMaterial(soft)
    floor.getGeometries()[0].setMaterial(hard)
    spring = hyx.ContactMaterial(soft, hard)
    spring.setStiffness(1e4)
    spring.setDamping(2e3)
    world = simulation(floor, load, spring)
    run(world, 5)
    # Every one of the four corners has the stiffness.
    assert 0.5 - load.getPosition().z == pytest.approx(100 * GRAVITY / 4e4, rel=0.1)


def test_rolling_resistance_stops_a_ball():
    free, braked = body(hyxCollide.Sphere(0.2), (0, 0, 0.2)), body(hyxCollide.Sphere(0.2), (0, 2, 0.2))
    mud = hyx.Material()
    mud.setRollingResistance(0.02)
    braked.getGeometries()[0].setMaterial(mud)
    for ball in (free, braked):
        ball.setVelocity(hyx.Vec3(1, 0, 0))
        ball.setAngularVelocity(hyx.Vec3(0, 5, 0))
    run(simulation(ground(), free, braked), 3)
    assert free.getVelocity().x == pytest.approx(1, abs=2e-2)
    assert braked.getVelocity().length() < 0.05


def test_a_sensor_reports_contacts_without_forces():
    gate = hyxCollide.Geometry(hyxCollide.Box(2, 2, 0.1))
    gate.setLocalPosition(hyx.Vec3(0, 0, 1))
    gate.setSensor(True)
    falling = box(0.2, (0, 0, 2))
    world = simulation(gate, falling)
    seen = []
    for _ in range(60):
        world.step()
        seen += world.getSpace().getGeometryContacts(gate)
    assert seen and all(contact.getForce().length() < 1e-6 for contact in seen)
    assert falling.getPosition().z == pytest.approx(2 - GRAVITY / 2)


def test_a_sensor_among_the_geometries_of_a_body_has_no_weight():
    solid = box(0.5, (0, 0, 0.5))
    feeler = hyxCollide.Geometry(hyxCollide.Sphere(2))
    feeler.setSensor(True)
    solid.add(feeler)
    assert solid.getMass() == pytest.approx(1000)
    run(simulation(ground(), solid), 2)
    assert solid.getPosition().z == pytest.approx(0.5, abs=1e-3)


def test_switched_off_pairs_pass_through_each_other():
    floor, first, second = ground(), box(0.2, (0, 0, 1)), box(0.2, (1, 0, 1))
    first.getGeometries()[0].setEnableCollisions(floor.getGeometries()[0], False)
    world = simulation(floor, first, second)
    run(world, 1)
    assert first.getPosition().z < -1 and second.getPosition().z == pytest.approx(0.2, abs=1e-2)
    second.getGeometries()[0].setEnableCollisions(False)
    run(world, 1)
    assert second.getPosition().z < -1


def test_switches_work_between_parts_of_bodies():
    table = hyx.RigidBody("table")
    table.setMotionControl(hyx.RigidBody.STATIC)
    top, foot = hyxCollide.Geometry(hyxCollide.Box(2, 2, 0.1)), hyxCollide.Geometry(hyxCollide.Box(2, 2, 0.1))
    table.add(top, hyx.AffineMatrix4x4(hyx.Vec3(0, 0, 1)))
    table.add(foot)
    falling = box(0.2, (0, 0, 1.5))
    falling.getGeometries()[0].setEnableCollisions(top, False)
    run(simulation(table, falling), 2)
    assert falling.getPosition().z == pytest.approx(0.3, abs=1e-2)


def test_a_contact_knows_geometries_points_and_directions():
    floor, solid = ground(), box(0.5, (0, 0, 0.5))
    world = simulation(floor, solid)
    run(world, 1)
    (contact,) = world.getSpace().getGeometryContacts()
    assert {contact.getRigidBody(i).getName() for i in (0, 1)} == {"", "ground"}
    assert contact.getNumPoints() == 4 == world.getSpace().getNumContactPoints()
    for point in contact.points():
        assert abs(point.normal.z) == pytest.approx(1)
        assert abs(point.point.x) == pytest.approx(0.5, abs=1e-2)
        assert point.normalForce > 0
    with pytest.raises(IndexError):
        contact.getPoint(4)
    world.remove(solid)
    assert world.getSpace().getGeometryContacts() == [] and contact.getNumPoints() == 4


def test_bodies_rest_on_a_static_mesh_and_on_a_height_field():
    block = body(cube_mesh(), (5, 0, 0.5), control=hyx.RigidBody.STATIC)
    hill = hyxCollide.Geometry(hyxCollide.HeightField(21, 21, 4, 4, [0.25] * 441))
    on_mesh, on_hill = box(0.3, (5, 0, 1.35)), box(0.3, (0, 0, 0.6))
    run(simulation(block, hill, on_mesh, on_hill), 3)
    assert on_mesh.getPosition().z == pytest.approx(1.3, abs=5e-3)
    assert on_hill.getPosition().z == pytest.approx(0.55, abs=5e-3)


@pytest.mark.parametrize("resolution", [2, 41, 161])
def test_a_ball_on_flat_ground_of_triangles_lies_still_and_rolls_straight(resolution):
    lying, rolling = body(hyxCollide.Sphere(0.5), (0.01, 0.02, 0.6)), body(hyxCollide.Sphere(0.3), (-1, 1.5, 0.3))
    rolling.setVelocity(hyx.Vec3(1, 0, 0))
    rolling.setAngularVelocity(hyx.Vec3(0, 1 / 0.3, 0))
    run(simulation(hyxCollide.Geometry(hyxCollide.HeightField(resolution, resolution, 8, 8)), lying, rolling), 2)
    assert tuple(lying.getPosition()) == pytest.approx((0.01, 0.02, 0.5), abs=2e-3)
    assert tuple(rolling.getPosition()) == pytest.approx((1, 1.5, 0.3), abs=2e-2)


def test_a_convex_mesh_moves_like_the_solid_that_it_is():
    lower, upper = body(cube_mesh(), (0, 0, 0.5)), body(cube_mesh(), (0, 0, 1.55))
    run(simulation(ground(), lower, upper), 4)
    assert tuple(lower.getPosition()) == pytest.approx((0, 0, 0.5), abs=5e-3)
    assert tuple(upper.getPosition()) == pytest.approx((0, 0, 1.5), abs=1e-2)


def test_a_hollow_mesh_takes_in_what_fits():
    """An open-topped cup: a mesh that is not convex keeps its hollow while it moves."""
    outer, inner = 0.5, 0.4
    corners = [(x, y, 0) for y in (-outer, outer) for x in (-outer, outer)] + [
        (x, y, 1) for y in (-outer, outer) for x in (-outer, outer)
    ]
    corners += [(x, y, 0.1) for y in (-inner, inner) for x in (-inner, inner)] + [
        (x, y, 1) for y in (-inner, inner) for x in (-inner, inner)
    ]
    quads = [
        (0, 2, 3, 1),
        (0, 1, 5, 4),
        (1, 3, 7, 5),
        (3, 2, 6, 7),
        (2, 0, 4, 6),
        (8, 9, 11, 10),
        (8, 12, 13, 9),
        (9, 13, 15, 11),
        (11, 15, 14, 10),
        (10, 14, 12, 8),
        (4, 5, 13, 12),
        (5, 7, 15, 13),
        (7, 6, 14, 15),
        (6, 4, 12, 14),
    ]
    cup = body(hyxCollide.Trimesh(corners, [t for a, b, c, d in quads for t in ((a, b, c), (a, c, d))]))
    assert cup.getMass() == pytest.approx(1000 * (1 - 0.8 * 0.8 * 0.9))
    ball = body(hyxCollide.Sphere(0.2), (0, 0, 1.5), mass=5)
    run(simulation(ground(), cup, ball), 3)
    assert cup.getPosition().z == pytest.approx(0, abs=1e-2)
    assert ball.getPosition().z == pytest.approx(0.3, abs=2e-2)


def test_a_changed_shape_collides_with_its_new_size():
    solid = box(0.5, (0, 0, 0.5))
    world = simulation(ground(), solid)
    run(world, 1)
    solid.getGeometries()[0].getShape().setHalfExtents(hyx.Vec3(0.5, 0.5, 0.25))
    run(world, 2)
    assert solid.getPosition().z == pytest.approx(0.25, abs=5e-3)
    solid.getGeometries()[0].setShape(hyxCollide.Sphere(0.4))
    run(world, 2)
    assert solid.getPosition().z == pytest.approx(0.4, abs=5e-3)


def test_raised_ground_lifts_what_lies_on_it():
    field = hyxCollide.HeightField(11, 11, 4, 4)
    load = box(0.3, (0, 0, 0.3))
    world = simulation(hyxCollide.Geometry(field), load)
    run(world, 1)
    field.setHeights([0.02] * 121)
    run(world, 2)
    assert load.getPosition().z == pytest.approx(0.32, abs=1e-2)


def test_what_has_no_inside_cannot_move_by_forces():
    with pytest.raises(RuntimeError, match="STATIC"):
        simulation().add(body(hyxCollide.Plane()))


def test_switches_work_between_parts_of_two_bodies_of_several_parts():
    """As the links of robots are: each a body of geometries away from its mass frame."""

    def link(height, control):
        made = hyx.RigidBody()
        for x in (-1, 1):
            made.add(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.1)), hyx.AffineMatrix4x4(hyx.Vec3(x, 0, 0)))
        made.setMotionControl(control)
        made.setPosition(hyx.Vec3(0, 0, height))
        return made

    lower = link(0, hyx.RigidBody.STATIC)
    through, held = link(0.5, hyx.RigidBody.DYNAMICS), link(0.5, hyx.RigidBody.DYNAMICS)
    held.setPosition(hyx.Vec3(0, 0.3, 2))
    for one in lower.getGeometries():
        for other in through.getGeometries():
            one.setEnableCollisions(other, False)
    world = simulation(lower, through, held)
    run(world, 2)
    assert through.getPosition().z < -5
    assert held.getPosition().z == pytest.approx(0.2, abs=1e-2)
    assert {
        contact.getRigidBody(i) is through for contact in world.getSpace().getGeometryContacts() for i in (0, 1)
    } <= {False}
