"""The viewer in a host's context: picture, input, and size."""

import _hyxOSG
import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import pytest
from capture_stage import BLUE, GREEN, RED
from egl_host import BLEND, CULL_FACE, DEPTH_TEST, GL, SCISSOR_TEST

Window = hyxOSG.EmbeddedGLWindow
LEFT, MIDDLE, RIGHT = 1, 2, 3


def sphere(radius=1.0, center=(0, 0, 0)):
    return hyxOSG.createSphere(hyx.Vec3(*center), hyx.Vec4(1, 1, 1, 1), radius)


def flat(window, color):
    window.getSceneDecorator().setBackgroundColor(hyx.Vec3(*color))


def changed(host, window, action):
    """How many pixels the action changes."""
    window.frame()
    before = host.pixels().astype(int)
    action()
    window.frame()
    window.frame()
    return int((abs(host.pixels() - before).max(axis=2) > 8).sum())


@pytest.fixture
def scene(window):
    """A box that looks different from all sides."""
    window.getRoot().addChild(sphere())
    window.getRoot().addChild(sphere(0.5, (2, 0, 0)))
    window.fitSceneIntoView()
    window.frame()
    return window


def test_a_window_needs_a_context_and_a_size(host):
    made = Window()
    assert (made.getWidth(), made.getHeight()) == (0, 0)
    assert made.getEventQueue() is None
    host.release()
    with pytest.raises(RuntimeError, match="no OpenGL context"):
        made.init(0, 0, 10, 10)
    host.make_current()
    assert not made.init(0, 0, 0, 10)
    assert not made.init(0, 0, 10, -1)
    assert made.init(0, 0, 320, 240)
    assert not made.init(0, 0, 320, 240)
    assert (made.getWidth(), made.getHeight()) == (320, 240)
    assert made.getEventQueue() is not None


@pytest.mark.parametrize(
    "call",
    [
        lambda window: window.frame(),
        lambda window: window.resize(0, 0, 10, 10),
        lambda window: window.mouseMoveEvent(1, 1),
        lambda window: window.mousePressEvent(1, 1, LEFT),
        lambda window: window.mouseReleaseEvent(1, 1, LEFT),
        lambda window: window.keyPressEvent(65, 0),
        lambda window: window.keyReleaseEvent(65, 0),
        lambda window: window.wheelEvent(120),
    ],
)
def test_before_init_calls_say_what_to_do(call):
    with pytest.raises(RuntimeError, match="call init"):
        call(Window())


def test_the_background_fills_the_hosts_buffer(host, window):
    for color in (RED, GREEN):
        flat(window, color)
        window.frame()
        assert (host.pixels() == numpy.array(color) * 255).all()


def test_only_its_rectangle_is_drawn(host):
    made = Window()
    host.fill(*BLUE)
    made.init(40, 30, 100, 80)
    flat(made, RED)
    made.frame()
    pixels = host.pixels()
    assert (pixels[30:110, 40:140] == (255, 0, 0)).all()
    assert (pixels[:30] == (0, 0, 255)).all() and (pixels[:, 140:] == (0, 0, 255)).all()


def test_resizing_moves_and_scales_the_picture(host, window):
    host.fill(*BLUE)
    flat(window, RED)
    window.resize(0, 0, 100, 50)
    assert (window.getWidth(), window.getHeight()) == (100, 50)
    host.fill(*BLUE)
    window.frame()
    pixels = host.pixels()
    assert (pixels[:50, :100] == (255, 0, 0)).all()
    assert (pixels[50:] == (0, 0, 255)).all()
    window.resize(0, 0, 0, 50)  # minimised
    assert (window.getWidth(), window.getHeight()) == (100, 50)


def test_resizing_keeps_the_shape_of_things(host, scene):
    def extent():
        scene.frame()
        lit = host.pixels(scene.getWidth(), scene.getHeight()).any(axis=2)
        return numpy.flatnonzero(lit.any(axis=0)).size / numpy.flatnonzero(lit.any(axis=1)).size

    flat(scene, (0, 0, 0))
    wide = extent()
    scene.resize(0, 0, 160, 240)
    assert extent() == pytest.approx(wide, rel=0.1)


def test_the_scene_fits_into_view_whatever_its_size(host, window):
    flat(window, (0, 0, 0))
    for radius in (0.1, 1.0, 30.0):
        window.clear()
        window.getRoot().addChild(sphere(radius))
        assert radius <= window.getSceneRadius(None) <= 1.75 * radius
        window.fitSceneIntoView()
        window.frame()
        lit = host.pixels().any(axis=2)
        assert 0.4 < numpy.flatnonzero(lit.any(axis=1)).size / 240 <= 1.0
        assert not lit[0].any() and not lit[-1].any()


def test_the_radius_is_that_of_the_group_asked_for(window):
    group = osg.Group()
    assert window.getSceneRadius(group) == 0
    group.addChild(sphere(3.0))
    assert 3 <= window.getSceneRadius(group) <= 1.75 * 3
    assert window.getSceneRadius(None) == 0


def test_dragging_turns_the_view(host, scene):
    def drag():
        scene.mouseMoveEvent(100, 100)
        scene.mousePressEvent(100, 100, LEFT)
        scene.mouseMoveEvent(180, 140)
        scene.frame()
        scene.mouseReleaseEvent(180, 140, LEFT)

    assert changed(host, scene, lambda: None) == 0
    assert changed(host, scene, drag) > 500


def test_moving_without_a_button_changes_nothing(host, scene):
    assert changed(host, scene, lambda: scene.mouseMoveEvent(30, 200)) == 0


def test_a_released_button_ends_the_drag(host, scene):
    scene.mousePressEvent(100, 100, LEFT)
    scene.mouseReleaseEvent(100, 100, LEFT)
    scene.frame()
    assert changed(host, scene, lambda: scene.mouseMoveEvent(250, 200)) == 0


def test_the_wheel_moves_nearer_and_away(host, scene):
    flat(scene, (0, 0, 0))

    def lit():
        scene.frame()
        scene.frame()
        return int(host.pixels().any(axis=2).sum())

    start = lit()
    scene.wheelEvent(240)
    near = lit()
    scene.wheelEvent(-480)
    far = lit()
    scene.wheelEvent(0)
    assert far < start < near
    assert lit() == far


class Recorder(hyxOSG.GuiEventListener):
    """Remembers the input that a simulation's listener gets."""

    def __init__(self):
        super().__init__(hyxOSG.GuiEventListener.ALL)
        self.events = []

    def keyboard(self, key, modifiers, x, y, down):
        self.events.append(("key", key, modifiers, down))
        return False

    def mouse(self, button, state, x, y):
        self.events.append(("mouse", button, state, x, y))
        return False


def test_listeners_of_the_simulation_get_the_input(window, simulation):
    listener = Recorder()
    simulation.add(listener)
    window.setSimulation(simulation)
    window.keyPressEvent(ord("g"), 0x01)
    window.keyReleaseEvent(ord("g"), 0)
    window.mousePressEvent(10, 20, RIGHT)
    window.mouseReleaseEvent(10, 20, RIGHT)
    window.frame()
    window.frame()
    assert ("key", ord("g"), 0x01, True) in listener.events
    assert ("key", ord("g"), 0, False) in listener.events
    pressed = [event for event in listener.events if event[0] == "mouse"]
    assert [event[1:3] for event in pressed] == [(4, 0), (4, 1)]
    assert pressed[0][3:] == pytest.approx((10, 220), abs=1)  # from the lower left


def test_a_simulation_is_shown_and_removed(host, window, simulation):
    flat(window, (0, 0, 0))
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1.0)))
    simulation.add(body)
    assert window.getSimulation() is None
    window.setSimulation(simulation)
    assert window.getSimulation() == simulation
    window.frame()
    window.fitSceneIntoView()
    window.frame()
    assert host.pixels().any()
    window.removeSimulation()
    assert window.getSimulation() is None
    window.frame()
    assert not host.pixels().any()


def test_the_picture_follows_the_simulation(host, window, simulation):
    flat(window, (0, 0, 0))
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1.0)))
    simulation.add(body)
    window.setSimulation(simulation)
    window.frame()
    window.fitSceneIntoView()
    assert changed(host, window, lambda: [simulation.step() for _ in range(60)]) > 500


def test_clearing_empties_the_scene_and_not_the_decoration(host, scene):
    flat(scene, RED)
    scene.clear()
    scene.frame()
    assert (host.pixels() == (255, 0, 0)).all()
    scene.getRoot().addChild(sphere())
    scene.frame()
    assert not (host.pixels() == (255, 0, 0)).all()


def test_polygons_are_drawn_as_asked(host, scene):
    flat(scene, (0, 0, 0))
    lit = {}
    for mode in (0x1B02, 0x1B01, 0x1B00):
        scene.setPolygonMode(mode)
        assert scene.getPolygonMode() == mode
        scene.frame()
        lit[mode] = int(host.pixels().any(axis=2).sum())
    assert lit[0x1B02] > lit[0x1B01] > lit[0x1B00] > 0
    with pytest.raises(RuntimeError, match="polygon mode"):
        scene.setPolygonMode(1)
    assert scene.getPolygonMode() == 0x1B00


def test_the_camera_follows_a_body(host, window, simulation):
    flat(window, (0, 0, 0))
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1.0)))
    simulation.add(body)
    node = hyxOSG.createVisual(body, window.getRoot())
    node = hyxOSG.findGeometryNode(body.getGeometries()[0], window.getRoot())
    window.setOrbitCamera(node, hyx.Vec3(0, -8, 2))
    window.frame()
    window.frame()
    start = host.pixels().any(axis=2)
    for _ in range(60):
        simulation.step()
    window.frame()
    window.frame()
    assert abs(host.pixels().any(axis=2).astype(int) - start).sum() < 0.1 * start.sum()
    with pytest.raises(RuntimeError, match="away from the middle"):
        window.setOrbitCamera(node, hyx.Vec3(0, 0, 0))
    window.setOrbitCamera(None, hyx.Vec3(0, 0, 0))
    assert changed(host, window, lambda: [simulation.step() for _ in range(60)]) > 500


def test_root_camera_and_decorator_are_always_the_same(window):
    for function in (
        _hyxOSG.EmbeddedGLWindow_getRoot,
        _hyxOSG.EmbeddedGLWindow_getCamera,
        _hyxOSG.EmbeddedGLWindow_getSceneDecorator,
    ):
        assert function(window) == function(window)
    assert window.getEventQueue() == window.getEventQueue()


def test_what_the_host_draws_between_frames_does_no_harm(host, window):
    window.getRoot().addChild(sphere())
    window.fitSceneIntoView()
    window.frame()
    expected = host.pixels()
    GL.glEnable(BLEND)
    GL.glDisable(DEPTH_TEST)
    GL.glEnable(CULL_FACE)
    GL.glCullFace(0x0404)
    GL.glEnable(SCISSOR_TEST)
    GL.glScissor(0, 0, 5, 5)
    GL.glDepthMask(0)
    window.frame()
    assert (host.pixels() == expected).all()
    assert host.error() == 0


def test_the_picture_is_opaque_for_hosts_that_compose_windows(host, window):
    window.getSceneDecorator().setText(0, "smooth edges")
    window.frame()
    window.frame()
    assert (host.alpha() == 255).all()


def test_masks_are_those_of_the_application():
    names = ("MAIN_SCENE", "DEBUG_RENDER", "OSG_RENDER", "HUD", "DECORATOR")
    for name in names:
        assert getattr(_hyxOSG, f"EmbeddedGLWindow_{name}_MASK") == getattr(_hyxOSG, f"ExampleApplication_{name}_MASK")


def test_the_hud_can_be_masked_out(host, window):
    flat(window, (0, 0, 0))
    window.getSceneDecorator().setText(0, "head-up display")
    window.frame()
    window.frame()
    assert host.pixels().any()
    camera = window.getCamera()
    camera.setCullMask(camera.getCullMask() & ~Window.HUD_MASK)
    window.frame()
    assert not host.pixels().any()
