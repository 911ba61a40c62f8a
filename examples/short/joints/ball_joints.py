"""A chain of ball joints between two points, with a weight that hangs in it."""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
bow = [(-1.6 * math.cos(math.pi * i / 16), 0, 2 - 1.2 * math.sin(math.pi * i / 16)) for i in range(17)]
links = []
for start, end in zip(bow, bow[1:]):
    start, end = hyx.Vec3(start), hyx.Vec3(end)
    link = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box((end - start).length() / 2 - 0.02, 0.05, 0.05)))
    link.setPosition((start + end) * 0.5)
    link.setRotation(hyx.Quat((1, 0, 0), end - start))  # from the first direction to the second
    sim.add(link)
    sim.add(hyx.BallJoint(start, link, links[-1] if links else None))
    links.append(link)
sim.add(hyx.BallJoint(bow[-1], links[-1]))
weight = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.3)))
weight.setPosition(links[11].getPosition() - hyx.Vec3(0, 0, 0.35))
sim.add(weight)
sim.add(hyx.BallJoint(links[11].getPosition(), weight, links[11]))
sim.stepTo(4)
app.createVisual(sim, 2)
for link in links:
    hyxOSG.setDiffuseColor(link, (0.75, 0.6, 0.3, 1), app.getRoot())
app.setCameraHome((0.3, -5, 1.6), (0, 0, 1))
app.takeScreenShot("ball_joints.png")
