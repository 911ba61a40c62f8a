"""A spinning wheel that is held at one end of its axle does not fall: it goes round."""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
wheel = hyx.RigidBody()
wheel.add(hyxCollide.Geometry(hyxCollide.Cylinder(0.5, 0.12)))
wheel.add(hyxCollide.Geometry(hyxCollide.Cylinder(0.04, 1.6)))
wheel.setPosition((0, 0.8, 0))
wheel.setAngularVelocity((0, 60, 0))  # rad/s
sim.add(wheel)
sim.add(hyx.BallJoint((0, 0, 0), wheel))
path = []
while sim.getTimeStamp() < 3:
    sim.step()
    path.append(wheel.getTransform().transformPoint((0, 0.8, 0)))
app.createVisual(sim, 2)
hyxOSG.setDiffuseColor(wheel, (0.85, 0.6, 0.25, 1), app.getRoot())
app.getSceneRoot().addChild(hyxOSG.createPolyline(path, (0.8, 0.15, 0.1, 1), 3))
app.getSceneRoot().addChild(hyxOSG.createSphere((0, 0, 0), (0.2, 0.2, 0.25, 1), 0.07))
turned = math.atan2(path[-1].x, path[-1].y)
print(f"went round by {math.degrees(turned):.0f} degrees and sank by {-min(point.z for point in path):.3f} m")
app.setCameraHome((1.5, -3.5, 2.2), (0, 0.3, 0))
app.takeScreenShot("gyroscope.png")
