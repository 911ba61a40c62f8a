"""Balls of different restitution; what comes back is its square of the height."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
floor = hyxCollide.Geometry(hyxCollide.Plane())
floor.setMaterial(hyx.Material("floor"))
sim.add(floor)
for number, restitution in enumerate((0.2, 0.5, 0.7, 0.9)):
    rubber = hyx.Material(f"rubber {number}")
    pair = hyx.ContactMaterial(rubber, floor.getMaterial())
    pair.setRestitution(restitution)
    sim.add(pair)
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(0.2))
    geometry.setMaterial(rubber)
    ball = hyx.RigidBody(geometry)
    ball.setPosition((2.3 * number - 4.4, 0, 2.5))
    ball.setVelocity((0.8, 0, 0))
    sim.add(ball)
app.createVisual(sim)
for ball in sim.getRigidBodies():
    hyxOSG.setDiffuseColor(ball, (0.9, 0.4, 0.25, 1), app.getRoot())
hyxOSG.createRigidBodyTrajectoriesVisual(sim, app.getSceneRoot(), 0, 300)
app.setCameraHome((0, -9, 2.5), (0, 0, 1))
while sim.getTimeStamp() < 2.5:
    sim.step()  # draws every second step
    app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
app.takeScreenShot("bouncing.png")
