"""Scenes follow each other without traces, and one that fails leaves the one before."""

import gc
import json
import resource
import time

import hyx
import hyxOSG
import numpy
import pytest
from application_stage import add_box, read_picture
from subprocesses import run_python

PLAIN = """
import hyx, hyxCollide, hyxOSG

def plain(sim, app, root):
    for i in range(12):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)), f"box{i}")
        body.setPosition(hyx.Vec3(0.5 * (i % 3), 0.1 * i, 1 + 0.7 * i))
        sim.add(body)
        hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, root), hyx.Vec4f(0.9, 0.1 * (i % 5), 0.2, 1))
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(5, 5, 0.5)), "ground")
    ground.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(ground)
    hyxOSG.createVisual(ground, root)

class Meddler(hyxOSG.ExampleApplicationListener):
    calls = 0
    def preFrame(self, app):
        Meddler.calls += 1

def meddling(sim, app, root):
    decorator = app.getSceneDecorator()
    plain(sim, app, root)
    sim.setGravity(hyx.Vec3(1, 0, -2))
    app.setTimeStep(0.005)
    app.stopAfter(0.2)
    decorator.setBackgroundColor(hyx.Vec4f(1, 0, 0, 1))
    decorator.setEnableShadows(True)
    decorator.setEnableLights(hyxOSG.SceneDecorator.LIGHT1)
    decorator.getLightSource(hyxOSG.SceneDecorator.LIGHT0).setDiffuse(hyx.Vec4f(0, 0, 1, 1))
    decorator.setText(0, "meddled", hyx.Vec4f(1, 1, 1, 1))
    app.setEnableGrid(True)
    app.setGridSize(hyx.Vec2(0.5, 0.5))
    app.setEnableCoordinateSystem(True)
    app.setCameraHome(hyx.Vec3(9, 9, 9), hyx.Vec3(0, 0, 0))
    app.setCoordinateSystemTransform(hyx.AffineMatrix4x4(hyx.Vec3(1, 2, 3)))
    app.addListener(Meddler())
    app.addRenderTarget(hyxOSG.RenderToImage(32, 32))
    app.setStepCallback(hyx.Callback(lambda: None))
    app.setTargetFPS(500)
    app.setSpeed(3)
    bodies = sim.getRigidBodies()
    app.addAutoPausePair(bodies[0], bodies[1])

def failing(sim, app, root):
    meddling(sim, app, root)
    raise ValueError("half built")
"""

FIRST_PICTURE = """
import json, sys
import hyx, hyxOSG, hyxSDK
script, folder, names = sys.argv[1], sys.argv[2], sys.argv[3].split(",")
app = hyxOSG.ExampleApplication()
app.init(None)
app.initSimulation(hyxSDK.Simulation())
app.initViewer(160, 120)
for name in dict.fromkeys(names):
    app.addScene(script, name)
order = list(dict.fromkeys(names))
for name in names:
    assert app.createSceneFromIndex(order.index(name))
    app.takeScreenShot(f"{folder}/{len(names)}.ppm")
    for _ in range(60):
        app.stepSimulation()
sim = app.getSimulation()
state = [app.getTimeStep(), app.getTimeStamp(), list(sim.getGravity()), app.shouldStop(), app.getTargetFPS()]
state += [app.getSpeed(), app.getRealTimeSync(), app.getEnableGrid(), app.isCameraHomeSet()]
for body in sim.getRigidBodies():
    state += [list(body.getPosition()), list(body.getRotation()), list(body.getVelocity())]
print(json.dumps(state))
"""


@pytest.fixture
def script(tmp_path):
    path = tmp_path / "scenes.py"
    path.write_text(PLAIN)
    return str(path)


def test_a_scene_after_another_is_as_in_a_fresh_process(script, tmp_path):
    program = tmp_path / "program.py"
    program.write_text(FIRST_PICTURE)
    runs = [run_python(str(program), script, str(tmp_path), names) for names in ("plain", "plain,meddling,plain")]
    assert [run.returncode for run in runs] == [0, 0], runs[0].stderr + runs[1].stderr
    fresh, third = (json.loads(run.stdout.splitlines()[-1]) for run in runs)
    assert third == fresh  # bit for bit, after 60 steps
    pictures = [read_picture(tmp_path / f"{count}.ppm") for count in (1, 3)]
    assert numpy.array_equal(*pictures)


def test_what_a_scene_changes_ends_with_it_and_what_the_program_changes_stays(window, script):
    window.addScene(script, "meddling")
    window.addScene(script, "plain")
    window.setGridResolution(hyx.Vec2u(7, 7))
    loaded = []
    window.m_sceneLoadEvent.add(hyx.Callback(lambda: loaded.append(1)))
    nodes = window.getRoot().getNumChildren()
    for _ in range(4):
        window.createSceneFromIndex(0)
    assert window.getRoot().getNumChildren() == nodes + 1  # one target
    window.setTargetFPS(250)
    window.createSceneFromIndex(1)
    assert window.getRoot().getNumChildren() == nodes
    assert window.getTimeStep() == pytest.approx(1 / 60) and window.getGravity().x == 0
    assert not window.getEnableGrid() and not window.getSceneDecorator().getEnableShadows()
    assert window.getSpeed() == 1 and not window.shouldStop()
    assert window.getGridResolution().x == 7 and len(loaded) == 5
    # The home was the program's before the scene set its own.
    eye, center, up = hyx.Vec3(), hyx.Vec3(), hyx.Vec3()
    window.getCameraHome(eye, center, up)
    assert tuple(eye) == (0, -10, 0) and window.isCameraHomeSet()


def meddlers():
    gc.collect()
    return [thing for thing in gc.get_objects() if type(thing).__name__ == "Meddler"]


def test_what_the_program_changes_after_a_scene_stays_beside_what_the_scene_changed(window, script):
    class Told(hyxOSG.ExampleApplicationListener):
        frames = 0

        def preFrame(self, app):
            self.frames += 1

    window.addScene(script, "meddling")
    window.addScene(script, "failing")
    window.createSceneFromIndex(0)
    told, target, words = (
        Told(),
        hyxOSG.RenderToImage(16, 16),
        hyxOSG.Text("mine", hyx.Vec3(0, 0, 1), hyx.Vec4(1, 1, 1, 1)),
    )
    hud = window.getSceneDecorator().getHud()
    window.addListener(told)
    window.addRenderTarget(target)
    hud.addChild(words)
    window.setTimeStep(0.002)
    nodes = window.getRoot().getNumChildren()
    window.createSceneFromIndex(0)
    with pytest.raises(ValueError, match="half built"):
        window.createSceneFromIndex(1)
    (meddler,) = meddlers()
    calls = meddler.calls
    window.step()
    assert told.frames == 1 and meddler.calls == calls + 1
    del meddler
    assert window.getRoot().getNumChildren() == nodes and hud.containsNode(words)
    window.clearScene()
    window.step()
    assert not meddlers()
    assert told.frames == 2 and window.getRoot().getNumChildren() == nodes - 1 and hud.containsNode(words)
    assert window.getTimeStep() == 0.002


def state_of(app):
    return [
        (body.getName(), *body.getPosition(), *body.getRotation(), *body.getVelocity())
        for body in app.getSimulation().getRigidBodies()
    ]


def test_a_scene_that_fails_leaves_the_one_before_as_it_was(window, shoot, script):
    window.addScene(script, "plain")
    window.addScene(script, "failing")
    window.createSceneFromIndex(0)
    for _ in range(20):
        window.stepSimulation()
    states, picture = state_of(window), shoot(window)
    for _ in range(3):
        with pytest.raises(ValueError, match="half built"):
            window.createSceneFromIndex(1)
    assert state_of(window) == states and len(states) == 13
    assert numpy.array_equal(shoot(window), picture)
    assert window.getTimeStamp() == pytest.approx(20 / 60) and window.getTimeStep() == pytest.approx(1 / 60)
    window.stepSimulation()
    assert state_of(window) != states, "the old scene goes on"
    window.getSimulation().remove(window.getSimulation().getRigidBodies()[0])
    window.step()
    assert not numpy.array_equal(shoot(window), picture), "its visuals still follow it"


def test_a_pair_that_pauses_is_not_inherited_by_later_bodies(app):
    first, second = add_box(app, "first"), add_box(app, "second", (5, 0, 0))
    app.addAutoPausePair(first, second)
    app.clearScene()
    first = second = None
    for _ in range(20):  # may lie where the others lay
        add_box(app, "one", (0, 0, 0)), add_box(app, "two", (0.1, 0, 0))
    app.executeOneStepWithoutGraphics()
    assert app.getAutoStepping()


def test_reloads_keep_time_and_memory(window, script):
    window.addScene(script, "meddling")
    window.createSceneFromIndex(0)

    def reload(count):
        start = time.process_time()
        for _ in range(count):
            window.reloadScene()
            window.step()
        return time.process_time() - start

    reload(30)
    first, memory = reload(30), resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    reload(90)
    assert reload(30) < 1.6 * first
    assert resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - memory < 12_000  # KiB
