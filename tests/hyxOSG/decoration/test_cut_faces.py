"""Bodies that a plane cuts open are filled, by the area that a formula says, in their own look."""

import math

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from off_screen import OffScreen

SIZE, EYE = 256, 8.0
PIXELS_A_METRE = SIZE / 2 / EYE / math.tan(math.radians(22.5))
KEPT = []


@pytest.fixture
def scene():
    made = OffScreen(SIZE, SIZE)
    made.look_from(hyx.Vec3(0, -EYE, 0))
    yield made
    KEPT.clear()
    made.app.close()


def body(scene, parent, shape, place=(0, 0, 0), turned=0.0):
    made = hyx.RigidBody(hyxCollide.Geometry(shape))
    made.setPosition(hyx.Vec3(*place))
    made.setRotation(hyx.Quat(turned, hyx.Vec3(0, 1, 0)))
    KEPT.append(made)
    visual = hyxOSG.createVisual(made, parent)
    hyxOSG.setDiffuseColor(visual, hyx.Vec4f(0.9, 0.1, 0.1, 1))
    return visual


def torus(ring, tube, around=96, across=48):
    """Around the y axis."""
    u, v = numpy.meshgrid(numpy.arange(around), numpy.arange(across), indexing="ij")
    a, b = u * 2 * math.pi / around, v * 2 * math.pi / across
    reach = ring + tube * numpy.cos(b)
    corners = numpy.stack([reach * numpy.cos(a), tube * numpy.sin(b), reach * numpy.sin(a)], -1).reshape(-1, 3)

    def number(i, j):
        return (i % around) * across + j % across

    quads = [number(u, v), number(u + 1, v), number(u + 1, v + 1), number(u, v + 1)]
    faces = numpy.stack([quads[i] for i in (0, 2, 1, 0, 3, 2)], -1).ravel()
    return hyxCollide.Trimesh([hyx.Vec3(*c) for c in corners], [int(i) for i in faces])


def reds_of(picture, level=60):
    return (picture[..., 0] > level) & (picture[..., 1] < picture[..., 0] / 3)


def face_area(scene):
    """Square metres of what looks to the camera at the brightness of the face in the middle of the view."""
    scene.app.render()
    picture = scene.app.render()
    reds = picture[..., 0][reds_of(picture)]
    levels, counts = numpy.unique(reds, return_counts=True)
    face = levels[counts.argmax()]
    return (abs(reds.astype(int) - int(face)) <= 1).sum() / PIXELS_A_METRE**2


@pytest.mark.parametrize("program", [False, True])
@pytest.mark.parametrize(
    "shape, turned, area",
    [
        (lambda: hyxCollide.Sphere(1.25), 0.0, math.pi * 1.25**2),
        (lambda: hyxCollide.Box(1.0, 1.5, 0.5), 0.5, 2.0),
        (lambda: hyxCollide.Cylinder(0.5, 2.0), 0.0, math.pi * 0.25),
        (lambda: torus(1.2, 0.4), 0.0, math.pi * (1.6**2 - 0.8**2)),
    ],
    ids=["sphere", "box", "cylinder", "torus"],
)
def test_the_face_has_the_area_of_the_section(scene, program, shape, turned, area):
    scene.decorator.setEnableShaderState(program)
    # Light from the camera, far away: every point of the face is as bright.
    scene.decorator.setEnableCalculateLightPositions(scene.decorator.ALL, False)
    scene.decorator.getLightSource(scene.decorator.LIGHT0).setPosition(hyx.Vec4(0, -1, 0, 0))
    cut = hyxOSG.ClipPlane(hyx.Vec3(0, 0, 0), hyx.Vec3(0, 1, 0))
    scene.root.addChild(cut)
    body(scene, cut, shape(), turned=turned)
    assert face_area(scene) == pytest.approx(area, rel=0.02)


def test_the_face_follows_plane_and_body(scene):
    cut = hyxOSG.ClipPlane(hyx.Vec3(0, 0.6, 0), hyx.Vec3(0, 1, 0))
    scene.root.addChild(cut)
    body(scene, cut, hyxCollide.Sphere(1))

    def width():
        scene.app.render()
        reds = reds_of(scene.app.render(), 20)
        return reds.any(axis=0).sum() * (EYE + cut.getPosition()[1]) / EYE / PIXELS_A_METRE

    assert width() == pytest.approx(1.6, rel=0.03)
    cut.setPosition(hyx.Vec3(0, 0.8, 0))
    assert width() == pytest.approx(1.2, rel=0.03)
    KEPT[0].setPosition(hyx.Vec3(0, 0.8, 0))
    assert width() == pytest.approx(2.0, rel=0.03)


def test_one_cut_ends_at_another(scene):
    outer, inner = hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3(0, 1, 0)), hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3(1, 0, 0))
    scene.root.addChild(outer)
    outer.addChild(inner)
    body(scene, inner, hyxCollide.Box(1, 1, 1))
    scene.app.render()
    reds = reds_of(scene.app.render(), 20)
    assert reds[:, : SIZE // 2 - 1].sum() == 0
    assert reds.sum() == pytest.approx(2 * PIXELS_A_METRE**2, rel=0.03)


def test_an_open_mesh_shows_its_inside(scene):
    cut = hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3(0, 1, 0))
    scene.root.addChild(cut)
    corners = [hyx.Vec3(x, y, z) for x in (-1, 1) for y in (-1, 1) for z in (-1, 1)]
    floor = [0, 2, 6, 0, 6, 4]
    body(scene, cut, hyxCollide.Trimesh(corners, floor))
    scene.look_from(hyx.Vec3(0, -EYE, 1))
    scene.app.render()
    reds = reds_of(scene.app.render(), 5)
    assert 0 < reds.sum() < 0.3 * 4 * PIXELS_A_METRE**2
