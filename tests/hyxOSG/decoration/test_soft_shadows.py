"""Half shadows of soft shadow maps beside those of a lamp that is a disc."""

import math

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from decorated_stage import CASTS, static_box
from hyxOSG import SceneDecorator
from off_screen import OffScreen
from PIL import Image

SIZE = 192
EYE = 1.5  # above the ground, looking down with 45 degrees
SPREAD = 0.06  # of the lamp, by its distance
SOFT = [
    SceneDecorator.SOFT_SHADOWMAP,
    SceneDecorator.PARALLELLSPLIT_SHADOWMAP,
    SceneDecorator.LIGHTSPACEPERSPECTIVE_SHADOWMAP,
]


class Edge(OffScreen):
    """A ground below a plate that reaches to x = 0, lit aslant so that its edge falls on free ground."""

    def __init__(self, folder, height, lamp):
        super().__init__(SIZE, SIZE)
        self.file = str(folder / "picture.png")
        self.height, self.lamp = height, numpy.array(lamp[:3], dtype=float)
        self.far_away = lamp[3] == 0
        self.bodies = [static_box((9, 9, 0.1), (0, 0, -0.1)), static_box((1, 4, 0.01), (-1, 0, height + 0.01))]
        self.visuals = [hyxOSG.createVisual(body, self.root) for body in self.bodies]
        hyxOSG.setDiffuseColor(self.visuals[0], hyx.Vec4f(1, 1, 1, 1))
        self.visuals[0].setNodeMask(0xFFFFFFFF & ~CASTS)
        self.decorator.setEnableCalculateLightPositions(SceneDecorator.ALL, False)
        self.decorator.getLightSource(SceneDecorator.LIGHT0).setPosition(hyx.Vec4(*lamp))
        way = self.lamp if self.far_away else self.lamp - (0, 0, height)
        self.middle = -height * way[0] / way[2]
        self.look_from(hyx.Vec3(self.middle, -0.001, EYE), hyx.Vec3(self.middle, 0, 0))
        self.decorator.setEnableShaderState(True)

    def picture(self):
        for _ in range(2):
            self.app.takeScreenShot(self.file)
        return numpy.asarray(Image.open(self.file).convert("L")).astype(float)

    def open_share(self, method):
        """What the shadow leaves of the light along the middle of the picture."""
        self.decorator.setEnableShadows(False)
        lit = self.picture()
        self.decorator.setShadowMethod(method)
        self.decorator.setEnableShadows(True)
        share = (self.picture() / lit)[SIZE // 2 - 40 : SIZE // 2 + 40].mean(axis=0)
        return (share - share.min()) / (share.max() - share.min())

    def width(self, method):
        metres = 2 * EYE * math.tan(math.radians(22.5)) / SIZE
        return soft_width(self.open_share(method)) * metres

    def expected_width(self):
        """From rays to points all over the lamp, past an edge without end."""
        way = self.lamp if self.far_away else self.lamp - (-1, 0, self.height + 0.01)
        distance = 1e4 if self.far_away else numpy.linalg.norm(way)
        direction = way / numpy.linalg.norm(way)
        middle = direction * distance if self.far_away else self.lamp
        aside = numpy.cross(direction, (0, 1, 0))
        across, along = numpy.meshgrid(numpy.linspace(-1, 1, 81), numpy.linspace(-1, 1, 81))
        disc = across**2 + along**2 <= 1
        places = middle + SPREAD / 2 * distance * across[disc][:, None] * aside
        places += SPREAD / 2 * distance * along[disc][:, None] * numpy.array((0, 1, 0))
        ground = numpy.linspace(self.middle - 0.6, self.middle + 0.6, 2401)
        crossing = ground[:, None] + (places[:, 0] - ground[:, None]) * (self.height / places[:, 2])
        return soft_width((crossing > 0).mean(axis=1)) * (ground[1] - ground[0])


def soft_width(share):
    """From a tenth to nine tenths of the light, in steps of the row."""
    places = numpy.arange(len(share))
    rising = numpy.maximum.accumulate(share)
    low, high = numpy.interp((0.1, 0.9), rising, places)
    return high - low


@pytest.mark.parametrize(
    "method, lamp",
    [(SOFT[0], (-1, 0, 1, 0)), (SOFT[0], (-0.7, 0, 1, 0)), *((method, (-4, 0, 6, 1)) for method in SOFT)],
)
def test_half_shadows_grow_with_the_height_of_the_caster(tmp_path, method, lamp):
    widths = []
    for height in (0.7, 1.4):
        edge = Edge(tmp_path, height, lamp)
        widths.append((edge.width(method), edge.expected_width()))
        edge.app.close()
    for measured, expected in widths:
        assert measured == pytest.approx(expected, rel=0.2), widths
    (low, low_expected), (high, high_expected) = widths
    assert high / low == pytest.approx(high_expected / low_expected, rel=0.2)


def test_hard_shadows_stay_hard(tmp_path):
    edge = Edge(tmp_path, 1.4, (-1, 0, 1, 0))
    assert edge.width(SceneDecorator.SHADOWMAP) < edge.expected_width() / 5
    edge.app.close()


def test_a_wide_ground_below_high_bodies_leaves_no_speckles():
    """All casters together reach up to the lamp, though none does."""
    stage = OffScreen(SIZE, SIZE)
    bodies = [static_box((12, 12, 0.5), (0, 0, -0.5))]
    bodies += [static_box((0.3, 0.3, 0.3), (math.sin(i), math.cos(2 * i), 0.5 + 0.5 * i)) for i in range(16)]
    for body in bodies:
        hyxOSG.createVisual(body, stage.root)
    stage.decorator.setEnableCalculateLightPositions(SceneDecorator.ALL, False)
    stage.decorator.getLightSource(SceneDecorator.LIGHT0).setPosition(hyx.Vec4(-9, -6, 14, 1))
    stage.decorator.setEnableShaderState(True)
    stage.look_from(hyx.Vec3(4, 2.999, 6), hyx.Vec3(4, 3, 0))  # to the shadows beside the bodies
    stage.decorator.setShadowMethod(SceneDecorator.SOFT_SHADOWMAP)
    stage.decorator.setEnableShadows(True)
    light = stage.app.render()[..., :3].mean(axis=2)
    around = numpy.stack([numpy.roll(light, (y, x), (0, 1)) for y in (-1, 0, 1) for x in (-1, 0, 1)])
    speckled = numpy.abs(light - numpy.median(around, axis=0))[2:-2, 2:-2] > 0.15 * (light.max() - light.min())
    stage.app.close()
    assert numpy.ptp(light) > 60, "there are shadows"
    assert speckled.mean() < 0.005


@pytest.mark.parametrize("method", [*SOFT, SceneDecorator.SHADOWMAP])
@pytest.mark.parametrize(
    "shape", [hyxCollide.Sphere(1), hyxCollide.Capsule(0.5, 2), hyxCollide.Cylinder(1, 2)], ids=["ball", "rod", "drum"]
)
def test_round_bodies_do_not_shade_themselves_however_small(shape, method):
    """What stands alone and is round looks the same with shadows and without."""
    made = OffScreen(SIZE, SIZE)
    made.decorator.setEnableShaderState(True)
    made.decorator.setShadowMethod(method)
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setRotation(hyx.Quat(0.9, hyx.Vec3(0, 1, 0.3)))
    visual = hyxOSG.createVisual(body, made.root)
    hyxOSG.setDiffuseColor(visual, hyx.Vec4f(0.9, 0.9, 0.9, 1))
    changed = []
    for distance in (5, 12, 25, 50):
        made.look_from(hyx.Vec3(0, -distance, 0.6 * distance), hyx.Vec3(0, 0, 0))
        pictures = []
        for shadows in (False, True):
            made.decorator.setEnableShadows(shadows)
            made.app.render()
            pictures.append(made.app.render().astype(int))
        changed.append((abs(pictures[0] - pictures[1]).max(axis=2) > 30).sum())
    made.app.close()
    assert max(changed) <= 3, changed
