"""A film for a paper: a title, a clock and a colour bar on it while it is recorded."""

import hyx
import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(7):
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.35)))
    ball.setPosition((number - 3, 0, 0.9 + 0.5 * number))
    sim.add(ball)
app.createVisual(sim, 3)
scale = hyxOSG.ColorScale("viridis", 0, 8)

app.setCameraHome((1, -8, 3), (0.2, 0, 1.5))
timer = hyx.HighAccuracyTimer()
with app.film(
    "film_overlay.mp4", title="Seven balls that fall", clock=True, color_bar=scale, label="m/s", fps=50
) as film:
    while sim.getTimeStamp() < 0.6:
        for ball, color in zip(sim.getRigidBodies(), scale.colors(numpy.linalg.norm(sim.velocities, axis=1))):
            hyxOSG.setDiffuseColor(ball, color.tolist(), app.getRoot())
        app.executeOneStepWithGraphics(timer)
    app.takeScreenShot("film_overlay.png")
print(film.video.getNumFrames(), "frames of", film.video.getFilename() + film.video.getVideoPostFix())
