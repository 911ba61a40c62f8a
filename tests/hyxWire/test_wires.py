"""Wires hang as catenaries and carry loads, and winches wind them."""

import math

import hyx
import hyxCollide
import hyxSDK
import hyxWire
import pytest
from physics_scene import GRAVITY

STEP = 1 / 60


def run(thing, steps):
    for _ in range(steps):
        thing.step(STEP)


def catenary(length, span):
    """Its parameter: horizontal tension over weight per length."""
    low, high = 0.01, 1000.0
    for _ in range(200):
        middle = (low + high) / 2
        low, high = (middle, high) if 2 * middle * math.sinh(span / 2 / middle) > length else (low, middle)
    return low


def hanging(segments=10):
    wire = hyxWire.Wire(0.01, segments)
    for corner in (hyx.Vec3(-4, 0, 0), hyx.Vec3(0, 0, -3), hyx.Vec3(4, 0, 0)):
        wire.add(corner)
    wire.setDamping(2.0)
    run(wire, 1500)
    return wire


def test_a_wire_hangs_as_a_catenary_with_its_tension():
    wire = hanging()
    a = catenary(10, 8)
    weight = wire.getMassPerLength() * GRAVITY
    middle = wire.getNumPoints() // 2
    assert -wire.getPoint(middle).z == pytest.approx(a * (math.cosh(4 / a) - 1), rel=0.005)
    assert wire.getTension(middle) == pytest.approx(weight * a, rel=0.01)
    assert wire.getTension(0) == pytest.approx(weight * a * math.cosh(4 / a), rel=0.02)
    assert wire.getMaximumTension() == max(wire.getTensions())
    assert wire.getCurrentLength() == pytest.approx(wire.getRestLength(), rel=1e-4)


def test_a_wire_carries_a_body_with_its_weight():
    simulation = hyxSDK.Simulation()
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.2)))
    body.setMass(50.0)
    body.setPosition(hyx.Vec3(0, 0, -2))
    body.setLinearDamping(0.5)
    simulation.add(body)
    wire = hyxWire.Wire(0.005, 5)
    wire.add(hyx.Vec3(0, 0, 0))
    wire.add(body, hyx.Vec3(0, 0, 0))
    simulation.add(wire)
    for _ in range(600):
        simulation.step()
    last = wire.getTensions()[-1]
    assert last == pytest.approx(50 * GRAVITY, rel=0.02)
    own_weight = wire.getMassPerLength() * GRAVITY * 2
    assert wire.getTension(0) - last == pytest.approx(own_weight * 9 / 10, rel=0.2)
    assert body.getPosition().z == pytest.approx(-2, abs=0.01)


def test_a_winch_lifts_and_lowers():
    simulation = hyxSDK.Simulation()
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.2)))
    body.setPosition(hyx.Vec3(0, 0, -3))
    simulation.add(body)
    wire = hyxWire.Wire(0.005, 4)
    wire.add(hyx.Vec3(0, 0, 0))
    wire.add(body, hyx.Vec3(0, 0, 0.2))
    simulation.add(wire)
    wire.setWinchSpeed(-0.5)
    for _ in range(120):
        simulation.step()
    assert body.getPosition().z == pytest.approx(-2, abs=0.05)
    wire.setWinchSpeed(0.25)
    for _ in range(120):
        simulation.step()
    assert body.getPosition().z == pytest.approx(-2.5, abs=0.05)


def test_a_slack_wire_carries_nothing():
    simulation = hyxSDK.Simulation()
    floor = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
    floor.setMotionControl(hyx.RigidBody.STATIC)
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.2)))
    body.setPosition(hyx.Vec3(0, 0, 0.2))
    simulation.add(floor)
    simulation.add(body)
    wire = hyxWire.Wire(0.002, 10)
    for corner in (hyx.Vec3(0, 0, 2), hyx.Vec3(0.6, 0, 1.2)):
        wire.add(corner)
    wire.add(body, hyx.Vec3())
    simulation.add(wire)
    for _ in range(300):
        simulation.step()
    assert wire.getTensions()[-1] < 0.1 * body.getMass() * GRAVITY
    assert wire.getCurrentLength() > 1.9


@pytest.mark.parametrize("load", [1, 1000])
def test_a_joined_body_holds_what_hangs_on_it(load):
    """However light it is: what its joints hold, the wire cannot move."""
    simulation = hyxSDK.Simulation()
    arm, body = hyx.RigidBody(), hyx.RigidBody()
    arm.setMass(1.0)
    hinge = hyx.Hinge(hyx.Vec3(-1, 0, 0), hyx.Vec3(0, 1, 0), arm)
    hinge.getLock1D().setEnable(True)
    body.setMass(float(load))
    body.setPosition(hyx.Vec3(0.5, 0, -2))
    wire = hyxWire.Wire(0.005, 5)
    wire.add(arm, hyx.Vec3(0.5, 0, 0))
    wire.add(body, hyx.Vec3())
    for one in (arm, body, hinge, wire):
        simulation.add(one)
    for _ in range(300):
        simulation.step()
    assert body.getPosition().z == pytest.approx(-2, abs=0.01)
    assert wire.getTensions()[-1] == pytest.approx(load * GRAVITY, rel=0.02)
    torque = -1.5 * wire.getTension(0) - arm.getMass() * GRAVITY
    assert hinge.getLock1D().getCurrentForce() == pytest.approx(torque, rel=1e-3)


def test_an_obstacle_can_be_taken_away():
    block = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.1)))
    block.setMotionControl(hyx.RigidBody.STATIC)
    wire = hyxWire.Wire(0.01, 20)
    for x in (-1, 1):
        wire.add(hyx.Vec3(x, 0, 0.2))
    wire.addObstacle(block)
    wire.setWinchSpeed(0.5)
    run(wire, 60)
    lowest = min(point.z for point in wire.getPoints() if abs(point.x) < 0.4)
    assert lowest == pytest.approx(0.11, abs=1e-3)
    assert wire.removeObstacle(block) and not wire.removeObstacle(block)
    run(wire, 60)
    assert min(point.z for point in wire.getPoints()) < -0.2


def test_bad_wires_are_refused():
    with pytest.raises(RuntimeError, match="radius of a wire"):
        hyxWire.Wire(0.0, 10)
    with pytest.raises(RuntimeError, match="segments per metre"):
        hyxWire.Wire(0.01, -1)
    wire = hyxWire.Wire(0.01, 10)
    wire.add(hyx.Vec3(1, 1, 1))
    with pytest.raises(RuntimeError, match="two different places"):
        wire.step(STEP)
    with pytest.raises((RuntimeError, TypeError), match="not on nothing|None"):
        wire.addObstacle(None)
    with pytest.raises(RuntimeError, match="friction of a wire"):
        wire.setFriction(-0.1)
    wire.add(hyx.Vec3(2, 1, 1))
    wire.step(STEP)
    with pytest.raises(RuntimeError, match="after its first step"):
        wire.add(hyx.Vec3(3, 1, 1))
    with pytest.raises(RuntimeError, match="no such|out of range|range"):
        wire.getTension(99)
