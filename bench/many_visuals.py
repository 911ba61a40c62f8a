"""Makes the visuals of many bodies, and brings their scene up to date as a frame does, without drawing.

    tools/bench many_visuals [--bodies N]

Exits with 1 when the visuals take a second or more, or when fewer than 60 updates a second are done.
"""

import argparse
import sys
import time

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import osg
import osgViewer

SHAPES = [
    lambda: hyxCollide.Box(0.2, 0.2, 0.2),
    lambda: hyxCollide.Sphere(0.2),
    lambda: hyxCollide.Cylinder(0.2, 0.4),
    lambda: hyxCollide.Capsule(0.1, 0.3),
]


def make_bodies(simulation, count):
    bodies = []
    for i in range(count):
        body = hyx.RigidBody(hyxCollide.Geometry(SHAPES[i % len(SHAPES)]()))
        body.setPosition(hyx.Vec3(i % 50, i // 50 % 50, i // 2500))
        simulation.add(body)
        bodies.append(body)
    return bodies


def seconds_to_create(bodies, root):
    start = time.perf_counter()
    for body in bodies:
        hyxOSG.createVisual(body, root)
    return time.perf_counter() - start


def updates_a_second(bodies, root, rounds=20):
    """The best of the rounds; every body has moved in each."""
    viewer = osgViewer.Viewer()
    viewer.setSceneData(root)
    shortest = float("inf")
    for i in range(rounds):
        for body in bodies:
            body.setPosition(body.getPosition() + hyx.Vec3(0, 0, 0.01))
        start = time.perf_counter()
        viewer.updateTraversal()
        root.getBound()  # what a frame asks for next
        shortest = min(shortest, time.perf_counter() - start)
    return 1 / shortest


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--bodies", type=int, default=5000)
    options = parser.parse_args()
    simulation, root = hyxSDK.Simulation(), osg.Group()
    bodies = make_bodies(simulation, options.bodies)
    seconds, rate = seconds_to_create(bodies, root), updates_a_second(bodies, root)
    print(f"{options.bodies} bodies: visuals in {seconds:.2f} s, {rate:.0f} updates a second")
    return 0 if seconds < 1 and rate >= 60 else 1


if __name__ == "__main__":
    sys.exit(main())
