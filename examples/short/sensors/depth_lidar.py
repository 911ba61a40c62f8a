"""A lidar that reads the depth picture: it sees what is drawn, and needs no bodies."""

import hyxCollide
import hyxOSG
import osg

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
for x, y, shape in (
    (0, 3, hyxCollide.Sphere(0.8)),
    (1.8, 4, hyxCollide.Box(0.6, 0.6, 1)),
    (-1.9, 3.5, hyxCollide.Cone(0.7, 1.8)),
):
    sim.add(thing := hyxCollide.Geometry(shape))
    thing.setLocalPosition((x, y, 0))
app.createVisual(sim, 3)
lidar = hyxOSG.SimpleDepthBufferLidar(500, 250, True)  # points in the world
lidar.setViewMatrixAsLookAt((0, -2, 0), (0, 3, 0), (0, 0, 1))
app.addRenderTarget(lidar)
app.render()
for thing in sim.getSpace().getGeometries():
    sim.remove(thing)  # its visual goes, too
points = osg.Geometry()
cloud = lidar.points.copy()
points.vertices = cloud  # float32 of shape (n, 3), in metres
points.colors = hyxOSG.ColorScale("plasma", 3, 7).colors(cloud[:, 1] + 2)
points.addElements(0, list(range(len(cloud))))  # GL_POINTS
points.getOrCreateStateSet().setMode(0x0B50, osg.StateAttribute.OFF)  # GL_LIGHTING
app.getSceneRoot().addChild(points)
app.getSceneDecorator().setBackgroundColor((0.04, 0.05, 0.08))
app.setCameraHome((-5, -3, 3), (0, 2.5, 0))
app.takeScreenShot("depth_lidar.png")
