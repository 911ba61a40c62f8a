"""The handle to a light."""

import gc
import math

import _hyxOSG
import hyx
import hyxOSG
import pytest
from decorated_stage import changed, decorator, stage
from hyxOSG import LightSource, SceneDecorator


@pytest.fixture
def light(decorator):
    return decorator.getLightSource(SceneDecorator.LIGHT0)


@pytest.mark.parametrize("name", ["Ambient", "Diffuse", "Specular"])
def test_colors_are_kept_and_seen(stage, light, name):
    before = getattr(light, "get" + name)()
    plain = stage.picture()
    getattr(light, "set" + name)(hyx.Vec4f(1, 0.5, 0.25, 1))
    assert tuple(getattr(light, "get" + name)()) == (1, 0.5, 0.25, 1)
    if name != "Specular":
        assert changed(stage.picture(), plain).any()
    getattr(light, "set" + name)(before)
    assert not changed(stage.picture(), plain).any()


def test_position_and_direction_are_doubles_in_doubles_out(light):
    light.setPosition(hyx.Vec4(1, 2, 3, 0))
    assert tuple(light.getPosition()) == (1, 2, 3, 0)
    light.setDirection(hyx.Vec3(0, 0, -2))
    assert tuple(light.getDirection()) == (0, 0, -2)


def test_number_is_that_of_the_graphics_library(decorator):
    numbers = [decorator.getLightSource(light).getLightNum() for light in (1, 2, 4)]
    assert numbers == [0, 1, 2]


@pytest.mark.parametrize(
    "name, value", [("ConstantAttenuation", 4), ("LinearAttenuation", 2), ("QuadraticAttenuation", 1)]
)
def test_attenuation_dims_the_light(stage, light, name, value):
    plain = stage.picture().mean()
    before = getattr(light, "get" + name)()
    getattr(light, "set" + name)(value)
    assert getattr(light, "get" + name)() == value
    assert stage.picture().mean() < plain - 2
    getattr(light, "set" + name)(before)


def box_alone(stage):
    return stage.visuals["box"]


def grain_alone(stage):
    system = hyx.ParticleSystem()
    system.setParticleRadius(0.7)
    system.createParticle(hyx.Vec3(0, 0, 1))
    return hyxOSG.createVisual(system, stage.app.getSceneRoot())


def tube_alone(stage):
    tube = hyxOSG.SplineShader(1)
    tube.add(hyx.Vec3(-2, 0, 1), hyx.Vec3(2, 0, 1), 0.5, hyx.Vec2())
    tube.update()
    stage.app.getSceneRoot().addChild(tube)
    return tube


@pytest.fixture
def own_light(light):
    """The light, which is afterwards what it was before."""
    before = light.getDiffuse(), light.getConstantAttenuation()
    yield light
    light.setDiffuse(before[0])
    light.setConstantAttenuation(before[1])


@pytest.mark.parametrize("shader", [False, True])
@pytest.mark.parametrize("alone", [box_alone, grain_alone, tube_alone])
def test_every_program_dims_the_light_alike(stage, own_light, alone, shader):
    stage.decorator.setEnableShaderState(shader)
    seen = alone(stage)
    for other in set(stage.visuals.values()) - {seen}:
        other.setNodeMask(0)

    def brightness():
        return stage.picture().sum()

    own_light.setDiffuse(hyx.Vec4f(0, 0, 0, 1))
    dark = brightness()  # what does not come from the light
    own_light.setDiffuse(hyx.Vec4f(0.5, 0.5, 0.5, 1))
    plain = brightness() - dark
    own_light.setConstantAttenuation(2)
    dimmed = brightness() - dark
    if alone is not box_alone:
        stage.app.getSceneRoot().removeChild(seen)
    assert plain > 10000 and dimmed == pytest.approx(plain / 2, rel=0.1)


def test_a_spot_lights_only_where_it_points(stage, light):
    light.setPosition(hyx.Vec4(0, 0, 6, 1))
    light.setDirection(hyx.Vec3(0, 0, -1))
    everywhere = stage.picture().mean()
    light.setSpotCutoff(10)
    assert light.getSpotCutoff() == 10
    narrow = stage.picture().mean()
    assert narrow < everywhere - 5
    light.setSpotCutoff(60)
    wide = stage.picture().mean()
    light.setSpotExponent(100)
    assert light.getSpotExponent() == 100
    assert stage.picture().mean() < wide - 1
    light.setSpotExponent(0)
    light.setSpotCutoff(180)
    assert abs(stage.picture().mean() - everywhere) < 0.5


@pytest.mark.parametrize(
    "call, value",
    [
        ("setSpotCutoff", 91),
        ("setSpotCutoff", -1),
        ("setSpotExponent", 129),
        ("setConstantAttenuation", -1),
        ("setLinearAttenuation", math.nan),
        ("setQuadraticAttenuation", math.inf),
    ],
)
def test_values_out_of_range_are_refused(light, call, value):
    with pytest.raises(RuntimeError, match="must be"):
        getattr(light, call)(value)


def test_places_that_are_none_are_refused(light):
    with pytest.raises(RuntimeError, match="the light's position must be finite"):
        light.setPosition(hyx.Vec4(0, 0, 0, 0))
    with pytest.raises(RuntimeError, match="the light's direction must be finite"):
        light.setDirection(hyx.Vec3(math.nan, 0, 1))


def test_each_handle_is_new_and_means_the_same_light(decorator):
    first = decorator.getLightSource(SceneDecorator.LIGHT0)
    second = decorator.getLightSource(SceneDecorator.LIGHT0)
    assert first.this != second.this
    first.setDiffuse(hyx.Vec4f(0.25, 0.25, 0.25, 1))
    assert tuple(second.getDiffuse()) == (0.25, 0.25, 0.25, 1)
    second.setDiffuse(hyx.Vec4f(0.75, 0.75, 0.75, 1))


def test_deleting_a_handle_leaves_the_light(stage, decorator):
    plain = stage.picture()
    handle = LightSource(decorator.getOSGLight(SceneDecorator.LIGHT0))
    _hyxOSG.delete_LightSource(handle)
    del handle
    gc.collect()
    assert decorator.getOSGLight(SceneDecorator.LIGHT0) is not None
    assert not changed(stage.picture(), plain).any()


def test_a_handle_without_a_light_is_harmless():
    handle = LightSource(None)
    assert handle.getLightNum() == -1
    handle.setDiffuse(hyx.Vec4f(1, 0, 0, 1))
    handle.setSpotCutoff(20)
    assert handle.getSpotCutoff() == 180
    assert tuple(handle.getPosition()) == (0, 0, 1, 0)
