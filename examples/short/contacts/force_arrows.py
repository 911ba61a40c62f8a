"""Arrows for the forces on a body and in a joint, kept up to date while the simulation runs."""

import hyx
import hyxCollide
import hyxOSG
import hyxRender

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
box, rod = (hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(x, 0.3, 0.3))) for x in (0.4, 0.7))
box.setPosition((-1.5, 0, 0.3))
rod.setPosition((1.7, 0, 1))
hinge = hyx.Hinge((1, 0, 1), (0, 1, 0), rod)
hinge.getLock1D().setEnable(True)
for item in (box, rod, hinge):
    sim.add(item)
arrows = hyxOSG.ForceArrowRenderer()
arrows.setScale(0.0008)  # metres for each newton
arrows.add(box, (0, 0, 0.3), hyxRender.Color.Red())
arrows.add(hinge, (0, 0, 0), hyxRender.Color.Green(), hyxOSG.ForceArrowRenderer_ALL)
sim.add(arrows)
app.createVisual(sim)
for _ in range(60):
    box.addForceAtPosition((700, 0, 0), (-1.9, 0, 0.5))
    sim.step()
app.setCameraHome((1, -6, 2.5), (0, 0, 0.6))
app.takeScreenShot("force_arrows.png")
