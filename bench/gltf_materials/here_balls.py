"""Draws glTF files of balls under sky boxes."""

import base64
import json
import sys
from pathlib import Path

import balls
import hyx
import hyxOSG
import numpy
from PIL import Image


def ball(rings=64):
    """Points, which are the normals, too, and triangles; up is Y."""
    turn, rise = numpy.meshgrid(numpy.linspace(0, 2 * numpy.pi, rings + 1), numpy.linspace(0, numpy.pi, rings + 1))
    points = numpy.stack([numpy.sin(rise) * numpy.cos(turn), numpy.cos(rise), -numpy.sin(rise) * numpy.sin(turn)], -1)
    first = (numpy.arange(rings)[:, None] * (rings + 1) + numpy.arange(rings)).ravel()
    below = first + rings + 1
    triangles = numpy.stack([first, below, first + 1, first + 1, below, below + 1], -1)
    return points.reshape(-1, 3).astype("<f4"), triangles.astype("<u2")


def write_ball(path, color, metal, roughness):
    points, triangles = ball()
    data = points.tobytes() + triangles.tobytes()
    views = [(0, points.nbytes), (points.nbytes, triangles.nbytes)]
    look = {"baseColorFactor": [*balls.light(color), 1], "metallicFactor": metal, "roughnessFactor": roughness}
    corners = {"bufferView": 0, "componentType": 5126, "count": len(points), "type": "VEC3"}
    uri = "data:application/octet-stream;base64," + base64.b64encode(data).decode()
    primitive = {"attributes": {"POSITION": 0, "NORMAL": 0}, "indices": 1, "material": 0}
    scene = {
        "asset": {"version": "2.0"},
        "scene": 0,
        "scenes": [{"nodes": [0]}],
        "nodes": [{"mesh": 0}],
        "meshes": [{"primitives": [primitive]}],
        "materials": [{"pbrMetallicRoughness": look}],
        "buffers": [{"byteLength": len(data), "uri": uri}],
        "bufferViews": [{"buffer": 0, "byteOffset": start, "byteLength": length} for start, length in views],
        "accessors": [
            corners | {"min": [-1, -1, -1], "max": [1, 1, 1]},
            {"bufferView": 1, "componentType": 5123, "count": triangles.size, "type": "SCALAR"},
        ],
    }
    path.write_text(json.dumps(scene))
    return str(path)


def write_sky(folder, above, below, size=64):
    folder.mkdir(exist_ok=True)
    above, below = ([round(255 * c) for c in color] for color in (above, below))
    side = numpy.full((size, size, 3), below, numpy.uint8)
    side[: size // 2] = above
    for name in ("posx", "negx", "posy", "negy", "posz", "negz"):
        even = {"posy": above, "negy": below}.get(name)
        face = side if even is None else numpy.full_like(side, even)
        Image.fromarray(face).save(folder / f"{name}.png")
    return f"{folder}/"


def main():
    folder = Path(sys.argv[1])
    app = hyxOSG.ExampleApplication(look="plain")
    app.init(None)
    app.getSimulation()
    app.initViewer(balls.SIZE, balls.SIZE, True)
    decorator, root = app.getSceneDecorator(), app.getSceneRoot()
    decorator.setEnableLogo(False)
    decorator.setEnableLights(0)
    decorator.setEnableShaderState(True)
    decorator.setEnableSkyLight(True)
    app.setCameraHome(hyx.Vec3(0, -balls.DISTANCE, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    app.getCamera().setProjectionMatrixAsPerspective(balls.VIEW_ANGLE, 1, 0.1, 100)
    files = {
        name: write_ball(folder / f"{name.replace(' ', '_')}.gltf", *look) for name, look in balls.MATERIALS.items()
    }
    for sky, colors in balls.SKIES.items():
        box = hyxOSG.SkyBox("sky", write_sky(folder / f"sky-{sky}", *colors), ".png")
        root.addChild(box)
        for name, file in files.items():
            node = hyxOSG.readNodeFile(file)
            root.addChild(node)
            app.render()
            Image.fromarray(app.render()).save(balls.picture(folder, "here", sky, name))
            root.removeChild(node)
        root.removeChild(box)


if __name__ == "__main__":
    main()
