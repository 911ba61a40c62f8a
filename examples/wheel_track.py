"""A heavy wheel rolls over soft ground and leaves a track.

wheel_track.py [--output FOLDER] [--seconds S]
"""

import argparse
from pathlib import Path

import hyx
import hyxCollide
import hyxModel
import hyxOSG
import hyxSDK


def add_ground(sim):
    geometry = hyxCollide.Geometry(hyxCollide.HeightField(257, 257, 8, 8))  # knots and metres
    sim.add(geometry)
    ground = hyxModel.HeightFieldDeformer(geometry)
    ground.setContactRadius(0.12)
    sim.add(ground)
    return ground


def add_wheel(sim):
    wheel = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Cylinder(0.5, 0.4)))  # radius and height
    wheel.setMass(600)
    wheel.setPosition(hyx.Vec3(-2.5, -0.8, 0.55))
    wheel.setVelocity(hyx.Vec3(2.0, 0.5, 0))
    wheel.setAngularVelocity(hyx.Vec3(0, 4, 0))
    sim.add(wheel)
    return wheel


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the picture")
    parser.add_argument("--seconds", type=float, default=2.0, help="simulated time")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(960, 540)
    app.setCameraHome(hyx.Vec3(1, -5, 3.2), hyx.Vec3(-0.4, 0, 0))

    ground, wheel = add_ground(sim), add_wheel(sim)
    hyxOSG.createVisual(wheel, app.getSceneRoot())
    surface = hyxOSG.DeformableHeightFieldRenderer(ground, app.getSceneRoot())
    hyxOSG.setDiffuseColor(surface.getHeightFieldNode(), hyx.Vec4f(0.55, 0.42, 0.3, 1))
    sim.add(surface)  # follows every step

    app.stopAfter(options.seconds)
    app.run()
    picture = options.output / "wheel_track.png"
    app.takeScreenShot(str(picture))
    print(picture)


if __name__ == "__main__":
    main()
