"""What one sees through is mixed in the right order at each pixel, also where it crosses."""

import itertools
import math

import hyx
import hyxOSG
import numpy
import osg
import pytest
from off_screen import OffScreen

SIZE, EYE, HALF_VIEW = 128, 10.0, math.tan(math.radians(22.5))
LIGHTING, TRIANGLES = 0x0B50, 4


def plate(app, middle, side, up, color):
    """A parallelogram that no light falls on."""
    mesh = osg.Geometry()
    mesh.vertices = numpy.array([middle + x * side + y * up for x, y in ((-1, -1), (1, -1), (1, 1), (-1, 1))])
    mesh.colors = numpy.array([color])
    mesh.addElements(TRIANGLES, numpy.array([0, 1, 2, 0, 2, 3]))
    geode = osg.Geode()
    geode.addDrawable(mesh)
    state = geode.getOrCreateStateSet()
    state.setMode(LIGHTING, 0)
    hyxOSG.setAlpha(geode, color[3])
    app.getSceneRoot().addChild(geode)


def mixed(plates):
    """The picture by a ray for each pixel; and where all pixels around see the same plates in the same order."""
    pixels = (numpy.arange(SIZE) + 0.5) * 2 / SIZE - 1
    x, z = numpy.meshgrid(pixels, -pixels)
    rays = numpy.stack([HALF_VIEW * x, numpy.ones_like(x), HALF_VIEW * z], axis=-1)
    eye, depths = numpy.array([0, -EYE, 0]), []
    for middle, side, up, _ in plates:
        sides = [numpy.broadcast_to(-way, rays.shape) for way in (side, up)]
        t, a, b = numpy.linalg.solve(numpy.stack([rays, *sides], -1), (middle - eye)[:, None])[..., 0].T
        depths.append(numpy.where(numpy.maximum(abs(a), abs(b)) < 1, t, numpy.inf).T)
    depths = numpy.array(depths)
    order, picture = numpy.argsort(-depths, axis=0), numpy.zeros((SIZE, SIZE, 3))
    for rank in order:
        for index, (*_, color) in enumerate(plates):
            here = (rank == index) & numpy.isfinite(depths[index])
            picture[here] = color[3] * numpy.array(color[:3]) + (1 - color[3]) * picture[here]
    seen = numpy.where(numpy.isfinite(numpy.take_along_axis(depths, order, 0)), order, -1)
    around = [numpy.roll(seen, shift, (1, 2)) for shift in itertools.product((-1, 0, 1), repeat=2)]
    return 255 * picture, (numpy.array(around) == seen).all(axis=(0, 1))


def some_plates(seed):
    """Six that cross each other, one of them opaque."""
    random = numpy.random.default_rng(seed)
    plates = []
    for alpha in (1, 0.3, 0.4, 0.5, 0.6, 0.7):
        side, up = (2.5 * way / numpy.linalg.norm(way) for way in random.normal(size=(2, 3)))
        plates.append((random.uniform(-0.5, 0.5, 3), side, up, [*random.uniform(0, 1, 3), alpha]))
    return plates


@pytest.mark.parametrize("program", [False, True])
@pytest.mark.parametrize("samples", [0, 4])
def test_random_plates_mix_as_rays_meet_them(program, samples):
    scene = OffScreen(SIZE, SIZE, samples)
    scene.decorator.setEnableShaderState(program)
    scene.look_from(hyx.Vec3(0, -EYE, 0))
    for seed in range(3):
        plates = some_plates(seed)
        for one in plates:
            plate(scene.app, *one)
        scene.app.render()
        picture = scene.app.render().astype(float)
        expected, sure = mixed(plates)
        while scene.root.getNumChildren():
            scene.root.removeChild(scene.root.getChild(0))
        assert sure.mean() > 0.3 and (expected[sure].max(axis=1) > 20).mean() > 0.1
        assert (abs(picture - expected)[sure].max(axis=1) > 4).mean() < 0.001
    scene.app.close()


def test_a_render_target_keeps_the_order():
    scene = OffScreen(SIZE, SIZE)
    plates = some_plates(0)
    for one in plates:
        plate(scene.app, *one)
    target = hyxOSG.RenderToImage(SIZE, SIZE)
    target.setViewMatrixAsLookAt(hyx.Vec3(0, -EYE, 0), hyx.Vec3(), hyx.Vec3(0, 0, 1))
    target.setProjectionMatrixAsPerspective(45.0, 1.0, 0.5, 50.0)
    scene.app.addRenderTarget(target, scene.root)
    for _ in range(2):
        scene.app.render()
    seen = target.pixels[::-1, :, :3].astype(float)
    expected, sure = mixed(plates)
    scene.app.close()
    assert (abs(seen - expected)[sure].max(axis=1) > 4).mean() < 0.001
