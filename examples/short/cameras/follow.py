"""A camera that follows a body, wherever it goes."""

import hyx
import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
hill = hyxCollide.HeightField(61, 21, 30, 6)
x, y = numpy.meshgrid(numpy.linspace(15, -15, 61), numpy.linspace(-3, 3, 21))
hill.heights = 0.12 * x + 0.15 * y**2 + 0.1 * numpy.sin(2 * x)
sim.add(hyxCollide.Geometry(hill))
ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.4)))
ball.setPosition((-13, 0.5, 2.4))
sim.add(ball)
app.createVisual(sim, 2)
hyxOSG.setDiffuseColor(ball, (0.9, 0.35, 0.2, 1), app.getRoot())
node = hyxOSG.findGeometryNode(ball.getGeometries()[0], app.getRoot())
app.setOrbitCamera(node, 5, -2.0, 0.5)  # metres from it, azimuth and elevation in radians
sim.stepTo(4)
print(f"the ball is at x = {ball.getPosition().x:.1f} m")
app.takeScreenShot("follow.png")
