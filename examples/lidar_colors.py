"""What a lidar sees, coloured in three ways: by a legend, by a preset and by a Python function.

    lidar_colors.py [--output FOLDER]

Writes one picture for each.
"""

import argparse
import math
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import hyxSensor
import osg


class Bands(hyxOSG.LidarOutputRendererColorFunctionCallback):
    """Dark and light bands; called a few hundred times in all, however many points there are."""

    def getLidarPointColor(self, intensity):
        light = int(intensity * 25) % 2
        return osg.Vec4(0.2 + 0.7 * light, 0.4 + 0.4 * light, 0.9 - 0.6 * light, 1.0)


def add_obstacles(sim):
    floor = hyxCollide.Geometry(hyxCollide.Box(12, 12, 0.1))
    floor.setLocalPosition(hyx.Vec3(0, 0, -0.1))
    sim.add(floor)
    for index in range(9):
        angle = 2 * math.pi * index / 9
        shape = hyxCollide.Box(0.5, 0.5, 1) if index % 2 else hyxCollide.Sphere(0.9)
        geometry = hyxCollide.Geometry(shape)
        geometry.setLocalPosition(hyx.Vec3(5 * math.cos(angle), 5 * math.sin(angle), 0.9))
        sim.add(geometry)


def make_lidar(sim):
    lidar = hyxSensor.Lidar(hyx.Frame(hyx.AffineMatrix4x4.translate(hyx.Vec3(0, 0, 3))))
    lidar.setResolution(160, 1200)
    lidar.setFieldOfView(2 * math.pi, 2.2)
    sim.add(lidar)
    lidar.scan()
    return lidar


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the pictures")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(960, 540)
    app.getSceneDecorator().setBackgroundColor(hyx.Vec3(0.05, 0.06, 0.09))
    app.setCameraHome(hyx.Vec3(4, -13, 9), hyx.Vec3(0, 0, 0))
    add_obstacles(sim)

    renderer = hyxOSG.LidarOutputRenderer(make_lidar(sim))
    app.getSceneRoot().addChild(renderer)

    point = hyxOSG.LidarOutputRendererLegendPoint
    legend = [
        point(0.0, osg.Vec4(0.1, 0.1, 0.9, 1)),
        point(0.5, osg.Vec4(0.1, 0.9, 0.3, 1)),
        point(1.0, osg.Vec4(1, 0.9, 0.1, 1)),
    ]
    bands = Bands()  # stays alive as long as the renderer uses it
    colorings = {
        "legend": lambda: renderer.setIntensityColorFunctionFromLegend(legend, 1.0),
        "preset": lambda: renderer.setIntensityColorFunctionFromMode(hyxOSG.ScalarColorMap_INFERNO),
        "callback": lambda: renderer.setIntensityColorFunction(bands),
    }
    for name, choose in colorings.items():
        choose()
        picture = options.output / f"lidar_{name}.png"
        app.takeScreenShot(str(picture))
        print(picture)


if __name__ == "__main__":
    main()
