"""A film along a curve through the scene; the picture is its last frame."""

import hyx
import hyxCollide
import hyxOSG
import hyxUtil

app = hyxOSG.ExampleApplication()
app.initViewer(320, 200)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(40):
    post = hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 1 + number % 3))
    post.setLocalPosition((3 * (number // 2) - 10, 2.2 if number % 2 else -2.2, 1))
    sim.add(post)
app.createVisual(sim)
path = hyxUtil.CubicSpline()
path.setPoints([(-14, 0, 1), (-4, 1, 2), (6, -1, 4), (16, 0, 6)])
with app.film("camera_path.mp4", title="A flight") as film:
    for frame in range(30):
        eye, ahead = path.evaluate(frame / 40), path.evaluate(frame / 40 + 0.2)
        app.setCameraHome(eye, ahead)
        app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
app.takeScreenShot("camera_path.png")
