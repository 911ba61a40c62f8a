"""A small scene to decorate: a ground, a box floating over it and a camera, drawn off-screen."""

import functools
import pathlib
import tempfile

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from off_screen import OffScreen
from PIL import Image

WIDTH, HEIGHT = 320, 240
CASTS = hyxOSG.ExampleApplication.CASTS_SHADOWS_MASK
RECEIVES = hyxOSG.ExampleApplication.RECIEVES_SHADOWS_MASK


def static_box(half_extents, position):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half_extents)))
    body.setMotionControl(hyx.RigidBody.STATIC)
    body.setPosition(hyx.Vec3(*position))
    return body


class Stage(OffScreen):
    """The application with its decorator, and pictures of it as arrays (row 0 is the upper edge)."""

    def __init__(self, folder):
        super().__init__(WIDTH, HEIGHT)
        self.file = str(folder / "picture.png")
        self.bodies = {"ground": static_box((6, 6, 0.1), (0, 0, -0.1)), "box": static_box((0.5, 0.5, 0.5), (0, 0, 1.2))}
        self.visuals = {}
        for name, body in self.bodies.items():
            self.simulation.add(body)
            self.visuals[name] = hyxOSG.createVisual(body, self.app.getSceneRoot())
        hyxOSG.setDiffuseColor(self.visuals["ground"], hyx.Vec4f(0.6, 0.6, 0.6, 1))
        hyxOSG.setAmbientColor(self.visuals["ground"], hyx.Vec4f(0.6, 0.6, 0.6, 1))
        hyxOSG.setDiffuseColor(self.visuals["box"], hyx.Vec4f(0.8, 0.2, 0.2, 1))
        hyxOSG.setAmbientColor(self.visuals["box"], hyx.Vec4f(0.8, 0.2, 0.2, 1))
        self.look_from(hyx.Vec3(0, -7, 5), hyx.Vec3(0, 0, 0.4))

    def reset(self):
        """The plain look that every test starts from."""
        decorator = self.decorator
        decorator.setEnable(True)
        decorator.setBackgroundColor(hyx.Vec3(0, 0, 0))
        decorator.setEnableShaderState(False)
        decorator.setEnableShadows(False)
        decorator.setShadowMethod(decorator.SOFT_SHADOWMAP)
        decorator.setShadowLightSource(decorator.LIGHT0)
        decorator.setEnableLights(decorator.LIGHT0)
        decorator.setEnableCalculateLightPositions(decorator.ALL, True)
        decorator.getLightSource(decorator.LIGHT0).setPosition(hyx.Vec4(-3, -1, 6, 1))
        decorator.setEnableRenderedCursor(False)
        decorator.setLogo(None)
        decorator.setEnableLogo(True)
        decorator.setMaximumLogoDimension(256, 128)
        decorator.setLogoPosition(0.02, 0.02)
        decorator.setBaseTexture("")
        decorator.setScreenPixelScale(1)
        decorator.setFontName("DejaVuSans")
        decorator.setFontSize(14)
        decorator.updateWindowSize(WIDTH, HEIGHT)
        decorator.resetHUD()
        for visual in self.visuals.values():
            visual.setNodeMask(0xFFFFFFFF)

    def picture(self):
        self.app.takeScreenShot(self.file)
        return numpy.asarray(Image.open(self.file).convert("RGB")).astype(int)


def changed(before, after, threshold=12):
    """Where two pictures differ."""
    return numpy.abs(before - after).max(axis=2) > threshold


def near(picture, color, tolerance=12):
    """Where a picture has a colour, given with components 0 to 1."""
    return numpy.abs(picture - numpy.array(color) * 255).max(axis=2) <= tolerance


def frame(mask):
    """The box around what is set: left, right, upper, lower, in pixels; the ends count."""
    rows, columns = numpy.nonzero(mask)
    assert len(rows), "nothing is there"
    return columns.min(), columns.max(), rows.min(), rows.max()


def write_image(path, color, size=(40, 20)):
    Image.new("RGB", size, tuple(int(c * 255) for c in color)).save(path)
    return str(path)


@functools.cache
def the_only_stage():
    return Stage(pathlib.Path(tempfile.mkdtemp()))


@pytest.fixture
def stage():
    """The stage in its plain look."""
    one = the_only_stage()
    one.reset()
    yield one
    one.reset()


@pytest.fixture
def decorator(stage):
    return stage.decorator
