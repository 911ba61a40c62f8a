"""A turntable that follows the speed it is given, whatever stands on it.

KINEMATICS bodies move others and are moved by none; STATIC ones stand still.
"""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
table = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1.5, 1.5, 0.15)))
table.setPosition((0, 0, 0.3))
table.setMotionControl(hyx.RigidBody.KINEMATICS)
table.setAngularVelocity((0, 0, 2.2))  # rad/s
sim.add(table)
for number in range(12):
    angle, radius = math.tau * number / 12, 0.4 + 0.9 * (number % 3) / 2
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.12, 0.12, 0.12)))
    box.setPosition((radius * math.cos(angle), radius * math.sin(angle), 0.58))
    sim.add(box)
app.createVisual(sim)
for body in sim.getRigidBodies():
    color = (0.35, 0.5, 0.65, 1) if body is table else (0.9, 0.5, 0.2, 1)
    hyxOSG.setDiffuseColor(body, color, app.getRoot())
sim.stepTo(1.1)
app.setCameraHome((1, -5.5, 4), (0, 0, 0.2))
app.takeScreenShot("kinematic_body.png")
