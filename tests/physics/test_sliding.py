"""Boxes and discs of any size that slide and stick on floors of any kind, drawn by chance."""

import math
import random

import hyx
import hyxCollide
import pytest
from physics_scene import GRAVITY, body, run, simulation

STEPS = pytest.mark.parametrize("step", [1 / 60, 1 / 240, 1 / 1000], ids=["1/60 s", "1/240 s", "1/1000 s"])
FLOORS = pytest.mark.parametrize("floor", ["plane", "box", "field", "mesh"])
DRAWS = pytest.mark.parametrize("draw", range(4))
UPRIGHT = hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0))


def turned(angle, axis):
    return hyx.Quat(angle, hyx.Vec3(*axis))


class Slope:
    """A floor through the origin that falls by an angle towards a heading."""

    def __init__(self, floor, angle, heading):
        # The first factor turns first.
        self.turn = turned(angle, (0, 1, 0)) * turned(heading, (0, 0, 1))
        self.down, self.up = self.turn * hyx.Vec3(1, 0, 0), self.turn * hyx.Vec3(0, 0, 1)
        shapes = {
            "plane": lambda: hyxCollide.Plane(self.up, hyx.Vec3()),
            "box": lambda: hyxCollide.Box(30, 30, 1),
            "field": lambda: hyxCollide.HeightField(61, 61, 60.0, 60.0),
            "mesh": lambda: hyxCollide.Trimesh(
                [(-30, -30, 0), (30, -30, 0), (30, 30, 0), (-30, 30, 0)], [0, 1, 2, 0, 2, 3]
            ),
        }
        self.body = hyx.RigidBody(hyxCollide.Geometry(shapes[floor]()))
        if floor != "plane":
            self.body.setRotation(self.turn)
        if floor == "box":
            self.body.setPosition(self.up * -1)
        self.body.setMotionControl(hyx.RigidBody.STATIC)

    def lay(self, piece, height, yaw, friction):
        """Upon the floor, turned about its normal; cylinders stand."""
        shape = piece.getGeometries()[0].getShape()
        piece.setRotation((UPRIGHT if isinstance(shape, hyxCollide.Cylinder) else turned(yaw, (0, 0, 1))) * self.turn)
        piece.setPosition(self.turn * hyx.Vec3(0.13, 0.07, height))
        material = hyx.Material()
        material.setFriction(friction)
        for one in (self.body, piece):
            one.getGeometries()[0].setMaterial(material)
        return simulation(self.body, piece)


def flat_piece(chance):
    """With the height of its middle."""
    half = math.exp(chance.uniform(math.log(0.05), math.log(0.5)))
    height, mass = 0.3 * half, math.exp(chance.uniform(math.log(0.1), math.log(100)))
    if chance.random() < 0.3:
        return body(hyxCollide.Cylinder(half, 2 * height), mass=mass), height
    return body(hyxCollide.Box(half, half * chance.uniform(0.7, 1.5), height), mass=mass), height


@STEPS
@FLOORS
@DRAWS
def test_what_slides_goes_straight_by_the_formula(measured, floor, step, draw):
    chance = random.Random(draw)
    friction, start = chance.uniform(0.05, 0.7), chance.choice([0, 1])
    angle = math.atan(friction) + chance.uniform(0.05, 0.4)
    slope = Slope(floor, angle, chance.uniform(0, 6))
    piece, height = flat_piece(chance)
    world = slope.lay(piece, height, chance.uniform(0, 3), friction)
    world.setTimeStep(step)
    piece.setVelocity(slope.down * start)
    run(world, 1)
    speed = start + GRAVITY * (math.sin(angle) - friction * math.cos(angle)) * world.getTimeStamp()
    measured.relative("speed, m/s", speed, piece.getVelocity().dot(slope.down), 0.005)
    measured("aside, of the speed", 0, (piece.getVelocity() - slope.down * speed).length() / speed, 0.005)


@FLOORS
@DRAWS
def test_what_friction_holds_stays(measured, floor, draw):
    chance = random.Random(draw)
    friction = chance.uniform(0.1, 0.9)
    slope = Slope(floor, math.atan(friction) * chance.uniform(0.5, 0.97), chance.uniform(0, 6))
    piece, height = flat_piece(chance)
    world = slope.lay(piece, height, chance.uniform(0, 3), friction)
    place = piece.getPosition() * 1
    run(world, 5)
    measured("way, m", 0, (piece.getPosition() - place).length(), 1e-3)


@STEPS
@FLOORS
@DRAWS
def test_what_is_launched_keeps_its_heading(measured, floor, step, draw):
    chance = random.Random(draw)
    friction, speed, heading = chance.uniform(0.1, 0.9), chance.uniform(1, 6), chance.uniform(0, 6)
    length, width, height = (math.exp(chance.uniform(math.log(0.05), math.log(0.5))) for _ in range(3))
    # Lower than what would tip it over.
    height = min(height, 0.5 * min(length, width) / friction, length, width)
    piece = body(hyxCollide.Box(length, width, height))
    slope = Slope(floor, 0, 0)
    world = slope.lay(piece, height, heading, friction)
    world.setTimeStep(step)
    way, start = hyx.Vec3(math.cos(heading), math.sin(heading), 0), piece.getPosition() * 1
    piece.setVelocity(way * speed)
    run(world, speed / friction / GRAVITY + 0.3)
    front = piece.getRotation() * hyx.Vec3(1, 0, 0)
    measured("yaw, deg", 0, math.degrees(math.asin(front.cross(way).z)), 0.3)
    measured.relative("way, m", speed**2 / (2 * friction * GRAVITY), (piece.getPosition() - start).dot(way), 0.01)
