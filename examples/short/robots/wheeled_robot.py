"""A robot that follows a circle: each wheel gets the speed that its way needs."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
base = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.2, 0.05)), "base")
base.setPosition((0, -1.2, 0.2))
caster = hyxCollide.Geometry(hyxCollide.Sphere(0.08))
caster.setMaterial(hyx.Material("smooth"))
caster.getMaterial().setFriction(0)
base.add(caster, hyx.AffineMatrix4x4.translate((0.25, 0, -0.12)))
sim.add(base)
for side in (-0.28, 0.28):
    wheel = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Cylinder(0.15, 0.02)))
    wheel.setPosition((-0.15, side - 1.2, 0.15))
    sim.add(wheel)
    hinge = hyx.Hinge(wheel.getPosition(), (0, 1, 0), wheel, base)
    hinge.getMotor1D().setSpeed(0.8 * (1 - side / 1.2) / 0.15)  # rad/s: 0.8 m/s on a circle of 1.2 m
    hinge.getMotor1D().setEnable(True)
    sim.add(hinge)
path = []
while sim.getTimeStamp() < 9:
    sim.step()
    path.append(base.getPosition())
app.createVisual(sim, 2)
app.getSceneRoot().addChild(hyxOSG.createPolyline(path, (0.85, 0.2, 0.15, 1), 4))
app.setCameraHome((0, -4, 3.2), (0, 0, 0))
app.takeScreenShot("wheeled_robot.png")
