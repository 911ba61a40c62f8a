"""Text that stands in the world, that turns to the camera, and that lies on the picture."""

import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
box = hyxCollide.Geometry(hyxCollide.Box(1, 0.3, 0.5))
box.setLocalPosition((0, 0, 0.5))
sim.add(box)
app.createVisual(sim)
hyxOSG.setDiffuseColor(box, (0.35, 0.5, 0.6, 1), app.getRoot())
painted = hyxOSG.Text("42 kg", (-0.5, -0.31, 0.35), (1, 1, 1, 1))
painted.setAxisAlignment(hyxOSG.Text.XZ_PLANE)
painted.setCharacterSize(0.35)  # metres
app.getSceneRoot().addChild(painted)
hyxOSG.addText(box, app.getRoot(), "crate", (0, 0, 0.7), (0.7, 0.1, 0.1, 1), 0.3)
app.getSceneDecorator().setText(0, "Rows of the picture, from the top", (0.1, 0.1, 0.2, 1))
app.getSceneDecorator().setText(1, "for titles and figures", (0.1, 0.3, 0.6, 1))
app.setCameraHome((1, -3.6, 1.8), (0, 0, 0.6))
app.takeScreenShot("texts.png")
