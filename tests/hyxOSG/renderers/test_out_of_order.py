"""Operations called before what they need is there."""

import hyx
import hyxOSG
import hyxSDK
import hyxSensor
import osg
import pytest


def test_listeners_refuse_to_start_without_a_simulation():
    arrows = hyxOSG.ForceArrowRenderer()
    updater = hyxOSG.createVisualUpdater(hyxSDK.EventListener(), osg.Group())
    for call in (arrows.addNotification, updater.addNotification, updater.removeNotification):
        with pytest.raises(RuntimeError, match="in no simulation"):
            call()
    arrows.removeNotification()


def test_a_mesh_keeps_the_vertices_that_its_elements_name():
    mesh = osg.Geometry()
    mesh.setVertexArray([(0, 0, 0), (1, 0, 0), (0, 1, 0)])
    mesh.addElements(4, [0, 1, 2])
    with pytest.raises(RuntimeError, match="name 3 vertices"):
        mesh.setVertexArray([(0, 0, 0)])
    assert mesh.getNumVertices() == 3
    mesh.setVertexArray([(0, 0, 0), (2, 0, 0), (0, 2, 0)])
    mesh.setColorArray([(1, 0, 0, 1), (0, 1, 0, 1)])
    geode = osg.Geode()
    geode.addDrawable(mesh)
    with pytest.raises(RuntimeError, match="than vertices"):
        hyxOSG.smoothNormals(geode, 0.5)


TOO_MUCH = {
    "detail": (lambda app: hyxOSG.createVisual(hyx.RigidBody(), osg.Group(), 1e6), "at most 1000"),
    "text": (lambda app: app.getSceneDecorator().setText(0, "x" * 1_000_000), "50000"),
    "rays": (lambda app: hyxSensor.Lidar(hyx.Frame()).setResolution(65535, 65535), "16777216"),
    "images a second": (lambda app: app.getImageCapture().setFps(1e6), "10000"),
    "time step": (lambda app: hyxSDK.Simulation().setTimeStep(1e-9), "1e-6"),
}


@pytest.mark.parametrize("call, limit", TOO_MUCH.values(), ids=TOO_MUCH.keys())
def test_what_cannot_be_meant_is_refused_with_the_limit(window, call, limit):
    with pytest.raises(RuntimeError, match=limit):
        call(window)
