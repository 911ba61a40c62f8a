"""What presses where: the contacts of a pile, drawn as lines as long as their force."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for x, z in ((-0.55, 0.25), (0.55, 0.25), (0, 0.75), (0, 1.25)):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.45, 0.3, 0.25)))
    box.setPosition((x, 0, z))
    sim.add(box)
app.createVisual(sim)
for box in sim.getRigidBodies():
    hyxOSG.setAlpha(hyxOSG.findGeometryNode(box.getGeometries()[0], app.getRoot()), 0.4)
sim.stepTo(1)
for contact in sim.getSpace().getGeometryContacts():
    for point in contact.points():
        tip = point.point + point.getForce() * 3e-4  # metres for each newton
        app.getSceneRoot().addChild(hyxOSG.createLine(point.point, tip, (0.9, 0.15, 0.1, 1), 4))
print(sum(point.normalForce for contact in sim.getSpace().getGeometryContacts() for point in contact.points()), "N")
app.setCameraHome((1.2, -3.6, 1.6), (0, 0, 0.7))
app.takeScreenShot("contact_forces.png")
