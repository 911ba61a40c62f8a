"""A turning crank that drives a piston by a rod."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
parts = {}
for name, half, x, color in (
    ("crank", (0.3, 0.05, 0.06), 0.3, (0.85, 0.35, 0.25, 1)),
    ("rod", (0.6, 0.05, 0.05), 1.2, (0.9, 0.7, 0.3, 1)),
    ("piston", (0.2, 0.2, 0.2), 2, (0.35, 0.55, 0.75, 1)),
):
    parts[name] = body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(half)), name)
    body.setPosition((x, 0, 0))
    body.getGeometries()[0].setEnableCollisions(False)
    sim.add(body)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, app.getSceneRoot()), color)
drive = hyx.Hinge((0, 0, 0), (0, 1, 0), parts["crank"])
drive.getMotor1D().setSpeed(3)  # rad/s
drive.getMotor1D().setEnable(True)
for joint in (
    drive,
    hyx.Hinge((0.6, 0, 0), (0, 1, 0), parts["crank"], parts["rod"]),
    hyx.Hinge((1.8, 0, 0), (0, 1, 0), parts["rod"], parts["piston"]),
    hyx.Prismatic((2, 0, 0), (1, 0, 0), parts["piston"]),
):
    sim.add(joint)
sim.stepTo(1.6)
app.setCameraHome((1, -4.5, 1.2), (0.9, 0, 0))
app.takeScreenShot("slider_crank.png")
