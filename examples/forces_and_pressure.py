"""Forces as arrows, and the pressure under a box that is pushed.

    forces_and_pressure.py [--output FOLDER]

A motor holds a rod level while a box leans on the floor; writes a picture of the arrows and one from below.
"""

import argparse
import math
from pathlib import Path

import hyx
import hyxCollide
import hyxModel
import hyxOSG
import hyxRender
import hyxSDK


def add_floor(sim):
    floor = hyxCollide.Geometry(hyxCollide.Box(4, 4, 0.1))
    floor.setLocalPosition(hyx.Vec3(0, 0, -0.1))
    sim.add(floor)
    return floor


def add_box(sim):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.4, 0.4, 0.6)))
    box.setPosition(hyx.Vec3(-1.2, 0, 0.6))
    box.setMass(60)  # kilograms
    sim.add(box)
    return box


def add_held_rod(sim):
    """A rod that the motor of a hinge holds against its weight."""
    rod = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.6, 0.06, 0.06)))
    rod.setMass(40)
    rod.setPosition(hyx.Vec3(1.2, 0, 1))
    sim.add(rod)
    frame = hyx.Frame()
    frame.setLocalTranslate(hyx.Vec3(-0.6, 0, 0))
    frame.setLocalRotate(hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0)))  # the hinge turns about the frame's Z axis
    hinge = hyx.Hinge(rod, frame)
    hinge.getMotor1D().setEnable(True)
    sim.add(hinge)
    return rod, hinge


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
    app.setCameraHome(hyx.Vec3(3.5, -3.5, 2.2), hyx.Vec3(0, 0, 0.6))
    root = app.getSceneRoot()

    floor, box, (rod, hinge) = add_floor(sim), add_box(sim), add_held_rod(sim)
    visuals = [hyxOSG.createVisual(thing, root) for thing in (floor, box, rod)]
    arrows = hyxOSG.ForceArrowRenderer()
    arrows.setScale(0.0015)  # metres per newton
    arrows.add(box, hyx.Vec3(0, 0, 0.6), hyxRender.Color(0.9, 0.2, 0.1, 1.0))
    arrows.add(hinge, hyx.Vec3(0, 0, 0), hyxRender.Color(0.1, 0.6, 0.2, 1.0), hyxOSG.ForceArrowRenderer_ALL)
    sim.add(arrows)
    pressure = hyxModel.PressureField(box, 0.04)
    pressure.setFoundationDepth(0.0001)  # metres: stiff ground, so the edge carries most
    sim.add(pressure)

    for _ in range(120):
        box.addForceAtPosition(hyx.Vec3(100, 0, 0), box.getPosition() + hyx.Vec3(0, 0, 0.3))  # lean on it
        sim.step()
    app.takeScreenShot(str(options.output / "force_arrows.png"))

    field = hyxOSG.PressureFieldRenderer(root)
    for triangle in pressure.getTriangles():
        field.addTriangle(triangle, hyx.AffineMatrix4x4())
    field.updateTransform(box.getTransform())
    field.done()
    for visual in visuals:
        root.removeChild(visual)
    sim.remove(arrows)
    app.setCameraHome(hyx.Vec3(-1.2, -1.6, -1.6), hyx.Vec3(-1.2, 0, 0))
    app.takeScreenShot(str(options.output / "pressure.png"))
    print(options.output / "force_arrows.png", options.output / "pressure.png", sep="\n")


if __name__ == "__main__":
    main()
