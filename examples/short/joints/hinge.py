"""A door on a hinge that goes no farther than its range."""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
frame = hyxCollide.Geometry(hyxCollide.Box(0.08, 0.08, 1.1))
frame.setLocalPosition((-0.1, 0, 1.1))
sim.add(frame)
door = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.03, 1)))
door.setPosition((0.5, 0, 1.05))
door.setAngularVelocity((0, 0, 2))  # rad/s
sim.add(door)
hinge = hyx.Hinge((0, 0, 0), (0, 0, 1), door)  # a point of the axis and its direction, in the world
hinge.getRange1D().setRange(hyx.RangeReal(0, math.radians(75)))
hinge.getRange1D().setEnable(True)
sim.add(hinge)
app.createVisual(sim)
hyxOSG.setDiffuseColor(door, (0.7, 0.45, 0.25, 1), app.getRoot())
hyxOSG.createAxes(hinge, app.getSceneRoot(), 1.5, 0.6)
sim.stepTo(1)
print(f"{math.degrees(hinge.getAngle()):.1f} degrees")
app.setCameraHome((1.8, -4, 3), (0.3, 0.2, 0.9))
app.takeScreenShot("hinge.png")
