"""The colour maps there are, by their names."""

import hyxOSG
import numpy
import osg

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.getSceneDecorator().setBackgroundColor((1, 1, 1))
app.getSceneDecorator().setEnableLogo(False)
names = "viridis plasma inferno cividis rainbow coolwarm bwr gray bone copper afmhot".split()
x = numpy.linspace(0, 4, 129)
for row, name in enumerate(names):
    low, high = (numpy.stack([x, 0 * x, 0 * x - 0.4 * row + side], -1) for side in (0, 0.28))
    band = osg.Geometry()
    band.vertices = numpy.stack([low, high], 1).reshape(-1, 3)
    band.colors = hyxOSG.ColorScale(name, 0, 4).colors(numpy.repeat(x, 2))
    band.addElements(5, numpy.arange(258))  # GL_TRIANGLE_STRIP
    band.getOrCreateStateSet().setMode(0x0B50, osg.StateAttribute.OFF)  # GL_LIGHTING
    app.getSceneRoot().addChild(band)
    app.getSceneRoot().addChild(hyxOSG.createText(name, (-1.2, 0, 0.05 - 0.4 * row), (0.1, 0.1, 0.1, 1), 0.25))
app.setCameraHome((1.5, -7.4, -1.9), (1.5, 0, -1.9))
app.takeScreenShot("color_maps.png")
