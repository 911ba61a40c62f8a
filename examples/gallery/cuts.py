"""Clip planes, through meshes and through particles."""

import hyx
import hyxOSG

from gallery.particles import grains


def cut(*planes):
    """A ball under clip planes, one in the other."""

    def make(stage):
        above = stage.decorator
        for plane in planes:
            node = hyxOSG.ClipPlane(*plane)
            above.addChild(node)
            above = node
        ball = hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(0.85, 0.6, 0.35, 1), 0.75)
        above.addChild(ball)

    return make


def switched_off(stage):
    node = hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3(1, 0, 0))
    node.addChild(hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(0.85, 0.6, 0.35, 1), 0.75))
    node.setEnable(False)
    stage.decorator.addChild(node)


def particles(stage):
    system = grains(stage)
    hyxOSG.createVisual(system, stage.root)
    plane = hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3(1, 0, 0))
    plane.setParticleSystemToClip(system)
    plane.clipAgainstParticleSystem()
    stage.kept.append(plane)


def particles_below(stage):
    """The particles' visual stands under the plane, which cuts through them."""
    plane = hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3(1, 0, 0))
    hyxOSG.createVisual(grains(stage), plane)
    stage.decorator.addChild(plane)


RIGHT, UPPER = (hyx.Vec3(), hyx.Vec3(1, 0, 0)), (0.0, 0.0, 1.0, 0.0)

TILES = {
    "clip plane": cut(RIGHT),
    "two clip planes": cut(RIGHT, UPPER),
    "clip plane off": switched_off,
    "particles sorted": particles,
    "particles cut": particles_below,
}
