"""A window: drag to turn, wheel to come nearer, hold control and drag to pull a box. Escape ends it."""

import random

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
sim = app.getSimulation()
ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
ground.setMotionControl(hyx.RigidBody.STATIC)
sim.add(ground)
for number in range(20):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)))
    box.setPosition(hyx.Vec3(random.uniform(-2, 2), random.uniform(-2, 2), 1 + 0.7 * number))
    sim.add(box)
app.initViewer(1024, 768)
app.createVisual(sim)
app.setCameraHome(hyx.Vec3(6, -9, 5), hyx.Vec3(0, 0, 1))
app.run()
