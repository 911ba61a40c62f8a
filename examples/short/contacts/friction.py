"""Blocks on a slope: those whose friction is above the slope's tangent stay."""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
slope, board = math.radians(22), hyx.Material("board")
ramp = hyxCollide.Geometry(hyxCollide.Box(3, 2, 0.1))
ramp.setMaterial(board)
ramp.setLocalRotation(hyx.Quat(slope, (0, 1, 0)))
sim.add(ramp)
for number, friction in enumerate((0.1, 0.2, 0.3, 0.35, 0.45, 0.6)):
    stuff = hyx.Material(f"stuff {number}")
    pair = hyx.ContactMaterial(stuff, board)
    pair.setFriction(friction)
    sim.add(pair)
    block = hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2))
    block.setMaterial(stuff)
    body = hyx.RigidBody(block)
    body.setRotation(hyx.Quat(slope, (0, 1, 0)))
    body.setPosition((-2.2 * math.cos(slope), 0.6 * number - 1.5, 2.2 * math.sin(slope) + 0.33))
    sim.add(body)
    label = hyxOSG.createText(f"{friction}", (-2.7, 0.6 * number - 1.6, 1.3), (0.1, 0.1, 0.2, 1), 0.3)
    app.getSceneRoot().addChild(label)
app.createVisual(sim)
sim.stepTo(1.4)
app.setCameraHome((0.8, -6, 4), (0, 0, 0))
app.takeScreenShot("friction.png")
