"""A source that pours boxes into a bin, thirty each second."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for x, y, half in ((1.2, 0, (0.05, 1.25, 0.5)), (-1.2, 0, (0.05, 1.25, 0.5)), (0, 1.2, (1.25, 0.05, 0.5))):
    wall = hyxCollide.Geometry(hyxCollide.Box(half))
    wall.setLocalPosition((x, y, 0.5))
    sim.add(wall)
source = hyx.RigidBodyEmitter()
source.setBoxTemplate((0.15, 0.1, 0.1))
source.setPosition((0, 0.3, 2.5))
source.setHalfExtents((0.6, 0.6, 0.2))
source.setRate(30)  # bodies a second
sim.add(source)
app.createVisual(sim)
hyxOSG.createVisual(source, app.getSceneRoot())
sim.stepTo(3.5)
print(source.getNumEmitted(), "bodies")
app.setCameraHome((1.5, -5, 3.5), (0, 0, 0.7))
app.takeScreenShot("emitter.png")
