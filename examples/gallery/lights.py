"""The three lights, computed and placed, and the properties of a light."""

import hyx
import hyxOSG

from gallery.stage import Decorator

WARM, COLD = hyx.Vec4f(1, 0.5, 0.2, 1), hyx.Vec4f(0.2, 0.4, 1, 1)


def computed(mask):
    """Lights around the scene, where the decorator puts them."""

    def make(stage):
        stage.furnished()
        stage.decorator.setEnableCalculateLightPositions(Decorator.ALL, True)
        stage.decorator.setEnableLights(mask)
        stage.decorator.calculateLightPositions()

    return make


def placed(stage):
    """A warm light on the left and a cold one on the right."""
    stage.furnished()
    stage.decorator.setEnableLights(Decorator.LIGHT0 | Decorator.LIGHT1)
    stage.decorator.setEnableCalculateLightPositions(Decorator.ALL, False)
    for light, color, x in ((Decorator.LIGHT0, WARM, -4), (Decorator.LIGHT1, COLD, 4)):
        handle = stage.decorator.getLightSource(light)
        handle.setDiffuse(color)
        handle.setPosition(hyx.Vec4(x, -2, 2, 1))


def one_light(change):
    """Light 0 close over the ground, changed."""

    def make(stage):
        hyxOSG.setShininess(stage.furnished(), 20.0)
        stage.decorator.setEnableShaderState(True)
        stage.light.setPosition(hyx.Vec4(0, -0.5, 2.5, 1))
        change(stage.light)

    return make


def narrow(light):
    light.setDirection(hyx.Vec3(0, 0.2, -1))
    light.setSpotCutoff(25.0)


def soft_edged(light):
    narrow(light)
    light.setSpotExponent(60.0)


TILES = {
    "light 0": computed(Decorator.LIGHT0),
    "light 1": computed(Decorator.LIGHT1),
    "light 2": computed(Decorator.LIGHT2),
    "all lights": computed(Decorator.ALL),
    "no lights": computed(0),
    "placed lights": placed,
    "near light": one_light(lambda light: None),
    "diffuse light": one_light(lambda light: light.setDiffuse(WARM)),
    "ambient light": one_light(lambda light: light.setAmbient(hyx.Vec4f(0.1, 0.4, 0.1, 1))),
    "light from far away": one_light(lambda light: light.setPosition(hyx.Vec4(-1, 0, 0.4, 0))),
    "attenuation, constant": one_light(lambda light: light.setConstantAttenuation(1.5)),
    "attenuation, linear": one_light(lambda light: light.setLinearAttenuation(0.2)),
    "attenuation, quadratic": one_light(lambda light: light.setQuadraticAttenuation(0.15)),
    "spot": one_light(narrow),
    "spot exponent": one_light(soft_edged),
}
