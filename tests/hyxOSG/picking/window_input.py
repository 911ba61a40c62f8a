"""Run as a program with `display` or `queue`: a person's moves in a window, by the display or by its event queue.

Prints what a listener of the scene was told, as JSON.
"""

import json
import subprocess
import sys
import time

import hyx
import hyxCollide
import hyxOSG
import hyxSDK

WIDTH, HEIGHT = 320, 240
SHIFT_LEFT, CONTROL_LEFT, ARROW_LEFT = 0xFFE1, 0xFFE3, 0xFF51
KEYSYMS = {SHIFT_LEFT: "Shift_L", CONTROL_LEFT: "Control_L", ARROW_LEFT: "Left"}
MODIFIERS = {SHIFT_LEFT: 1, CONTROL_LEFT: 4}
LEFT, MIDDLE, RIGHT = 1, 2, 3
PATIENCE = 0.5  # seconds for a move to arrive; what the pick handler uses up is not told

MOVES = [
    ("move", 100, 50),
    ("press", LEFT),
    ("move", 110, 60),
    ("move", 120, 70),
    ("release", LEFT),
    ("press", MIDDLE),
    ("release", MIDDLE),
    ("press", RIGHT),
    ("release", RIGHT),
    ("press", LEFT),
    ("press", RIGHT),
    ("move", 130, 80),
    ("release", RIGHT),
    ("move", 131, 81),
    ("release", LEFT),
    ("keydown", ord("k")),
    ("keyup", ord("k")),
    ("keydown", ARROW_LEFT),
    ("keyup", ARROW_LEFT),
    ("keydown", SHIFT_LEFT),
    ("keydown", ord("K")),
    ("keyup", ord("K")),
    ("keyup", SHIFT_LEFT),
    ("move", 0, 0),
    ("move", WIDTH - 1, HEIGHT - 1),
]
# By the application, and by the person.
RESIZED = [
    ("resize", 200, 150),
    ("move", 10, 20),
    ("move", 199, 149),
    ("stretch", 260, 180),
    ("move", 30, 40),
    ("move", 259, 179),
]
DRAG = [
    ("move", WIDTH // 2, HEIGHT // 2),
    ("keydown", CONTROL_LEFT),
    ("press", LEFT),
    *(("move", WIDTH // 2 + 5 * step, HEIGHT // 2) for step in range(1, 9)),
    ("release", LEFT),
    ("keyup", CONTROL_LEFT),
]


class Person:
    def __init__(self, app):
        self.app, self.height = app, HEIGHT

    def resize(self, width, height):
        self.app.setWindowRectangle(0, 0, width, height)
        self.height = height


class Display(Person):
    """Moves by the display's own pointer and keyboard."""

    def __init__(self, app):
        super().__init__(app)
        self.window = str(app.getHWND())
        self.run("windowfocus", "--sync", self.window)

    def stretch(self, width, height):
        self.run("windowsize", "--sync", self.window, str(width), str(height))
        self.height = height

    @staticmethod
    def run(*arguments):
        subprocess.run(["xdotool", *arguments], check=True)

    def move(self, x, y):
        self.run("mousemove", "--window", self.window, str(x), str(self.height - 1 - y))

    def press(self, button):
        self.run("mousedown", str(button))

    def release(self, button):
        self.run("mouseup", str(button))

    def keydown(self, key):
        self.run("keydown", KEYSYMS.get(key) or chr(key).lower())

    def keyup(self, key):
        self.run("keyup", KEYSYMS.get(key) or chr(key).lower())


class Queue(Person):
    """Puts the events into the window's queue."""

    def __init__(self, app):
        super().__init__(app)
        self.events = app.getCamera().getGraphicsWindow().getEventQueue()
        self.place = (0, 0)

    def stretch(self, width, height):
        self.events.windowResize(0, 0, width, height)
        self.height = height

    def move(self, x, y):
        self.place = (x, self.height - 1 - y)
        self.events.mouseMotion(*self.place)

    def press(self, button):
        self.events.mouseButtonPress(*self.place, button)

    def release(self, button):
        self.events.mouseButtonRelease(*self.place, button)

    def keydown(self, key):
        if key in MODIFIERS:
            self.events.setModKeyMask(MODIFIERS[key])
        self.events.keyPress(key)

    def keyup(self, key):
        if key in MODIFIERS:
            self.events.setModKeyMask(0)
        self.events.keyRelease(key)


class Recorder(hyxOSG.GuiEventListener):
    def __init__(self):
        super().__init__(self.ALL)
        self.calls = []
        self.last_update = None

    def note(self, *call):
        self.calls.append(call)
        return False

    def mouse(self, *arguments):
        return self.note("mouse", *arguments)

    def mouseMoved(self, *arguments):
        return self.note("mouseMoved", *arguments)

    def mouseDragged(self, *arguments):
        return self.note("mouseDragged", *arguments)

    def keyboard(self, *arguments):
        return self.note("keyboard", *arguments)

    def update(self, *arguments):
        self.last_update = arguments


def main():
    app = hyxOSG.ExampleApplication()
    app.init(None)
    simulation = hyxSDK.Simulation()
    simulation.setGravity(hyx.Vec3(0, 0, 0))
    app.initSimulation(simulation)
    app.initViewer(WIDTH, HEIGHT)
    app.setWindowRectangle(0, 0, WIDTH, HEIGHT)
    app.setRealTimeSync(False)
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
    simulation.add(body)
    app.setCameraHome(hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 0))
    recorder = Recorder()
    simulation.add(recorder)
    app.step()
    person = {"display": Display, "queue": Queue}[sys.argv[1]](app)
    for name, *arguments in MOVES + DRAG + RESIZED:
        app.setAutoStepping(True)  # the arrow key goes back in time, and rests there
        before = len(recorder.calls), recorder.last_update
        getattr(person, name)(*arguments)
        latest = time.monotonic() + PATIENCE
        while (len(recorder.calls), recorder.last_update) == before and time.monotonic() < latest:
            app.step()
    print(json.dumps({"calls": recorder.calls, "last_update": recorder.last_update, "x": body.getPosition().x}))


if __name__ == "__main__":
    main()
