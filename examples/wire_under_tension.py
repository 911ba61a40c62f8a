"""A crane's wire lifts a load and swings it: red where the tension is highest. A cable beside it wears where it bends.

wire_under_tension.py [--output FOLDER] [--seconds S]
"""

import argparse
import math
from pathlib import Path

import hyx
import hyxCable
import hyxCollide
import hyxOSG
import hyxSDK
import hyxUtil
import hyxWire


def hang_load(sim):
    load = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)))
    load.setMass(300)
    load.setPosition(hyx.Vec3(-1.6, 0, -1.5))
    load.setVelocity(hyx.Vec3(1.5, 0, 0))
    sim.add(load)
    wire = hyxWire.Wire(0.02, 6)
    wire.add(hyx.Vec3(-1.6, 0, 2))
    wire.add(load, hyx.Vec3(0, 0, 0.3))
    wire.setWinchSpeed(-0.3)
    sim.add(wire)
    return load, wire


def hang_slack_wire(sim):
    wire = hyxWire.Wire(0.02, 6)
    for corner in ((-3.2, 0.6, 2), (0, 0.6, -0.6), (3.2, 0.6, 2)):
        wire.add(hyx.Vec3(*corner))
    sim.add(wire)
    return wire


class Bender(hyxSDK.EventListener):
    """Pushes one end of a cable to and fro."""

    def __init__(self, cable):
        super().__init__()
        self.cable = cable

    def pre(self, time):
        self.cable.setEndPoint(False, hyx.Vec3(2.6 - 0.15 * (1 - math.cos(6 * time)), 0, 0.6))


def hang_cable(sim):
    cable = hyxCable.Cable(0.012, 14)
    for corner in ((0.6, 0, 0.6), (1.6, 0, 0.2), (2.6, 0, 0.6)):
        cable.add(hyx.Vec3(*corner))
    damage = hyxCable.CableDamage(cable)
    sim.add(cable)
    sim.add(damage)
    return cable, damage


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the picture")
    parser.add_argument("--seconds", type=float, default=3.0, help="simulated time")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(960, 540)
    app.setCameraHome(hyx.Vec3(0, -8.5, 1.2), hyx.Vec3(0, 0, 0.3))
    root = app.getSceneRoot()

    load, wire = hang_load(sim)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(load, root), hyx.Vec4f(0.3, 0.5, 0.7, 1))
    drawn = [hyxOSG.WireRenderer(wire, root, hyxUtil.CubicSpline()), hyxOSG.WireRenderer(hang_slack_wire(sim), root)]
    for renderer in drawn:
        renderer.setReferenceMaxTension(4000.0)
    cable, damage = hang_cable(sim)
    bender = Bender(cable)
    sim.add(bender)
    wear = hyxOSG.CableDamageRenderer(damage, 0.03, root)
    wear.renderAccumulated()

    app.stopAfter(options.seconds)
    app.run()
    print(
        f"largest tension {wire.getMaximumTension():.0f} N, worn {damage.getMaximumAccumulatedDamage():.1e} of a life"
    )
    picture = options.output / "wire_under_tension.png"
    app.takeScreenShot(str(picture))
    print(picture)


if __name__ == "__main__":
    main()
