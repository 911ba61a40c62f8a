"""A hundred thousand points with a colour each, from arrays."""

import hyxOSG
import numpy
import osg

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
random = numpy.random.default_rng(1)
arm = random.integers(0, 3, 100_000) * 2 * numpy.pi / 3
radius = random.exponential(0.8, 100_000)
angle = arm + 2.2 * radius + random.normal(0, 0.25, 100_000)
points = osg.Geometry()
points.vertices = numpy.stack(
    [radius * numpy.cos(angle), radius * numpy.sin(angle), random.normal(0, 0.1, 100_000) * numpy.exp(-radius)], -1
)
points.colors = hyxOSG.ColorScale("plasma", 0, 3).colors(3 - radius)
points.addElements(0, numpy.arange(100_000))  # GL_POINTS
points.getOrCreateStateSet().setMode(0x0B50, osg.StateAttribute.OFF)  # GL_LIGHTING
app.getSceneRoot().addChild(points)
app.getSceneDecorator().setBackgroundColor((0.02, 0.02, 0.05))
app.setCameraHome((0, -4, 3), (0, 0, 0))
app.takeScreenShot("point_cloud.png")
