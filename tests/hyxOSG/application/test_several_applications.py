"""Applications beside each other: none draws with what another has given back, and memory may run short."""

import pytest
from subprocesses import run_python, weighs_memory

BEGIN = """
import faulthandler
faulthandler.enable()
import numpy, resource
import hyx, hyxCollide, hyxOSG

def shown(look):
    app = hyxOSG.ExampleApplication(look=look)
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
    app.getSimulation().add(body)
    app.createVisual(app.getSimulation())
    app.initViewer(96, 64, True)
    return app, app.render().copy()
"""

BESIDE = """
first, before = shown({look!r})
for _ in range(2):
    second, same = shown({look!r})
    assert (same == before).all()
    third, _ = shown({other!r})
    third.initViewer(64, 48, True)  # a new window in place of the first
    third.render()
    assert (first.render() == before).all()
    second.close()
    assert (first.render() == before).all()
    del second, third
    assert (first.render() == before).all()
print("drawn")
"""

SHORT = """
first, before = shown("default")
size = int(open("/proc/self/statm").read().split()[0]) * resource.getpagesize()
resource.setrlimit(resource.RLIMIT_AS, (size + {more}, resource.RLIM_INFINITY))
others = []
try:
    for _ in range(1000):
        others.append(shown("default"))
except MemoryError:
    print("short")
others.clear()
resource.setrlimit(resource.RLIMIT_AS, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
assert (first.render() == before).all()
print("drawn")
"""


@pytest.mark.parametrize("look, other", [("default", "plain"), ("plain", "talk"), ("talk", "paper")])
def test_each_draws_on_when_others_open_and_end(look, other):
    result = run_python(BEGIN + BESIDE.format(look=look, other=other))
    assert (result.returncode, result.stdout) == (0, "drawn\n"), result.stderr


@weighs_memory
@pytest.mark.parametrize("more", [50, 300, 500])
def test_one_draws_on_when_there_is_no_memory_for_others(more):
    result = run_python(BEGIN + SHORT.format(more=more << 20))
    assert (result.returncode, result.stdout) == (0, "short\ndrawn\n"), result.stderr
