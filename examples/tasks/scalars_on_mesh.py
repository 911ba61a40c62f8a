"""A mesh coloured by numbers at its corners, with a colour bar: scalars_on_mesh.png."""

import hyx
import hyxOSG
import numpy
import osg

app = hyxOSG.ExampleApplication()
x, y = numpy.meshgrid(numpy.linspace(-2, 2, 60), numpy.linspace(-2, 2, 60))
z = numpy.exp(-(x**2) - y**2) * numpy.cos(3 * x)
bar_x, bar_z = numpy.meshgrid([2.4, 2.7], numpy.linspace(z.min(), z.max(), 60))
colors = hyxOSG.ScalarColorMap(hyxOSG.ScalarColorMap_VIRIDIS, z.min(), z.max())
for corners in (x, y, z), (bar_x, 0 * bar_x, bar_z):
    mesh = osg.Geometry()
    mesh.setVertexArray(numpy.stack(corners, -1).reshape(-1, 3))
    mesh.setColorArray([colors.getColorOSG(value) for value in corners[2].ravel()])
    i = numpy.arange(corners[2].size).reshape(corners[2].shape)
    triangles = [i[:-1, :-1], i[:-1, 1:], i[1:, 1:], i[:-1, :-1], i[1:, 1:], i[1:, :-1]]
    mesh.addElements(4, numpy.stack(triangles, -1).ravel())
    app.getSceneRoot().addChild(geode := osg.Geode())
    geode.addDrawable(mesh)
    geode.getOrCreateStateSet().setMode(0x0B50, 0)  # GL_LIGHTING
app.getSceneDecorator().setText(0, f"{z.min():.2f} (dark) to {z.max():.2f} (light)")
app.setCameraHome(hyx.Vec3(1, -6, 3), hyx.Vec3(0.3, 0, 0))
app.takeScreenShot("scalars_on_mesh.png")
