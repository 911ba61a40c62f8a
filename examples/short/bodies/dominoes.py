"""A row of dominoes in a curve, a second after the first was pushed."""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(45):
    angle = 1.5 * math.pi * number / 45
    domino = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.05, 0.2, 0.4)))
    domino.setPosition((2.5 * math.sin(angle), -2.5 * math.cos(angle), 0.4))
    domino.setRotation(hyx.Quat(angle, (0, 0, 1)))
    sim.add(domino)
    if number == 0:
        domino.setAngularVelocity((0, 2.5, 0))  # rad/s
        domino.setVelocity((1, 0, 0))  # m/s
app.createVisual(sim)
for number, domino in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(domino, (0.9, 0.3 + 0.5 * number / 45, 0.25, 1), app.getRoot())
sim.stepTo(1.6)
app.setCameraHome((0, -7, 5), (0, 0.2, 0))
app.takeScreenShot("dominoes.png")
