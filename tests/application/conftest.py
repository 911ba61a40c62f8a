"""Applications off-screen, simulations with a ground and boxes, and pictures as arrays."""
import os

os.environ.setdefault("HYX_DISPLAY", "offscreen")

import numpy
import pytest

import hyx
import hyxCollide
import hyxOSG
import hyxSDK


@pytest.fixture
def app():
    """An application with a simulation of its own. It lives to the end of the process, so tests look only at their own."""
    made = hyxOSG.ExampleApplication()
    made.init(None)
    made.initSimulation()
    yield made
    made.postExecution()
    made.clearScene()


@pytest.fixture
def window(app):
    """The same with a small window and the camera in front of the origin."""
    app.initViewer(160, 120)
    app.setCameraHome(hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 0))
    return app


def add_box(app, name="box", position=(0, 0, 0), half=0.5, static=False):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(half, half, half)), name)
    body.setPosition(hyx.Vec3(*position))
    if static:
        body.setMotionControl(hyx.RigidBody.STATIC)
    app.getSimulation().add(body)
    return body


def read_picture(path):
    """Rows of RGB, the upper row first."""
    data = path.read_bytes()
    magic, size, most, pixels = data.split(b"\n", 3)[0], None, None, None
    fields = data.split(None, 4)
    assert magic == b"P6" and fields[3] == b"255"
    width, height = int(fields[1]), int(fields[2])
    pixels = numpy.frombuffer(data[-width * height * 3:], numpy.uint8)
    return pixels.reshape(height, width, 3).astype(int)


@pytest.fixture
def shoot(tmp_path):
    """Takes the application's picture."""
    count = 0

    def take(application):
        nonlocal count
        count += 1
        path = tmp_path / f"shot{count}.ppm"
        application.takeScreenShot(str(path))
        return read_picture(path)

    return take


def difference(one, other):
    """The number of pixels that differ clearly."""
    return int((abs(one - other).max(axis=2) > 24).sum())
