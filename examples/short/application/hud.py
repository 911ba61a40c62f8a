"""A gauge on the picture: text and lines of the head-up display, in pixels."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
car = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.8, 0.4, 0.3)))
car.setPosition((0, 0, 0.3))
car.setVelocity((7, 0, 0))
sim.add(car)
app.createVisual(sim)
hyxOSG.setDiffuseColor(car, (0.8, 0.25, 0.2, 1), app.getRoot())
sim.stepTo(0.3)
speed = car.getVelocity().length()
hud = app.getSceneDecorator().getHud()
label = hyxOSG.Text(f"{speed:.1f} m/s", (430, 60, 0), (0.1, 0.1, 0.2, 1))
label.setAxisAlignment(hyxOSG.Text.XY_PLANE)
label.setCharacterSize(32)  # pixels
hud.addChild(label)
hud.addChild(hyxOSG.createLine((430, 45, 0), (600, 45, 0), (0.6, 0.6, 0.65, 1), 8))
hud.addChild(hyxOSG.createLine((430, 45, 0), (430 + 17 * speed, 45, 0), (0.85, 0.25, 0.2, 1), 8))
app.setCameraHome(car.getPosition() + hyx.Vec3(-1, -4, 1.6), car.getPosition())
app.takeScreenShot("hud.png")
