"""The lidar that reads the depth buffer, against rays calculated by hand."""

import math

import hyx
import hyxOSG
import numpy
import pytest

WIDTH, HEIGHT, OPENING = 61, 41, 60.0
EYE = numpy.array([1.0, -6.0, 3.0])
CENTER, RADIUS = numpy.array([0.0, 0.0, 1.0]), 2.0


def beams():
    """Directions through the middle of each pixel, row by row from the lowest, in the world's frame."""
    forward = CENTER - EYE
    forward /= numpy.linalg.norm(forward)
    right = numpy.cross(forward, [0, 0, 1])
    right /= numpy.linalg.norm(right)
    up = numpy.cross(right, forward)
    half = math.tan(math.radians(OPENING / 2))
    y, x = numpy.meshgrid(
        (2 * numpy.arange(HEIGHT) + 1) / HEIGHT - 1, (2 * numpy.arange(WIDTH) + 1) / WIDTH - 1, indexing="ij"
    )
    directions = forward + (x * half * WIDTH / HEIGHT)[..., None] * right + (y * half)[..., None] * up
    return directions.reshape(-1, 3) / numpy.linalg.norm(directions.reshape(-1, 3), axis=1, keepdims=True), (
        right,
        up,
        -forward,
    )


def sphere_hits(directions):
    """Distances to the sphere along the beams that hit it."""
    offset = EYE - CENTER
    half_b = directions @ offset
    root = half_b**2 - (offset @ offset - RADIUS**2)
    return numpy.where(root > 0, -half_b - numpy.sqrt(numpy.maximum(root, 0)), numpy.nan)


def scan(window, world=None):
    lidar = (
        hyxOSG.SimpleDepthBufferLidar(WIDTH, HEIGHT)
        if world is None
        else hyxOSG.SimpleDepthBufferLidar(WIDTH, HEIGHT, world)
    )
    lidar.getCamera().addChild(hyxOSG.createSphere(hyx.Vec3(*CENTER), hyx.Vec4(1, 1, 1, 1), RADIUS))
    lidar.setViewMatrixAsLookAt(hyx.Vec3(*EYE), hyx.Vec3(*CENTER), hyx.Vec3(0, 0, 1))
    lidar.setProjectionMatrixAsPerspective(OPENING, WIDTH / HEIGHT, 0.2, 50.0)
    window.getRoot().addChild(lidar.getCamera())
    assert len(lidar.getScan()) == 0
    window.frame()
    return lidar


def points(lidar):
    return numpy.array([tuple(point) for point in lidar.getScan()])


@pytest.mark.parametrize("world", [None, True, False])
def test_distances_are_those_of_rays_cast_at_the_sphere(window, world):
    found = points(scan(window, world))
    directions, (right, up, backward) = beams()
    distances = sphere_hits(directions)
    hit = ~numpy.isnan(distances)
    # The drawn sphere has facets: they lie up to 1.5 % of the radius inside, and miss a few beams at the rim.
    assert hit.sum() - 0.1 * hit.sum() < len(found) <= hit.sum()
    measured = found - EYE if world is not False else found @ numpy.array([right, up, backward])
    lengths = numpy.linalg.norm(measured, axis=1)
    nearest = (measured / lengths[:, None]) @ directions.T
    beam = nearest.argmax(axis=1)
    assert nearest.max(axis=1).min() > 1 - 1e-6  # each point lies on a beam
    assert (numpy.diff(beam) > 0).all()  # in their order
    inner = distances[beam] < numpy.nanmin(distances) + 1
    assert inner.sum() > 50
    assert abs(lengths - distances[beam])[inner].max() < 0.05


def test_a_scan_follows_what_moves(window):
    lidar = scan(window)
    before = len(lidar.getScan())
    lidar.setViewMatrixAsLookAt(hyx.Vec3(*EYE), hyx.Vec3(*(2 * EYE - CENTER)), hyx.Vec3(0, 0, 1))
    assert len(lidar.getScan()) == before > 0
    window.frame()
    assert len(lidar.getScan()) == 0


def test_computed_planes_give_the_same_distances(window):
    lidar = scan(window)
    before = points(lidar)
    lidar.setComputeNearFarMode(hyxOSG.RenderTarget.COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES)
    window.frame()
    assert abs(points(lidar) - before).max() < 1e-3


def test_the_points_are_available_as_an_array(window):
    lidar = scan(window)
    assert lidar.points.shape == (len(lidar.getScan()), 3)
    assert lidar.points.dtype == numpy.float32
    assert (lidar.points == points(lidar).astype(numpy.float32)).all()
