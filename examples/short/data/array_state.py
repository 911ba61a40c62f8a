"""All bodies' states as arrays: a thousand balls are placed and moved by NumPy."""

import hyx
import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.setGravity((0, 0, 0))
ball = hyxCollide.Sphere(0.05)
for _ in range(1000):
    sim.add(hyx.RigidBody(hyxCollide.Geometry(ball)))
number = numpy.arange(1000) + 0.5
height, turn = 1 - 2 * number / 1000, numpy.pi * (1 + 5**0.5) * number
ring = numpy.sqrt(1 - height**2)
sim.positions = 1.5 * numpy.stack([ring * numpy.cos(turn), ring * numpy.sin(turn), height], -1)
sim.velocities = numpy.cross([0, 0, 1.0], sim.positions) * (0.5 + sim.positions[:, 2:])
sim.stepTo(0.6)
app.createVisual(sim)
colors = hyxOSG.ColorScale("viridis", 0, 2).colors(numpy.linalg.norm(sim.velocities, axis=1))
for body, color in zip(sim.getRigidBodies(), colors):
    hyxOSG.setDiffuseColor(body, tuple(color), app.getRoot())
app.setCameraHome((1, -5, 1.5), (0, 0, 0))
app.takeScreenShot("array_state.png")
