"""What a window can show of itself: the figures of F2, the shapes, contacts and joints of F9, a selection."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(4):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.4, 0.4, 0.25)), f"box {number}")
    box.setPosition((0.15 * number, 0, 0.25 + 0.5 * number))
    sim.add(box)
lamp = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.25)), "lamp")
lamp.setPosition((-1.5, 0, 1.2))
lamp.setVelocity((0.6, 0, 0))
sim.add(lamp)
sim.add(hyx.BallJoint((-1.5, 0, 2.2), lamp))
app.createVisual(sim)
sim.stepTo(1)
app.setEnableStatus(True)
app.setEnableDebugRenderer(True)
app.setSelection(lamp)
app.setCameraHome((1, -5, 2), (-0.3, 0, 1))
app.stopAfter(1.5)
app.run()
app.takeScreenShot("overlays.png")
