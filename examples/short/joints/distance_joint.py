"""Rods between points: a distance joint keeps two points as far apart as they were."""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
root, balls = app.getSceneRoot(), []
for number in range(8):
    angle = math.tau * number / 8
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.15)))
    ball.setPosition((math.cos(angle), math.sin(angle), 0))
    ball.setVelocity((-3 * math.sin(angle), 3 * math.cos(angle), 0))
    sim.add(ball)
    balls.append(ball)
    joint = hyx.DistanceJoint(ball.getPosition(), (0, 0, 1.5), ball)
    sim.add(joint)
sim.stepTo(2)
app.createVisual(sim)
for ball in balls:
    hyxOSG.setDiffuseColor(ball, (0.9, 0.5, 0.2, 1), app.getRoot())
    root.addChild(hyxOSG.createLine((0, 0, 1.5), ball.getPosition(), (0.3, 0.3, 0.35, 1), 3))
app.setCameraHome((1, -4.5, 1.5), (0, 0, 0.5))
app.takeScreenShot("distance_joint.png")
