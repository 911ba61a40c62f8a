"""A surface coloured by a number at each corner, with the bar that explains the colours."""

import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
n = 60
x, y = numpy.meshgrid(numpy.linspace(-2, 2, n), numpy.linspace(-2, 2, n))
z = numpy.exp(-(x**2) - y**2) * numpy.cos(3 * x)
corner = numpy.arange(n * n).reshape(n, n)
quads = [corner[:-1, :-1], corner[:-1, 1:], corner[1:, 1:], corner[:-1, :-1], corner[1:, 1:], corner[1:, :-1]]
surface = hyxCollide.Trimesh(numpy.stack([x, y, z], -1).reshape(-1, 3), numpy.stack(quads, -1).ravel())
geometry = hyxCollide.Geometry(surface)
app.getSimulation().add(geometry)
visual = hyxOSG.createVisual(geometry, app.getSceneRoot())
scale = hyxOSG.colorBy(visual, z.ravel(), "coolwarm", -1, 1)
bar = hyxOSG.ColorBar(app, scale, "height, m")
app.setCameraHome((1.5, -5, 3), (0.2, 0, 0))
app.takeScreenShot("scalars_on_mesh.png")
