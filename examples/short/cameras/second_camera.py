"""A camera of its own beside the window, and what each sees in one picture."""

import hyx
import hyxCollide
import hyxOSG
import numpy
from PIL import Image

app = hyxOSG.ExampleApplication()
app.initViewer(320, 240)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Box(3, 3, 0.02)))
for number in range(5):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.2)))
    box.setPosition((0.12 * number, 0, 0.25 + 0.42 * number))
    sim.add(box)
app.createVisual(sim)
for number, box in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(box, (0.9, 0.8 - 0.15 * number, 0.3, 1), app.getRoot())
eye = hyxOSG.RenderToImage(320, 240, hyxOSG.RenderTarget.COLOR_BUFFER, 4, hyxOSG.RenderTarget.RGB)
eye.setViewMatrixAsLookAt((0.3, 0, 7), (0.3, 0, 0), (0, 1, 0))  # from above
app.addRenderTarget(eye)
app.setCameraHome((2, -5, 2.5), (0.2, 0, 0.7))
window = app.render()
above = eye.pixels[::-1]  # row 0 is the lowest
Image.fromarray(numpy.hstack([window, above])).save("second_camera.png")
