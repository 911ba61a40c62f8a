"""One state, two futures: saved, run on, restored and run on with a push."""

import hyx
import hyxCollide
import hyxOSG
import numpy
from PIL import Image

app = hyxOSG.ExampleApplication()
app.initViewer(320, 240)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(8):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.2)))
    box.setPosition((0, 0, 0.2 + 0.4 * number))
    sim.add(box)
app.createVisual(sim)
app.setCameraHome((2, -6, 3), (0.5, 0, 1.2))
sim.stepTo(0.5)
state = sim.saveState()
sim.stepTo(1.5)
quiet = app.render()
sim.restoreState(state)
for box in sim.getRigidBodies()[4:]:
    box.setVelocity((2, 0, 0))
sim.stepTo(1.5)
Image.fromarray(numpy.hstack([quiet, app.render()])).save("saved_state.png")
