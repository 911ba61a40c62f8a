"""Pendulums of any size, springs and dampers against their closed forms, drawn by chance."""

import math
import random

import hyx
import hyxSDK
import pytest
from physics_scene import GRAVITY, bare_body, run, simulation

DRAWS = pytest.mark.parametrize("draw", range(8))
STEPS = pytest.mark.parametrize("step", [1 / 30, 1 / 60, 1 / 240], ids=["1/30 s", "1/60 s", "1/240 s"])


def between(chance, low, high):
    """Evenly over the magnitudes."""
    return math.exp(chance.uniform(math.log(low), math.log(high)))


def direction(chance):
    return hyx.Vec3(*(chance.gauss(0, 1) for _ in range(3))).normal()


def moments(chance, mass, size):
    a, b, c = (chance.uniform(0.1, 1) * size for _ in range(3))
    return [mass / 12 * (one**2 + other**2) for one, other in ((b, c), (a, c), (a, b))]


def anywhere(chance, body):
    body.setRotation(hyx.Quat(chance.uniform(0, 6), direction(chance)))
    return body


@STEPS
@DRAWS
def test_a_pendulum_of_any_size_keeps_its_energy(measured, step, draw):
    chance = random.Random(draw)
    mass, length, angle = between(chance, 0.1, 100), between(chance, 0.1, 3), math.radians(chance.uniform(10, 170))
    bob = anywhere(chance, bare_body(mass=mass, inertia=moments(chance, mass, length)))
    bob.setPosition(hyx.Vec3(math.sin(angle), 0, -math.cos(angle)) * length)
    world = simulation(bob, hyx.Hinge(hyx.Vec3(), hyx.Vec3(0, 1, 0), bob))
    world.setTimeStep(step)

    def energy():
        return bob.getKineticEnergy() + mass * GRAVITY * (bob.getPosition().z + length)

    start, worst = energy(), 0
    for _ in range(600):
        run(world, 0.1)
        worst = max(worst, abs(energy() / start - 1))
    measured("energy's greatest change", 0, worst, 0.002)


def crossings(places):
    """When they pass zero."""
    pairs = zip(places, places[1:], strict=False)
    return [t + (u - t) * x / (x - y) for (t, x), (u, y) in pairs if x * y < 0]


@STEPS
@DRAWS
@pytest.mark.parametrize("solver", [hyxSDK.Simulation.ITERATIVE, hyxSDK.Simulation.DIRECT], ids=["ITERATIVE", "DIRECT"])
def test_a_spring_swings_and_calms_down_by_its_formula(measured, solver, step, draw):
    chance = random.Random(draw)
    mass, rate = between(chance, 0.1, 50), 2 * math.pi / chance.uniform(0.3, 3)
    damping, along = chance.uniform(0.02, 0.3) / rate, direction(chance)
    load = anywhere(chance, bare_body(mass=mass, inertia=moments(chance, mass, 0.3)))
    slider = hyx.Prismatic(hyx.Vec3(), along, load)
    slider.getLock1D().setEnable(True)
    slider.getLock1D().setCompliance(1 / (mass * rate**2))
    slider.getLock1D().setDamping(damping)
    world = simulation(load, slider)
    world.setTimeStep(step)
    world.setSolver(solver)
    rest = -GRAVITY * along.z / rate**2
    load.setPosition(along * (rest + 0.1))
    places = []
    while world.getTimeStamp() < 24 / rate:
        world.step()
        places.append((world.getTimeStamp(), slider.getAngle() - rest))
    decay = damping * rate**2 / 2
    swing = math.sqrt(rate**2 - decay**2)
    zeros = crossings(places)
    # Where frames are rare beside the swing, the line between two of them misses its zero.
    coarse = (swing * step) ** 2
    half = (zeros[-1] - zeros[0]) / (len(zeros) - 1)
    measured.relative("period, s", 2 * math.pi / swing, 2 * half, 0.002 + coarse / 10)
    last = places[-1]
    phase = math.cos(swing * last[0]) + decay / swing * math.sin(swing * last[0])
    measured("way at the end, m", 0.1 * math.exp(-decay * last[0]) * phase, last[1], 0.002)


@STEPS
@DRAWS
@pytest.mark.parametrize("joint", [hyx.Hinge, hyx.Prismatic])
def test_viscosity_brakes_by_its_formula(measured, joint, step, draw):
    chance = random.Random(draw)
    mass, time, along = between(chance, 0.1, 50), between(chance, 0.05, 3), direction(chance)
    load = anywhere(chance, bare_body(mass=mass, inertia=moments(chance, mass, 0.3)))
    held = joint(hyx.Vec3(), along, load)
    turning = load.getRotation().conjugate() * along
    if joint is hyx.Hinge:
        mass = sum(m * w**2 for m, w in zip(load.getInertia(), turning, strict=True))
        load.setAngularVelocity(along * 3)
    else:
        load.setVelocity(along * 3)
    held.setViscosity(mass / time)
    world = simulation(load, held)
    world.setGravity(hyx.Vec3())
    world.setTimeStep(step)
    run(world, time)
    left = math.exp(-world.getTimeStamp() / time)
    measured.relative("speed", 3 * left, held.getCurrentSpeed(), 0.005)
    measured.relative("way", 3 * time * (1 - left), held.getAngle(), 0.005)
