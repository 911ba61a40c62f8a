"""A body of several geometries: a hammer falls on its head.

Mass, centre of mass and inertia follow from all geometries and the densities of their materials.
"""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
steel, wood = hyx.Material("steel"), hyx.Material("wood")
steel.setDensity(7800)  # kg/m3
wood.setDensity(700)
head, handle = (
    hyxCollide.Geometry(hyxCollide.Box(0.15, 0.4, 0.15)),
    hyxCollide.Geometry(hyxCollide.Box(0.8, 0.06, 0.06)),
)
head.setMaterial(steel)
handle.setMaterial(wood)
hammer = hyx.RigidBody("hammer")
hammer.add(head, hyx.AffineMatrix4x4.translate((0.9, 0, 0)))
hammer.add(handle)
hammer.setPosition((0, 0, 1))
hammer.setRotation(hyx.Quat(0.9, (0, 1, 0)))  # radians
sim.add(hammer)
app.createVisual(sim)
hyxOSG.setDiffuseColor(head, (0.45, 0.5, 0.55, 1), app.getRoot())
hyxOSG.setDiffuseColor(handle, (0.8, 0.6, 0.35, 1), app.getRoot())
sim.stepTo(0.45)
print(hammer.getMass(), hammer.getCenterOfMass())
app.setCameraHome((0.5, -3.4, 1.6), (0.4, 0, 0.5))
app.takeScreenShot("compound_body.png")
