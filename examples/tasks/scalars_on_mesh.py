"""A mesh coloured by numbers at its corners, with a colour bar: scalars_on_mesh.png."""

import hyxOSG
import numpy
import osg

app = hyxOSG.ExampleApplication()
x, y = numpy.meshgrid(numpy.linspace(-2, 2, 60), numpy.linspace(-2, 2, 60))
z = numpy.exp(-(x**2) - y**2) * numpy.cos(3 * x)
mesh = osg.Geometry()
mesh.vertices = numpy.stack([x, y, z], -1).reshape(-1, 3)
i = numpy.arange(z.size).reshape(z.shape)
triangles = [i[:-1, :-1], i[:-1, 1:], i[1:, 1:], i[:-1, :-1], i[1:, 1:], i[1:, :-1]]
mesh.addElements(4, numpy.stack(triangles, -1).ravel())  # GL_TRIANGLES
app.getSceneRoot().addChild(mesh)
scale = hyxOSG.colorBy(mesh, z.ravel(), "viridis", lit=False)
bar = hyxOSG.ColorBar(app, scale, "height, m")
app.setCameraHome((1, -5, 3), (0.2, 0, 0))
app.takeScreenShot("scalars_on_mesh.png")
