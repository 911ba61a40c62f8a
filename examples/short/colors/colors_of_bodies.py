"""Bodies coloured by their speed while they fall."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(125):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.12, 0.12, 0.12)))
    box.setPosition((0.35 * (number % 5) - 0.7, 0.35 * (number // 5 % 5) - 0.7, 0.8 + 0.6 * (number // 25)))
    box.setRotation(hyx.Quat(number, (1, 1, 0)))
    sim.add(box)
app.createVisual(sim)
sim.stepTo(0.7)
map = hyxOSG.ScalarColorMap(hyxOSG.ScalarColorMap_PLASMA, 0, 6)
for box in sim.getRigidBodies():
    hyxOSG.setDiffuseColor(box, tuple(map.getColor(box.getVelocity().length())), app.getRoot())
bar = hyxOSG.ColorBar(app, hyxOSG.ColorScale("plasma", 0, 6), "m/s")
app.setCameraHome((1.5, -4.5, 2.2), (0.2, 0, 0.8))
app.takeScreenShot("colors_of_bodies.png")
