"""The shadow methods, and what takes part in shadows."""

import hyx
import hyxCollide
import hyxOSG

from gallery.particles import Drawable, grains
from gallery.stage import CASTS_SHADOWS, GREY, SAND, Decorator
from gallery.textures import textured

RECEIVES_SHADOWS = hyxOSG.ExampleApplication.RECIEVES_SHADOWS_MASK


def method(chosen):
    """A long row of posts, over which the maps are spread in different ways."""

    def make(stage):
        _, ground = stage.body(hyxCollide.HeightField(3, 41, 20.0, 300.0), (0, 140, 0), GREY)
        ground.setNodeMask(0xFFFFFFFF & ~CASTS_SHADOWS)
        for i in range(13):
            stage.body(hyxCollide.Box(0.15, 0.15, 0.5), (-1.4, 20 * i, 0.5), SAND)
        stage.body(hyxCollide.Sphere(0.5), (0.2, 1.2, 0.8), hyx.Vec4f(0.4, 0.5, 0.85, 1))
        stage.light.setPosition(hyx.Vec4(-1, 0.2, 1, 0))
        stage.look_from(hyx.Vec3(0, -2.6, 2.2), hyx.Vec3(-0.1, 0.9, 0.4))
        stage.decorator.setShadowMethod(chosen)
        stage.decorator.setEnableShadows(True)

    return make


def soft(stage):
    ground = stage.furnished()
    stage.light.setPosition(hyx.Vec4(-2, -2, 5, 1))
    stage.decorator.setEnableShadows(True)
    return ground


def other_light(stage):
    soft(stage)
    stage.decorator.setEnableLights(Decorator.LIGHT0 | Decorator.LIGHT1)
    stage.decorator.setEnableCalculateLightPositions(Decorator.ALL, False)
    right = stage.decorator.getLightSource(Decorator.LIGHT1)
    right.setDiffuse(hyx.Vec4f(0.6, 0.6, 0.6, 1))
    right.setPosition(hyx.Vec4(3, -2, 5, 1))
    stage.decorator.setShadowLightSource(Decorator.LIGHT1)


def casts_only(stage):
    soft(stage).setNodeMask(0xFFFFFFFF & ~CASTS_SHADOWS & ~RECEIVES_SHADOWS)


def on_a_texture_map(stage):
    textured(stage, soft(stage), lambda x, y: (0.5, 0.5, 1), hyxOSG.NORMALMAP_TEXTURE)


def on_particles(stage):
    system = hyx.ParticleSystem()
    system.setParticleRadius(0.3)
    for x in range(-6, 7):
        for y in range(-6, 7):
            system.createParticle(hyx.Vec3(0.4 * x, 0.4 * y, 0.1), hyx.Vec3())
    stage.simulation.add(system)
    visual = hyxOSG.createVisual(system, stage.root, Drawable.QUAD_SPRITES, Drawable.SIMPLE_SPRITES)
    visual.setNodeMask(0xFFFFFFFF & ~CASTS_SHADOWS)
    soft(stage)


def of_particles(stage):
    soft(stage)
    hyxOSG.createVisual(grains(stage, 1.0), stage.root, Drawable.QUAD_SPRITES, Drawable.SIMPLE_SPRITES)


def beside_the_shadows(stage):
    """What stands in the other scene is neither shadowed nor casts."""
    soft(stage)
    ball = hyxOSG.createSphere(hyx.Vec3(0.1, -0.6, 1.2), hyx.Vec4(0.3, 0.7, 0.3, 1), 0.4)
    stage.decorator.getNonShadowedScene().addChild(ball)


TILES = {
    "soft shadow map": method(Decorator.SOFT_SHADOWMAP),
    "shadow map": method(Decorator.SHADOWMAP),
    "shadow volume": method(Decorator.SHADOWVOLUME),
    "parallel split map": method(Decorator.PARALLELLSPLIT_SHADOWMAP),
    "light space map": method(Decorator.LIGHTSPACEPERSPECTIVE_SHADOWMAP),
    "shadow texture": method(Decorator.SHADOWTEXTURE),
    "no shadows": method(Decorator.NO_SHADOWS),
    "shadows of light 1": other_light,
    "ground receives none": casts_only,
    "on a normal map": on_a_texture_map,
    "on particles": on_particles,
    "of particles": of_particles,
    "not shadowed": beside_the_shadows,
}
