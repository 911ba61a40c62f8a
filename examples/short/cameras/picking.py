"""What is at a pixel: the geometry, its body and the point, as a click would find it."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(15):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)), f"box {number}")
    box.setPosition((0.8 * (number % 5) - 1.6, 0.8 * (number // 5) - 0.8, 0.3))
    sim.add(box)
app.createVisual(sim)
for number, box in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(box, (0.3 + 0.04 * number, 0.5, 0.8 - 0.04 * number, 1), app.getRoot())
app.setCameraHome((0.8, -4, 3.6), (0, 0, 0))
app.render()
found = hyxOSG.getHoveredGeometryContact(app.getCamera(), sim.getSpace(), 320, 200)  # pixels from the lower left
body = found.getRigidBody(0)
print(body.getName(), found.getPoint(0).point)
app.setSelection(body)
sim.step()
app.takeScreenShot("picking.png")
