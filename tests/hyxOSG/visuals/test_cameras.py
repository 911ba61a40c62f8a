"""Cameras: orbiting, points under the mouse, and what lies there."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import osg
import osgViewer
import pytest


def camera():
    made = osg.Camera()
    made.setViewport(0, 0, 200, 100)
    made.setViewMatrixAsLookAt(osg.Vec3d(0, -10, 0), osg.Vec3d(0, 0, 0), osg.Vec3d(0, 0, 1))
    made.setProjectionMatrixAsPerspective(30.0, 2.0, 1.0, 100.0)
    return made


def test_near_and_far_points_lie_on_the_ray_of_a_pixel():
    near, far = hyx.Vec3(), hyx.Vec3()
    assert hyxOSG.getNearFarPoints(camera(), 100.0, 50.0, near, far) is None
    assert list(near) == pytest.approx([0, -9, 0], abs=1e-6) and list(far) == pytest.approx([0, 90, 0], abs=1e-4)
    hyxOSG.getNearFarPoints(camera(), 150.0, 75.0, near, far)
    assert near.x > 0.1 and near.z > 0.05
    kept = list(near)
    hyxOSG.getNearFarPoints(None, 1.0, 1.0, near, far)
    hyxOSG.getNearFarPoints(osg.Camera(), 1.0, 1.0, near, far)
    assert list(near) == kept
    for arguments in ((None, far), (near, None)):
        with pytest.raises(TypeError, match="getNearFarPoints.. argument [45] .* not None"):
            hyxOSG.getNearFarPoints(camera(), 1.0, 1.0, *arguments)


def test_the_nearest_geometry_under_the_mouse_is_found():
    simulation = hyxSDK.Simulation()
    for y in (0, 3):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1), f"ball {y}"))
        body.setPosition(hyx.Vec3(0, y, 0))
        simulation.add(body)
    contact = hyxOSG.getHoveredGeometryContact(camera(), simulation.getSpace(), 100.0, 50.0)
    assert contact.isValid() and contact.getGeometry(0).getName() == "ball 0"
    assert list(contact.getPoint(0).point) == pytest.approx([0, -1, 0], abs=1e-3)
    assert not hyxOSG.getHoveredGeometryContact(camera(), simulation.getSpace(), 1.0, 1.0).isValid()
    assert not hyxOSG.getHoveredGeometryContact(None, simulation.getSpace(), 1.0, 1.0).isValid()
    assert not hyxOSG.getHoveredGeometryContact(camera(), None, 1.0, 1.0).isValid()


def test_the_orbit_camera_starts_at_its_home():
    viewer, scene = osgViewer.Viewer(), osg.Group()
    eye, center, up = hyx.Vec3(5, 0, 0), hyx.Vec3(), hyx.Vec3(0, 0, 1)
    assert hyxOSG.setOrbitCamera(viewer, scene, eye, center, up) is True
    place = viewer.getCameraManipulator().getMatrix().getTrans()
    assert list(place) == pytest.approx([5, 0, 0], abs=1e-6)
    assert hyxOSG.setOrbitCamera(viewer, scene, eye, center, up, 3) is True
    for wrong in (
        (None, scene, eye, center, up),
        (viewer, None, eye, center, up),
        (viewer, scene, eye, eye, up),
        (viewer, scene, eye, center, hyx.Vec3(1, 0, 0)),
        (viewer, scene, eye, center, up, 4),
    ):
        assert hyxOSG.setOrbitCamera(*wrong) is False


@pytest.mark.parametrize("button", [1, 3])
def test_the_chosen_button_turns_the_orbit_camera(studio, button):
    app = studio.app
    viewer = app.getViewer()
    usual = viewer.getCameraManipulator()
    try:
        assert hyxOSG.setOrbitCamera(viewer, studio.root, hyx.Vec3(0, -8, 0), hyx.Vec3(), hyx.Vec3(0, 0, 1), button)
        manipulator = viewer.getCameraManipulator()
        queue = viewer.getCamera().getGraphicsWindow().getEventQueue()

        def drag(with_button):
            queue.mouseMotion(64.0, 64.0)
            queue.mouseButtonPress(64.0, 64.0, with_button)
            for x in (70.0, 80.0, 90.0):
                queue.mouseMotion(x, x)
                studio.picture()
            queue.mouseButtonRelease(90.0, 90.0, with_button)
            studio.picture()
            return osg.Vec3d(manipulator.getMatrix().getTrans())

        turned = drag(button)
        assert turned.length() == pytest.approx(8, abs=0.05) and abs(turned.x) > 0.5
        other = drag(4 - button)
        assert abs(other.length() - 8) > 0.2
    finally:
        viewer.setCameraManipulator(usual)
        studio.look_from(hyx.Vec3(0, -4, 0))
