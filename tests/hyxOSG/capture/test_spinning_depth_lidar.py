"""The spinning lidar of depth pictures, against rays into the physics."""

import math

import hyx
import hyxCollide
import hyxOSG
import numpy
import osgViewer
import pytest
from hyxOSG import SpinningDepthLidar


@pytest.fixture
def room(app):
    """A lidar's mount in a room of boxes, all with their visuals."""
    app.initViewer(160, 120)
    simulation = app.getSimulation()
    for half, place in (
        ((20, 20, 0.5), (0, 0, -0.5)),
        ((0.5, 20, 5), (8.5, 0, 5)),
        ((20, 0.5, 5), (0, -6.5, 5)),
        ((0.5, 0.7, 0.9), (-3, 2, 0.9)),
    ):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half)))
        body.setPosition(hyx.Vec3(*place))
        body.setMotionControl(hyx.RigidBody.STATIC)
        simulation.add(body)
    mount = hyx.Frame(hyx.AffineMatrix4x4(hyx.Quat(0.4, hyx.Vec3(0.1, 0.2, 1)), hyx.Vec3(0.3, 0.2, 1.7)))
    app.createVisual(simulation)
    return mount


def test_every_beam_measures_what_its_ray_meets(app, room):
    lidar = SpinningDepthLidar(app, rings=24, columns=400, vertical=(-0.5, 0.3), far=50)
    lidar.follow(room)
    points = lidar.scan()
    space, origin = app.getSimulation().getSpace(), numpy.array(tuple(room.getTranslate()))
    ways = numpy.stack([points[axis] for axis in "xyz"], axis=-1) - origin
    assert numpy.linalg.norm(ways, axis=1) == pytest.approx(points["distance"], rel=1e-5)
    hits = [space.castRay(hyx.Vec3(*origin), hyx.Vec3(*(origin + 60 * way))) for way in ways]
    bodies = [osgViewer.identifiedBody(int(number)) for number in points["identity"]]
    right = numpy.array([hit.isValid() and hit.getGeometry().getRigidBody() is body for body, hit in zip(bodies, hits)])
    error = numpy.abs(points["distance"] - [hit.distance for hit in hits])
    assert right.mean() > 0.99 and len(points) > 4000  # but for beams within a pixel of an edge
    assert numpy.quantile(error[right], 0.99) < 1e-3
    # Every beam, in its place: the columns go round, the rings lie above each other.
    local = numpy.array([tuple(room.getRotate().inverse() * hyx.Vec3(*way)) for way in ways])
    assert numpy.arctan2(local[:, 2], numpy.hypot(local[:, 0], local[:, 1])) == pytest.approx(
        numpy.linspace(-0.5, 0.3, 24)[points["ring"]], abs=1e-6
    )
    azimuth = numpy.arctan2(local[:, 1], local[:, 0]) / (2 * math.pi) * 400
    assert numpy.abs(azimuth - numpy.rint(azimuth)).max() < 1e-3 and len(numpy.unique(numpy.rint(azimuth))) > 390


@pytest.mark.parametrize(
    "wrong", [{"rings": 0}, {"columns": 3}, {"elevations": [1.5]}, {"elevations": []}, {"near": 2, "far": 1}], ids=str
)
def test_what_cannot_spin_is_refused(app, room, wrong):
    with pytest.raises(ValueError):
        SpinningDepthLidar(app, **wrong)
