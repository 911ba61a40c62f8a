"""All kinds of joints in all solvers for a few steps: what `tools/memcheck` watches."""

import math

import hyx
import hyxSDK
from physics_scene import bare_body, box, ground, simulation

STEPS = 20
Y, X = hyx.Vec3(0, 1, 0), hyx.Vec3(1, 0, 0)


def single(kind):
    """A rod on one joint, with its motor, range and lock at work one after the other."""
    rod = bare_body((0.5, 0, 0))
    joint = {
        "hinge": lambda: hyx.Hinge(hyx.Vec3(), Y, rod),
        "prismatic": lambda: hyx.Prismatic(hyx.Vec3(), X, rod),
        "cylindrical": lambda: hyx.CylindricalJoint(hyx.Vec3(), X, rod),
        "ball": lambda: hyx.BallJoint(hyx.Vec3(), rod),
        "distance": lambda: hyx.DistanceJoint(hyx.Vec3(0.5, 0, 0), hyx.Vec3(0, 0, 1), rod),
        "lock": lambda: hyx.LockJoint(rod),
    }[kind]()
    return [rod], [joint]


def chain(make, count=6):
    bodies, joints = [], []
    for i in range(count):
        bodies.append(bare_body((i + 0.5, 0, 0)))
        joints.append(make(hyx.Vec3(i, 0, 0), bodies[-1], bodies[-2] if i else None))
    return bodies, joints


def arm():
    axes = [Y if i % 2 else hyx.Vec3(0, 0, 1) for i in range(7)]
    bodies, joints = chain(lambda place, one, other: hyx.Hinge(place, axes[int(place.x)], one, other), 7)
    for joint in joints:
        joint.getMotor1D().setEnable(True)
    return bodies, joints


def four_bar():
    bodies, joints = chain(lambda place, one, other: hyx.Hinge(place, Y, one, other), 3)
    joints.append(hyx.Hinge(hyx.Vec3(3, 0, 0), Y, bodies[-1]))
    joints[0].getMotor1D().setEnable(True)
    joints[0].getMotor1D().setSpeed(1.0)
    return bodies, joints


def touching():
    """A chain of boxes that falls on the ground, and a box on its own."""
    bodies = [box(0.1, (0.3 * i, 0, 0.12)) for i in range(4)]
    joints = [
        hyx.BallJoint(hyx.Vec3(0.3 * i + 0.15, 0, 0.12), bodies[i + 1], bodies[i]) for i in range(len(bodies) - 1)
    ]
    return [ground(), box(0.1, (0, 1, 0.15)), *bodies], joints


SCENES = {
    **{
        kind: lambda kind=kind: single(kind)
        for kind in ("hinge", "prismatic", "cylindrical", "ball", "distance", "lock")
    },
    "chain of hinges": lambda: chain(lambda place, one, other: hyx.Hinge(place, Y, one, other)),
    "chain of balls": lambda: chain(lambda place, one, other: hyx.BallJoint(place, one, other)),
    "arm": arm,
    "four-bar": four_bar,
    "touching": touching,
}


def work(joint, part):
    """Switches what the joint has besides its rows: motor, range and lock in turn."""
    directions = [(0,), (1,)] if isinstance(joint, hyx.CylindricalJoint) else [()]
    for k, name in enumerate(("getMotor1D", "getRange1D", "getLock1D")):
        for direction in directions:
            if hasattr(joint, name):
                getattr(joint, name)(*direction).setEnable(k == part)


def main():
    for solver in (hyxSDK.Simulation.MULTI, hyxSDK.Simulation.ITERATIVE, hyxSDK.Simulation.DIRECT):
        for name, build in SCENES.items():
            bodies, joints = build()
            world = simulation(*bodies, *joints)
            world.setSolver(solver)
            for part in range(4):
                if len(joints) == 1:
                    work(joints[0], part)
                for _ in range(STEPS // 4):
                    world.step()
            saved = world.saveState()
            world.step()
            world.restoreState(saved)
            world.remove(joints[0])
            world.step()
            assert all(math.isfinite(body.getPosition().length()) for body in bodies), f"{name}: not finite"


main()
