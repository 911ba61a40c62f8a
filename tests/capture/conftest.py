"""A window in a host's context with a small scene, and a simulation for the clock."""
import pytest

import hyx
import hyxOSG
import hyxSDK

from egl_host import Host

RED, GREEN, BLUE = (1, 0, 0), (0, 1, 0), (0, 0, 1)


@pytest.fixture
def host():
    made = Host()
    yield made
    made.release()


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


class Stage:
    """A window whose picture is one flat colour that the test chooses, drawn once for each step of the simulation."""

    def __init__(self, window, simulation):
        self.window, self.simulation = window, simulation
        self.fill(RED)

    def fill(self, color):
        self.window.getSceneDecorator().setBackgroundColor(hyx.Vec3(*color))

    def capture(self, capture):
        self.window.getCamera().setFinalDrawCallback(capture.getDrawCallback())
        return capture

    def draw(self, steps=1, steps_a_frame=1):
        for step in range(steps):
            self.simulation.step()
            if step % steps_a_frame == steps_a_frame - 1:
                self.window.frame()


@pytest.fixture
def stage(window, simulation):
    return Stage(window, simulation)
