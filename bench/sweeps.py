"""A sweep over two processes beside the same sweep over one, and what a run of a sweep costs over a bare call.

    tools/bench sweeps

A run steps 60 boxes for two seconds. Sweeps of one and of two processes take turns; the starts of the processes, which
a sweep of any length pays once, are counted too. Exits with 1 below 1.8 times the runs, or above 5 ms a run.
"""

import statistics
import sys
import tempfile
import time

import cloudpickle
import hyx
import hyxCollide
import hyxSDK
import hyxsweep

RUNS = 240
ROUNDS = 3
BARE_RUNS = 200


def build(height):
    simulation = hyxSDK.Simulation()
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
    ground.setMotionControl(hyx.RigidBody.STATIC)
    simulation.add(ground)
    for i in range(60):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
        body.setPosition(hyx.Vec3(i % 4 * 0.5, i // 4 % 4 * 0.5, height + i // 16 * 0.5))
        simulation.add(body)
    return simulation


def build_nothing(height):
    return hyxSDK.Simulation()


def measure(simulation):
    return {"time": simulation.getTimeStamp()}


def seconds_of(builder, runs, seconds, processes):
    with tempfile.TemporaryDirectory() as folder:
        start = time.perf_counter()
        heights = [0.3 + 0.01 * i for i in range(runs)]
        hyxsweep.sweep(builder, {"height": heights}, measure, seconds=seconds, scheduler=processes, folder=folder)
        return time.perf_counter() - start


def cost_of_a_run():
    """Milliseconds, from the slope over the number of runs: the processes' starts fall out."""
    few, many = (seconds_of(build_nothing, runs, 0, 1) for runs in (BARE_RUNS // 4, BARE_RUNS))
    start = time.perf_counter()
    for _ in range(BARE_RUNS):
        measure(build_nothing(0.3))
    bare = (time.perf_counter() - start) / BARE_RUNS
    return 1000 * ((many - few) / (BARE_RUNS - BARE_RUNS // 4) - bare)


def main():
    cloudpickle.register_pickle_by_value(sys.modules[__name__])
    gains = [seconds_of(build, RUNS, 2, 1) / seconds_of(build, RUNS, 2, 2) for _ in range(ROUNDS)]
    cost = statistics.median(cost_of_a_run() for _ in range(ROUNDS))
    print(f"runs of two processes beside one {statistics.median(gains):5.2f} (1.8 wanted)")
    print(f"ms a run costs over a bare call  {cost:5.2f} (at most 5)")
    return 1 if statistics.median(gains) < 1.8 or cost > 5 else 0


if __name__ == "__main__":
    sys.exit(main())
