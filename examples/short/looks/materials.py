"""Colour, gloss and transparency of visuals."""

import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
balls = []
for number in range(5):
    ball = hyxCollide.Geometry(hyxCollide.Sphere(0.45))
    ball.setLocalPosition((1.1 * number - 2.2, 0, 0.45))
    sim.add(ball)
    balls.append(ball)
app.createVisual(sim, 3)
nodes = [hyxOSG.findGeometryNode(ball, app.getRoot()) for ball in balls]
for node in nodes:
    hyxOSG.setDiffuseColor(node, (0.85, 0.3, 0.25, 1))
hyxOSG.setSpecularColor(nodes[1], (0.9, 0.9, 0.9, 1))
hyxOSG.setShininess(nodes[1], 20)  # a wide highlight
hyxOSG.setSpecularColor(nodes[2], (1, 1, 1, 1))
hyxOSG.setShininess(nodes[2], 120)  # a narrow one
hyxOSG.setAlpha(nodes[3], 0.4)
hyxOSG.setEnableWireFrameMode(nodes[4], True)
app.setCameraHome((0, -4, 1.6), (0, 0, 0.4))
app.takeScreenShot("materials.png")
