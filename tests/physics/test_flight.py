"""Bodies that fly and spin freely."""

import math

import hyx
import hyxCollide
import pytest
from physics_scene import GRAVITY, bare_body, body, run, simulation

STEPS = pytest.mark.parametrize("step", [1 / 20, 1 / 60, 1 / 240], ids=["1/20 s", "1/60 s", "1/240 s"])


@STEPS
@pytest.mark.parametrize("moments", [(1, 1, 1), (1, 1, 2), (1, 2, 3)], ids=["ball", "disc", "odd"])
def test_a_spinning_body_keeps_energy_and_momentum(measured, step, moments):
    spinning = bare_body((0, 0, 0), 1, moments)
    world = simulation(spinning)
    world.setGravity(hyx.Vec3())
    world.setTimeStep(step)
    # Near the axis of the middle moment, about which an odd body tumbles.
    spinning.setAngularVelocity(hyx.Vec3(0.01, 5, 0.01))
    energy = spinning.getKineticEnergy()
    run(world, 60)
    measured.relative("energy, J", energy, spinning.getKineticEnergy(), 1e-4)
    axes = spinning.getRotation()
    turned = axes.conjugate() * hyx.Vec3(spinning.getAngularVelocity())
    momentum = hyx.Vec3(*(m * w for m, w in zip(moments, turned, strict=True))).length()
    start = math.hypot(0.01 * moments[0], 5 * moments[1], 0.01 * moments[2])
    measured.relative("angular momentum", start, momentum, 1e-9)


@STEPS
def test_a_top_precesses_by_its_weight(measured, step):
    tilt, spin, arm = math.radians(10), 200, 0.2
    axis = hyx.Vec3(math.sin(tilt), 0, math.cos(tilt))
    top = bare_body(axis * arm, 1, (0.02, 0.02, 0.01))
    top.setRotation(hyx.Quat(tilt, hyx.Vec3(0, 1, 0)))
    world = simulation(top, hyx.BallJoint(hyx.Vec3(), top))
    world.setTimeStep(step)
    # Even precession about the tip: across cos(tilt) rate2 - along spin rate + m g arm = 0.
    across, along = (0.02 + arm**2) * math.cos(tilt), 0.01 * spin
    rate = (along - math.sqrt(along**2 - 4 * across * GRAVITY * arm)) / (2 * across)
    top.setAngularVelocity(axis * spin)
    turns, last, lowest = 0.0, 0.0, 1.0
    while world.getTimeStamp() < 10:
        world.step()
        place = top.getPosition()
        angle = math.atan2(place.y, place.x)
        turns += (angle - last + math.pi) % (2 * math.pi) - math.pi
        last, lowest = angle, min(lowest, place.z / arm)
    measured("greatest tilt, deg", 10, math.degrees(math.acos(lowest)), 1)
    measured.relative("precession, rad/s", rate, turns / 10, 0.01)


@STEPS
@pytest.mark.parametrize("offset", [0, 0.5], ids=["centred", "off centre"])
@pytest.mark.parametrize("speed", [30, 314])
def test_a_motor_turns_by_its_speed(measured, step, offset, speed):
    rotor = bare_body((offset, 0, 0))
    hinge = hyx.Hinge(hyx.Vec3(), hyx.Vec3(0, 0, 1), rotor)
    hinge.getMotor1D().setEnable(True)
    hinge.getMotor1D().setSpeed(float(speed))
    world = simulation(rotor, hinge)
    world.setTimeStep(step)
    run(world, 10)
    measured("angle, rad", speed * 10, hinge.getAngle(), 1e-6)
    measured("speed, rad/s", speed, hinge.getCurrentSpeed(), 1e-6)
    measured("length, m", offset, rotor.getPosition().length(), 1e-6)


@pytest.mark.parametrize("speed", [50, 200])
@pytest.mark.parametrize(
    "shape",
    [
        hyxCollide.Sphere(0.05),
        hyxCollide.Box(0.05, 0.05, 0.05),
        hyxCollide.Capsule(0.03, 0.1),
        hyxCollide.Cylinder(0.03, 0.1),
        hyxCollide.Cone(0.03, 0.1),
    ],
    ids=lambda shape: type(shape).__name__,
)
def test_a_small_fast_body_does_not_pass_a_thin_wall(measured, shape, speed):
    furthest = -math.inf
    for phase in range(12):
        wall = body(hyxCollide.Box(0.01, 1, 1), control=hyx.RigidBody.STATIC)
        bullet = body(shape, (-2 - phase * 0.07, 0, 0))
        bullet.setVelocity(hyx.Vec3(speed, 0, 0))
        world = simulation(wall, bullet)
        world.setGravity(hyx.Vec3())
        run(world, 0.3)
        furthest = max(furthest, bullet.getPosition().x)
    reach = 0.05 if isinstance(shape, (hyxCollide.Sphere, hyxCollide.Box)) else 0.03
    # It may turn where it is stopped.
    measured("furthest place, m", -0.01 - reach, furthest, 0.03)


def test_a_state_that_is_no_longer_finite_is_told_of():
    light = bare_body((0, 0, 1), 1e-9, (1e-9, 1e-9, 1e-9))
    light.setName("feather")
    world = simulation(light)
    light.addForce(hyx.Vec3(1e308, 0, 0))
    with pytest.raises(RuntimeError, match="'feather' is no longer finite"):
        world.step()
    assert light.getPosition() == hyx.Vec3(0, 0, 1), "nothing has moved"
