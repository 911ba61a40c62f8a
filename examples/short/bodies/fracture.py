"""A block that breaks where it is hit; each piece is a body."""

import hyx
import hyxCollide
import hyxModel
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
block = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.8, 0.4, 0.6)))
block.setPosition((0, 0, 0.6))
sim.add(block)
app.createVisual(sim)
breaker = hyxModel.FractureGenerator()
breaker.setNumFragments(24)
sim.add(breaker)
hyxOSG.addRenderColorCallbackToFracture(breaker, app.getSceneRoot(), (0.8, 0.7, 0.55, 1))
pieces = breaker.fracture(block, (0.3, -0.4, 0.8))
for piece in pieces:
    away = piece.getPosition() - hyx.Vec3(0.3, -0.4, 0.4)
    piece.setVelocity(away * (1.2 / max(away.length(), 0.3)))
sim.stepTo(0.6)
print(len(pieces), "pieces")
app.setCameraHome((1.5, -4, 2.5), (0, 0, 0.3))
app.takeScreenShot("fracture.png")
