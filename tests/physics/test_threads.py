"""Simulations that threads step at the same time go as they go alone, and pass each other."""

import threading
import time

import hyx
import hyxCollide
import hyxSDK
import pytest
from cube_mesh import CUBE_TRIANGLES, box_corners
from physics_scene import bare_body, body, box, ground, simulation

PATIENCE = 60  # seconds; only threads that wait for each other take so long
SHAPES = {
    "box": lambda: hyxCollide.Box(0.1, 0.15, 0.2),
    "ball": lambda: hyxCollide.Sphere(0.15),
    "cylinder": lambda: hyxCollide.Cylinder(0.1, 0.3),
    "cone": lambda: hyxCollide.Cone(0.15, 0.3),
}


def heap(count=200, materials=(None,), shapes=tuple(SHAPES.values()), first=0):
    """Things of many kinds that fall onto a field, in an order that `first` turns."""
    sim = simulation(ground())
    sim.add(hyxCollide.Geometry(hyxCollide.HeightField(9, 9, 4, 4, [0.02] * 81)))
    for i in range(count):
        shape = shapes[(first + i) % len(shapes)]
        piece = body(shape(), (i % 6 * 0.4 + i % 7 * 0.01, i // 6 % 6 * 0.4, 0.3 + i // 36 * 0.4))
        for geometry in piece.getGeometries():
            geometry.setMaterial(materials[i % len(materials)])
        sim.add(piece)
    return sim


def chain(sim, count=12):
    last = None
    for i in range(count):
        link = bare_body((0.5 * i + 0.25, 0, 4))
        sim.add(link)
        sim.add(hyx.BallJoint(hyx.Vec3(0.5 * i, 0, 4), link, last))
        last = link
    return sim


def in_threads(*works):
    """Runs them all at once; raises what the first of them raised."""
    start = threading.Barrier(len(works))
    faults = []

    def run(work):
        start.wait()
        try:
            work()
        except BaseException as fault:
            faults.append(fault)

    threads = [threading.Thread(target=run, args=(work,), daemon=True) for work in works]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join(PATIENCE)
        assert not thread.is_alive(), "the threads wait for each other"
    if faults:
        raise faults[0]


def steps(sim, count):
    return lambda: [sim.step() for _ in range(count)]


def shared_things():
    """Makers of simulations that have shapes and materials in common."""
    materials = [hyx.Material(), hyx.Material()]
    mesh = hyxCollide.Trimesh(box_corners(0.15, 0.15, 0.15), [corner for face in CUBE_TRIANGLES for corner in face])
    compound = hyxCollide.Compound()
    compound.add(hyxCollide.Box(0.1, 0.1, 0.1), hyx.AffineMatrix4x4(hyx.Vec3(0.1, 0, 0)))
    compound.add(hyxCollide.Sphere(0.1))
    ball = hyxCollide.Sphere(0.15)
    shapes = [lambda: mesh, lambda: compound, lambda: ball]
    return lambda first: chain(heap(60, materials, shapes, first))


@pytest.mark.parametrize("scene", ["apart", "sharing"])
@pytest.mark.parametrize("sleep", [False, True], ids=["awake", "asleep"])
def test_steps_at_the_same_time_give_the_same_bits(scene, sleep):
    make = shared_things() if scene == "sharing" else lambda first: chain(heap(200, first=first))

    def made():
        sims = [make(first) for first in range(2)]
        for sim in sims:
            sim.setEnableAutoSleep(sleep)
        return sims

    alone = made()
    for sim in alone:
        sim.stepTo(0.5)
    expected = [sim.saveState() for sim in alone]
    together = made()
    in_threads(*[lambda sim=sim: sim.stepTo(0.5) for sim in together])
    assert [sim.saveState() for sim in together] == expected


class Counter(hyxSDK.EventListener):
    """Looks at its own and at the other simulation."""

    def __init__(self, other):
        super().__init__()
        self.other = other
        self.calls = 0

    def post(self, time):
        self.calls += 1
        assert self.other.getRigidBodies()[-1].getPosition().z > -1


def test_listeners_and_other_callers_wait_for_no_one_forever():
    sims = [heap(20, first=first) for first in range(3)]
    listeners = [Counter(sims[i - 1]) for i in range(2)]
    for sim, listener in zip(sims, listeners):
        sim.add(listener)
    ended = threading.Event()
    seen = []

    def look():
        while not ended.is_set():
            seen.append(sims[len(seen) % 3].getTimeStamp())
            time.sleep(0.0005)

    watcher = threading.Thread(target=look, daemon=True)
    watcher.start()
    in_threads(*[steps(sim, 300) for sim in sims[:2]], lambda: sims[2].stepTo(5))
    ended.set()
    watcher.join(PATIENCE)
    assert not watcher.is_alive()
    assert [listener.calls for listener in listeners] == [300, 300]
    assert len(seen) > 20
    assert sims[2].getTimeStamp() == pytest.approx(5)


def seconds_ready():
    """How long the calling thread has run or waited for a processor, so not for its turn."""
    with open(f"/proc/self/task/{threading.get_native_id()}/schedstat") as numbers:
        running, queued, _ = map(int, numbers.read().split())
    return (running + queued) * 1e-9


def processors_of(sims):
    ready = []

    def work(sim):
        before = seconds_ready()
        sim.stepTo(1)
        ready.append(seconds_ready() - before)

    start = time.perf_counter()
    in_threads(*[lambda sim=sim: work(sim) for sim in sims])
    return sum(ready) / (time.perf_counter() - start)


def test_two_threads_could_keep_two_processors_busy():
    """Threads that take turns could keep but one busy."""
    assert max(processors_of([heap(), heap()]) for _ in range(3)) > 1.5


def test_a_joint_between_two_simulations_makes_them_take_turns():
    def made():
        mover, follower = heap(60), heap(60, first=1)
        ends = box(0.1, (0, 0, 5)), box(0.1, (1, 0, 5))
        mover.add(ends[0])
        follower.add(ends[1])
        mover.add(hyx.Hinge(hyx.Vec3(0, 0, 5), hyx.Vec3(0, 0, 1), *ends))
        return mover, follower

    alone = made()
    for sim in alone:
        sim.stepTo(0.2)
    together = made()
    in_threads(*[lambda sim=sim: sim.stepTo(0.2) for sim in together])
    assert [sim.saveState() for sim in together] == [sim.saveState() for sim in alone]
