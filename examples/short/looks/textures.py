"""A picture on a box, and bumps of a height map on a ball."""

import hyxCollide
import hyxOSG
import numpy
from PIL import Image

x, y = numpy.meshgrid(numpy.arange(128), numpy.arange(128))
board = numpy.where((x // 16 + y // 16) % 2, 230, 90).astype(numpy.uint8)
Image.fromarray(numpy.stack([board, board // 2 + 60, board // 3 + 40], -1)).save("board.jpg")
bumps = (127 + 127 * numpy.sin(x / 5) * numpy.sin(y / 5)).astype(numpy.uint8)
Image.fromarray(bumps).convert("RGB").save("bumps.jpg")

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
box, ball = hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)), hyxCollide.Geometry(hyxCollide.Sphere(0.6))
for geometry, x in ((box, -0.8), (ball, 0.9)):
    geometry.setLocalPosition((x, 0, 0.55))
    sim.add(geometry)
app.createVisual(sim, 3)
hyxOSG.setTexture(box, app.getRoot(), "board.jpg", True, hyxOSG.DIFFUSE_TEXTURE)
hyxOSG.setTexture(ball, app.getRoot(), "bumps.jpg", True, hyxOSG.HEIGHTMAP_TEXTURE)
app.setCameraHome((0.3, -3.6, 1.7), (0, 0, 0.5))
app.takeScreenShot("textures.png")
