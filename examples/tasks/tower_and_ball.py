"""A ball knocks a tower over, filmed: tower_and_ball.mp4."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
sim = app.getSimulation()


def add(shape: hyxCollide.Shape, x: float, z: float) -> hyx.RigidBody:
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setPosition(hyx.Vec3(x, 0, z))
    sim.add(body)
    return body


add(hyxCollide.Box(6, 6, 0.1), 0, -0.1).setMotionControl(hyx.RigidBody.STATIC)
for floor in range(8):
    add(hyxCollide.Box(0.4, 0.4, 0.2), 0, 0.2 + 0.4 * floor)
add(hyxCollide.Sphere(0.4), -5, 1.5).setVelocity(hyx.Vec3(12, 0, 2))  # m/s
app.initViewer(640, 480)
app.createVisual(sim)
app.setCameraHome(hyx.Vec3(0, -12, 4), hyx.Vec3(0, 0, 1.5))
video = app.getVideoServerCapture()
video.setFilename("tower_and_ball")
app.stopAfter(2)
with video:
    app.run()
