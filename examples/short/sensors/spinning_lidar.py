"""A lidar that spins on a robot and sees what is drawn: its rings of points, coloured by their height."""

import math

import hyx
import hyxCollide
import hyxOSG
import osg

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(18):
    size, far = 0.4 + 0.25 * (number % 3), 3 + number / 2
    sim.add(pile := hyxCollide.Geometry(hyxCollide.Box(size, size, 1) if number % 2 else hyxCollide.Sphere(1.5 * size)))
    pile.setLocalPosition((far * math.cos(2.4 * number), far * math.sin(2.4 * number), size))
sim.add(robot := hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.6, 0.4, 0.3))))
robot.setPosition((0, 0, 0.3))
app.createVisual(sim)
lidar = hyxOSG.SpinningDepthLidar(app, rings=48, columns=1500, vertical=(-0.5, 0.1), far=30)  # radians, metres
lidar.follow(robot, hyx.AffineMatrix4x4.translate((0, 0, 1.2)))
scan = lidar.scan()  # x, y, z, distance, intensity, ring, identity, ...
points = osg.Geometry()
points.vertices = [tuple(point) for point in scan[["x", "y", "z"]].tolist()]
points.colors = hyxOSG.ColorScale("turbo", -0.5, 1.8).colors(scan["z"])
points.addElements(0, list(range(len(scan))))  # GL_POINTS
points.getOrCreateStateSet().setMode(0x0B50, osg.StateAttribute.OFF)  # GL_LIGHTING
for thing in sim.getSpace().getGeometries():
    sim.remove(thing)  # its visual goes, too
app.getSceneRoot().addChild(points)
app.getSceneDecorator().setBackgroundColor((0.04, 0.05, 0.08))
app.setCameraHome((-6, -9, 8), (0, 0, 0))
app.takeScreenShot("spinning_lidar.png")
