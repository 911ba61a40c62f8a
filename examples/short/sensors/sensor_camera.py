"""All channels of a calibrated camera: colours, distances, normals, identities, flow, and colours through a lens."""

import hyx
import hyxCollide
import hyxOSG
import numpy
from PIL import Image

app = hyxOSG.ExampleApplication()
app.initViewer(320, 200)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Box(4, 4, 0.02)))
for number in range(9):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.3) if number % 2 else hyxCollide.Box(0.25, 0.25, 0.4)))
    body.setPosition((0.8 * (number % 3) - 0.8, 0.8 * (number // 3) - 0.8, 0.45))
    body.setAngularVelocity((0, 0, 2 - number / 2))
    sim.add(body)
app.createVisual(sim, 3)
for number, body in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(body, (0.9 - 0.08 * number, 0.4, 0.2 + 0.08 * number, 1), app.getRoot())
camera = hyxOSG.SensorCamera(app, 320, 200, field_of_view=45)
camera.look_at((1, -3.5, 2.4), (0, 0, 0.3))
camera.read("flow")  # from here on
sim.step()
frame = camera.read(*camera.CHANNELS)
depth = numpy.clip(1.6 - numpy.nan_to_num(frame.depth, posinf=6) / 4, 0, 1)[..., None] * (255, 255, 255)
normals = 127.5 * (frame.normals * (1, -1, -1) + 1)
identity = 255 * numpy.modf(frame.identity[..., None] * (0.618, 0.414, 0.732))[0]
flow = 128 + 60 * numpy.pad(frame.flow, ((0, 0), (0, 0), (0, 1))).clip(-2, 2)  # pixels to the right and down
lens = hyxOSG.SensorCamera(app, 320, 200, K=camera.K, distortion=(-0.35, 0.1), noise=hyxOSG.SensorNoise(rgb=8))
lens.pose = camera.pose
pictures = [part.astype(numpy.uint8) for part in (frame.rgb, depth, normals, identity, flow, lens.read().rgb)]
Image.fromarray(numpy.vstack([numpy.hstack(pictures[i : i + 2]) for i in (0, 2, 4)])).save("sensor_camera.png")
