"""Grains that weigh, and heaps that stand."""

import math
import time

import hyx
import hyxCollide
import numpy
import pytest
from physics_scene import GRAVITY, body, ground, run, simulation


def test_a_tray_carries_its_grains(measured):
    tray = hyx.RigidBody()
    for half, place in [
        ((0.6, 0.6, 0.05), (0, 0, 0)),
        ((0.05, 0.6, 0.3), (0.65, 0, 0.25)),
        ((0.05, 0.6, 0.3), (-0.65, 0, 0.25)),
        ((0.7, 0.05, 0.3), (0, 0.65, 0.25)),
        ((0.7, 0.05, 0.3), (0, -0.65, 0.25)),
    ]:
        wall = hyxCollide.Geometry(hyxCollide.Box(*half))
        wall.setLocalTransform(hyx.AffineMatrix4x4(hyx.Vec3(*place)))
        tray.add(wall)
    tray.setMass(100.0)
    hold = hyx.LockJoint(tray)
    grains = hyx.ParticleSystem()
    grains.addObstacle(tray)
    for i in range(400):
        place = hyx.Vec3(i % 10 * 0.11 - 0.5, i // 10 % 10 * 0.11 - 0.5, 0.11 + i // 100 * 0.11)
        grains.createParticle(place, hyx.Vec3(), 0.05, 0.795)
    world = simulation(tray, hold, grains)
    run(world, 3)
    force, torque = hyx.Vec3(), hyx.Vec3()
    total, count = 0, 60
    for _ in range(count):
        world.step()
        assert hold.getLastForce(0, force, torque)
        total += force.z / count
    measured.relative("support, kg", 418, total / GRAVITY, 0.01)
    assert grains.getNumParticles() == 400
    assert min(grain.position.z for grain in grains.getParticles()) > 0.05


def slope_of(grains):
    """The slope of the cone that fits the mean surface of a heap best, between its foot and its top."""
    places, radius = numpy.array(grains.getPositions()), grains.getParticleRadius()
    x, y = (places[:, :2] - places[:, :2].mean(axis=0)).T
    away, sector = numpy.hypot(x, y), numpy.floor(numpy.arctan2(y, x) * 4 / math.pi)
    surface = []
    for ring in numpy.arange(2 * radius, away.max(), 2 * radius):
        inside = (away >= ring) & (away < ring + 2 * radius)
        tops = [places[inside & (sector == s), 2].max(initial=0) for s in range(-4, 4)]
        surface.append((ring + radius, sum(tops) / 8))
    top = max(z for _, z in surface)
    away, height = zip(*[(a, z) for a, z in surface if 0.2 * top < z < 0.8 * top], strict=True)
    return -math.degrees(math.atan(numpy.polyfit(away, height, 1)[0]))


@pytest.mark.parametrize("friction", [0.2, 0.25, 0.3, 0.35, 0.4, 0.6, 0.8])
def test_a_heap_stands_at_the_angle_of_friction(measured, friction):
    grains = hyx.ParticleSystem()
    grains.addObstacle(ground())
    grains.setFriction(friction)
    emitter = hyx.Emitter(grains)
    emitter.setPosition(hyx.Vec3(0, 0, 1.2))
    emitter.setHalfExtents(hyx.Vec3(0.1, 0.1, 0.1))
    emitter.setRate(150.0)
    emitter.setMaximumEmitted(1500)
    world = simulation(grains, emitter)
    run(world, 30)
    measured("slope, deg", math.degrees(math.atan(friction)), slope_of(grains), 3)
    measured("fastest grain, m/s", 0, max(grain.velocity.length() for grain in grains.getParticles()), 0.02)


def test_grains_carry_a_ball(measured):
    floor = ground()
    walls = body(hyxCollide.Box(2, 2, 0.1), control=hyx.RigidBody.STATIC)
    ball = body(hyxCollide.Sphere(0.2), (0, 0, 0.7), mass=20)
    grains = hyx.ParticleSystem()
    for obstacle in (floor, walls, ball):
        grains.addObstacle(obstacle)
    for i in range(1000):
        grains.createParticle(hyx.Vec3(i % 16 * 0.11 - 0.8, i // 16 % 16 * 0.11 - 0.8, 0.15 + i // 256 * 0.11))
    world = simulation(walls, ball, grains)
    run(world, 4)
    height = ball.getPosition().z
    assert height > 0.3, "it does not sink through the grains"
    run(world, 1)
    measured("height, m", height, ball.getPosition().z, 0.02)


def test_many_grains_take_little_time():
    """Loose against a busy machine: by processor time, and three times what it takes on one core that is free."""
    grains = hyx.ParticleSystem()
    grains.addObstacle(ground())
    for i in range(5000):
        grains.createParticle(hyx.Vec3(i % 25 * 0.1, i // 25 % 25 * 0.1, 0.05 + i // 625 * 0.1))
    for _ in range(10):
        grains.step(1 / 60)
    start = time.process_time()
    for _ in range(20):
        grains.step(1 / 60)
    assert (time.process_time() - start) / 20 < 0.02
