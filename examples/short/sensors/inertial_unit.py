"""What an inertial unit on a swinging body measures: its turning and the felt acceleration, plotted."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
rod = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.04, 0.04)))
rod.setPosition((0.5, 0, 0))
sim.add(rod)
sim.add(hyx.Hinge((0, 0, 0), (0, 1, 0), rod))
unit = hyx.ObserverFrame("unit", rod, hyx.AffineMatrix4x4.translate((0.5, 0, 0)))
sim.add(unit)
turning, felt, before = [], [], unit.getVelocity()
while sim.getTimeStamp() < 4:
    sim.step()
    change = (unit.getVelocity() - before) * (1 / sim.getTimeStep())
    before = unit.getVelocity()
    turning.append((sim.getTimeStamp(), 0, unit.getAngularVelocity().y / 10))
    felt.append((sim.getTimeStamp(), 0, (change - sim.getGravity()).length() / 30))
root = app.getSceneRoot()
root.addChild(hyxOSG.createPolyline(turning, (0.1, 0.3, 0.8, 1), 3))
root.addChild(hyxOSG.createPolyline(felt, (0.8, 0.2, 0.1, 1), 3))
hyxOSG.createGrid(8, 8, hyx.Vec3(0, 0.01, -1), hyx.Vec3(4, 0, 0), hyx.Vec3(0, 0, 2), root)
root.addChild(hyxOSG.createText("turning, 10 rad/s", (0.1, 0, 1.35), (0.1, 0.3, 0.8, 1), 0.13))
root.addChild(hyxOSG.createText("felt acceleration, 30 m/s2", (2.2, 0, 1.35), (0.8, 0.2, 0.1, 1), 0.13))
app.setCameraHome((2, -5, 0.2), (2, 0, 0.2))
app.takeScreenShot("inertial_unit.png")
