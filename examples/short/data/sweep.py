"""Runs over a grid of parameters, on two processes, and the map of what came out."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
from hyxsweep import sweep
from PIL import Image


def build(angle, speed):
    sim = hyxSDK.Simulation()
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.1)))
    ball.setVelocity((speed * numpy.cos(angle), 0, speed * numpy.sin(angle)))
    ball.setLinearDamping(0.2)
    sim.add(ball)
    return sim


def measure(sim):
    return {"way": sim.positions[-1, 0], "height": sim.positions[-1, 2]}


if __name__ == "__main__":
    design = {"angle": numpy.linspace(0.1, 1.5, 12), "speed": numpy.linspace(2, 12, 20)}
    ways = sweep(build, design, measure, seconds=1, scheduler=2, progress=False).dataset()["way"]
    colors = hyxOSG.ColorScale("viridis", 0, ways.max()).colors(ways.values)[:, :3].reshape(12, 20, 3)
    picture = Image.fromarray((255 * colors[::-1]).astype(numpy.uint8))
    picture.resize((640, 384), Image.Resampling.NEAREST).save("sweep.png")
