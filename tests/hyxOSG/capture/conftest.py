"""A window in a host's context with a small scene, and a simulation for the clock."""

import hyxOSG
import hyxSDK
import pytest
from capture_stage import Stage
from egl_host import Host


@pytest.fixture
def host():
    made = Host()
    yield made
    made.close()


@pytest.fixture
def window(host):
    made = hyxOSG.EmbeddedGLWindow()
    assert made.init(0, 0, *host.size)
    yield made
    host.make_current()
    del made


@pytest.fixture
def simulation():
    made = hyxSDK.Simulation()
    made.setTimeStep(1 / 60)
    return made


@pytest.fixture
def stage(window, simulation):
    return Stage(window, simulation)
