"""Lights, where they stand, and the shadows that they throw."""

import math

import hyx
import hyxOSG
import numpy
import osg
import pytest
from decorated_stage import CASTS, RECEIVES, changed, decorator, frame, stage
from hyxOSG import SceneDecorator

METHODS = [
    SceneDecorator.SOFT_SHADOWMAP,
    SceneDecorator.SHADOWMAP,
    SceneDecorator.SHADOWVOLUME,
    SceneDecorator.PARALLELLSPLIT_SHADOWMAP,
    SceneDecorator.LIGHTSPACEPERSPECTIVE_SHADOWMAP,
    SceneDecorator.SHADOWTEXTURE,
]
BESIDE_THE_BOX = numpy.s_[:, 181:]


@pytest.fixture
def shadowed(stage):
    """The stage with a ground that receives and does not cast, as grounds should be."""
    stage.visuals["ground"].setNodeMask(0xFFFFFFFF & ~CASTS)
    return stage


def darker(before, after):
    return (before - after).sum(axis=2) > 60


def middle_of(mask):
    rows, columns = numpy.nonzero(mask)
    return columns.mean(), rows.mean()


@pytest.mark.parametrize("method", METHODS)
def test_each_method_throws_a_shadow_away_from_the_light(shadowed, method):
    decorator = shadowed.decorator
    plain = shadowed.picture()
    decorator.setShadowMethod(method)
    assert decorator.getShadowMethod() == method
    assert not changed(shadowed.picture(), plain).any(), "chosen, but not enabled"
    decorator.setEnableShadows(True)
    assert decorator.getEnableShadows() is True
    shadow = darker(plain, shadowed.picture())
    assert 300 < shadow.sum() < 8000
    from_left = middle_of(shadow)[0]
    decorator.getLightSource(SceneDecorator.LIGHT0).setPosition(hyx.Vec4(3, -1, 6, 1))
    decorator.setEnableShadows(False)
    plain = shadowed.picture()
    decorator.setEnableShadows(True)
    assert middle_of(darker(plain, shadowed.picture()))[0] < from_left - 20


def test_no_shadows_draws_none(shadowed):
    plain = shadowed.picture()
    shadowed.decorator.setShadowMethod(SceneDecorator.NO_SHADOWS)
    shadowed.decorator.setEnableShadows(True)
    assert not changed(shadowed.picture(), plain).any()


def test_methods_agree_on_where_the_shadow_is(shadowed):
    plain = shadowed.picture()
    shadowed.decorator.setEnableShadows(True)
    frames = []
    for method in METHODS:
        shadowed.decorator.setShadowMethod(method)
        frames.append(frame(darker(plain, shadowed.picture())[BESIDE_THE_BOX]))
    assert numpy.ptp(numpy.array(frames), axis=0).max() <= 12, frames


def test_soft_edges_have_steps_between_light_and_shadow(shadowed):
    shadowed.decorator.setEnableShaderState(True)  # the same light without shadows
    plain = shadowed.picture()
    shadowed.decorator.setEnableShadows(True)

    def half_dark(method):
        shadowed.decorator.setShadowMethod(method)
        loss = (plain - shadowed.picture()).sum(axis=2)[BESIDE_THE_BOX]
        return ((loss > 0.15 * loss.max()) & (loss < 0.85 * loss.max())).sum()

    assert half_dark(SceneDecorator.SOFT_SHADOWMAP) > half_dark(SceneDecorator.SHADOWMAP) + 4


def test_a_light_from_far_away_throws_shadows(shadowed):
    shadowed.decorator.getLightSource(SceneDecorator.LIGHT0).setPosition(hyx.Vec4(-0.5, -0.2, 1, 0))
    plain = shadowed.picture()
    shadowed.decorator.setEnableShadows(True)
    for method in METHODS:
        shadowed.decorator.setShadowMethod(method)
        assert darker(plain, shadowed.picture()).sum() > 300, method


def test_masks_choose_who_casts_and_who_receives(shadowed):
    plain = shadowed.picture()
    shadowed.decorator.setEnableShadows(True)
    both = darker(plain, shadowed.picture()).sum()
    shadowed.visuals["ground"].setNodeMask(0xFFFFFFFF & ~CASTS & ~RECEIVES)
    assert darker(plain, shadowed.picture()).sum() < both / 5
    shadowed.visuals["ground"].setNodeMask(0xFFFFFFFF & ~CASTS)
    assert darker(plain, shadowed.picture()).sum() == both
    shadowed.visuals["box"].setNodeMask(0xFFFFFFFF & ~CASTS)
    assert not darker(plain, shadowed.picture()).any()


@pytest.mark.parametrize("method", [SceneDecorator.SOFT_SHADOWMAP, SceneDecorator.SHADOWVOLUME])
def test_the_other_scene_takes_no_part_in_shadows(shadowed, method):
    decorator = shadowed.decorator
    decorator.setShadowMethod(method)
    slab = hyxOSG.createSphere(hyx.Vec3(1.2, 0.4, 0.3), hyx.Vec4(0, 1, 0, 1), 0.3)
    assert decorator.getNonShadowedScene().addChild(slab)
    plain = shadowed.picture()
    decorator.setEnableShadows(True)
    green = plain[..., 1] > plain[..., 0] + 60
    assert green.sum() > 100
    assert not darker(plain, shadowed.picture())[green].any()
    decorator.getNonShadowedScene().removeChild(slab)


def test_unknown_methods_and_lights_are_refused(decorator):
    with pytest.raises(RuntimeError, match="no shadow method has the value 7"):
        decorator.setShadowMethod(7)
    with pytest.raises(OverflowError):
        decorator.setShadowMethod(2**31)
    assert decorator.setShadowLightSource(3) is False
    assert decorator.getOSGLight(0) is None
    for call in (decorator.getLightSource, decorator.getEnableCalculateLightPositions, SceneDecorator.lightToIndex):
        with pytest.raises(RuntimeError, match="no single light has the value 7"):
            call(7)


def test_lights_have_indices():
    lights = (SceneDecorator.LIGHT0, SceneDecorator.LIGHT1, SceneDecorator.LIGHT2)
    assert [SceneDecorator.lightToIndex(light) for light in lights] == [0, 1, 2]


def test_the_shadow_follows_its_light(shadowed):
    decorator = shadowed.decorator
    decorator.setEnableLights(SceneDecorator.LIGHT0 | SceneDecorator.LIGHT1)
    decorator.getLightSource(SceneDecorator.LIGHT1).setDiffuse(hyx.Vec4f(0.75, 0.75, 0.75, 1))
    decorator.getLightSource(SceneDecorator.LIGHT1).setPosition(hyx.Vec4(3, -1, 6, 1))
    plain = shadowed.picture()
    decorator.setEnableShadows(True)
    first = middle_of(darker(plain, shadowed.picture()))[0]
    assert decorator.getShadowLightSource() == decorator.getOSGLight(SceneDecorator.LIGHT0)
    assert decorator.setShadowLightSource(SceneDecorator.LIGHT1) is True
    assert decorator.getShadowLightSource() == decorator.getOSGLight(SceneDecorator.LIGHT1)
    assert middle_of(darker(plain, shadowed.picture()))[0] < first - 20


def test_the_mask_turns_lights_on_and_off(stage):
    def brightness(*mask):
        stage.decorator.setEnableLights(*mask)
        return stage.picture().mean()

    stage.decorator.calculateLightPositions()
    dark = brightness(0)
    values = [brightness(light) for light in (1, 2, 4)]
    assert min(values) > dark + 2
    assert brightness() > max(values) + 2, "without a mask all lights are on"


def place(decorator, light):
    position = decorator.getLightSource(light).getPosition()
    return numpy.array([position.x, position.y, position.z]), position.w


@pytest.mark.parametrize(
    "around, center, radius",
    [
        (lambda: osg.BoundingSphere(osg.Vec3(1, 2, 3), 2.0), (1, 2, 3), 2.0),
        (lambda: osg.BoundingBox(osg.Vec3(-1, -2, -2), osg.Vec3(1, 2, 2)), (0, 0, 0), 3.0),
    ],
)
def test_lights_are_placed_around_a_shape(decorator, around, center, radius):
    decorator.calculateLightPositions(around())
    for light in (1, 2, 4):
        position, w = place(decorator, light)
        assert w == 1
        assert math.isclose(numpy.linalg.norm(position - center), 3 * radius, rel_tol=1e-4)
        assert position[2] > center[2], "from above"


def test_lights_are_placed_around_nodes(stage):
    decorator = stage.decorator
    decorator.calculateLightPositions(hyxOSG.createSphere(hyx.Vec3(5, 0, 0), hyx.Vec4(1, 1, 1, 1), 1))
    near_sphere, _ = place(decorator, SceneDecorator.LIGHT0)
    assert numpy.linalg.norm(near_sphere - (5, 0, 0)) < 8
    decorator.calculateLightPositions()
    assert numpy.linalg.norm(place(decorator, SceneDecorator.LIGHT0)[0]) > 15, "around the whole scene"
    decorator.calculateLightPositions(None)
    assert numpy.linalg.norm(place(decorator, SceneDecorator.LIGHT0)[0]) > 15, "nothing to place lights around"


def test_a_light_placed_by_hand_stays(decorator):
    decorator.setEnableCalculateLightPositions(SceneDecorator.LIGHT0, False)
    assert decorator.getEnableCalculateLightPositions(SceneDecorator.LIGHT0) is False
    assert decorator.getEnableCalculateLightPositions(SceneDecorator.LIGHT1) is True
    decorator.calculateLightPositions(osg.BoundingSphere(osg.Vec3(0, 0, 0), 50.0))
    assert numpy.allclose(place(decorator, SceneDecorator.LIGHT0)[0], (-3, -1, 6))
    assert numpy.linalg.norm(place(decorator, SceneDecorator.LIGHT1)[0]) > 100


def test_the_program_draws_highlights_at_each_pixel(stage):
    hyxOSG.setSpecularColor(stage.visuals["ground"], hyx.Vec4f(1, 1, 1, 1))
    hyxOSG.setShininess(stage.visuals["ground"], 60)
    stage.decorator.getLightSource(SceneDecorator.LIGHT0).setPosition(hyx.Vec4(0, 3, 4, 1))
    by_vertex = stage.picture()
    stage.decorator.setEnableShaderState(True, False)
    assert stage.decorator.getEnableShaderState() is True
    matt = stage.picture()
    stage.decorator.setEnableShaderState(True)
    shiny = stage.picture()
    assert (shiny - matt).min() >= -1
    assert (shiny - matt).sum(axis=2).max() > 100, "a highlight between the ground's corners"
    stage.decorator.setEnableShaderState(False)
    assert stage.decorator.getEnableShaderState() is False
    assert not changed(stage.picture(), by_vertex).any()
    hyxOSG.setSpecularColor(stage.visuals["ground"], hyx.Vec4f(0, 0, 0, 1))
