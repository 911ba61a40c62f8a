"""A wire over a free pulley: the heavier load pulls the lighter one up."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxWire

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
pulley = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Cylinder(0.4, 0.3)))
pulley.setPosition((0, 0, 2))
axle = hyx.Hinge((0, 0, 2), (0, 1, 0), pulley)
wire = hyxWire.Wire(0.02, 25)  # radius in metres, segments a metre
loads = []
for x, mass in ((-0.43, 40), (0.43, 60)):
    load = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
    load.setMass(mass)
    load.setPosition((x, 0, 0.6))
    loads.append(load)
wire.add(loads[0], (0, 0, 0.2))
for angle in (math.pi * number / 12 for number in range(13)):
    wire.add((-0.43 * math.cos(angle), 0, 2 + 0.43 * math.sin(angle)))
wire.add(loads[1], (0, 0, 0.2))
wire.addObstacle(pulley)
for item in (pulley, axle, *loads, wire):
    sim.add(item)
app.createVisual(sim, 2)
shown = hyxOSG.WireRenderer(wire, app.getSceneRoot())
sim.stepTo(0.5)
app.setCameraHome((0.8, -5, 1.8), (0, 0, 1.3))
app.takeScreenShot("wire_over_pulley.png")
