"""A nut on a smooth rod: a cylindrical joint lets it turn about its axis and slide along it."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
rod = hyxCollide.Geometry(hyxCollide.Cylinder(0.08, 3.4))
rod.setLocalRotation(hyx.Quat((0, 1, 0), (1, 0, 0)))  # from along y to along x
sim.add(rod)
nut = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.15, 0.4, 0.4)))
nut.getGeometries()[0].setEnableCollisions(rod, False)
nut.setPosition((-1.5, 0, 0))
sim.add(nut)
joint = hyx.CylindricalJoint((0, 0, 0), (1, 0, 0), nut)
sim.add(joint)
for dof, speed in ((joint.ROTATION, 2), (joint.TRANSLATION, 1)):
    joint.getMotor1D(dof).setSpeed(speed)  # rad/s about the axis, m/s along it
    joint.getMotor1D(dof).setEnable(True)
sim.stepTo(1.7)
app.createVisual(sim)
hyxOSG.setDiffuseColor(nut, (0.8, 0.6, 0.2, 1), app.getRoot())
app.setCameraHome((1.2, -4, 1.8), (0, 0, 0))
app.takeScreenShot("cylindrical_joint.png")
