"""The selected body: clicked in the window, outlined, and looked into on the picture."""

import hyx
import hyxOSG
import numpy
import pytest
from application_stage import add_box, difference

MIDDLE, CORNER = (80, 60), (4, 4)
LEFT, RIGHT = 1, 3
CONTROL = 4
GRAVITY = 9.80665


def click(app, place, button=LEFT, released=None):
    """In pixels from the upper left corner."""
    events = app.getCamera().getGraphicsWindow().getEventQueue()
    events.mouseButtonPress(*place, button)
    events.mouseMotion(*(released or place))
    events.mouseButtonRelease(*(released or place), button)
    app.step()
    app.step()


@pytest.fixture
def scene(window):
    """A box of 50 kg at rest on a ground."""
    window.getSimulation().setTimeStep(1 / 240)
    add_box(window, "ground", (0, 0, -3.5), half=3, static=True)
    box = add_box(window, "box")
    box.setMass(50)
    window.createVisual(window.getSimulation())
    for _ in range(120):
        window.stepSimulation()
    window.setAutoStepping(False)
    window.step()
    return window


def outlined(app, body):
    return hyxOSG.getEnableOutline(hyxOSG.findGeometryNode(body.getGeometries()[0], app.getRoot()))


def test_a_click_selects_what_is_under_it(scene):
    ground, box = scene.getSimulation().getRigidBodies()
    click(scene, MIDDLE)
    assert scene.getSelection() is box and outlined(scene, box) and not outlined(scene, ground)
    click(scene, (80, 110))
    assert scene.getSelection() is ground and outlined(scene, ground) and not outlined(scene, box)
    click(scene, CORNER)
    assert scene.getSelection() is None and not outlined(scene, ground) and scene.getSelectionText() == ""


@pytest.mark.parametrize("how", [{"button": RIGHT}, {"released": (100, 70)}])
def test_turning_the_view_selects_nothing(scene, how):
    click(scene, MIDDLE, **how)
    assert scene.getSelection() is None


def test_pulling_a_body_selects_nothing(scene):
    scene.getCamera().getGraphicsWindow().getEventQueue().setModKeyMask(CONTROL)
    click(scene, MIDDLE)
    assert scene.getSelection() is None


def figures(text, label):
    line = next(line for line in text.splitlines() if line.startswith(label))
    return [float(word) for word in line[len(label) :].split() if word.lstrip("-").replace(".", "").isdigit()]


def test_the_figures_are_those_of_the_body(scene):
    box = scene.getSimulation().getRigidBody("box")
    scene.setSelection(box)
    text = scene.getSelectionText()
    assert text.startswith("box") and figures(text, "mass") == [50]
    assert figures(text, "position") == pytest.approx([*box.getPosition()], abs=6e-4)
    assert figures(text, "from ground") == pytest.approx([0, 0, 50 * GRAVITY], abs=5)
    assert len({len(line) for line in text.splitlines()}) == 1
    box.setVelocity(hyx.Vec3(1, -2, 3))
    box.setAngularVelocity(hyx.Vec3(0.25, 0, 0))
    text = scene.getSelectionText()
    assert figures(text, "velocity") == [1, -2, 3] and figures(text, "turn rate") == [0.25, 0, 0]


def test_what_a_joint_carries_is_told(window):
    lamp = add_box(window, "lamp")
    lamp.setMass(10)
    joint = hyx.LockJoint(lamp)
    joint.setName("hook")
    window.getSimulation().add(joint)
    for _ in range(60):
        window.stepSimulation()
    window.setSelection(lamp)
    assert figures(window.getSelectionText(), "at hook") == pytest.approx([0, 0, 10 * GRAVITY], abs=0.5)


def test_the_figures_are_on_the_picture(app, shoot):
    app.initViewer(640, 480)
    app.setCameraHome(hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 0))
    box = add_box(app, static=True)
    app.createVisual(app.getSimulation())
    app.step()
    before = shoot(app)
    app.setSelection(box)
    app.step()
    shown = shoot(app)
    upper_right, middle = (slice(0, 120), slice(320, 640)), (slice(200, 280), slice(280, 360))
    assert difference(shown[upper_right], before[upper_right]) > 8000
    assert 50 < difference(shown[middle], before[middle]) < 2000, "the outline"
    app.setSelection(None)
    app.step()
    assert difference(shoot(app), before) == 0


def test_the_lines_of_forces_are_as_long_as_the_weight(app, shoot):
    app.initViewer(160, 120)
    app.setCameraHome(hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 0))
    lamp = add_box(app, half=0.5)
    joint = hyx.LockJoint(lamp)
    app.getSimulation().add(joint)
    app.setEnableDebugRenderer(True)
    heights = []
    for load in (0, 2):  # times the weight
        for _ in range(60):
            lamp.addForce(hyx.Vec3(0, 0, -load * lamp.getMass() * GRAVITY))
            app.stepSimulation()
        app.setAutoStepping(False)
        app.step()
        picture = shoot(app)
        red, green, blue = picture[..., 0], picture[..., 1], picture[..., 2]
        orange = (red - blue > 60) & (red > 1.5 * green)
        heights.append(numpy.ptp(numpy.nonzero(orange)[0]))
    assert heights[1] > 2.4 * heights[0] > 6


def test_a_selection_ends_with_its_body(scene):
    box = scene.getSimulation().getRigidBody("box")
    scene.setSelection(box)
    scene.getSimulation().remove(box)
    assert scene.getSelection() is None and scene.getSelectionText() == ""
    scene.step()
    with pytest.raises(RuntimeError, match="not in the simulation"):
        scene.setSelection(box)
