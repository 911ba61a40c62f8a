"""Bodies move as mechanics says."""

import math

import hyx
import hyxCollide
import numpy
import pytest
from physics_scene import GRAVITY, body, box, ground, run, simulation


@pytest.mark.parametrize("step", [1 / 20, 1 / 60, 1 / 240])
def test_a_body_falls_exactly_at_every_step(step):
    falling = box(0.5, (0, 0, 100))
    world = simulation(falling)
    world.setTimeStep(step)
    run(world, 1)
    assert falling.getPosition().z == pytest.approx(100 - GRAVITY / 2, abs=1e-9)
    assert falling.getVelocity().z == pytest.approx(-GRAVITY)


@pytest.mark.parametrize(
    "shape, volume, inertia",
    [
        (hyxCollide.Box(0.5, 1, 1.5), 6, (4 + 9, 1 + 9, 1 + 4)),
        (hyxCollide.Sphere(0.3), 4 / 3 * math.pi * 0.027, (0.4 * 0.09 * 12,) * 3),
        (hyxCollide.Cylinder(0.3, 0.8), math.pi * 0.09 * 0.8, (3 * 0.09 + 0.64, 6 * 0.09, 3 * 0.09 + 0.64)),
    ],
)
def test_mass_and_inertia_follow_from_the_shape(shape, volume, inertia):
    solid = body(shape)
    assert solid.getMass() == pytest.approx(1000 * volume)
    assert tuple(solid.getInertia()) == pytest.approx([i * solid.getMass() / 12 for i in inertia])


def test_the_mass_follows_from_the_density_and_can_be_fixed():
    solid = box(0.5)
    steel = hyx.Material("steel")
    steel.setDensity(7800)
    solid.getGeometries()[0].setMaterial(steel)
    assert solid.getMass() == pytest.approx(7800)
    solid.setMass(2)
    solid.add(hyxCollide.Geometry(hyxCollide.Box(1, 1, 1)))
    assert solid.getMass() == 2
    solid.updateMassProperties()
    assert solid.getMass() == pytest.approx(7800 + 8000)


def test_a_body_of_two_geometries_turns_about_their_common_centre():
    dumbbell = hyx.RigidBody("dumbbell")
    for x in (0, 2):
        dumbbell.add(hyxCollide.Geometry(hyxCollide.Sphere(0.1)), hyx.AffineMatrix4x4(hyx.Vec3(x, 0, 0)))
    assert tuple(dumbbell.getCenterOfMass()) == pytest.approx((1, 0, 0))
    each = dumbbell.getMass() / 2
    assert dumbbell.getInertia().z == pytest.approx(2 * each * (1 + 0.4 * 0.01))
    dumbbell.setAngularVelocity(hyx.Vec3(0, 0, math.pi))
    world = simulation(dumbbell)
    world.setGravity(hyx.Vec3())
    run(world, 1)
    assert tuple(dumbbell.getPosition()) == pytest.approx((2, 0, 0), abs=1e-6), "the model frame went half way round"
    assert tuple(dumbbell.getWorldCenterOfMass()) == pytest.approx((1, 0, 0))


def test_forces_act_for_one_step_and_add_up():
    pushed = box(0.5, mass=2)
    world = simulation(pushed)
    world.setGravity(hyx.Vec3())
    pushed.addForce(hyx.Vec3(6, 0, 0))
    pushed.addForce(hyx.Vec3(0, 6, 0))
    assert pushed.getForce() == hyx.Vec3(6, 6, 0)
    world.step()
    world.step()
    assert tuple(pushed.getVelocity()) == pytest.approx((3 / 60, 3 / 60, 0))
    assert pushed.getForce() == hyx.Vec3()


@pytest.mark.parametrize("products", [(0.1, -0.05, 0.08), (0, 0.2, 0), (0, 0, 0)])
def test_products_of_inertia_turn_a_torque_aside(products):
    moments, torque = (0.5, 0.4, 0.3), (0.3, -1, 2)
    pushed = box(0.5)
    pushed.setInertia(hyx.Vec3(*moments), hyx.Vec3(*products))
    assert tuple(pushed.getInertia()) == pytest.approx(moments)
    assert tuple(pushed.getProductsOfInertia()) == pytest.approx(products)
    world = simulation(pushed)
    world.setGravity(hyx.Vec3())
    world.setTimeStep(1e-3)
    pushed.addTorque(hyx.Vec3(*torque))
    world.step()
    xy, xz, yz = products
    tensor = numpy.diag(moments) + [[0, xy, xz], [xy, 0, yz], [xz, yz, 0]]
    assert tuple(pushed.getAngularVelocity()) == pytest.approx(numpy.linalg.solve(tensor, torque) * 1e-3, rel=1e-4)


def test_a_force_beside_the_centre_of_mass_turns_the_body():
    pushed = box(0.5, (1, 0, 0))
    world = simulation(pushed)
    world.setGravity(hyx.Vec3())
    pushed.addForceAtPosition(hyx.Vec3(0, 0, 600), hyx.Vec3(1, 0.5, 0))
    world.step()
    assert tuple(pushed.getAngularVelocity()) == pytest.approx((300 / 60 / pushed.getInertia().x, 0, 0))


def test_a_kinematic_body_carries_what_lies_on_it():
    belt = body(hyxCollide.Box(5, 2, 0.1), (0, 0, 1), control=hyx.RigidBody.KINEMATICS)
    belt.setVelocity(hyx.Vec3(0.5, 0, 0))
    load = box(0.2, (0, 0, 1.3))
    run(simulation(belt, load), 3)
    assert tuple(belt.getPosition()) == pytest.approx((1.5, 0, 1))
    assert load.getVelocity().x == pytest.approx(0.5, abs=1e-3)
    assert load.getPosition().z == pytest.approx(1.3, abs=2e-3)


def test_a_static_body_stays_and_a_freed_one_falls():
    held = box(0.5, (0, 0, 5), control=hyx.RigidBody.STATIC)
    world = simulation(held)
    run(world, 0.5)
    assert held.getPosition() == hyx.Vec3(0, 0, 5)
    held.setMotionControl(hyx.RigidBody.DYNAMICS)
    run(world, 0.5)
    assert held.getPosition().z < 4


def test_a_disabled_body_neither_moves_nor_collides():
    ghost, resting = box(0.5, (0, 0, 0.5)), box(0.5, (0, 0, 1.5))
    world = simulation(ground(), ghost, resting)
    ghost.setEnable(False)
    run(world, 2)
    assert ghost.getPosition() == hyx.Vec3(0, 0, 0.5)
    assert resting.getPosition().z == pytest.approx(0.5, abs=1e-2)


def test_damping_takes_its_share_of_the_velocity_each_second():
    slowing = box(0.5)
    slowing.setLinearDamping(0.25)
    slowing.setVelocity(hyx.Vec3(8, 0, 0))
    world = simulation(slowing)
    world.setGravity(hyx.Vec3())
    run(world, 2)
    assert slowing.getVelocity().x == pytest.approx(8 * 0.75**2)


def test_an_observer_frame_rides_on_its_body():
    rider = box(0.5, (1, 0, 0))
    frame = hyx.ObserverFrame("tip", rider, hyx.AffineMatrix4x4(hyx.Vec3(0, 2, 0)))
    rider.setAngularVelocity(hyx.Vec3(0, 0, 3))
    assert tuple(frame.getPosition()) == pytest.approx((1, 2, 0))
    assert tuple(frame.getVelocity()) == pytest.approx((-6, 0, 0))
    rider.setRotation(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)))
    assert tuple(frame.getPosition()) == pytest.approx((-1, 0, 0))


def test_kinetic_energy_of_motion_and_spin():
    moving = box(0.5, mass=6)
    moving.setVelocity(hyx.Vec3(0, 3, 4))
    moving.setAngularVelocity(hyx.Vec3(0, 0, 2))
    assert moving.getKineticEnergy() == pytest.approx(0.5 * 6 * 25 + 0.5 * 1 * 4)


@pytest.mark.parametrize(
    "operation",
    [
        lambda b: b.setMass(0.0),
        lambda b: b.setMass(math.nan),
        lambda b: b.setInertia(hyx.Vec3(1, -1, 1)),
        lambda b: b.setInertia(hyx.Vec3(1, 1, 1), hyx.Vec3(2, 0, 0)),
        lambda b: b.setInertia(hyx.Vec3(1, 1, 1), hyx.Vec3(math.nan, 0, 0)),
        lambda b: b.setPosition(hyx.Vec3(math.inf, 0, 0)),
        lambda b: b.setRotation(hyx.Quat(0, 0, 0, 0)),
        lambda b: b.addForce(hyx.Vec3(0, math.nan, 0)),
        lambda b: b.setMotionControl(7),
        lambda b: b.setLinearDamping(2.0),
    ],
)
def test_impossible_values_are_refused_and_change_nothing(operation):
    solid = box(0.5, (1, 2, 3))
    before = solid.getMass(), solid.getPosition(), solid.getMotionControl()
    with pytest.raises(RuntimeError):
        operation(solid)
    assert (solid.getMass(), solid.getPosition(), solid.getMotionControl()) == before


def test_a_geometry_belongs_to_one_body():
    owner, other = box(0.5), hyx.RigidBody()
    with pytest.raises(RuntimeError, match="another body"):
        other.add(owner.getGeometries()[0])
    geometry = owner.getGeometries()[0]
    assert owner.remove(geometry) and not owner.remove(geometry)
    other.add(geometry)
    assert geometry.getRigidBody().getMass() == pytest.approx(1000)


def test_the_frame_outlives_its_body_where_the_body_was():
    frame = box(0.5, (1, 2, 3)).getFrame()
    assert frame.getTranslate() == hyx.Vec3(1, 2, 3)
