"""The same push at three places of three bars: beside the centre of mass it turns them, too.

A force acts during the next step only, so it is added before each.
"""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.setGravity((0, 0, 0))
bars = []
for number in range(3):
    bar = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.1, 0.8, 0.1)))
    bar.setPosition((0, 2 * number - 2, 0))
    sim.add(bar)
    bars.append(bar)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(bar, app.getSceneRoot()), (0.3, 0.55, 0.75, 1))
for _ in range(90):
    for bar, arm in zip(bars, (0, 0.3, 0.7)):
        place = bar.getTransform().transformPoint((0, arm, 0))
        bar.addForceAtPosition((60, 0, 0), place)  # newtons
    sim.step()
root = app.getSceneRoot()
for bar, arm in zip(bars, (0, 0.3, 0.7)):
    place = bar.getTransform().transformPoint((0, arm, 0))
    root.addChild(hyxOSG.createLine(place - hyx.Vec3(0.8, 0, 0), place, (0.9, 0.2, 0.1, 1), 6))
app.setCameraHome((0, -2, 8), (0.6, -0.2, 0))
app.takeScreenShot("forces.png")
