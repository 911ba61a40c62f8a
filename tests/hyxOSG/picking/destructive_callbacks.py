"""Run as a program with the name of an act: every callback of a scene does it, in three ways of making frames.

Prints the callbacks that came through it. A crash ends the program early.
"""

import sys
import tempfile

import _hyx
import _hyxSDK
import hyx
import hyxCollide
import hyxOSG
import hyxSDK

INPUT = ("update", "mouse", "mouseMoved", "mouseDragged", "keyboard", "setInverseTransform", "removeNotification")
FRAMES = ("preFrame", "postFrame")


class Scene:
    """What a script keeps: the application, its simulation, and one listener with one method."""

    def __init__(self, where, act):
        self.app = hyxOSG.ExampleApplication()
        self.app.init(None)
        self.simulation = hyxSDK.Simulation()
        self.app.initSimulation(self.simulation)
        self.app.initViewer(64, 48, True)
        self.simulation.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 1))))
        self.app.createVisual(self.simulation)
        self.done = False
        self.listener = self.make_listener(where, act)
        events = self.app.getCamera().getGraphicsWindow().getEventQueue()
        events.mouseMotion(10, 10)
        events.keyPress(ord("q"))
        events.mouseButtonPress(5, 5, 1)
        events.mouseMotion(6, 6)
        events.mouseButtonRelease(5, 5, 1)

    def make_listener(self, where, act):
        scene = self

        def method(self, *arguments):
            if not scene.done:
                scene.done = True
                act(scene)
            return False if where in ("mouse", "mouseMoved", "mouseDragged", "keyboard") else None

        base = hyxOSG.ExampleApplicationListener if where in FRAMES else hyxOSG.GuiEventListener
        listener = type("Acting", (base,), {where: method})()
        if where in FRAMES:
            self.app.addListener(listener)
        else:
            listener.setMask(hyxOSG.GuiEventListener.ALL)
            self.simulation.add(listener)
        return listener

    def frames(self, way):
        if way == "run":
            self.app.stopAfter(0.05)
            self.app.run()
        timer = hyx.HighAccuracyTimer()
        for _ in range(3):
            if self.app and way == "step":
                self.app.step()
            elif self.app and way == "frame":
                self.app.executeOneStepWithGraphics(timer)


def delete_application(scene):
    _hyx.delete_Referenced(scene.app)
    scene.app = None


def delete_application_and_simulation(scene):
    scene.simulation = None
    delete_application(scene)


def delete_listener(scene):
    listener, scene.listener = scene.listener, None
    if isinstance(listener, hyxOSG.GuiEventListener):
        scene.simulation.remove(listener)
        _hyxSDK.delete_GuiEventListener(listener)
    else:
        _hyx.delete_Referenced(listener)


def replace_simulation(scene):
    scene.simulation = None
    scene.app.initSimulation(hyxSDK.Simulation())


def empty_simulation(scene):
    scene.simulation.cleanup()


def replace_window(scene):
    scene.app.initViewer(32, 32, True)


def set_the_viewer_up_again(scene):
    scene.app.setupViewer()


def take_picture(scene):
    with tempfile.NamedTemporaryFile(suffix=".png") as file:
        scene.app.takeScreenShot(file.name)


def reload_scene(scene):
    scene.app.reloadScene()


def stop(scene):
    scene.app.stop()


ACTS = (
    delete_application,
    delete_application_and_simulation,
    delete_listener,
    replace_simulation,
    empty_simulation,
    replace_window,
    set_the_viewer_up_again,
    take_picture,
    reload_scene,
    stop,
)


def main():
    act = next(act for act in ACTS if act.__name__ == sys.argv[1])
    for where in (*FRAMES, *INPUT):
        for way in ("step", "run", "frame"):
            scene = Scene(where, act)
            scene.frames(way)
            if where == "removeNotification":
                simulation = scene.simulation
                simulation.remove(scene.listener)
            if scene.done:
                print(where, flush=True)
    print("end")


if __name__ == "__main__":
    main()
