"""Where bars that lie anyhow throw shadows, beside rays to the light."""

import hyx
import hyxOSG
import numpy
import pytest
from decorated_stage import CASTS, static_box
from hyxOSG import SceneDecorator
from off_screen import OffScreen
from PIL import Image

METHODS = [SceneDecorator.SHADOWMAP, SceneDecorator.SOFT_SHADOWMAP, SceneDecorator.PARALLELLSPLIT_SHADOWMAP]
SIZE, EYE = 256, 9.0
REACH = EYE * numpy.tan(numpy.radians(22.5))  # from the middle to the edge of the ground that is seen, in metres


def turned(quaternion):
    """The rows of the matrix are a body's axes."""
    x, y, z, w = quaternion
    return numpy.array(
        [
            [1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)],
            [2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)],
            [2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)],
        ]
    )


class Bars(OffScreen):
    def __init__(self, folder, seed):
        super().__init__(SIZE, SIZE)
        rng = numpy.random.default_rng(seed)
        self.file = str(folder / "picture.png")
        self.bodies = [static_box((9, 9, 0.1), (0, 0, -0.1))]
        visual = hyxOSG.createVisual(self.bodies[0], self.root)
        hyxOSG.setDiffuseColor(visual, hyx.Vec4f(1, 1, 1, 1))
        visual.setNodeMask(0xFFFFFFFF & ~CASTS)
        self.bars = []
        for _ in range(6):
            half, place = rng.uniform((0.05, 0.05, 0.3), (0.1, 0.3, 0.8)), rng.uniform((-3, -3, 1), (3, 3, 2.5))
            way = rng.normal(size=4)
            way /= numpy.linalg.norm(way)
            body = static_box(half.tolist(), place.tolist())
            body.setRotation(hyx.Quat(*way))
            hyxOSG.createVisual(body, self.root)
            self.bodies.append(body)
            self.bars.append((half, place, turned(way)))
        self.look_from(hyx.Vec3(0, -0.001, EYE), hyx.Vec3())
        self.decorator.setEnableCalculateLightPositions(SceneDecorator.ALL, False)
        self.decorator.setEnableShaderState(True)

    def picture(self):
        for _ in range(2):
            self.app.takeScreenShot(self.file)
        return numpy.asarray(Image.open(self.file).convert("L")).astype(float)

    def hidden(self, starts, ways):
        """Whether rays meet a bar."""
        met = numpy.zeros(starts.shape[:-1], bool)
        for half, place, axes in self.bars:
            start, way = (starts - place) @ axes.T, ways @ axes.T
            to, back = (-half - start) / way, (half - start) / way
            enter, leave = numpy.minimum(to, back).max(axis=-1), numpy.maximum(to, back).min(axis=-1)
            met |= (enter < leave) & (leave > 0)
        return met


def beside_edges(mask, pixels):
    """Where all around is the same."""
    sure = numpy.ones_like(mask)
    for down in range(-pixels, pixels + 1):
        for right in range(-pixels, pixels + 1):
            sure &= numpy.roll(mask, (down, right), (0, 1)) == mask
    return sure


@pytest.mark.parametrize("method", METHODS)
@pytest.mark.parametrize("seed, light", [(1, (1, 0.5, 1, 0)), (2, (-0.4, 0.8, 2, 0)), (3, (2, -1, 6, 1))])
def test_shadows_are_where_bars_hide_the_light(tmp_path, method, seed, light):
    bars = Bars(tmp_path, seed)
    bars.decorator.getLightSource(SceneDecorator.LIGHT0).setPosition(hyx.Vec4(*light))
    lit = bars.picture()
    bars.decorator.setShadowMethod(method)
    bars.decorator.setEnableShadows(True)
    shadow = bars.picture() < 0.65 * lit
    bars.app.close()
    across = (numpy.arange(SIZE) + 0.5) / SIZE * 2 - 1
    ground = numpy.dstack([*numpy.meshgrid(REACH * across, -REACH * across), numpy.zeros((SIZE, SIZE))])
    to_light = numpy.array(light[:3]) - light[3] * ground
    expected, covered = bars.hidden(ground, to_light), bars.hidden(ground, (0, 0, EYE) - ground)
    sure = beside_edges(expected, 3) & ~covered & beside_edges(covered, 2)
    assert (expected & sure).sum() > 300, "there is something to see"
    assert (shadow != expected)[sure].mean() < 0.001
