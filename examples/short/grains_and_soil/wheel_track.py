"""A heavy wheel rolls over soft ground and leaves its track."""

import hyx
import hyxCollide
import hyxModel
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
field = hyxCollide.Geometry(hyxCollide.HeightField(161, 81, 6, 3))
sim.add(field)
ground = hyxModel.HeightFieldDeformer(field)
ground.setContactRadius(0.1)
sim.add(ground)
wheel = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Cylinder(0.4, 0.35)))
wheel.setMass(500)
wheel.setPosition((-2.2, 0, 0.42))
wheel.setVelocity((2.5, 0, 0))
wheel.setAngularVelocity((0, 6, 0))
sim.add(wheel)
surface = hyxOSG.DeformableHeightFieldRenderer(ground, app.getSceneRoot())
hyxOSG.setDiffuseColor(surface.getHeightFieldNode(), (0.6, 0.46, 0.32, 1))
sim.add(surface)
sim.stepTo(1.4)
hyxOSG.setDiffuseColor(hyxOSG.createVisual(wheel, app.getSceneRoot(), 2), (0.25, 0.27, 0.3, 1))
app.setCameraHome((0.5, -3.6, 2.4), (-0.4, 0, 0))
app.takeScreenShot("wheel_track.png")
