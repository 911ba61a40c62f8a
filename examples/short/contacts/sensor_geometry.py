"""A gate that notices what passes it and stops nothing."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
gate = hyxCollide.Geometry(hyxCollide.Box(0.15, 1.5, 0.5))
gate.setLocalPosition((0.3, 0, 0.5))
gate.setSensor(True)
sim.add(gate)
for number in range(7):
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.2)))
    ball.setPosition((-2, 0.42 * number - 1.3, 0.2))
    ball.setVelocity((1 + 0.25 * number, 0, 0))
    sim.add(ball)
app.createVisual(sim, 1, True)  # sensors, too
hyxOSG.setAlpha(hyxOSG.findGeometryNode(gate, app.getRoot()), 0.3)
passed = set()
while sim.getTimeStamp() < 2:
    sim.step()
    for contact in sim.getSpace().getGeometryContacts(gate):
        passed |= {body for body in (contact.getRigidBody(0), contact.getRigidBody(1)) if body}
for body in passed:
    hyxOSG.setDiffuseColor(body, (0.9, 0.35, 0.2, 1), app.getRoot())
app.setCameraHome((0.3, -4.5, 3), (0.2, 0, 0))
app.takeScreenShot("sensor_geometry.png")
