"""A lidar's points in the scene, coloured by the strength of their echo."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxSensor

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(8):
    angle = math.tau * number / 8
    shape = hyxCollide.Box(0.5, 0.5, 1) if number % 2 else hyxCollide.Sphere(0.9)
    thing = hyxCollide.Geometry(shape)
    thing.setLocalPosition((5 * math.cos(angle), 5 * math.sin(angle), 0.9))
    sim.add(thing)
lidar = hyxSensor.Lidar(hyx.Frame(hyx.AffineMatrix4x4.translate((0, 0, 2))))
lidar.setResolution(64, 900)  # rings, rays a ring
lidar.setFieldOfView(math.tau, 1.4)  # radians, around and up
lidar.setRange(hyx.RangeReal(0.5, 12))
sim.add(lidar)
lidar.scan()
points = hyxOSG.LidarOutputRenderer(lidar)
points.setIntensityColorFunctionFromMode(hyxOSG.ScalarColorMap_PLASMA)
app.getSceneRoot().addChild(points)
app.getSceneDecorator().setBackgroundColor((0.04, 0.05, 0.08))
app.setCameraHome((4, -11, 8), (0, 0, 0))
app.takeScreenShot("lidar.png")
