"""What stands behind the scene, and the texture of what has none."""

import math

import hyx
import hyxOSG

from gallery.stage import Decorator, checks
from gallery.textures import surroundings

RED, GREEN, BLUE, YELLOW = ((0.8, 0.3, 0.3), (0.3, 0.7, 0.4), (0.3, 0.4, 0.8), (0.9, 0.8, 0.3))


def background(kind, *colors):
    def make(stage):
        stage.ball()
        stage.decorator.setBackgroundColor(*(kind(*color) for color in colors))

    return make


def opaque(*color):
    return hyx.Vec4f(*color, 1)


def not_enabled(stage):
    stage.ball()
    stage.decorator.setText(0, "not seen")
    stage.decorator.setEnable(False)


def sky(*options):
    def make(stage):
        stage.ball()
        stage.decorator.addChild(hyxOSG.SkyBox("sky", surroundings(stage), ".png", *options))
        stage.look_from(hyx.Vec3(2.5, -2.5, -1))

    return make


def base_texture(stage):
    stage.furnished()
    stage.decorator.setBaseTexture(stage.image("base", checks))


def shader_state(per_pixel):
    def make(stage):
        ground = stage.furnished()
        hyxOSG.setSpecularColor(ground, hyx.Vec4f(1, 1, 1, 1))
        hyxOSG.setShininess(ground, 40.0)
        stage.light.setSpecular(hyx.Vec4f(1, 1, 1, 1))
        stage.light.setPosition(hyx.Vec4(-0.2, 3, 3, 1))
        stage.decorator.setEnableShaderState(True, per_pixel)

    return make


TILES = {
    "one colour": background(hyx.Vec3, GREEN),
    "two colours": background(hyx.Vec3, BLUE, YELLOW),
    "four colours": background(hyx.Vec3, RED, GREEN, BLUE, YELLOW),
    "four of Vec4f": background(opaque, YELLOW, BLUE, GREEN, RED),
    "decorator off": not_enabled,
    "sky box": sky(),
    "turned sky box": sky(math.pi / 2),
    "dim sky box": sky(0.0, 0.4),
    "base texture": base_texture,
    "light by vertex": shader_state(False),
    "light by pixel": shader_state(True),
    "default material": lambda stage: (
        stage.ball().getOrCreateStateSet().setAttributeAndModes(Decorator.getDefaultDecoratorMaterial())
    ),
}
