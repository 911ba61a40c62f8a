"""The application's loop: what a frame costs beside what it calls, and memory over a long run.

    tools/bench application_loop [STEPS]

Exits with 1 when a figure is above its limit on an idle 2-core machine.
"""

import os
import sys

import hyx
import hyxCollide
import hyxIO
import hyxOSG
import hyxSDK
from processor_time import best


def memory():
    """Mebibytes in use."""
    return int(open("/proc/self/statm").read().split()[1]) * os.sysconf("SC_PAGE_SIZE") / 2**20


def overhead():
    """Of a frame without bodies, drawing and listeners, beside the step of the simulation."""
    app = hyxOSG.ExampleApplication(look="plain")
    app.init(hyxIO.ArgumentParser(["--no-graphics"]))
    app.initSimulation()
    bare = hyxSDK.Simulation()
    return best(app.executeOneStepWithoutGraphics, 5000) - best(bare.step, 5000)


def growth(steps, bodies=500):
    """Mebibytes that a run gains after its first tenth."""
    app = hyxOSG.ExampleApplication(look="plain")
    app.init(hyxIO.ArgumentParser(["--no-graphics"]))
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
    ground.setMotionControl(hyx.RigidBody.STATIC)
    app.getSimulation().add(ground)
    for i in range(bodies):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
        body.setPosition(hyx.Vec3(i % 10 * 0.5, i // 10 % 10 * 0.5, 0.3 + i // 100 * 0.5))
        app.getSimulation().add(body)
    start = 0
    for step in range(steps):
        app.executeOneStepWithoutGraphics()
        if step == steps // 10:
            start = memory()
    return memory() - start


def main():
    steps = int(sys.argv[1]) if len(sys.argv) > 1 else 20_000
    figures = [
        ("overhead of a frame, us", overhead(), 20),
        (f"growth over {steps} steps of 500 bodies, MiB", growth(steps), 2),
    ]
    for name, value, limit in figures:
        print(f"{name}: {value:.2f} (limit {limit})")
    sys.exit(any(value > limit for _, value, limit in figures))


if __name__ == "__main__":
    main()
