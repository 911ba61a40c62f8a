"""Three lights of different colours, placed by hand."""

import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.HeightField(101, 101, 10, 10)))
for x, y in ((-1, 0), (0, 0.4), (1, 0)):
    ball = hyxCollide.Geometry(hyxCollide.Sphere(0.4))
    ball.setLocalPosition((x, y, 0.5))
    sim.add(ball)
app.createVisual(sim, 3)
lights = app.getSceneDecorator()
lights.setBackgroundColor((0.05, 0.05, 0.08))
lights.setEnableLights(lights.ALL)
lights.setEnableShaderState(True)  # light at each pixel
lights.setEnableCalculateLightPositions(lights.ALL, False)
for number, x, color in (
    (lights.LIGHT0, -3, (0.5, 0.1, 0.05, 1)),
    (lights.LIGHT1, 0, (0.05, 0.35, 0.1, 1)),
    (lights.LIGHT2, 3, (0.05, 0.15, 0.5, 1)),
):
    light = lights.getLightSource(number)
    light.setPosition((x, -1.5, 2.5, 1))  # 1: a place, 0: a direction
    light.setDiffuse(color)
    light.setAmbient((0, 0, 0, 1))
app.setCameraHome((0, -4.5, 2.2), (0, 0, 0.3))
app.takeScreenShot("lights.png")
