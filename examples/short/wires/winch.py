"""A winch hauls a load up; the wire's colour is its tension."""

import hyx
import hyxCollide
import hyxOSG
import hyxWire

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
load = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.35, 0.35, 0.35)))
load.setPosition((0, 0, 0.35))
load.setMass(200)
sim.add(load)
wire = hyxWire.Wire(0.03, 8)
wire.add((1, 0, 3.2))
wire.add(load, (0, 0, 0.35))
wire.setWinchSpeed(-0.6)  # metres a second, taken in
sim.add(wire)
shown = hyxOSG.WireRenderer(wire, app.getSceneRoot())
shown.setReferenceMaxTension(3000)  # newtons, red
app.createVisual(sim)
hyxOSG.setDiffuseColor(load, (0.85, 0.6, 0.25, 1), app.getRoot())
sim.stepTo(2)
print(f"{wire.getMaximumTension():.0f} N")
app.setCameraHome((0.8, -5.5, 2), (0.4, 0, 1.5))
app.takeScreenShot("winch.png")
