"""The same scene from four sides: a camera that circles, and its pictures as arrays."""

import math

import hyx
import hyxCollide
import hyxOSG
import numpy
from PIL import Image

app = hyxOSG.ExampleApplication()
app.initViewer(320, 200)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Box(2, 2, 0.02)))
for x, y, shape in ((-0.7, -0.6, hyxCollide.Box(0.4, 0.4, 0.5)), (0.7, 0.6, hyxCollide.Sphere(0.5))):
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setPosition((x, y, 0.53))
    sim.add(body)
app.createVisual(sim, 2)
for body, color in zip(sim.getRigidBodies(), ((0.9, 0.5, 0.2, 1), (0.3, 0.5, 0.8, 1))):
    hyxOSG.setDiffuseColor(body, color, app.getRoot())
views = []
for quarter in range(4):
    angle = math.pi / 2 * quarter - 1
    app.setCameraHome((5 * math.cos(angle), 5 * math.sin(angle), 3), (0, 0, 0.3))
    views.append(app.render())  # uint8 of shape (200, 320, 3)
rows = [numpy.hstack(views[:2]), numpy.hstack(views[2:])]
Image.fromarray(numpy.vstack(rows)).save("orbit.png")
