"""Rays through the scene: what each meets first, and with which normal."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for x, shape in ((-1.2, hyxCollide.Sphere(0.6)), (0.2, hyxCollide.Box(0.4, 0.4, 0.6)), (1.5, hyxCollide.Cone(0.5, 1))):
    geometry = hyxCollide.Geometry(shape)
    geometry.setLocalPosition((x, 0, 0.6))
    sim.add(geometry)
app.createVisual(sim)
root = app.getSceneRoot()
for number in range(25):
    start, end = hyx.Vec3(-2.4 + 0.2 * number, -1.5, 2.2), hyx.Vec3(-2.4 + 0.2 * number, 1, -0.2)
    hit = sim.getSpace().castRay(start, end)
    root.addChild(hyxOSG.createLine(start, hit.point, (0.95, 0.7, 0.2, 1), 2))
    root.addChild(hyxOSG.createLine(hit.point, hit.point + hit.normal * 0.35, (0.1, 0.3, 0.9, 1), 3))
    root.addChild(hyxOSG.createSphere(hit.point, (0.9, 0.2, 0.1, 1), 0.04))
app.setCameraHome((1.5, -6, 3), (0, 0, 0.6))
app.takeScreenShot("rays.png")
