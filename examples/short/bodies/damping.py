"""Balls thrown alike through air of different thickness; their paths are coloured by speed."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number, damping in enumerate((0, 0.2, 0.5, 0.9)):
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.15)))
    ball.setPosition((-4, 0.7 * number, 0.3))
    ball.setVelocity((6, 0, 7))  # m/s
    ball.setLinearDamping(damping)  # share of the speed lost in a second
    sim.add(ball)
app.createVisual(sim)
speeds = hyxOSG.ScalarColorMap(hyxOSG.ScalarColorMap_VIRIDIS, 0, 9)
hyxOSG.createRigidBodyTrajectoriesVisual(sim, app.getSceneRoot(), 0, 200, speeds)
bar = hyxOSG.ColorBar(app, hyxOSG.ColorScale("viridis", 0, 9), "m/s")
app.setCameraHome((0, -9, 3.5), (0, 0, 1))
while sim.getTimeStamp() < 1.2:
    app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
app.takeScreenShot("damping.png")
