"""A script may end while threads of its own still work with the library: the process ends in order."""

import pytest
from subprocesses import run_python

SCRIPT = """
import threading, time
import hyx, hyxSDK, hyxCollide

WORK = {work!r}
sim = hyxSDK.Simulation()
bodies = [hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5))) for _ in range(20)]
for body in bodies:
    sim.add(body)

class Listener(hyxSDK.EventListener):
    def pre(self, time):
        sum(range(2000))

class Numbers:
    def __iter__(self):
        for number in range(3):
            sum(range(2000))
            yield number

listener = Listener()
if WORK == "listener":
    sim.add(listener)
if WORK == "notices":
    hyx.Notify.instance().setSink(lambda level, text: sum(range(2000)))
lone = [sim, hyxSDK.Simulation(), hyxSDK.Simulation()]

def work(place):
    while True:
        if WORK in ("steps", "listener"):
            try:
                sim.step()
            except RuntimeError:  # another thread's step goes on
                pass
        elif WORK == "own":
            lone[place].step()
        elif WORK == "notices":
            hyx.Notify.instance().notify(2, "text")
        elif WORK == "iterables":
            bodies[0].setPosition(Numbers())
        else:
            sim.getRigidBodies()

for place in range(3):
    threading.Thread(target=work, args=(place,), daemon=True).start()
time.sleep(0.05)
print("done", flush=True)
"""


@pytest.mark.parametrize("work", ["steps", "own", "listener", "notices", "iterables", "results"])
def test_threads_that_run_on_do_not_end_the_process(work):
    for _ in range(3):
        done = run_python(SCRIPT.format(work=work))
        assert (done.returncode, done.stdout) == (0, "done\n"), done.stderr
