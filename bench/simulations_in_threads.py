"""Two piles of boxes stepped in two threads: how many processors they could keep busy, and how much sooner they end.

    tools/bench simulations_in_threads

A thread could keep a processor busy while it runs or waits for one, not while it waits for its turn in the library or
in the interpreter: that does not suffer from other programs, as the gain does. Exits with 1 when two threads could keep
fewer than 1.8 busy.
"""

import statistics
import sys
import threading
import time

import hyx
import hyxCollide
import hyxSDK

BOXES = 200
STEPS = 300
ROUNDS = 5


def pile():
    sim = hyxSDK.Simulation()
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
    ground.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(ground)
    for i in range(BOXES):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
        body.setPosition(hyx.Vec3(i % 6 * 0.5, i // 6 % 6 * 0.5, 0.3 + i // 36 * 0.5))
        sim.add(body)
    return sim


def seconds_ready():
    """How long the calling thread has run or waited for a processor."""
    with open(f"/proc/self/task/{threading.get_native_id()}/schedstat") as numbers:
        running, queued, _ = map(int, numbers.read().split())
    return (running + queued) * 1e-9


def run(sim, ready):
    before = seconds_ready()
    for _ in range(STEPS):
        sim.step()
    ready.append(seconds_ready() - before)


def in_threads(sims):
    """Seconds, and processors that could be kept busy."""
    ready = []
    threads = [threading.Thread(target=run, args=(sim, ready)) for sim in sims]
    start = time.perf_counter()
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    seconds = time.perf_counter() - start
    return seconds, sum(ready) / seconds


def main():
    gains, busy = [], []
    for _ in range(ROUNDS):
        one_by_one = sum(in_threads([pile()])[0] for _ in range(2))
        together, processors = in_threads([pile(), pile()])
        gains.append(one_by_one / together)
        busy.append(processors)
    print(f"processors that two threads could keep busy {statistics.median(busy):5.2f}")
    print(f"gain over one after the other               {statistics.median(gains):5.2f}")
    return 1 if statistics.median(busy) < 1.8 else 0


if __name__ == "__main__":
    sys.exit(main())
