"""A car of five bodies: wheels on hinges, two of them driven, over a bumpy road."""

import hyx
import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
x, y = numpy.meshgrid(numpy.linspace(-6, 6, 121), numpy.linspace(-3, 3, 61))
road = hyxCollide.HeightField(121, 61, 12, 6)
road.heights = 0.12 * numpy.sin(2.5 * x) * numpy.sin(2 * y)
sim.add(hyxCollide.Geometry(road))
car = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.9, 0.4, 0.15)))
car.setPosition((-4, 0, 0.7))
sim.add(car)
for dx in (-0.6, 0.6):
    for dy in (-0.6, 0.6):
        wheel = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Cylinder(0.35, 0.2)))
        wheel.setPosition((dx - 4, dy, 0.6))
        sim.add(wheel)
        hinge = hyx.Hinge(wheel.getPosition(), (0, 1, 0), wheel, car)
        hinge.getMotor1D().setSpeed(5)  # rad/s
        hinge.getMotor1D().setEnable(dx < 0)
        sim.add(hinge)
app.createVisual(sim, 2)
for body in sim.getRigidBodies():
    color = (0.85, 0.25, 0.2, 1) if body is car else (0.25, 0.27, 0.3, 1)
    hyxOSG.setDiffuseColor(body, color, app.getRoot())
sim.stepTo(2.5)
app.setCameraHome(car.getPosition() + hyx.Vec3(1.5, -4, 2.2), car.getPosition())
app.takeScreenShot("car.png")
