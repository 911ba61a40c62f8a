"""Bodies that ignore each other: red balls pass the plate, blue ones lie on it."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
plate = hyxCollide.Geometry(hyxCollide.Box(1.8, 1, 0.05))
plate.setLocalPosition((0, 0, 1.2))
sim.add(plate)
for number in range(18):
    ball = hyxCollide.Geometry(hyxCollide.Sphere(0.18))
    body = hyx.RigidBody(ball)
    body.setPosition((0.55 * (number % 6) - 1.4, 0.6 * (number // 6) - 0.6, 2))
    sim.add(body)
    if number % 2:
        ball.setEnableCollisions(plate, False)
app.createVisual(sim)
for number, body in enumerate(sim.getRigidBodies()):
    color = (0.9, 0.3, 0.2, 1) if number % 2 else (0.25, 0.45, 0.85, 1)
    hyxOSG.setDiffuseColor(body, color, app.getRoot())
sim.stepTo(1.5)
app.setCameraHome((1, -6, 2.6), (0, 0, 0.7))
app.takeScreenShot("passing_through.png")
