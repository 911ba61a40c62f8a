"""Frames of the first example's scene, driven from Python and by a plain C++ viewer loop, in turn over one scene.

    tools/bench frames

Prints frames a second of each (the median of rounds that alternate) and the ratio of the rounds' pairs.
"""

import importlib
import random
import statistics
import time

import hyx
import hyxOSG
import hyxSDK
import plain_loop

ROUNDS, FRAMES = 11, 60


def demo_application():
    example = importlib.import_module("01_falling_boxes")
    app = hyxOSG.ExampleApplication(look="plain")
    app.init(None)
    simulation = hyxSDK.Simulation()
    app.initSimulation(simulation)
    app.initViewer(640, 480)
    root = app.getSceneRoot()
    example.add_ground(simulation, root)
    example.add_bodies(simulation, root, 200, random.Random(1))
    example.decorate(app)
    app.setRealTimeSync(False)
    app.setTargetFPS(0)
    return app, simulation


def driven_from_python(app, timer):
    for _ in range(FRAMES):
        app.executeOneStepWithGraphics(timer)


def rate(loop, *arguments):
    start = time.perf_counter()
    loop(*arguments)
    return FRAMES / (time.perf_counter() - start)


def main():
    app, simulation = demo_application()
    timer = hyx.HighAccuracyTimer()
    driven_from_python(app, timer)
    pairs = []
    for _ in range(ROUNDS):
        pairs.append((rate(driven_from_python, app, timer), rate(plain_loop.run, app, FRAMES)))
    ours, plain = (statistics.median(column) for column in zip(*pairs))
    ratio = statistics.median(a / b for a, b in pairs)
    print(f"driven from Python {ours:6.1f} frames/s, plain C++ loop {plain:6.1f} frames/s, ratio {ratio:.3f}")


if __name__ == "__main__":
    main()
