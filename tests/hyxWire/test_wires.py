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


def test_bad_wires_are_refused():
    with pytest.raises(RuntimeError, match="radius of a wire"):
        hyxWire.Wire(0.0, 10)
    with pytest.raises(RuntimeError, match="segments per metre"):
        hyxWire.Wire(0.01, -1)
    wire = hyxWire.Wire(0.01, 10)
    wire.add(hyx.Vec3(1, 1, 1))
    with pytest.raises(RuntimeError, match="two different places"):
        wire.step(STEP)
    wire.add(hyx.Vec3(2, 1, 1))
    wire.step(STEP)
    with pytest.raises(RuntimeError, match="after its first step"):
        wire.add(hyx.Vec3(3, 1, 1))
    with pytest.raises(RuntimeError, match="no such|out of range|range"):
        wire.getTension(99)
