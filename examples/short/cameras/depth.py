"""A depth picture, and the distances that it stands for."""

import hyxCollide
import hyxOSG
import numpy
from PIL import Image

app = hyxOSG.ExampleApplication()
app.initViewer(320, 200)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Box(5, 20, 0.02)))
for number in range(8):
    post = hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.8))
    post.setLocalPosition((0.9 * (number % 4) - 1.4, 1.6 * number - 4, 0.8))
    sim.add(post)
app.createVisual(sim)
camera = hyxOSG.SensorCamera(app, 640, 400, field_of_view=50)
camera.look_at((0, -8, 2.5), (0, 0, 0.5))
frame = camera.read("depth")
near, far = 4, 16
print(f"the nearest thing is {frame.depth[numpy.isfinite(frame.depth)].min():.2f} m away")
shade = numpy.clip(1 - (numpy.nan_to_num(frame.depth, posinf=far) - near) / (far - near), 0, 1)
colors = hyxOSG.ColorScale("inferno").colors(shade)[:, :3].reshape(*shade.shape, 3)
Image.fromarray((255 * colors).astype(numpy.uint8)).save("depth.png")
