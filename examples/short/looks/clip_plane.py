"""A scene cut open by a plane."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
plane = hyxOSG.ClipPlane((0, 0, 0), (-0.3, 1, 0))  # a point, and the normal on the side that stays
app.getSceneRoot().addChild(plane)
for shape, x, color in (
    (hyxCollide.Cylinder(0.9, 1.6), 0, (0.4, 0.55, 0.7, 1)),
    (hyxCollide.Box(0.5, 0.5, 0.5), 0, (0.9, 0.7, 0.3, 1)),
    (hyxCollide.Sphere(0.35), 0, (0.85, 0.3, 0.25, 1)),
):
    geometry = hyxCollide.Geometry(shape)
    geometry.setLocalPosition((x, 0, 0))
    if isinstance(shape, hyxCollide.Cylinder):
        geometry.setLocalRotation(hyx.Quat((0, 1, 0), (0, 0, 1)))  # upright
    sim.add(geometry)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(geometry, plane, 3), color)
app.setCameraHome((0.6, -4, 1.6), (0, 0, 0))
app.takeScreenShot("clip_plane.png")
