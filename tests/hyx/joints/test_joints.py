"""Joints hold, drive and stop bodies, and report their forces."""

import math

import hyx
import hyxCollide
import hyxSDK
import pytest
from physics_scene import GRAVITY, body, box, run, simulation

SOLVERS = [hyxSDK.Simulation.MULTI, hyxSDK.Simulation.ITERATIVE, hyxSDK.Simulation.DIRECT]


def rod_on_hinge(solver=hyxSDK.Simulation.ITERATIVE):
    """A rod of 2 kg and 1 m, hinged about Y at its end, lying along X."""
    rod = body(hyxCollide.Box(0.5, 0.05, 0.05), (0.5, 0, 0), mass=2)
    hinge = hyx.Hinge(hyx.Vec3(), hyx.Vec3(0, 1, 0), rod)
    world = simulation(rod, hinge)
    world.setSolver(solver)
    return world, rod, hinge


@pytest.mark.parametrize("solver", SOLVERS)
def test_a_motor_at_rest_holds_a_rod_with_its_weight_times_its_arm(solver):
    world, rod, hinge = rod_on_hinge(solver)
    hinge.getMotor1D().setEnable(True)
    run(world, 2)
    assert hinge.getMotor1D().getCurrentForce() == pytest.approx(-2 * GRAVITY * 0.5, rel=1e-4)
    force, torque = hyx.Vec3(), hyx.Vec3()
    assert hinge.getLastForce(0, force, torque)
    assert tuple(force) == pytest.approx((0, 0, 2 * GRAVITY), abs=1e-3)
    assert tuple(torque) == pytest.approx((0, -GRAVITY, 0), abs=2e-3)
    assert rod.getPosition().z == pytest.approx(0, abs=1e-3)


def test_a_motor_turns_at_its_speed_over_full_turns():
    world, rod, hinge = rod_on_hinge()
    hinge.getMotor1D().setSpeed(10)
    hinge.getMotor1D().setEnable(True)
    run(world, 2)
    assert hinge.getCurrentSpeed() == pytest.approx(10, rel=1e-3)
    assert hinge.getAngle() == pytest.approx(20, rel=2e-2)
    assert rod.getAngularVelocity().y == pytest.approx(10, rel=1e-3)


def test_a_weak_motor_gives_way():
    world, rod, hinge = rod_on_hinge()
    hinge.getMotor1D().setEnable(True)
    hinge.getMotor1D().setForceRange(hyx.RangeReal(-5, 5))
    run(world, 0.1)
    assert hinge.getMotor1D().getCurrentForce() == pytest.approx(-5)
    assert rod.getPosition().z < 0


def test_a_pendulum_keeps_its_energy_and_length():
    world, rod, hinge = rod_on_hinge()
    world.setTimeStep(1 / 480)
    lowest = 0
    for _ in range(480):
        world.step()
        assert rod.getPosition().length() == pytest.approx(0.5, abs=1e-3)
        lowest = min(lowest, rod.getPosition().z)
    assert lowest == pytest.approx(-0.5, abs=1e-2)
    energy = rod.getKineticEnergy() + 2 * GRAVITY * rod.getPosition().z
    assert energy == pytest.approx(0, abs=0.2)


def test_a_range_stops_at_its_bounds_from_both_sides():
    slider = box(0.5, mass=3)
    joint = hyx.Prismatic(hyx.Vec3(), hyx.Vec3(0, 0, 1), slider)
    joint.getRange1D().setRange(hyx.RangeReal(-1, 0.5))
    joint.getRange1D().setEnable(True)
    world = simulation(slider, joint)
    run(world, 3)
    assert joint.getAngle() == pytest.approx(-1, abs=1e-4)
    assert joint.getRange1D().getCurrentForce() == pytest.approx(3 * GRAVITY, rel=1e-4)
    world.setGravity(hyx.Vec3(0, 0, GRAVITY))
    run(world, 3)
    assert joint.getAngle() == pytest.approx(0.5, abs=1e-4)
    assert joint.getRange1D().getCurrentForce() == pytest.approx(-3 * GRAVITY, rel=1e-4)


@pytest.mark.parametrize("solver", SOLVERS)
@pytest.mark.parametrize("compliance", [0, 1e-3, 1])
def test_a_lock_gives_way_by_its_compliance(solver, compliance):
    slider = box(0.5, mass=3)
    joint = hyx.Prismatic(hyx.Vec3(), hyx.Vec3(0, 0, 1), slider)
    lock = joint.getLock1D()
    lock.setEnable(True)
    lock.setCompliance(float(compliance))
    lock.setDamping(4.0)
    world = simulation(slider, joint)
    world.setSolver(solver)
    run(world, 40)
    assert lock.getCurrentForce() == pytest.approx(3 * GRAVITY, rel=1e-4)
    assert joint.getAngle() == pytest.approx(-3 * GRAVITY * compliance, rel=1e-3, abs=1e-5)


def test_a_lock_moves_to_its_position():
    slider = box(0.5)
    joint = hyx.Prismatic(hyx.Vec3(), hyx.Vec3(1, 0, 0), slider)
    joint.getLock1D().setPosition(0.3)
    joint.getLock1D().setEnable(True)
    run(simulation(slider, joint), 1)
    assert tuple(slider.getPosition()) == pytest.approx((0.3, 0, 0), abs=1e-4)


def test_a_lock_joint_holds_every_direction_of_an_overhang():
    beam = body(hyxCollide.Box(0.5, 0.05, 0.05), (0.5, 0, 0), mass=1)
    frame = hyx.Frame(hyx.AffineMatrix4x4(hyx.Vec3(-0.5, 0, 0)))
    joint = hyx.LockJoint(beam, frame, None, None)
    world = simulation(beam, joint)
    run(world, 2)
    force, torque = hyx.Vec3(), hyx.Vec3()
    joint.getLastForce(0, force, torque)
    assert tuple(force) == pytest.approx((0, 0, GRAVITY), abs=1e-3)
    assert tuple(torque) == pytest.approx((0, -GRAVITY * 0.5, 0), abs=1e-3)
    assert joint.getNumRows() == 6
    assert tuple(beam.getPosition()) == pytest.approx((0.5, 0, 0), abs=1e-4)


def test_both_sides_of_a_joint_feel_opposite_forces():
    upper, lower = box(0.1, (0, 0, 0), mass=1), box(0.1, (0, 0, -1), mass=4)
    hook, link = hyx.BallJoint(hyx.Vec3(), upper), hyx.BallJoint(hyx.Vec3(0, 0, -1), lower, upper)
    world = simulation(upper, lower, hook, link)
    run(world, 2)
    on_lower, on_upper, torque = hyx.Vec3(), hyx.Vec3(), hyx.Vec3()
    link.getLastForce(0, on_lower, torque)
    link.getLastForce(1, on_upper, torque)
    assert tuple(on_lower) == pytest.approx((0, 0, 4 * GRAVITY), abs=1e-2)
    assert tuple(on_lower + on_upper) == pytest.approx((0, 0, 0), abs=1e-9)
    hook.getLastForce(0, on_upper, torque)
    assert on_upper.z == pytest.approx(5 * GRAVITY, abs=1e-2)


def test_a_distance_joint_keeps_a_mass_on_a_circle():
    mass = box(0.1, (1, 0, 0))
    joint = hyx.DistanceJoint(hyx.Vec3(1, 0, 0), hyx.Vec3(), mass)
    world = simulation(mass, joint)
    for _ in range(120):
        world.step()
        assert mass.getPosition().length() == pytest.approx(1, abs=1e-2)
    assert mass.getPosition().z < 0


def test_a_cylindrical_joint_leaves_two_directions_free():
    bolt = box(0.1, (0, 0, 0))
    joint = hyx.CylindricalJoint(hyx.Vec3(), hyx.Vec3(1, 0, 0), bolt)
    world = simulation(bolt, joint)
    bolt.setVelocity(hyx.Vec3(0.5, 0, 0))
    bolt.setAngularVelocity(hyx.Vec3(2, 0, 0))
    run(world, 1)
    assert joint.getAngle(hyx.CylindricalJoint.TRANSLATION) == pytest.approx(0.5, abs=1e-3)
    assert joint.getAngle(hyx.CylindricalJoint.ROTATION) == pytest.approx(2, abs=1e-2)
    assert bolt.getPosition().z == pytest.approx(0, abs=1e-2)
    with pytest.raises(IndexError):
        joint.getMotor1D(2)


def test_a_disabled_joint_lets_go_and_an_enabled_one_holds_again():
    hung = box(0.1)
    joint = hyx.BallJoint(hyx.Vec3(), hung)
    world = simulation(hung, joint)
    joint.setEnable(False)
    run(world, 0.2)
    assert hung.getPosition().z < -0.1 and joint.getNumRows() == 0
    joint.setEnable(True)
    run(world, 1)
    assert hung.getPosition().length() < 1e-3


def test_a_removed_joint_lets_go_and_survives_its_bodies_removal():
    hung = box(0.1)
    joint = hyx.BallJoint(hyx.Vec3(), hung)
    world = simulation(hung, joint)
    assert world.remove(hung)
    run(world, 0.1)
    assert joint.getNumRows() == 0
    assert world.remove(joint) and not world.remove(joint)


def test_a_hinge_between_two_bodies_counts_the_first_relative_to_the_second():
    door, frame = box(0.5, (1, 0, 0)), box(0.5, (0, 0, 0), control=hyx.RigidBody.STATIC)
    hinge = hyx.Hinge(hyx.Vec3(0.5, 0, 0), hyx.Vec3(0, 0, 1), door, frame)
    world = simulation(door, frame, hinge)
    door.getGeometries()[0].setEnableCollisions(frame.getGeometries()[0], False)
    world.setGravity(hyx.Vec3())
    door.setAngularVelocity(hyx.Vec3(0, 0, 1))
    door.setVelocity(hyx.Vec3(0, 0.5, 0))
    run(world, 1)
    assert hinge.getAngle() == pytest.approx(1, abs=1e-2)


@pytest.mark.parametrize(
    "make",
    [
        lambda b: hyx.Hinge(hyx.Vec3(), hyx.Vec3(), b),
        lambda b: hyx.Hinge(None, None),
        lambda b: hyx.BallJoint(hyx.Vec3(), b, b),
        lambda b: hyx.Prismatic(hyx.Vec3(math.nan, 0, 0), hyx.Vec3(1, 0, 0), b),
        lambda b: hyx.LockJoint(None),
    ],
)
def test_impossible_joints_are_refused(make):
    with pytest.raises(RuntimeError):
        make(box(0.5))
