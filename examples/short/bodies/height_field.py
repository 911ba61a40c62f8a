"""Hills of an array: balls roll down to where the ground is lowest."""

import hyx
import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
x, y = numpy.meshgrid(numpy.linspace(-4, 4, 81), numpy.linspace(-4, 4, 81))
heights = 0.5 * numpy.cos(1.6 * x) * numpy.cos(1.6 * y) + 0.02 * (x**2 + y**2)
hills = hyxCollide.HeightField(81, 81, 8, 8)  # points and metres
hills.heights = heights
ground = hyxCollide.Geometry(hills)
sim.add(ground)
for number in range(40):
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.15)))
    ball.setPosition((0.9 * (number % 8) - 3.1, 1.4 * (number // 8) - 2.9, 1.6))
    ball.setAngularDamping(0.5)
    sim.add(ball)
app.createVisual(sim)
hyxOSG.setDiffuseColor(ground, (0.55, 0.65, 0.45, 1), app.getRoot())
for ball in sim.getRigidBodies():
    hyxOSG.setDiffuseColor(ball, (0.9, 0.35, 0.25, 1), app.getRoot())
sim.stepTo(4)
app.setCameraHome((3, -7.5, 5.5), (0, 0, 0))
app.takeScreenShot("height_field.png")
