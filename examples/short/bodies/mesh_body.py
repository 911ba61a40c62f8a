"""A body of a mesh that NumPy computes: links of a chain, which collide as rings do."""

import math

import hyx
import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
around, across = numpy.meshgrid(numpy.arange(32), numpy.arange(12), indexing="ij")
u, v = around * math.tau / 32, across * math.tau / 12
out = 0.5 + 0.11 * numpy.cos(v)
corners = numpy.stack([out * numpy.cos(u) * 1.3, out * numpy.sin(u), 0.11 * numpy.sin(v)], -1).reshape(-1, 3)
i = [((around + a) % 32 * 12 + (across + b) % 12).ravel() for a, b in ((0, 0), (1, 0), (1, 1), (0, 1))]
ring = hyxCollide.Trimesh(corners, numpy.stack([i[0], i[1], i[2], i[0], i[2], i[3]], -1).ravel())
for number in range(4):
    link = hyx.RigidBody(hyxCollide.Geometry(ring))
    link.setPosition((0.95 * number, 0, 2))
    link.setRotation(hyx.Quat(math.pi / 2 * (number % 2), (1, 0, 0)))
    link.setMotionControl(hyx.RigidBody.STATIC if number in (0, 3) else hyx.RigidBody.DYNAMICS)
    sim.add(link)
    visual = hyxOSG.createVisual(link, app.getSceneRoot())
    hyxOSG.setDiffuseColor(visual, (0.75, 0.6, 0.3, 1) if number % 2 else (0.5, 0.6, 0.7, 1))
sim.stepTo(1)
app.setCameraHome((1.4, -3.5, 3), (1.4, 0, 1.9))
app.takeScreenShot("mesh_body.png")
