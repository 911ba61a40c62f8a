"""A heap of grains: its slope is the angle of their friction."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
plate = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 0.05)))
plate.setPosition((0, 0, -0.05))
plate.setMotionControl(hyx.RigidBody.STATIC)
sim.add(plate)
grains = hyx.ParticleSystem()
grains.setParticleRadius(0.035)  # metres
grains.setFriction(0.6)
grains.addObstacle(plate)
sim.add(grains)
source = hyx.Emitter(grains)
source.setPosition((0, 0, 1))
source.setHalfExtents((0.08, 0.08, 0.1))
source.setRate(700)  # grains a second
source.setMaximumEmitted(1800)
sim.add(source)
sim.stepTo(3.5)
app.createVisual(sim)
hyxOSG.createVisual(grains, app.getSceneRoot())
app.setCameraHome((0.8, -2.6, 1.2), (0, 0, 0.2))
app.takeScreenShot("heap.png")
