"""A window whose picture the test chooses, drawn at the pace of a simulation."""

import pathlib

import hyx

PACKAGES = pathlib.Path(hyx.__file__).parent.parent
EXAMPLES = pathlib.Path(__file__).resolve().parents[1] / "examples"
RED, GREEN, BLUE = (1, 0, 0), (0, 1, 0), (0, 0, 1)


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
