"""Wires hang as catenaries and carry loads, winches wind, cables bend and twist, and wear by the cycles they bear."""

import math

import hyx
import hyxCable
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


def cable(slack=0.0):
    made = hyxCable.Cable(0.01, 20)
    made.add(hyx.Vec3(0, 0, 0))
    made.add(hyx.Vec3(1, 0, -slack))
    made.add(hyx.Vec3(2, 0, 0))
    return made


def test_a_bent_cable_has_the_curvature_of_its_shape():
    bent = cable(0.3)
    run(bent, 600)
    points = bent.getPoints()
    middle = len(points) // 2
    a, b, c = (points[middle + d] for d in (-4, 0, 4))
    area = (b - a).cross(c - a).length() / 2
    expected = 4 * area / ((b - a).length() * (c - b).length() * (c - a).length())
    assert bent.getLoad(middle).curvature == pytest.approx(expected, rel=0.05)
    assert bent.getLoad(middle).curvature > 2 * bent.getLoad(1).curvature


def test_a_stiff_cable_sags_less_than_a_soft_one():
    def sag(modulus):
        properties = hyxCable.CableProperties()
        properties.youngModulus = modulus
        properties.density = 8000.0
        made = hyxCable.Cable(0.01, 10, properties)
        made.add(hyx.Vec3(0, 0, 0))
        made.add(hyx.Vec3(2, 0, 0))
        run(made, 300)
        return -made.getPoints()[10].z

    assert 0 < sag(1e10) < 0.5 * sag(1e7)


def test_twist_is_spread_along_the_cable():
    twisted = cable()
    run(twisted, 1)
    twisted.setEndTwist(3.0)
    assert twisted.getLoad(3).twist == pytest.approx(3.0 / twisted.getLength())


def worn(*twists, exponent=5.0, bend=1.0):
    properties = hyxCable.DamageProperties()
    properties.exponent = exponent
    properties.referenceStress = 1e8
    properties.tensionWeight = properties.bendWeight = 0.0
    still = cable()
    still.setGravity(hyx.Vec3())
    still.step(STEP)
    damage = hyxCable.CableDamage(still, properties)
    for twist in twists:
        still.setEndTwist(twist)
        damage.update()
    return damage


def test_damage_sums_the_cycles_by_their_range():
    """Twisting to t and back is one cycle, whose harm goes with t to the exponent."""
    one = worn(0, 2, 0).getAccumulatedDamage(5)
    assert one > 0
    assert worn(0, 2, 0, 2, 0).getAccumulatedDamage(5) == pytest.approx(2 * one)
    assert worn(0, 4, 0).getAccumulatedDamage(5) == pytest.approx(one * 2**5)
    assert worn(0, 4, 0, exponent=3.0).getAccumulatedDamage(5) == pytest.approx(
        8 * worn(0, 2, 0, exponent=3.0).getAccumulatedDamage(5)
    )


def test_a_small_cycle_inside_a_large_one_counts_beside_it():
    large, small = worn(0, 4, 0).getAccumulatedDamage(0), worn(1, 2, 1).getAccumulatedDamage(0)
    assert worn(0, 2, 1, 4, 0).getAccumulatedDamage(0) == pytest.approx(large + small)
    steps = [0, 0.5, 1, 2, 3, 4, 3, 2, 1, 0]
    assert worn(*steps).getAccumulatedDamage(0) == pytest.approx(large)


def test_a_steady_load_does_no_harm_but_shows_as_current():
    damage = worn(*[2] * 20)
    assert damage.getAccumulatedDamage(0) == 0
    assert damage.getCurrentDamage(0) > 0 and damage.getStress(0) > 1e6
    damage.reset()
    assert damage.getStress(0) == 0


def test_weights_choose_what_harms():
    bent = cable(0.3)
    run(bent, 200)
    properties = hyxCable.DamageProperties()
    properties.tensionWeight = properties.twistWeight = 0.0
    damage = hyxCable.CableDamage(bent, properties)
    damage.update()
    middle = bent.getNumSegments() // 2
    expected = 1e9 * 0.01 * bent.getLoad(middle).curvature
    assert damage.getStress(middle) == pytest.approx(expected)
    with pytest.raises(RuntimeError):
        damage.getStress(10_000)
    with pytest.raises(RuntimeError, match="needs a cable"):
        hyxCable.CableDamage(None)
