"""The camera: home, data, orbit, grid and the frame of the picture."""

import math

import hyx
import hyxOSG
import pytest
from application_stage import add_box, difference

SCROLL_UP = 3  # of the scene graph's events


def xyz(vector):
    return (vector.x, vector.y, vector.z)


def home_of(app):
    eye, center, up = hyx.Vec3(), hyx.Vec3(), hyx.Vec3()
    app.getCameraHome(eye, center, up)
    return xyz(eye), xyz(center), xyz(up)


def test_the_home_of_the_camera_is_kept_and_gone_to(app):
    assert not app.isCameraHomeSet()
    app.setCameraHome(hyx.Vec3(1, -5, 2), hyx.Vec3(1, 0, 2))
    assert app.isCameraHomeSet()
    assert home_of(app) == ((1, -5, 2), (1, 0, 2), (0, 0, 1))
    app.initViewer(64, 48)
    data = app.getCameraData()
    assert xyz(data.eye) == pytest.approx((1, -5, 2)) and xyz(data.center) == pytest.approx((1, 0, 2))
    assert xyz(app.getViewDirection()) == pytest.approx((0, 1, 0))
    app.setCameraHome(hyx.Vec3(0, 0, 9), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 1, 0))
    assert xyz(app.getViewDirection()) == pytest.approx((0, 0, -1))
    for wrong in (hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 5)):
        with pytest.raises(RuntimeError):
            app.setCameraHome(wrong, hyx.Vec3(0, 0, 0))
    assert home_of(app)[0] == (0, 0, 9)


def test_none_for_a_vector_that_is_filled_is_refused(app):
    with pytest.raises(TypeError, match="getCameraHome.. argument 1 'eye' must be hyx.Vec3, not None"):
        app.getCameraHome(None, hyx.Vec3(), hyx.Vec3())


def test_camera_data_is_a_copy_that_can_be_applied(window):
    data = window.getCameraData()
    assert data.valid and data.aspectRatio == pytest.approx(160 / 120)
    data.eye.x = 100
    assert data.eye.x == 0  # the getter copies, too
    data.eye = hyx.Vec3(0, -20, 0)
    data.fieldOfView = 30
    assert xyz(window.getCameraData().eye) == pytest.approx((0, -10, 0))
    window.applyCameraData(data)
    window.step()
    now = window.getCameraData()
    assert xyz(now.eye) == pytest.approx((0, -20, 0)) and now.fieldOfView == pytest.approx(30)
    data.valid = False
    data.eye = hyx.Vec3(0, -1, 0)
    window.applyCameraData(data)
    assert window.getCameraData().eye.y == pytest.approx(-20)


@pytest.mark.parametrize(
    "field, value",
    [
        ("nearClippingPlane", 0.5),
        ("farClippingPlane", 77.0),
        ("fieldOfView", 33.0),
        ("aspectRatio", 2.5),
        ("nearFarRatio", 0.01),
    ],
)
def test_each_number_of_camera_data_reaches_the_camera(window, field, value):
    window.step()
    data = hyxOSG.CameraData(window.getCamera())
    assert isinstance(getattr(data, field), float) and getattr(data, field) != value
    setattr(data, field, value)
    assert getattr(data, field) == value
    data.applyTo(window.getCamera())
    assert getattr(hyxOSG.CameraData(window.getCamera()), field) == pytest.approx(value)


def test_each_vector_of_camera_data_reaches_the_camera(window):
    window.step()
    data = hyxOSG.CameraData(window.getCamera())
    data.eye, data.center, data.up = hyx.Vec3(1, 2, 3), hyx.Vec3(1, 2, 0), hyx.Vec3(0, 1, 0)
    assert (xyz(data.eye), xyz(data.center), xyz(data.up)) == ((1, 2, 3), (1, 2, 0), (0, 1, 0))
    data.applyTo(window.getCamera())
    now = hyxOSG.CameraData(window.getCamera())
    assert xyz(now.eye) == pytest.approx((1, 2, 3)) and xyz(now.up) == pytest.approx((0, 1, 0))
    assert xyz(now.center) == pytest.approx((1, 2, 2))  # a camera has a direction only: the center is a metre away


def test_camera_data_reads_and_sets_a_camera_and_a_viewer(window):
    window.step()
    from_camera, from_viewer = hyxOSG.CameraData(window.getCamera()), hyxOSG.CameraData(window.getViewer())
    assert xyz(from_camera.eye) == pytest.approx(xyz(from_viewer.eye), abs=1e-6)
    from_camera.eye, from_camera.center, from_camera.up = hyx.Vec3(3, 0, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1)
    from_camera.applyTo(window.getCamera())
    assert xyz(hyxOSG.CameraData(window.getCamera()).eye) == pytest.approx((3, 0, 0))
    from_viewer.nearFarRatio = 0.01
    from_viewer.eye = hyx.Vec3(0, 0, 7)
    from_viewer.up = hyx.Vec3(0, 1, 0)
    from_viewer.applyTo(window.getViewer())
    assert hyxOSG.CameraData(window.getViewer()).nearFarRatio == pytest.approx(0.01)
    from_camera.nearClippingPlane, from_camera.farClippingPlane = 5.0, 1.0
    with pytest.raises(RuntimeError, match="near < far"):
        from_camera.applyTo(window.getCamera())
    assert not hyxOSG.CameraData(hyxOSG.ExampleApplication().getCamera()).valid


def test_fitting_and_centring_bring_the_scene_into_the_picture(window, shoot):
    add_box(window, position=(40, 0, 0), half=2, static=True)
    window.createVisual(window.getSimulation())
    empty = shoot(window)
    window.centerScene()
    assert xyz(window.getCameraData().center) == pytest.approx((40, 0, 0), abs=1e-3)
    assert xyz(window.getCameraData().eye) == pytest.approx((0, -10, 0), abs=1e-3)
    window.fitSceneIntoView()
    fitted = shoot(window)
    data = window.getCameraData()
    radius = math.sqrt(3) * 2
    assert xyz(data.center) == pytest.approx((40, 0, 0), abs=1e-3)
    distance = math.dist(xyz(data.eye), xyz(data.center))
    assert distance == pytest.approx(radius / math.sin(math.radians(data.fieldOfView / 2)), rel=0.02)
    changed = abs(fitted - empty).max(axis=2) > 24
    assert changed[60, 80] and 0.1 < changed.mean() < 0.7 and not changed[0].any() and not changed[:, 0].any()


def node_of(app, body):
    return hyxOSG.createVisual(body.getGeometries()[0], app.getSceneRoot())


@pytest.mark.parametrize("mode, offset", [(0, (0, -4, 0)), (1, (4, 0, 0)), (2, (4, 0, 0))])
def test_the_orbit_camera_follows_a_node(window, mode, offset):
    body = add_box(window, position=(5, 0, 0), static=True)
    node = node_of(window, body)
    window.setOrbitCamera(node, hyx.Vec3(0, -4, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1), mode)
    window.step()
    window.step()
    assert xyz(window.getCameraData().eye) == pytest.approx((5, -4, 0), abs=1e-3)
    body.setPosition(hyx.Vec3(0, 8, 1))
    body.setRotation(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)))
    window.step()
    window.step()
    assert xyz(window.getCameraData().eye) == pytest.approx((offset[0], 8 + offset[1], 1 + offset[2]), abs=1e-3)
    window.setOrbitCamera(None, 1.0, 0.0, 0.0)
    assert xyz(window.getCameraData().eye) == pytest.approx((0, -10, 0), abs=1e-3)


def test_the_orbit_camera_takes_distance_and_angles(window):
    node = node_of(window, add_box(window, static=True))
    window.setOrbitCamera(node, 6.0, math.pi / 2, 0.0)
    window.step()
    assert xyz(window.getCameraData().eye) == pytest.approx((-6, 0, 0), abs=1e-3)
    window.setOrbitCamera(node, 6.0, 0.0, math.pi / 4, 0)
    window.step()
    assert xyz(window.getCameraData().eye) == pytest.approx((0, -6 * math.sqrt(0.5), 6 * math.sqrt(0.5)), abs=1e-3)
    for wrong in ((-1.0, 0.0, 0.0, 0), (1.0, 0.0, 0.0, 3)):
        with pytest.raises(RuntimeError):
            window.setOrbitCamera(node, *wrong)


def test_there_is_no_camera_before_there_is_a_window(app):
    assert app.getCamera() is None and app.getViewer() is None and app.getCameraManipulator() is None
    assert app.getPickHandler() is None
    app.initViewer(32, 32)
    assert app.getCamera() is not None and app.getViewer() is not None
    assert app.getCameraManipulator() is not None and app.getPickHandler() is not None
    app.setupViewer(False, False)
    assert app.getCameraManipulator() is None and app.getPickHandler() is None
    app.setupViewer()
    assert app.getCameraManipulator() is not None and app.getPickHandler() is not None


def test_the_grid_is_drawn_in_its_size(window, shoot):
    window.setCameraHome(hyx.Vec3(0, 0, 20), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 1, 0))
    empty = shoot(window)
    assert not window.getEnableGrid()
    window.setEnableGrid(True)
    window.setGridResolution(hyx.Vec2u(4, 4))
    small = difference(empty, shoot(window))
    window.setGridSize(hyx.Vec2(3, 3))
    large = difference(empty, shoot(window))
    assert 0 < small < large and window.getEnableGrid()
    assert (window.getGridSize().x, window.getGridResolution().y) == (3, 4)
    window.setEnableGrid(False)
    assert difference(empty, shoot(window)) == 0
    with pytest.raises(RuntimeError):
        window.setGridSize(hyx.Vec2(0, 1))
    with pytest.raises(RuntimeError):
        window.setGridResolution(hyx.Vec2u(0, 1))


def test_the_axes_of_the_world_have_their_colours(window, shoot):
    window.setCameraHome(hyx.Vec3(2, -2, 2), hyx.Vec3(0, 0, 0))
    empty = shoot(window)
    assert window.getEnableCoordinateSystem() is False
    window.setEnableCoordinateSystem(True)
    assert window.getEnableCoordinateSystem()
    axes = shoot(window)
    changed = axes[abs(axes - empty).max(axis=2) > 24]
    for channel in range(3):
        others = [c for c in range(3) if c != channel]
        assert (changed[:, channel] > changed[:, others].max(axis=1) + 60).sum() > 5
    window.setEnableCoordinateSystem(False)
    assert difference(empty, shoot(window)) == 0


def test_the_transform_moves_the_picture(window, shoot):
    empty = shoot(window)
    add_box(window, static=True)
    window.createVisual(window.getSimulation())
    middle = shoot(window)
    window.setCoordinateSystemTransform(hyx.AffineMatrix4x4(hyx.Vec3(2, 0, 0)))
    moved = shoot(window)
    column = lambda picture: (abs(picture - empty).max(axis=2) > 24).any(axis=0).nonzero()[0].mean()
    assert column(moved) > column(middle) + 10
    assert window.getCoordinateSystemTransform().getTranslate().x == 2
    window.setCoordinateSystemTransform(hyx.AffineMatrix4x4())

    window.setEnableOSGRenderer(False)
    window.setEnableDebugRenderer(True)
    debug = shoot(window)
    window.setDebugRenderInverseMatrix(hyx.AffineMatrix4x4(hyx.Vec3(-2, 0, 0)))
    assert column(shoot(window)) > column(debug) + 10


def test_the_wheel_stops_before_the_eye_is_in_the_center(window):
    queue = window.getViewer().getEventQueue()
    for _ in range(120):
        queue.mouseScroll(SCROLL_UP)
        window.step()
    data = window.getCameraData()
    assert 0.009 < math.dist(xyz(data.eye), xyz(data.center)) < 0.02


def test_fitting_ends_the_following(window, shoot):
    body = add_box(window, "box", static=True)
    far = add_box(window, "far", (30, 0, 0), static=True)
    window.createVisual(window.getSimulation())
    node = hyxOSG.findGeometryNode(body.getGeometries()[0], window.getRoot())
    window.setOrbitCamera(node, 3.0, 0.0, 0.2)
    window.step()
    window.followKey(ord("f"))
    window.step()
    data = window.getCameraData()
    assert xyz(data.center) == pytest.approx((15, 0, 0), abs=1) and math.dist(xyz(data.eye), xyz(data.center)) > 15
    picture = shoot(window)
    far.setPosition(hyx.Vec3(30, 500, 0))
    assert difference(picture, shoot(window)) > 10, "the far one is in the picture"


def test_planes_that_are_set_cut_the_picture(window, shoot):
    add_box(window, static=True)
    window.createVisual(window.getSimulation())
    whole = shoot(window)
    data = window.getCameraData()
    window.applyCameraData(data)
    assert difference(whole, shoot(window)) == 0
    data.farClippingPlane = 5.0  # the box is ten metres away
    window.applyCameraData(data)
    assert difference(whole, shoot(window)) > 50
