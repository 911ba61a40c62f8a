"""Shadow maps are kept while nothing moves; whatever changes is seen in the next picture."""

import hyx
import hyxOSG
import numpy
import osg
import pytest
from decorated_stage import CASTS, Stage, changed
from hyxOSG import SceneDecorator


def blade(height):
    return numpy.array([[1, -1, height], [2.5, -1, height], [1.5, 1, height]], numpy.float32)


class Scene:
    """The stage, with a blade beside the box."""

    def __init__(self, stage):
        self.stage = stage
        self.mesh = osg.Geometry()
        self.mesh.vertices = blade(1)
        self.mesh.addElements(4, numpy.arange(3))
        geode = osg.Geode()
        geode.addDrawable(self.mesh)
        self.parent = osg.Group()
        self.parent.addChild(geode)
        stage.root.addChild(self.parent)
        stage.reset()

    def picture(self):
        self.stage.picture()
        return self.stage.picture()

    def afresh(self):
        """With new maps."""
        decorator = self.stage.decorator
        size = decorator.getShadowMapSize()
        decorator.setShadowMapSize(16)
        self.picture()
        decorator.setShadowMapSize(size)
        return self.picture()


def move_the_body(scene):
    scene.stage.bodies["box"].setPosition(hyx.Vec3(-1, 0.3, 1.5))


def turn_the_body(scene):
    scene.stage.bodies["box"].setRotation(hyx.Quat(0, 0, 0.38, 0.92))


def deform_the_mesh(scene):
    scene.mesh.vertices = 1.2 * blade(0.8)


def move_a_corner_inside_the_bounds(scene):
    scene.mesh.vertices = blade(1) + numpy.array([[0, 0, 0], [0, 0, 0], [0.6, 0, 0]], numpy.float32)


def keep_one_from_casting(scene):
    scene.stage.visuals["box"].setNodeMask(0xFFFFFFFF & ~CASTS)


def take_one_away(scene):
    scene.stage.root.removeChild(scene.parent)


def draw_lines_only(scene):
    hyxOSG.setEnableWireFrameMode(scene.stage.visuals["box"], True)


def move_the_light(scene):
    scene.stage.decorator.getLightSource(SceneDecorator.LIGHT0).setPosition(hyx.Vec4(3, 1, 5, 1))


def look_from_elsewhere(scene):
    scene.stage.look_from(hyx.Vec3(2, -4, 3), hyx.Vec3(0, 0, 0.4))


CHANGES = [
    move_the_body,
    turn_the_body,
    deform_the_mesh,
    move_a_corner_inside_the_bounds,
    keep_one_from_casting,
    take_one_away,
    draw_lines_only,
    move_the_light,
    look_from_elsewhere,
]


@pytest.mark.parametrize("change", CHANGES)
def test_shadows_follow(tmp_path, change):
    stage = Stage(tmp_path)
    scene = Scene(stage)
    stage.visuals["ground"].setNodeMask(0xFFFFFFFF & ~CASTS)
    stage.decorator.setEnableShadows(True)
    before = scene.picture()
    assert (scene.picture() == before).all()
    change(scene)
    after = scene.picture()
    assert changed(before, after).any()
    assert (after == scene.afresh()).all()
    stage.app.close()
