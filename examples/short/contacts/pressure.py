"""How the pressure under a box spreads when something leans on it, seen from below."""

import hyx
import hyxCollide
import hyxModel
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.6, 0.4, 0.4)))
box.setPosition((0, 0, 0.4))
sim.add(box)
pressure = hyxModel.PressureField(box, 0.04)  # edges of its triangles, in metres
pressure.setFoundationDepth(0.0001)
sim.add(pressure)
for _ in range(60):
    box.addForceAtPosition((1500, 0, 0), box.getPosition() + hyx.Vec3(0, 0, 0.3))  # newtons
    sim.step()
field = hyxOSG.PressureFieldRenderer(app.getSceneRoot())
for triangle in pressure.getTriangles():
    field.addTriangle(triangle, hyx.AffineMatrix4x4())
field.updateTransform(box.getTransform())
field.done()
print(pressure.getForce(), "N")
app.setCameraHome((-0.8, -1.2, -1.6), (0, 0, 0))
app.takeScreenShot("pressure.png")
