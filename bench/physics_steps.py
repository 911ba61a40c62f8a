"""Steps of a pile, of a chain and rays into the pile: processor milliseconds, the best of several rounds.

    tools/bench physics_steps

Exits with 1 when a figure is above its limit on an idle 2-core machine.
"""

import math
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


def arm():
    """Seven links of two capsules, held by motors."""
    sim = hyxSDK.Simulation()
    last = None
    for i in range(7):
        link = hyx.RigidBody()
        for z in (0.0, 0.15):
            upright = hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0))
            place = hyx.AffineMatrix4x4(upright, hyx.Vec3(0, 0, z))
            link.add(hyxCollide.Geometry(hyxCollide.Capsule(0.05, 0.1)), place)
        link.setPosition(hyx.Vec3(0, 0, 0.3 * i + 0.15))
        hinge = hyx.Hinge(hyx.Vec3(0, 0, 0.3 * i), hyx.Vec3(0, i % 2, 1 - i % 2), link, last)
        hinge.getMotor1D().setEnable(True)
        for one in last.getGeometries() if last else []:
            for other in link.getGeometries():
                one.setEnableCollisions(other, False)
        sim.add(link)
        sim.add(hinge)
        last = link
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
        ("step of an arm of 7 links", best(arm().step, 200) / 1e3, 0.05),
        ("step of 200 ball joints", best(chain(200).step, 20) / 1e3, 1.5),
    ]
    for name, milliseconds, limit in figures:
        print(f"{name:28s}{milliseconds:8.3f} ms   (limit {limit})")
    return any(milliseconds > limit for _, milliseconds, limit in figures)


if __name__ == "__main__":
    sys.exit(main())
