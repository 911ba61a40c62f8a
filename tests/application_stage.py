"""What the tests of the application put into it, and how they look at its pictures."""

import hyx
import hyxCollide
import numpy


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
    fields = data.split(None, 4)
    assert fields[0] == b"P6" and fields[3] == b"255"
    width, height = int(fields[1]), int(fields[2])
    pixels = numpy.frombuffer(data[-width * height * 3 :], numpy.uint8)
    return pixels.reshape(height, width, 3).astype(int)


def difference(one, other):
    """The number of pixels that differ clearly."""
    return int((abs(one - other).max(axis=2) > 24).sum())


def steps_of(app, frames):
    before = app.getTimeStamp()
    for _ in range(frames):
        app.executeOneStepWithoutGraphics()
    return round((app.getTimeStamp() - before) / app.getTimeStep())
