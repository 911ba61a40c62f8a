"""A cart steered with the keys w, a, s, d; control and the left button drag whatever is under the pointer.

    07_interactive.py [--record FILE] [--events FILE] [--output FOLDER] [--seconds S]

With --record the events are written down while somebody plays. With --events, or where there is no display, recorded
events take the place of a person, and a video is made.
"""

import argparse
import json
import os
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxSDK

WIDTH, HEIGHT = 640, 400
CONTROL_LEFT, LEFT_BUTTON = 0xFFE3, 1
PUSHES = {ord("w"): (0, 1, 0), ord("s"): (0, -1, 0), ord("a"): (-1, 0, 0), ord("d"): (1, 0, 0)}
RECORDED = [  # seconds, what, and its values
    [0.3, "keyPress", [ord("w")]],
    [1.4, "keyRelease", [ord("w")]],
    [1.5, "keyPress", [ord("d")]],
    [2.2, "keyRelease", [ord("d")]],
    [2.5, "keyPress", [CONTROL_LEFT]],
    [2.6, "mouseMotion", [276, 108]],
    [2.7, "mouseButtonPress", [276, 108, LEFT_BUTTON]],
    *[[2.7 + 0.05 * step, "mouseMotion", [276 - 6 * step, 108 - 2 * step]] for step in range(1, 21)],
    [4.2, "mouseButtonRelease", [156, 68, LEFT_BUTTON]],
    [4.3, "keyRelease", [CONTROL_LEFT]],
]


class Steering(hyxOSG.GuiEventListener):
    """Knows which keys are down, and says where the body is."""

    def __init__(self, body, decorator):
        super().__init__()
        self.body, self.decorator, self.down = body, decorator, set()

    def keyboard(self, key, modifiers, x, y, down):
        if key not in PUSHES:
            return False
        (self.down.add if down else self.down.discard)(key)
        return True  # used up: the application's own keys do not act

    def update(self, x, y):
        place = self.body.getPosition()
        self.decorator.setText(0, f"w a s d: push   control + left button: drag   cart at {place.x:.1f}, {place.y:.1f}")


class Motor(hyxSDK.EventListener):
    """Pushes the body in every step: there may be several, or none, between two frames."""

    def __init__(self, steering):
        super().__init__()
        self.steering, self.force = steering, 9 * steering.body.getMass()  # newtons, enough to overcome friction

    def pre(self, time):
        for key in self.steering.down:
            self.steering.body.addForce(hyx.Vec3(*(self.force * part for part in PUSHES[key])))


class Player(hyxOSG.ExampleApplicationListener):
    """Puts recorded events into the window's queue when their time has come."""

    def __init__(self, events):
        super().__init__()
        self.events = list(events)

    def preFrame(self, app):
        queue = app.getCamera().getGraphicsWindow().getEventQueue()
        while self.events and self.events[0][0] <= app.getTimeStamp():
            _, name, values = self.events.pop(0)
            getattr(queue, name)(*values)


class Recorder(hyxOSG.GuiEventListener):
    """Writes down what a person does, in the form that Player reads. The window's Y runs downwards."""

    def __init__(self, app):
        super().__init__(self.ALL)
        self.app, self.events = app, []

    def note(self, name, *values):
        self.events.append([round(self.app.getTimeStamp(), 3), name, list(values)])
        return False

    def keyboard(self, key, modifiers, x, y, down):
        return self.note("keyPress" if down else "keyRelease", key)

    def mouse(self, button, state, x, y):
        return self.note("mouseButtonRelease" if state == self.UP else "mouseButtonPress", x, HEIGHT - 1 - y, button)

    def mouseMoved(self, x, y):
        return self.note("mouseMotion", x, HEIGHT - 1 - y)

    def mouseDragged(self, buttons, x, y):
        return self.note("mouseMotion", x, HEIGHT - 1 - y)


def add_box(sim, root, size, position, color, static=False):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*size)))
    body.setPosition(hyx.Vec3(*position))
    if static:
        body.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(body)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, root), hyx.Vec4f(*color, 1))
    return body


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--record", type=Path, help="write the events to this file")
    parser.add_argument("--events", type=Path, help="play the events of this file")
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the video")
    parser.add_argument("--seconds", type=float, default=5.0, help="simulated time of a played run")
    options = parser.parse_args()
    played = options.events or not os.environ.get("DISPLAY")

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(WIDTH, HEIGHT)
    root = app.getSceneRoot()
    add_box(sim, root, (8, 8, 0.5), (0, 0, -0.5), (0.6, 0.6, 0.57), static=True)
    cart = add_box(sim, root, (0.5, 0.7, 0.25), (0, -2, 0.3), (0.85, 0.35, 0.2))
    for number in range(12):  # three towers
        box = add_box(sim, root, (0.3, 0.3, 0.3), (number % 3 - 1, 1.2, 0.35 + 0.62 * (number // 3)), (0.25, 0.5, 0.65))
        if number == 9:
            left_top = box
    app.getSceneDecorator().setEnableShadows(True)
    app.setCameraHome(hyx.Vec3(0, -9, 5), hyx.Vec3(0, 0, 0.5))
    recorder = Recorder(app) if options.record else None
    if recorder:
        sim.add(recorder)  # before the steering, which uses events up
    steering = Steering(cart, app.getSceneDecorator())
    sim.add(steering)
    sim.add(Motor(steering))
    if not played:
        app.run()
    else:
        events = json.loads(options.events.read_text()) if options.events else RECORDED
        app.addListener(Player(events))
        options.output.mkdir(parents=True, exist_ok=True)
        video = app.getVideoServerCapture()
        video.setFilename(str(options.output / "interactive"))
        app.stopAfter(options.seconds)
        with video:
            app.run()
        print(
            f"{video.getImageNum()} frames; the cart went to {cart.getPosition()}, "
            f"a dragged box to {left_top.getPosition()}"
        )
    if recorder:
        options.record.write_text(json.dumps(recorder.events))


if __name__ == "__main__":
    main()
