"""A box hanging in front of a camera without gravity, and the events of its off-screen window."""

import functools
import pathlib
import tempfile

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
import pytest
from PIL import Image

WIDTH, HEIGHT = 320, 240
CENTER = (WIDTH / 2, HEIGHT / 2)
CONTROL_LEFT, SHIFT_LEFT = 0xFFE3, 0xFFE1


class Playground:
    def __init__(self, folder):
        self.file = str(folder / "picture.png")
        self.app = hyxOSG.ExampleApplication()
        self.app.init(None)
        self.simulation = hyxSDK.Simulation()
        self.simulation.setGravity(hyx.Vec3(0, 0, 0))
        self.app.initSimulation(self.simulation)
        self.app.initViewer(WIDTH, HEIGHT, True)
        self.geometry = hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5))
        self.body = hyx.RigidBody(self.geometry)
        self.simulation.add(self.body)
        hyxOSG.createVisual(self.body, self.app.getSceneRoot())
        self.app.setCameraHome(hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 0))
        self.listeners, self.balls = [], []
        self.frame()

    def reset(self):
        for listener in self.listeners:
            self.simulation.remove(listener)
        for ball in self.balls:
            self.simulation.remove(ball)
        self.listeners.clear()
        self.balls.clear()
        self.body.setMotionControl(hyx.RigidBody.DYNAMICS)
        self.body.setPosition(hyx.Vec3(0, 0, 0))
        self.body.setRotation(hyx.Quat())
        self.body.setVelocity(hyx.Vec3(0, 0, 0))
        self.body.setAngularVelocity(hyx.Vec3(0, 0, 0))
        handler = self.app.getPickHandler()
        handler.reset()
        handler.setSimulation(self.simulation)
        handler.setCamera(self.app.getCamera())
        handler.setActivateModKeyMask(12)
        handler.setActivateMouseButton(1)
        self.app.setCameraHome(hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 0))  # events may have moved the camera
        self.frame()

    def listen(self, listener):
        self.simulation.add(listener)
        self.listeners.append(listener)
        return listener

    def add_ball(self, y):
        """A ball before the box or behind it, visible, since what the window picks lies between the camera's planes."""
        ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5)))
        ball.setPosition(hyx.Vec3(0, y, 0))
        self.simulation.add(ball)
        hyxOSG.createVisual(ball, self.app.getSceneRoot())
        self.balls.append(ball)
        self.frame()
        return ball

    @property
    def events(self):
        """The queue of the window: what is put here goes the way of real events. Its Y runs downwards, `up` turns
        a height into it."""
        return self.app.getCamera().getGraphicsWindow().getEventQueue()

    @staticmethod
    def up(y):
        return HEIGHT - 1 - y

    def frame(self, count=1):
        timer = hyx.HighAccuracyTimer()
        for _ in range(count):
            self.app.executeOneStepWithGraphics(timer)

    def picture(self):
        self.app.takeScreenShot(self.file)
        return numpy.asarray(Image.open(self.file).convert("RGB")).astype(int)

    def new_handler(self):
        handler = hyxOSG.PickHandler(self.app.getViewer(), self.app.getSceneRoot())
        handler.setSimulation(self.simulation)
        return handler


def numbers(vector):
    return numpy.array([vector.x, vector.y, vector.z])


@functools.cache
def the_only_playground():
    return Playground(pathlib.Path(tempfile.mkdtemp()))


@pytest.fixture
def playground():
    """The playground with the box at rest in its middle."""
    one = the_only_playground()
    one.reset()
    yield one
    one.reset()
