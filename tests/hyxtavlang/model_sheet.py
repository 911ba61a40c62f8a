"""Draws one picture of each model that the tests read, as a sheet: docs/models.png.

PYTHONPATH=build/python:tests python tests/hyxtavlang/model_sheet.py docs/models.png
"""

import math
import os
import pathlib
import sys

os.environ.setdefault("HYX_DISPLAY", "offscreen")
import gymnasium
import hyxOSG
import jvrc_description
import numpy
from PIL import Image, ImageDraw
from test_sdf_collections import FILES, SHARE

ASSETS = pathlib.Path(gymnasium.__file__).parent / "envs" / "mujoco" / "assets"
WIDTH, HEIGHT, COLUMNS = 240, 200, 6
GROUND = 15  # metres: what is larger is not looked at


def bounds(root):
    corners = []
    for number in range(root.getNumChildren()):
        model = root.getChild(number).asGroup()
        for part in map(model.getChild, range(model.getNumChildren())):
            if (mesh := hyxOSG.createTrimesh(part)) is not None:
                vertices = numpy.array(mesh.vertices)
                if numpy.ptp(vertices, 0).max() < GROUND:
                    corners += [vertices.min(0), vertices.max(0)]
    return numpy.min(corners, 0), numpy.max(corners, 0)


def picture(app, path):
    root = app.getSceneRoot()
    result = app.loadTavLangFile(str(path), root)
    if not result.isSuccess():
        raise SystemExit("\n".join(result.getErrors()))
    low, high = bounds(root)
    size = float(numpy.linalg.norm(high - low))
    camera = hyxOSG.SensorCamera(app, WIDTH, HEIGHT, field_of_view=35, near=size / 50, far=size * 60)
    camera.look_at((low + high) / 2 + numpy.array([0.9, -1.3, 0.6]) * size, (low + high) / 2)
    drawn = Image.fromarray(camera.read("rgb").rgb)
    camera.close()
    ImageDraw.Draw(drawn).text((5, 4), path.name, fill="black")
    app.getSimulation().remove(result.getAssembly())
    while root.getNumChildren():
        root.removeChild(root.getChild(0))
    return drawn


def main():
    files = [pathlib.Path(jvrc_description.urdf_path)]
    files += [path for path in sorted(ASSETS.glob("*.xml")) if not path.stem.endswith("_v5")]
    files += [SHARE / f"{name}.sdf" for name in FILES]
    with hyxOSG.ExampleApplication() as app:
        app.init(None)
        app.setLook("talk")
        app.initSimulation()
        app.initViewer(WIDTH, HEIGHT)
        pictures = [picture(app, path) for path in files]
    sheet = Image.new("RGB", (COLUMNS * WIDTH, math.ceil(len(pictures) / COLUMNS) * HEIGHT), "white")
    for number, drawn in enumerate(pictures):
        sheet.paste(drawn, (number % COLUMNS * WIDTH, number // COLUMNS * HEIGHT))
    sheet.save(sys.argv[1], optimize=True)


if __name__ == "__main__":
    main()
