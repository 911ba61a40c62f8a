"""Joints against statics and kinematics, in all solvers."""

import math
import random

import hyx
import hyxCollide
import hyxSDK
import pytest
from physics_scene import GRAVITY, bare_body, ground, run, simulation

SOLVERS = pytest.mark.parametrize(
    "solver",
    [hyxSDK.Simulation.MULTI, hyxSDK.Simulation.ITERATIVE, hyxSDK.Simulation.DIRECT],
    ids=["MULTI", "ITERATIVE", "DIRECT"],
)
STEPS = pytest.mark.parametrize("step", [1 / 30, 1 / 60, 1 / 240], ids=["1/30 s", "1/60 s", "1/240 s"])


def made(step, solver, *objects):
    world = simulation(*objects)
    world.setSolver(solver)
    world.setTimeStep(step)
    return world


def row(count, distance, joint):
    """Bodies along X, each joined to the one before, the first to the world."""
    bodies, joints, last = [], [], None
    for i in range(count):
        bodies.append(bare_body(((i + 0.5) * distance, 0, 0)))
        joints.append(joint(i * distance, bodies[-1], last))
        last = bodies[-1]
    return bodies, joints


@STEPS
def test_a_pendulum_keeps_its_energy_for_a_minute(measured, step):
    slope = math.radians(30)
    rod = bare_body((0.5 * math.cos(slope), 0, -0.5 * math.sin(slope)))
    rod.setRotation(hyx.Quat(slope, hyx.Vec3(0, 1, 0)))
    hinge = hyx.Hinge(hyx.Vec3(), hyx.Vec3(0, 1, 0), rod)
    world = made(step, hyxSDK.Simulation.ITERATIVE, rod, hinge)

    def energy():
        return rod.getKineticEnergy() + GRAVITY * (rod.getPosition().z + 0.5)

    start, all_along = energy(), []
    while world.getTimeStamp() < 60:
        world.step()
        all_along.append(energy() / start)
    measured("energy at the end", 1, all_along[-1], 0.002)
    measured("least energy", 1, min(all_along), 0.005)
    measured("greatest energy", 1, max(all_along), 0.005)


@SOLVERS
@STEPS
@pytest.mark.parametrize("count", [2, 3, 4])
def test_rods_that_fall_from_a_hinge_keep_their_energy(measured, step, solver, count):
    bodies, joints = row(count, 1, lambda x, b, last: hyx.Hinge(hyx.Vec3(x, 0, 0), hyx.Vec3(0, 1, 0), b, last))
    world = made(step, solver, *bodies, *joints)
    run(world, 3)
    energy = sum(b.getKineticEnergy() + GRAVITY * b.getPosition().z for b in bodies)
    measured("energy, J", 0, energy, GRAVITY * count**2 * 4 * step)
    for i in range(count):
        force, torque = hyx.Vec3(), hyx.Vec3()
        assert joints[i].getLastForce(0, force, torque)
        end = joints[i].getAttachmentTransform(0).getTranslate() - joints[i].getAttachmentTransform(1).getTranslate()
        measured("gap of a hinge, m", 0, end.length(), 1e-6)


@SOLVERS
@STEPS
@pytest.mark.parametrize("ratio", [1, 10_000])
def test_a_chain_does_not_stretch(measured, step, solver, ratio):
    bodies, joints, last = [], [], None
    for i in range(20):
        bodies.append(bare_body((0, 0, -(i + 0.5) * 0.1), ratio if i == 19 else 1, (0.01, 0.01, 0.01)))
        joints.append(hyx.BallJoint(hyx.Vec3(0, 0, -i * 0.1), bodies[-1], last))
        last = bodies[-1]
    world = made(step, solver, *bodies, *joints)
    # Pulled aside, so that it swings.
    bodies[-1].setVelocity(hyx.Vec3(0.3, 0.1, 0))
    run(world, 2)
    ends = [hyx.Vec3(joint.getAttachmentTransform(0).getTranslate()) for joint in joints]
    length = sum((b - a).length() for a, b in zip(ends, ends[1:], strict=False))
    measured("length, m", 1.9, length, 1e-4)


@SOLVERS
@STEPS
def test_a_cantilever_of_twenty_pieces_is_stiff(measured, step, solver):
    def lock(x, piece, last):
        near, far = (hyx.Frame(hyx.AffineMatrix4x4(hyx.Vec3(side, 0, 0))) for side in (-0.5, 0.5))
        return hyx.LockJoint(piece, near, last, far if last else None)

    bodies, joints = row(20, 1, lock)
    world = made(step, solver, *bodies, *joints)
    run(world, 2)
    measured("sag, m", 0, bodies[-1].getPosition().z, 1e-3)
    force, torque = hyx.Vec3(), hyx.Vec3()
    joints[0].getLastForce(0, force, torque)
    measured.relative("root force, N", 20 * GRAVITY, force.z, 1e-6)
    measured.relative("root torque, Nm", -20 * GRAVITY * 10, torque.y, 1e-6)


@SOLVERS
@STEPS
def test_the_motors_of_an_arm_carry_its_weight(measured, step, solver):
    chance = random.Random(7)
    bodies, joints, places, last, joint_place = [], [], [], None, hyx.Vec3(0, 0, 0)
    for _ in range(7):
        axis = hyx.Vec3(*(chance.gauss(0, 1) for _ in range(3))).normal()
        link = hyx.Vec3(*(chance.uniform(-0.3, 0.3) for _ in range(3)))
        bodies.append(bare_body(joint_place + link * 0.5, chance.uniform(0.1, 5), (0.01, 0.02, 0.03)))
        joints.append(hyx.Hinge(joint_place, axis, bodies[-1], last))
        joints[-1].getMotor1D().setEnable(True)
        places.append((joint_place, axis))
        last, joint_place = bodies[-1], joint_place + link
    world = made(step, solver, *bodies, *joints)
    run(world, 1)
    torques = [
        -sum((b.getPosition() - point).cross(hyx.Vec3(0, 0, -b.getMass() * GRAVITY)).dot(axis) for b in bodies[i:])
        for i, (point, axis) in enumerate(places)
    ]
    largest = max(map(abs, torques))
    for torque, joint in zip(torques, joints, strict=True):
        measured("torque, Nm", torque, joint.getMotor1D().getCurrentForce(), 1e-4 * largest)


@SOLVERS
@STEPS
def test_a_four_bar_follows_its_geometry_for_a_minute(measured, step, solver):
    crank_length, coupler_length, rocker_length, base = 0.3, 1.0, 0.8, 1.0

    def corners(angle):
        x, y = crank_length * math.cos(angle), crank_length * math.sin(angle)
        across = math.hypot(base - x, y)
        along = (coupler_length**2 - rocker_length**2 + across**2) / (2 * across)
        height = math.sqrt(coupler_length**2 - along**2)
        dx, dy = (base - x) / across, -y / across
        return (x, y), (x + along * dx - height * dy, y + along * dy + height * dx)

    def bar(start, end, mass):
        made_bar = bare_body(((start[0] + end[0]) / 2, 0, (start[1] + end[1]) / 2), mass, (0.01, 0.05, 0.05))
        slope = math.atan2(end[1] - start[1], end[0] - start[0])
        made_bar.setRotation(hyx.Quat(-slope, hyx.Vec3(0, 1, 0)))
        return made_bar

    first, second = corners(0)
    crank, coupler, rocker = bar((0, 0), first, 1), bar(first, second, 2), bar(second, (base, 0), 1)
    axis = hyx.Vec3(0, -1, 0)
    pivots = [((0, 0), crank, None), (first, coupler, crank), (second, rocker, coupler), ((base, 0), rocker, None)]
    hinges = [hyx.Hinge(hyx.Vec3(x, 0, z), axis, one, other) for (x, z), one, other in pivots]
    hinges[0].getMotor1D().setEnable(True)
    hinges[0].getMotor1D().setSpeed(2.0)
    world = made(step, solver, crank, coupler, rocker, *hinges)
    start, worst = math.atan2(second[1], second[0] - base), 0
    while world.getTimeStamp() < 60:
        run(world, 0.1)
        _, (x, z) = corners(hinges[0].getAngle())
        error = math.degrees(math.atan2(z, x - base) - start - hinges[3].getAngle())
        worst = max(worst, abs((error + 180) % 360 - 180))
    measured("crank, rad", 120, hinges[0].getAngle(), 1e-3)
    measured("rocker error, deg", 0, worst, 0.04)


def test_wheels_that_overlap_what_carries_them_roll():
    floor = ground()
    base = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.2, 0.05)))
    base.setPosition((0, 0, 0.2))
    world = simulation(floor, base)
    for side in (-0.28, 0.28):
        wheel = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.15)))
        wheel.setPosition((-0.15, side, 0.15))
        axle = hyx.Hinge(wheel.getPosition(), (0, 1, 0), wheel, base)
        axle.getMotor1D().setSpeed(5.0)
        axle.getMotor1D().setEnable(True)
        world.add(wheel)
        world.add(axle)
    run(world, 5)
    assert base.getVelocity().x == pytest.approx(5 * 0.15, rel=1e-3)


@SOLVERS
def test_a_chain_without_slack_stays_where_it_hangs(solver):
    world, links = simulation(), []
    world.setSolver(solver)
    for place in range(16):
        link = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.13, 0.05, 0.05)))
        link.setPosition((0.3 * place + 0.15, 0, 2))
        world.add(link)
        world.add(hyx.BallJoint((0.3 * place, 0, 2), link, links[-1] if links else None))
        links.append(link)
    world.add(hyx.BallJoint((4.8, 0, 2), links[-1]))
    for _ in range(60):
        run(world, 0.1)
        assert max(abs(link.getPosition().x - 0.3 * place - 0.15) for place, link in enumerate(links)) < 0.02
        assert max(abs(link.getPosition().z - 2) for link in links) < 0.3
