"""A film for a paper: title, clock and colour bar in it, boxes coloured by their speed, encoded for browsers."""

import argparse
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the film")
path = parser.parse_args().output / "publication_film.mp4"
app = hyxOSG.ExampleApplication()
app.init(None)
app.initSimulation()
app.initViewer(640, 400)
simulation = app.getSimulation()
ground = hyxCollide.Geometry(hyxCollide.Plane(hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, 0)))
simulation.add(ground)
hyxOSG.createVisual(ground, app.getSceneRoot())
boxes = [hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2))) for _ in range(12)]
for i, box in enumerate(boxes):
    box.setPosition(hyx.Vec3(0.11 * (i % 3), 0.07 * (i % 4), 0.5 + 0.5 * i))
    simulation.add(box)
nodes = [hyxOSG.createVisual(box, app.getSceneRoot()) for box in boxes]
app.setLook("talk")
app.setCameraHome(hyx.Vec3(3, -7, 4), hyx.Vec3(0, 0, 1.5))
scale = hyxOSG.ColorScale("viridis", 0, 6)
with app.film(path, title="Twelve boxes fall", clock=True, color_bar=scale, label="m/s", fps=30, preset="slow") as film:
    timer = hyx.HighAccuracyTimer()
    while simulation.getTimeStamp() < 2:
        colors = scale.colors([box.getVelocity().length() for box in boxes])
        for node, color in zip(nodes, colors.tolist()):
            hyxOSG.setDiffuseColor(node, hyx.Vec4f(*color))
        app.executeOneStepWithGraphics(timer)
print(f"{film.video.getNumFrames()} frames by {film.video.getEncoder()}")
