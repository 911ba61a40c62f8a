"""A spot light that looks down on a box, and its shadow."""

import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.HeightField(101, 101, 8, 8)))
box = hyxCollide.Geometry(hyxCollide.Box(0.4, 0.4, 0.4))
box.setLocalPosition((0.3, 0, 0.4))
sim.add(box)
app.createVisual(sim)
hyxOSG.setDiffuseColor(box, (0.9, 0.55, 0.2, 1), app.getRoot())
decorator = app.getSceneDecorator()
decorator.setBackgroundColor((0.05, 0.06, 0.1))
decorator.setEnableLights(decorator.LIGHT0)
decorator.setEnableSkyLight(False)
decorator.setEnableCalculateLightPositions(decorator.LIGHT0, False)
light = decorator.getLightSource(decorator.LIGHT0)
light.setPosition((-2, -1.5, 3.5, 1))
light.setDirection((2, 1.5, -3.3))
light.setSpotCutoff(22)  # degrees from its axis
light.setSpotExponent(20)
app.setCameraHome((0.5, -4.5, 3), (0, 0, 0.2))
app.takeScreenShot("spot_light.png")
