"""Soft shadows: sharp where things touch, wider the farther they fall."""

import math

import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
posts = []
for number in range(9):
    angle = math.tau * number / 9
    post = hyxCollide.Geometry(hyxCollide.Box(0.1, 0.1, 0.2 + 0.12 * number))
    post.setLocalPosition((1.5 * math.cos(angle), 1.5 * math.sin(angle), 0.2 + 0.12 * number))
    sim.add(post)
    posts.append(post)
app.createVisual(sim)
for number, post in enumerate(posts):
    hyxOSG.setDiffuseColor(post, (0.9, 0.8 - 0.07 * number, 0.25, 1), app.getRoot())
decorator = app.getSceneDecorator()
decorator.setShadowMethod(decorator.SOFT_SHADOWMAP)
decorator.setEnableCalculateLightPositions(decorator.LIGHT0, False)
decorator.getLightSource(decorator.LIGHT0).setPosition((-3, -2, 3, 0))  # from far away
app.setCameraHome((0.5, -5, 4), (0.3, 0, 0.2))
app.takeScreenShot("shadows.png")
