"""Fifty runs on two processes: how far a puck slides, by friction and speed. The table is fifty_runs.csv."""

import hyx
import hyxCollide
import hyxSDK
from hyxsweep import sweep


def build(friction: float, speed: float) -> hyxSDK.Simulation:
    sim = hyxSDK.Simulation()
    ice = hyx.Material("ice")
    ice.setFriction(friction)
    ground, puck = (hyxCollide.Geometry(shape) for shape in (hyxCollide.Plane(), hyxCollide.Box(0.2, 0.2, 0.05)))
    for geometry in (ground, puck):
        geometry.setMaterial(ice)
    body = hyx.RigidBody(puck)
    body.setPosition(hyx.Vec3(0, 0, 0.05))
    body.setVelocity(hyx.Vec3(speed, 0, 0))  # m/s
    sim.add(ground)
    sim.add(body)
    return sim


def measure(sim: hyxSDK.Simulation) -> dict[str, float]:
    return {"way": sim.positions[-1, 0]}


design = {"friction": [0.1, 0.2, 0.3, 0.4, 0.5], "speed": range(1, 11)}
sweep(build, design, measure, seconds=4, scheduler=2, folder="fifty_runs").frame().to_csv("fifty_runs.csv")
