"""A box on a ground, in a picture."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
sim = app.getSimulation()
ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(3, 3, 0.1)))  # half extents, metres
ground.setPosition(hyx.Vec3(0, 0, -0.1))
ground.setMotionControl(hyx.RigidBody.STATIC)
sim.add(ground)
box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
box.setPosition(hyx.Vec3(0, 0, 3))
sim.add(box)
sim.stepTo(2)  # seconds
app.createVisual(sim)
app.setCameraHome(hyx.Vec3(4, -6, 3), hyx.Vec3(0, 0, 0.5))
app.takeScreenShot("first_picture.png")
