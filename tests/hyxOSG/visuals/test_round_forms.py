"""Round shapes have as many facets as their picture needs, and stay the same for everything else."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest

SHAPES = {
    "sphere": lambda size: hyxCollide.Sphere(size),
    "cylinder": lambda size: hyxCollide.Cylinder(size, 2 * size),
    "capsule": lambda size: hyxCollide.Capsule(size, size),
}


def outline(app, name, distance, size=1.0):
    """Where the shape is in a picture of 600 x 600 pixels, seen along its axis from so far away."""
    body = hyx.RigidBody(hyxCollide.Geometry(SHAPES[name](size)))
    app.getSimulation().add(body)
    visual = hyxOSG.createVisual(body, app.getSceneRoot())
    hyxOSG.setDiffuseColor(visual, hyx.Vec4f(0, 0, 0, 1))
    hyxOSG.setAmbientColor(visual, hyx.Vec4f(0, 0, 0, 1))
    app.getSceneDecorator().setBackgroundColor(hyx.Vec3(1, 1, 1), hyx.Vec3(1, 1, 1))
    app.setCameraHome(hyx.Vec3(0, -distance, 0), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    return app.render().astype(int).sum(axis=2) < 384


@pytest.mark.parametrize("name", SHAPES)
@pytest.mark.parametrize("distance", [4.0, 12.0, 60.0, 200.0])
def test_the_outline_is_round_to_a_pixel(app, name, distance):
    app.initViewer(600, 600)
    shown = outline(app, name, distance)
    rows, columns = numpy.nonzero(shown)
    reach = numpy.hypot(rows - 299.5, columns - 299.5).max()
    y, x = numpy.mgrid[:600, :600]
    from_centre = numpy.hypot(y - 299.5, x - 299.5)
    # What is certainly inside is covered: no facet cuts off more than a pixel of the circle.
    assert shown[from_centre < reach - 1.6].all() and reach > 2


def test_a_shape_is_picked_and_measured_in_the_detail_asked_for(app):
    app.initViewer(64, 64)
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)))
    visual = hyxOSG.createVisual(body, app.getSceneRoot())
    before = visual.getBound().radius()
    app.setCameraHome(hyx.Vec3(0, -300, 0), hyx.Vec3(0, 0, 0))
    app.render()
    assert visual.getBound().radius() == before
