"""An outline around what matters."""

import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
geometries = []
for number in range(12):
    shape = hyxCollide.Sphere(0.3) if number % 3 else hyxCollide.Box(0.3, 0.25, 0.3)
    geometry = hyxCollide.Geometry(shape)
    geometry.setLocalPosition((0.8 * (number % 4) - 1.2, 0.8 * (number // 4) - 0.8, 0.3))
    sim.add(geometry)
    geometries.append(geometry)
app.createVisual(sim, 2)
for geometry, color in ((geometries[3], (1, 0.4, 0, 1)), (geometries[5], (0, 0.4, 1, 1))):
    hyxOSG.setEnableOutline(hyxOSG.findGeometryNode(geometry, app.getRoot()), True, color, 4)
app.setCameraHome((0.8, -4, 2.8), (0, 0, 0.2))
app.takeScreenShot("outlines.png")
