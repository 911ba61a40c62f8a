"""A sky of four colours, one for each corner of the picture, and no logo."""

import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
for number in range(7):
    ball = hyxCollide.Geometry(hyxCollide.Sphere(0.5 - 0.06 * number))
    ball.setLocalPosition((0.95 * number - 2.4, 0.4 * number, 0.2 * number))
    sim.add(ball)
app.createVisual(sim, 3)
sky = app.getSceneDecorator()
sky.setBackgroundColor((0.10, 0.12, 0.35), (0.25, 0.2, 0.45), (0.95, 0.6, 0.35), (0.9, 0.35, 0.3))
sky.setEnableLogo(False)
app.setCameraHome((0.5, -5.5, 0.8), (0.4, 0, 0.5))
app.takeScreenShot("background.png")
