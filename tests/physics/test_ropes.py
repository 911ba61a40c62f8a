"""Wires on bodies: the rope friction formula, pulleys that turn along, and drums."""

import math

import hyx
import hyxCollide
import hyxWire
import pytest
from physics_scene import GRAVITY, bare_body, body, run, simulation

RADIUS = 0.25
WIRE = 0.004
# Edges are rounded off to so many lengths of a segment.
ROUNDING = 2


def cylinder(control=hyx.RigidBody.STATIC):
    """Along Y, about the origin."""
    return body(hyxCollide.Cylinder(RADIUS, 0.2), control=control)


def weight(mass):
    return bare_body(mass=mass, inertia=(0.1, 0.1, 0.1))


def wire_over(obstacle, corners, friction, resolution):
    """From corner to corner; an end may be a body, which comes to its place."""
    wire = hyxWire.Wire(WIRE, float(resolution))
    wire.setMassPerLength(0.05)
    wire.setFriction(friction)
    wire.addObstacle(obstacle)
    for end, place in corners:
        if end is None:
            wire.add(place)
        else:
            end.setPosition(place)
            wire.add(end, hyx.Vec3())
    return wire


def around_the_top(turn, first, last, straight=1.0, pieces=48):
    """Along a tangent of the cylinder, over its top by `turn` radians, and along another tangent."""

    def place(angle):
        return hyx.Vec3(math.sin(angle), 0, math.cos(angle)) * (RADIUS + WIRE)

    def onward(angle):
        return hyx.Vec3(math.cos(angle), 0, -math.sin(angle)) * straight

    arc = [(None, place(turn * (i / pieces - 0.5))) for i in range(pieces + 1)]
    start, end = place(-turn / 2) - onward(-turn / 2), place(turn / 2) + onward(turn / 2)
    return [(first, start), *arc, (last, end)]


@pytest.mark.parametrize("friction", [0.1, 0.5])
@pytest.mark.parametrize("turn", [90, 180, 270])
@pytest.mark.parametrize(
    "resolution, step", [(20, 1 / 60), (50, 1 / 60), (50, 1 / 240)], ids=["coarse", "fine", "short steps"]
)
def test_a_sliding_wire_obeys_the_friction_of_its_turn(measured, friction, turn, resolution, step):
    """Pulled along its tangents, without gravity."""
    turn = math.radians(turn)
    ratio = math.exp(friction * turn)
    slow, fast, drum = weight(8 * ratio), weight(8 * ratio), cylinder()
    wire = wire_over(drum, around_the_top(turn, slow, fast), friction, resolution)
    world = simulation(drum, slow, fast, wire)
    world.setGravity(hyx.Vec3())
    world.setTimeStep(step)
    ways = [(body.getPosition() - hyx.Vec3(0, 0, 0)) for body in (slow, fast)]
    ways = [hyx.Vec3(math.cos(turn / 2) * sign, 0, -math.sin(turn / 2)) for sign in (-1, 1)]
    low = high = 0
    while world.getTimeStamp() < 0.5:
        slow.addForce(ways[0] * 100)
        fast.addForce(ways[1] * (130 * ratio))
        world.step()
        if world.getTimeStamp() > 0.25:
            low += wire.getTensions()[1]
            high += wire.getTensions()[-2]
    assert fast.getVelocity().dot(ways[1]) > 0.1
    measured.relative("ratio of tensions", ratio, high / low, 0.01)


def test_a_wire_holds_below_the_friction_of_its_turn(measured):
    heavy, drum = weight(10 * math.exp(0.3 * math.pi) * 0.95), cylinder()
    light = weight(10)
    world = simulation(drum, light, heavy, wire_over(drum, around_the_top(math.pi, light, heavy), 0.3, 40))
    run(world, 2)
    start = heavy.getPosition().z
    run(world, 5)
    measured("way, m", 0, heavy.getPosition().z - start, 1e-3)


def on_an_axle(drum, speed=None):
    hinge = hyx.Hinge(hyx.Vec3(), hyx.Vec3(0, 1, 0), drum)
    if speed is not None:
        hinge.getMotor1D().setEnable(True)
        hinge.getMotor1D().setSpeed(speed)
    return hinge


@pytest.mark.parametrize("mass", [0.5, 5, 50])
def test_a_free_pulley_turns_with_its_wire(measured, mass):
    """Two weights over a pulley with a moment of inertia of its own, light or heavy."""
    pulley, light, heavy = cylinder(hyx.RigidBody.DYNAMICS), weight(10), weight(12)
    pulley.setMass(float(mass))
    moment = pulley.getInertia().y
    hinge = on_an_axle(pulley)
    wire = wire_over(pulley, around_the_top(math.pi, light, heavy), 0.5, 40)
    world = simulation(pulley, light, heavy, hinge, wire)
    start = heavy.getPosition().z
    run(world, 0.8)
    around = RADIUS + WIRE
    rope = 0.05 * wire.getRestLength()
    fallen = start - heavy.getPosition().z
    # The wire itself runs over to the heavier side: 2 * 0.05 kg/m for each metre.
    mean = (2 + 0.05 * fallen) * GRAVITY / (22 + rope + moment / around**2)
    measured.relative("way, m", mean * 0.8**2 / 2, fallen, 0.01)
    measured.relative("turn, rad", fallen / around, hinge.getAngle(), 0.01)


def test_a_turning_drum_drags_its_wire_and_feels_it(measured):
    drum, load = cylinder(hyx.RigidBody.DYNAMICS), weight(20)
    hinge = on_an_axle(drum, -2.0)
    wire = wire_over(drum, around_the_top(math.pi, None, load), 0.3, 40)
    world = simulation(drum, hinge, load, wire)
    run(world, 1)
    torque = drag = 0
    for _ in range(60):
        world.step()
        torque += hinge.getMotor1D().getCurrentForce() / 60
        drag += (wire.getTensions()[-2] - wire.getTensions()[1]) / 60
    assert abs(load.getVelocity().z) < 0.01
    measured.relative("drag, N", 20 * GRAVITY * (1 - math.exp(-0.3 * math.pi)), drag, 0.02)
    measured.relative("torque, Nm", -drag * (RADIUS + WIRE), torque, 0.02)


def test_a_drum_winds_a_wire_that_lifts_a_load(measured):
    """Two turns, with the motor's torque all the while."""
    drum, load = cylinder(hyx.RigidBody.DYNAMICS), weight(20)
    around = RADIUS + WIRE
    hinge = on_an_axle(drum, -1.0)
    wire = hyxWire.Wire(WIRE, 40.0)
    wire.setMassPerLength(0.05)
    wire.addObstacle(drum)
    wire.add(drum, hyx.Vec3(around, 0, 0))
    load.setPosition(hyx.Vec3(around, 0, -4))
    wire.add(load, hyx.Vec3())
    world = simulation(drum, hinge, load, wire)
    run(world, 2)
    start, turned = load.getPosition().z, hinge.getAngle()
    run(world, 9)
    measured.relative("lift, m", (turned - hinge.getAngle()) * around, load.getPosition().z - start, 0.01)
    measured.relative("torque, Nm", -20 * GRAVITY * around, hinge.getMotor1D().getCurrentForce(), 0.03)


@pytest.mark.parametrize("friction, resolution", [(0.1, 20), (0.1, 50), (0.4, 20), (0.4, 50)])
def test_a_wire_over_the_edges_of_a_box(measured, friction, resolution):
    """Up along one side, over two edges and a flat top, and down on the other side."""
    block = body(hyxCollide.Box(0.5, 0.2, 0.5), control=hyx.RigidBody.STATIC)
    ratio = math.exp(friction * math.pi)
    light, heavy = weight(20), weight(20 * ratio * 1.2)
    inner, around = 0.5 - ROUNDING / resolution, ROUNDING / resolution + WIRE
    arc = [math.pi / 2 * i / 12 for i in range(13)]
    corners = [(light, hyx.Vec3(-0.5 - WIRE, 0, -1.5))]
    corners += [(None, hyx.Vec3(-inner - around * math.cos(a), 0, inner + around * math.sin(a))) for a in arc]
    corners += [(None, hyx.Vec3(inner + around * math.sin(a), 0, inner + around * math.cos(a))) for a in arc]
    corners += [(heavy, hyx.Vec3(0.5 + WIRE, 0, -1.5))]
    world = simulation(block, light, heavy, wire := wire_over(block, corners, friction, resolution))
    low = high = 0
    while world.getTimeStamp() < 0.8:
        world.step()
        if world.getTimeStamp() > 0.2:
            low += wire.getTensions()[1]
            high += wire.getTensions()[-2]
    assert heavy.getVelocity().z < -0.2
    measured.relative("ratio of tensions", ratio, high / low, 0.02)
