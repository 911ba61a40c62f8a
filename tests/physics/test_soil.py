"""Soil whose answers do not depend on how finely it is divided."""

import math
import random
import statistics

import hyx
import hyxCollide
import hyxSDK
import hyxTerrain
import pytest
from physics_scene import GRAVITY, body, run, simulation

SIZES = [0.05, 0.1, 0.2, 0.4]


def soil(size, side, place=(0, 0)):
    columns = round(side / size) + 1
    made = hyxTerrain.Terrain(columns, columns, size, 1.0)
    made.setPosition(hyx.Vec3(place[0] - side / 2, place[1] - side / 2, 0))
    return made


def sinkage(material, pressure):
    """Of two layers, down to 0.4 m and from there to 1 m, under loads that fade as under a patch of 0.2 m."""
    sunk = 0
    for thickness, middle in [(0.4, 0.2), (0.6, 0.7)]:
        ratio = pressure / (1 + middle / 0.2) ** 2 / material.firstPressure
        compaction = 1 + material.compressibility * math.log10(max(ratio, 1))
        sunk += thickness * (1 - 1 / compaction)
    return sunk


@pytest.mark.parametrize("radius", [None, 0.35, 0.52, 0.75])
@pytest.mark.parametrize("size", SIZES)
def test_a_plate_sinks_the_same_on_every_mesh(measured, size, radius):
    """However it lies on the mesh: no element that it barely touches holds it up."""
    chance = random.Random(str(radius))
    for pressure in (30e3, 50e3, 75e3):
        ground = soil(size, 4, (chance.uniform(-0.2, 0.2), chance.uniform(-0.2, 0.2)))
        if radius:
            plate = body(hyxCollide.Cylinder(radius, 0.4), (0, 0, 0.2), mass=pressure * math.pi * radius**2 / GRAVITY)
            plate.setRotation(hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0)))
        else:
            plate = body(hyxCollide.Box(0.4, 0.6, 0.2), (0, 0, 0.2), mass=pressure * 0.96 / GRAVITY)
            plate.setRotation(hyx.Quat(chance.uniform(0, 3), hyx.Vec3(0, 0, 1)))
        world = simulation(hyxSDK.TerrainInstance(ground), plate)
        run(world, 3)
        sunk = -ground.getWorldHeight(0, 0)
        measured.relative(f"sinkage at {pressure} Pa, m", sinkage(ground.getMaterial(0), pressure), sunk, 0.1)
        assert 0.2 - plate.getPosition().z == pytest.approx(sunk, abs=0.003)


@pytest.mark.parametrize("size", SIZES)
def test_a_blade_feels_passive_earth_pressure(measured, size):
    """At a speed where the weight of the soil matters, and what it takes to set it moving does not."""
    ground = soil(size, 4)
    blade = hyx.RigidBody()
    blade.setMotionControl(hyx.RigidBody.KINEMATICS)
    blade.setPosition(hyx.Vec3(-1.5, 0, -0.1))
    blade.setVelocity(hyx.Vec3(0.2, 0, 0))
    tool = hyxTerrain.DigTool(blade, hyx.Vec3(0, -0.4, 0), hyx.Vec3(0, 0.4, 0), hyx.Vec3(-0.1, 0, 0.4))
    ground.addTool(tool)
    total, steps, step = 0, 240, 1 / 60
    for _ in range(steps):
        blade.setPosition(blade.getPosition() + blade.getVelocity() * step)
        ground.step(step)
        total -= tool.getSoilForce().x / steps
    material = ground.getMaterial(0)
    passive = math.tan(math.pi / 4 + material.reposeAngle / 2) ** 2
    closed_form = 0.5 * material.density * GRAVITY * passive * 0.1**2 * 0.8
    measured.relative("force, N", closed_form, total, 0.1)


@pytest.mark.parametrize("demand", [0.3, 0.6, 0.8])
@pytest.mark.parametrize("size", [0.05, 0.2])
def test_a_driven_wheel_slips_by_the_shear_that_its_pull_needs(measured, demand, size):
    """A wheel of 1 m width, driven by the torque that its pull makes: it comes to a slip i at which the pull is
    W tan(phi) (1 - (1 - exp(-a)) / a) with a = i l / K, for a patch of length l = 0.2 m."""
    radius, weight = 0.4, 2000
    ground = soil(size, 12)
    instance = hyxSDK.TerrainInstance(ground)
    instance.setEnableCompaction(False)
    rough = hyx.Material()
    rough.setFriction(5.0)
    for geometry in (instance.getGeometry(), (wheel := body(hyxCollide.Cylinder(radius, 1.0))).getGeometries()[0]):
        geometry.setMaterial(rough)
    wheel.setMass(weight / GRAVITY)
    wheel.setPosition(hyx.Vec3(-5, 0, radius))
    wheel.setVelocity(hyx.Vec3(1, 0, 0))
    wheel.setAngularVelocity(hyx.Vec3(0, 1.1 / radius, 0))
    world = simulation(instance, wheel)
    material = ground.getMaterial(0)
    pull = demand * weight * math.tan(material.reposeAngle)
    slips = []
    while world.getTimeStamp() < 3:
        wheel.addForce(hyx.Vec3(-pull, 0, 0))
        wheel.addTorque(hyx.Vec3(0, pull * radius, 0))
        world.step()
        slips.append(1 - wheel.getVelocity().x / (wheel.getAngularVelocity().y * radius))
    shears = statistics.median(slips[60:]) * 0.2 / material.shearLength
    measured("part of the greatest pull", demand, 1 + math.expm1(-shears) / shears, 0.03)
