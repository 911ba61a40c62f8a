"""Steps of a pile, of a chain and rays into the pile: processor milliseconds, the best of several rounds.

    ninja -C build packages
    PYTHONPATH=build/python build/venv/bin/python bench/physics_steps.py

Exits with 1 when a figure is above its limit on an idle 2-core machine.
"""

import sys

import hyx
import hyxCollide
import hyxSDK
from processor_time import best


def pile(count):
    """Boxes, balls, cylinders and capsules in a heap that has come to rest."""
    sim = hyxSDK.Simulation()
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
    ground.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(ground)
    shapes = [
        hyxCollide.Box(0.2, 0.2, 0.2),
        hyxCollide.Sphere(0.2),
        hyxCollide.Cylinder(0.2, 0.4),
        hyxCollide.Capsule(0.2, 0.2),
    ]
    for i in range(count):
        body = hyx.RigidBody(hyxCollide.Geometry(shapes[i % 4]))
        body.setPosition(hyx.Vec3(i % 6 * 0.5, i // 6 % 6 * 0.5, 0.3 + i // 36 * 0.5))
        sim.add(body)
    sim.stepTo(2)
    return sim


def chain(count):
    """Bodies on a string of ball joints that swings from one end."""
    sim = hyxSDK.Simulation()
    last = None
    for i in range(count):
        body = hyx.RigidBody()
        body.setPosition(hyx.Vec3(0.5 * i + 0.25, 0, 0))
        sim.add(body)
        sim.add(hyx.BallJoint(hyx.Vec3(0.5 * i, 0, 0), body, last))
        last = body
    return sim


def cast_rays(space):
    up, down = hyx.Vec3(0, 0, 5), hyx.Vec3(0, 0, -5)
    for i in range(100):
        up.x = down.x = i % 10 * 0.3
        up.y = down.y = i // 10 * 0.3
        space.castRay(up, down)


def main():
    heap = pile(200)
    figures = [
        ("step of 200 mixed bodies", best(heap.step, 50) / 1e3, 3.0),
        ("poses of 200 bodies", best(heap.getPoses, 50) / 1e3, 0.1),
        ("100 rays into them", best(lambda: cast_rays(heap.getSpace()), 5) / 1e3, 1.5),
        ("step of 200 ball joints", best(chain(200).step, 20) / 1e3, 1.5),
    ]
    for name, milliseconds, limit in figures:
        print(f"{name:28s}{milliseconds:8.3f} ms   (limit {limit})")
    return any(milliseconds > limit for _, milliseconds, limit in figures)


if __name__ == "__main__":
    sys.exit(main())
