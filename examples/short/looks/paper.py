"""A figure for print: the look "paper", smooth edges before white."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.setLook("paper")
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Box(3, 3, 0.01)))
for number in range(10):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.25, 0.25, 0.25)))
    row = (0, 0, 0, 0, 1, 1, 1, 2, 2, 3)[number]
    place = number - (0, 4, 7, 9)[row] - (3 - row) / 2
    box.setPosition((0.54 * place, 0, 0.27 + 0.5 * row))
    sim.add(box)
sim.stepTo(0.5)
app.createVisual(sim)
for box in sim.getRigidBodies():
    hyxOSG.setDiffuseColor(box, (0.3, 0.5, 0.7, 1), app.getRoot())
app.setCameraHome((1.2, -3.8, 2), (0, 0, 0.7))
app.takeScreenShot("paper.png")
