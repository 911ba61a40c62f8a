"""The window and what is switched on in it."""

import os

import hyx
import hyxCollide
import hyxOSG
import osg
import pytest
from application_stage import add_box, difference
from subprocesses import has_display, run_python


def test_the_window_has_its_size_and_changes_it(window, shoot):
    assert shoot(window).shape == (120, 160, 3)
    assert window.setWindowRectangle(0, 0, 200, 100)
    assert shoot(window).shape == (100, 200, 3)
    assert window.getCameraData().aspectRatio == pytest.approx(2)
    for wrong in ((0, 0, 0, 100), (0, 0, 100, 20000)):
        assert not window.setWindowRectangle(*wrong)
    assert window.getAllowWindowResizing() is True
    window.setAllowWindowResizing(False)
    assert not window.getAllowWindowResizing()
    assert not window.setWindowRectangle(0, 0, 160, 120) and window.setWindowRectangle(5, 5, 200, 100)
    assert shoot(window).shape == (100, 200, 3)


def test_before_there_is_a_window_nothing_is_changed(app):
    assert not app.setWindowRectangle(0, 0, 100, 100) and not app.setWindowTitle("early")
    assert not app.hasOffscreenWindow() and app.getHWND() == 0


def test_an_offscreen_window_has_a_title_and_no_number(window):
    assert window.setWindowTitle("title")
    assert window.hasOffscreenWindow() and window.getHWND() == 0
    assert not window.getEnableVSync()
    window.setEnableVSync(True)
    assert window.getEnableVSync()
    window.setEnableVSync(False, False)
    assert not window.getEnableVSync()


@pytest.mark.parametrize("size", [(0, 10), (10, 0), (-1, 10), (10, 20000)])
def test_a_size_that_cannot_be_is_refused(app, size):
    with pytest.raises(RuntimeError, match="1 to 16384"):
        app.initViewer(*size)


def test_a_second_window_takes_the_place_of_the_first(window, shoot):
    add_box(window, static=True)
    window.createVisual(window.getSimulation())
    first = shoot(window)
    window.initViewer(160, 120, True)
    assert difference(first, shoot(window)) < 20


@pytest.mark.parametrize("look", ["default", "plain"])
def test_meshes_come_in_the_memory_of_those_that_went(window, look):
    """Nothing else is drawn that would make the driver forget them."""
    window.setLook(look)
    window.getSceneDecorator().setEnable(False)
    root = window.getSceneRoot()
    window.setCameraHome(hyx.Vec3(0, -6, 5), hyx.Vec3(0, 0, 0))
    for count in range(2, 8):
        board = osg.Geode()
        edges = osg.Vec3(-3, -3, 0), osg.Vec3(6, 0, 0), osg.Vec3(0, 6, 0)
        board.addDrawable(hyxOSG.createGrid(count, count, *edges, True))
        root.addChild(board)
        assert window.render().any()
        root.removeChild(board)
        del board
        ball = hyxOSG.createVisual(hyxCollide.Geometry(hyxCollide.Sphere(1 + 0.1 * count)), root)
        assert window.render().any()
        root.removeChild(ball)


def test_debug_rendering_draws_lines_and_names(window, shoot):
    empty = shoot(window)
    add_box(window, "box", static=True)
    assert window.getEnableDebugRenderer() is False
    assert window.setEnableDebugRenderer(True) and window.getEnableDebugRenderer()
    lines = shoot(window)
    green = lines[abs(lines - empty).max(axis=2) > 24]
    assert 30 < len(green) < 3000 and (green[:, 1] >= green[:, 0]).mean() > 0.9
    assert not window.getEnableTextDebugRendering()
    window.setEnableTextDebugRendering(True)
    assert window.getEnableTextDebugRendering() and difference(lines, shoot(window)) > 10
    assert not window.setEnableDebugRenderer(False)
    assert difference(empty, shoot(window)) == 0


def test_names_contacts_and_joints_are_seen_through_bodies(window, shoot):
    floor, box = add_box(window, "floor", (0, 0, -1), static=True), add_box(window, "WWW", (0, 0, -0.001))
    window.getSimulation().add(hyx.LockJoint(box, None))
    window.createVisual(window.getSimulation())
    window.setCameraHome(hyx.Vec3(1.5, -4, 2), hyx.Vec3(0, 0, 0))
    for _ in range(3):
        window.step()
    assert floor.getPosition().z == -1

    def seen(wanted):
        return (abs(shoot(window).astype(int) - wanted).max(axis=2) < 60).sum()

    white, contact, axis = (255, 255, 255), (255, 255, 0), (77, 77, 255)
    before = [seen(color) for color in (white, contact, axis)]
    window.setEnableDebugRenderer(True)
    lines = [seen(color) for color in (white, contact, axis)]
    assert lines[1] > before[1] + 10 and lines[2] > before[2] + 4
    window.setEnableTextDebugRendering(True)
    assert seen(white) > lines[0] + 30


def test_the_scene_can_be_switched_off(window, shoot):
    empty = shoot(window)
    add_box(window, static=True)
    window.createVisual(window.getSimulation())
    assert window.getEnableOSGRenderer() and difference(empty, shoot(window)) > 100
    window.setEnableOSGRenderer(False)
    assert not window.getEnableOSGRenderer() and difference(empty, shoot(window)) == 0
    assert window.getSceneSwitch().getNumChildren() == 1
    window.setEnableOSGRenderer(True)
    assert difference(empty, shoot(window)) > 100


def test_visuals_of_a_simulation_and_an_assembly_are_made_once(app):
    import hyxSDK

    assembly = hyxSDK.Assembly()
    app.getSimulation().add(assembly)
    app.createVisual(app.getSimulation())
    app.createVisual(app.getSimulation(), 2.0)
    app.createVisual(assembly, 1.0, True)
    assert app.getSceneHyxOSGRoot().getNumChildren() == 2
    app.journalRenderLoader(assembly, True)
    assert app.getSceneHyxOSGRoot().getNumChildren() == 1
    app.journalRenderLoader(assembly, False)
    assert app.getSceneHyxOSGRoot().getNumChildren() == 2
    assert app.getRenderProxyFactory() is not None
    with pytest.raises(RuntimeError):
        app.createVisual(app.getSimulation(), -1.0)


TALK = """
import hyxOSG
app = hyxOSG.ExampleApplication()
app.setOsgNotifyLevel({level})
hyxOSG.readNodeFile("/usr/share/assimp/models/OBJ/WusonOBJ.obj")
"""


def test_the_messages_of_the_scene_graph_library_can_be_chosen(app):
    silent, talkative = (run_python(TALK.format(level=level), OSG_NOTIFY_LEVEL="NOTICE") for level in (1, 6))
    assert silent.stdout + silent.stderr == "" and len(talkative.stdout + talkative.stderr) > 100
    for wrong in (-1, 99):
        with pytest.raises(RuntimeError):
            app.setOsgNotifyLevel(wrong)


SILENT = """
import hyxOSG, hyx
app = hyxOSG.ExampleApplication()
app.initViewer(64, 48)
app.stopAfter(0.1)
app.run()
app.initViewer(32, 32)
"""


def without_display(monkeypatch, **environment):
    monkeypatch.delenv("DISPLAY", raising=False)
    monkeypatch.delenv("HYX_DISPLAY", raising=False)
    for name, value in environment.items():
        monkeypatch.setenv(name, value)


def test_without_a_display_nothing_is_printed_and_the_end_is_silent(monkeypatch):
    without_display(monkeypatch)
    done = run_python(SILENT)
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")


@pytest.mark.parametrize("value, message", [("window", "no display answers"), ("somewhere", "must be 'window'")])
def test_a_window_that_cannot_be_is_an_exception(monkeypatch, value, message):
    without_display(monkeypatch, HYX_DISPLAY=value)
    done = run_python(SILENT)
    assert done.returncode == 1 and "Error: " in done.stderr and message in done.stderr


ON_DISPLAY = """
import hyxOSG
app = hyxOSG.ExampleApplication()
app.initViewer(120, 90)
app.setWindowTitle("on display")
app.setEnableVSync(True)
for _ in range(3):
    app.step()
assert app.getHWND() > 0 and not app.hasOffscreenWindow() and app.getRealTimeSync()
assert app.setWindowRectangle(10, 20, 200, 100)
import subprocess
found = subprocess.run(["xdotool", "search", "--name", "^on display$"], capture_output=True, text=True).stdout.split()
assert int(found[0]) == app.getHWND(), found
geometry = subprocess.run(["xdotool", "getwindowgeometry", found[0]], capture_output=True, text=True).stdout
assert "200x100" in geometry, geometry
app.setRealTimeSync(False)
subprocess.run(["xdotool", "windowfocus", found[0], "key", "--window", found[0], "e"])
for _ in range(200):
    app.step()
    if not app.getAutoStepping():
        break
assert not app.getAutoStepping()
print("good")
"""


@pytest.mark.skipif(not has_display, reason="xvfb or xdotool is not installed")
def test_a_window_on_a_display_has_title_size_and_keys():
    done = run_python(ON_DISPLAY, on_display=True)
    assert done.stdout == "good\n", done.stderr


@pytest.mark.parametrize("allowed", [{0}, os.sched_getaffinity(0)])
def test_a_window_leaves_the_script_its_processors(allowed):
    before = os.sched_getaffinity(0)
    os.sched_setaffinity(0, allowed)
    try:
        with hyxOSG.ExampleApplication() as application:
            application.initViewer(32, 24)
            application.step()
            assert os.sched_getaffinity(0) == allowed
    finally:
        os.sched_setaffinity(0, before)
