"""A scene for other programs: written as glTF, and read in again."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Box(2, 2, 0.1)))
for number in range(12):
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.15 + 0.02 * number)), f"ball {number}")
    ball.setPosition((0.6 * (number % 4) - 0.9, 0.6 * (number // 4) - 0.6, 0.6))
    sim.add(ball)
app.createVisual(sim, 2)
for number, ball in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(ball, (0.9 - 0.06 * number, 0.4, 0.2 + 0.06 * number, 1), app.getRoot())
recording = hyxOSG.GltfRecording(app)
for _ in range(30):
    sim.step()
    recording.capture()
recording.save("balls.glb")  # with the motion

viewer = hyxOSG.ExampleApplication()
viewer.initViewer(640, 400)
viewer.getSceneRoot().addChild(hyxOSG.readNodeFile("balls.glb"))
viewer.setCameraHome((1.5, -4.5, 3), (0, 0, 0.2))
viewer.takeScreenShot("gltf.png")
