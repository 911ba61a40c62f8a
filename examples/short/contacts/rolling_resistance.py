"""Balls that roll ever less far: the rolling resistance is the arm of the normal force, in metres."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number, length in enumerate((0, 0.002, 0.005, 0.01, 0.02)):
    stuff = hyx.Material(f"stuff {number}")
    stuff.setRollingResistance(length)
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(0.2))
    geometry.setMaterial(stuff)
    ball = hyx.RigidBody(geometry)
    ball.setPosition((-3.5, 0.7 * number - 1.4, 0.2))
    ball.setVelocity((2, 0, 0))
    ball.setAngularVelocity((0, 10, 0))  # rolls from the beginning: speed over radius
    sim.add(ball)
    label = hyxOSG.createText(f"{length * 1000:g} mm", (-4.2, 0.7 * number - 1.4, 0.2), (0.1, 0.1, 0.2, 1), 0.3)
    app.getSceneRoot().addChild(label)
app.createVisual(sim)
for ball in sim.getRigidBodies():
    hyxOSG.setDiffuseColor(ball, (0.3, 0.6, 0.5, 1), app.getRoot())
hyxOSG.createRigidBodyTrajectoriesVisual(sim, app.getSceneRoot(), 0, 300)
app.setCameraHome((-0.6, -6.5, 4.5), (-0.6, 0, 0))
while sim.getTimeStamp() < 2.5:
    sim.step()  # draws every second step
    app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
app.takeScreenShot("rolling_resistance.png")
