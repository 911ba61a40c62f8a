"""The shapes that bodies are made of: box, ball, cylinder, capsule, cone and hull of corners.

Measures are half extents, radii and heights, in metres. Cylinders, capsules and cones lie along Y.
"""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
wedge = [(-0.6, -0.5, 0), (0.6, -0.5, 0), (0.6, 0.5, 0), (-0.6, 0.5, 0), (0.6, -0.5, 0.8), (0.6, 0.5, 0.8)]
sides = [0, 2, 1, 0, 3, 2, 0, 1, 4, 3, 5, 2, 1, 2, 5, 1, 5, 4, 0, 4, 5, 0, 5, 3]
shapes = [
    (hyxCollide.Box(0.5, 0.4, 0.4), (0.85, 0.45, 0.3, 1)),
    (hyxCollide.Sphere(0.5), (0.95, 0.75, 0.3, 1)),
    (hyxCollide.Cylinder(0.4, 1), (0.45, 0.7, 0.45, 1)),
    (hyxCollide.Capsule(0.3, 0.7), (0.35, 0.6, 0.8, 1)),
    (hyxCollide.Cone(0.5, 1), (0.6, 0.5, 0.75, 1)),
    (hyxCollide.Trimesh(wedge, sides), (0.8, 0.5, 0.65, 1)),
]
for number, (shape, color) in enumerate(shapes):
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setPosition((1.5 * number - 3.75, 0, 0.6))
    sim.add(body)
app.createVisual(sim, 2)  # twice as many triangles
for body, (shape, color) in zip(sim.getRigidBodies(), shapes):
    hyxOSG.setDiffuseColor(body, color, app.getRoot())
app.setCameraHome((0, -7, 4), (0, 0, 0.4))
app.takeScreenShot("shapes.png")
