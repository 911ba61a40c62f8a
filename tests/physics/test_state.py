"""A restored simulation goes on bit by bit as the saved one did."""

import random

import hyx
import hyxCollide
import hyxSDK
import hyxTerrain
import hyxWire
import pytest
from physics_scene import body, box, ground, run, simulation


def pile(world):
    chance = random.Random(3)
    shapes = [
        lambda: hyxCollide.Box(0.1, 0.15, 0.2),
        lambda: hyxCollide.Sphere(0.15),
        lambda: hyxCollide.Cylinder(0.1, 0.3),
        lambda: hyxCollide.Capsule(0.1, 0.2),
        lambda: hyxCollide.Cone(0.15, 0.3),
    ]
    world.add(ground())
    world.add(hyxCollide.Geometry(hyxCollide.HeightField(9, 9, 4, 4, [0.05] * 81)))
    heap(world, shapes, chance)


def heap(world, shapes, chance):
    for i in range(40):
        piece = body(shapes[i % len(shapes)](), [chance.uniform(-0.4, 0.4) for _ in range(2)] + [0.5 + 0.2 * i])
        if i % 4 == 0:
            end = hyxCollide.Geometry(hyxCollide.Box(0.1, 0.1, 0.1))
            end.setLocalTransform(hyx.AffineMatrix4x4(hyx.Vec3(0.3, 0, 0)))
            piece.add(end)
        world.add(piece)


def compounds(world):
    """Boxes and cylinders without a floor under most of them, restored while many still fall."""
    world.add(ground())
    heap(world, [lambda: hyxCollide.Box(0.1, 0.15, 0.2), lambda: hyxCollide.Cylinder(0.12, 0.3)], random.Random(2))


def arm(world):
    last = None
    for i in range(4):
        link = hyx.RigidBody()
        link.setMass(2.0)
        link.setInertia(hyx.Vec3(0.1, 0.2, 0.3))
        link.setPosition(hyx.Vec3(i + 0.5, 0, 0))
        joint = hyx.Hinge(hyx.Vec3(i, 0, 0), hyx.Vec3(0, 1, 0.1 * i), link, last)
        if i % 2:
            joint.getMotor1D().setEnable(True)
            joint.getMotor1D().setSpeed(2.0)
            joint.getMotor1D().setForceRange(hyx.RangeReal(-200, 200))
        else:
            joint.setFriction(3.0)
        world.add(link)
        world.add(joint)
        last = link


def soil(world):
    grains = hyx.ParticleSystem()
    tray = box(0.5, (0, 0, 0.5))
    grains.addObstacle(tray)
    emitter = hyx.Emitter(grains)
    emitter.setPosition(hyx.Vec3(0, 0, 2))
    emitter.setRate(200.0)
    world.add(ground())
    for one in (tray, grains, emitter):
        world.add(one)
    terrain = hyxTerrain.Terrain(20, 20, 0.1, 0.5)
    terrain.setPosition(hyx.Vec3(2, 2, 0.5))
    terrain.addMass(10, 10, 30.0)
    terrain.disturb()
    world.add(hyxSDK.TerrainInstance(terrain))
    world.add(box(0.2, (3.5, 3.5, 0.8)))


def hoist(world):
    load = box(0.1, (2, 0, 1))
    wire = hyxWire.Wire(0.005, 10.0)
    wire.add(hyx.Vec3(0, 0, 3))
    wire.add(load, hyx.Vec3(0, 0, 0.1))
    wire.setWinchSpeed(-0.1)
    world.add(load)
    world.add(wire)
    drum = body(hyxCollide.Cylinder(0.25, 0.2), (2, 0, 3))
    slung = hyxWire.Wire(0.01, 20.0)
    slung.addObstacle(drum)
    for x, z in ((1.7, 2.5), (1.8, 3.3), (2.2, 3.3), (2.3, 2)):
        slung.add(hyx.Vec3(x, 0, z))
    world.add(drum)
    world.add(hyx.Hinge(hyx.Vec3(2, 0, 3), hyx.Vec3(0, 1, 0), drum))
    world.add(slung)


def everything(world):
    """All that can be asked for, exactly."""
    state = [tuple(b.getPosition()) + tuple(b.getRotation()) + tuple(b.getVelocity()) for b in world.getRigidBodies()]
    for process in world.getProcesses():
        if isinstance(process, hyx.ParticleSystem):
            state += [tuple(grain.position) for grain in process.getParticles()]
        elif isinstance(process, hyxWire.Wire):
            state += [tuple(point) for point in process.getPoints()]
        elif isinstance(process, hyxSDK.TerrainInstance):
            state.append(process.getTerrain().getHeights().tolist())
    return state + [joint.getAngle() for joint in world.getConstraints() if isinstance(joint, hyx.Hinge)]


@pytest.mark.parametrize("build", [pile, compounds, arm, soil, hoist], ids=lambda build: build.__name__)
@pytest.mark.parametrize("sleep", [False, True], ids=["awake", "asleep"])
def test_a_restored_run_equals_the_uninterrupted_one(build, sleep):
    def made():
        world = simulation()
        world.setEnableAutoSleep(sleep)
        build(world)
        return world

    first = made()
    run(first, 1)
    state = first.saveState()
    run(first, 2)
    # Back, and into a simulation that has not moved yet.
    again, other = first, made()
    expected = everything(first)
    for world in (again, other):
        world.restoreState(state)
        assert world.getTimeStamp() == pytest.approx(1)
        run(world, 2)
        assert everything(world) == expected


def test_a_state_holds_what_scripts_set():
    link = box(0.1, (0.5, 0, 0))
    hinge = hyx.Hinge(hyx.Vec3(), hyx.Vec3(0, 1, 0), link)
    world = simulation(link, hinge)
    state = world.saveState()
    motor, lock, reach = hinge.getMotor1D(), hinge.getLock1D(), hinge.getRange1D()
    changes = [
        (lambda: world.getGravity().z, lambda: world.setGravity(hyx.Vec3(0, 0, -1.6))),
        (world.getTimeStep, lambda: world.setTimeStep(0.01)),
        (world.getSolver, lambda: world.setSolver(hyxSDK.Simulation.DIRECT)),
        (world.getNumIterations, lambda: world.setNumIterations(50)),
        (link.getMass, lambda: link.setMass(77.0)),
        (lambda: tuple(link.getInertia()), lambda: link.setInertia(hyx.Vec3(1, 2, 3))),
        (motor.isEnabled, lambda: motor.setEnable(True)),
        (motor.getSpeed, lambda: motor.setSpeed(3.0)),
        (motor.getMaximumSpeed, lambda: motor.setMaximumSpeed(2.0)),
        (lambda: motor.getForceRange().upper(), lambda: motor.setForceRange(hyx.RangeReal(-1, 1))),
        (lock.getPosition, lambda: lock.setPosition(0.3)),
        (lock.getCompliance, lambda: lock.setCompliance(1e-4)),
        (lambda: reach.getRange().lower(), lambda: reach.setRange(hyx.RangeReal(-1, 1))),
        (hinge.getFriction, lambda: hinge.setFriction(4.0)),
        (hinge.isEnabled, lambda: hinge.setEnable(False)),
    ]
    before = [get() for get, _ in changes]
    for get, change in changes:
        old = get()
        change()
        assert get() != old
    world.restoreState(state)
    assert [get() for get, _ in changes] == before
