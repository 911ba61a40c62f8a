"""What a sweep gains by two processes, and what it adds to each run.

    tools/bench sweeps

Exits with 1 when a figure misses its limit on an idle 2-core machine. On a busy one compare with two processes by hand,
which take their turns with it.
"""

import statistics
import subprocess
import sys
import tempfile
import time

import hyx
import hyxCollide
import hyxSDK
from hyxsweep import sweep

RUNS, ROUNDS, TRIFLES = 60, 3, 2000
LIMITS = {"throughput of 2 processes": 1.8, "cost of a run": 5.0}  # times that of one process; milliseconds


def fall(seed):
    """A heap falls for 3 s: some 0.1 s of work."""
    simulation = hyxSDK.Simulation()
    simulation.add(hyxCollide.Geometry(hyxCollide.Plane()))
    for i in range(30):
        box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
        box.setPosition((0.3 * (i % 3) + 0.01 * seed, 0.3 * (i // 3 % 3), 0.5 + 0.45 * (i // 9)))
        simulation.add(box)
    simulation.stepTo(3)
    return max(body.getPosition().z for body in simulation.getRigidBodies())


def trifle(seed):
    return seed


def seconds(operation, *arguments):
    start = time.perf_counter()
    operation(*arguments)
    return time.perf_counter() - start


def swept(function, runs, scheduler):
    with tempfile.TemporaryDirectory() as folder:
        sweep(function, {"seed": range(runs)}, scheduler=scheduler, folder=folder, progress=False)


def by_hand(count):
    """As many processes that call the function themselves: what the machine can give now."""
    program = f"import sweeps; [sweeps.fall(seed) for seed in range({RUNS // count})]"
    path = f"import sys; sys.path[:] = {sys.path!r}; "
    processes = [subprocess.Popen([sys.executable, "-c", path + program]) for _ in range(count)]
    assert [process.wait() for process in processes] == [0] * count


def throughput():
    rounds = [
        (seconds(swept, fall, RUNS, 1), seconds(swept, fall, RUNS, 2), seconds(by_hand, 1), seconds(by_hand, 2))
        for _ in range(ROUNDS)
    ]
    ours = statistics.median(one / two for one, two, _, _ in rounds)
    plain = statistics.median(one / two for _, _, one, two in rounds)
    print(f"two processes by hand: {plain:.2f} times the runs of one")
    return ours


def cost(scheduler):
    """Milliseconds that a run of a sweep takes beyond the call, with processes that have started."""
    swept_long, swept_short = (
        min(seconds(swept, trifle, runs, scheduler) for _ in range(ROUNDS)) for runs in (TRIFLES, TRIFLES // 4)
    )
    return (swept_long - swept_short) / (TRIFLES - TRIFLES // 4) * 1e3


def main():
    gained = throughput()
    costs = {name: cost(scheduler) for name, scheduler in (("in this process", 0), ("in a process", 1))}
    print(f"a sweep on 2 processes: {gained:.2f} times the runs of one (limit {LIMITS['throughput of 2 processes']})")
    for name, figure in costs.items():
        print(f"cost of a run {name}: {figure:.2f} ms (limit {LIMITS['cost of a run']})")
    return gained < LIMITS["throughput of 2 processes"] or max(costs.values()) > LIMITS["cost of a run"]


if __name__ == "__main__":
    sys.exit(main())
