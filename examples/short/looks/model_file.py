"""A model of a file, as a visual and as the shape of a body."""

import hyx
import hyxCollide
import hyxOSG

with open("pyramid.obj", "w") as file:
    file.write("v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nv 0 0 1.4\nf 4 3 2 1\nf 1 2 5\nf 2 3 5\nf 3 4 5\nf 4 1 5\n")

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
mesh = hyxOSG.createTrimesh(hyxOSG.readNodeFile("pyramid.obj"))
for number in range(6):
    body = hyx.RigidBody(hyxCollide.Geometry(mesh))
    body.setPosition((0.3 * number, 0.2 * (number % 2), 1 + 2 * number))
    body.setRotation(hyx.Quat(0.5 * number, (1, 1, 0)))
    sim.add(body)
sim.stepTo(4)
app.createVisual(sim)
for number, body in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(body, (0.9, 0.75 - 0.1 * number, 0.3, 1), app.getRoot())
app.setCameraHome((2, -8, 4), (0.6, 0, 0.5))
app.takeScreenShot("model_file.png")
