"""A camera's channels in an OpenEXR file, which keeps metres and light, read back as a compositor does."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import OpenEXR
from PIL import Image

app = hyxOSG.ExampleApplication()
app.initViewer(320, 200)
sim = app.getSimulation()
sim.add(ground := hyxCollide.Geometry(hyxCollide.Plane()))
hyxOSG.createVisual(ground, app.getSceneRoot())
for number in range(24):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Cylinder(0.25, 1) if number % 3 else hyxCollide.Cone(0.5, 1.4)))
    body.setPosition((1.4 * (number % 4) - 2.1, 1.6 * (number // 4), 0.5))
    body.setRotation(hyx.Quat(1.5708, (1, 0, 0)))  # upright
    sim.add(body)
    color = (0.85, 0.35, 0.2, 1) if number % 3 else (0.2, 0.5, 0.75, 1)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, app.getSceneRoot(), 3), color)
camera = hyxOSG.SensorCamera(app, 320, 200, field_of_view=40)
camera.look_at((-2.5, -5, 2.5), (0, 2, 0.3))
camera.read("rgb", "depth", "identity", "normals").save_exr("exr.exr")

file = OpenEXR.File("exr.exr")
channels = {name: channel.pixels for name, channel in file.channels().items()}
print(sorted(channels), file.header()["time"])
haze = numpy.exp(-channels["Z"] / 25)[..., None]  # light lost to haze in 25 m, by the distance of each pixel
light = channels["RGB"] * haze + (0.75, 0.8, 0.9) * (1 - haze)
picture = [numpy.where(light <= 0.0031308, 12.92 * light, 1.055 * light ** (1 / 2.4) - 0.055)]
picture.append(0.5 + 0.5 * numpy.stack([channels[f"N.{axis}"] for axis in "XYZ"], axis=-1) * (1, -1, -1))
Image.fromarray((255 * numpy.hstack(picture).clip(0, 1)).astype(numpy.uint8)).save("exr.png")
