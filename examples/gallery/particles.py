"""Particle systems in every rendering and shader mode, and what else belongs to them."""

import hyx
import hyxCollide
import hyxOSG

from gallery.stage import SAND

Drawable = hyxOSG.ParticleSystemDrawable


def grains(stage, height=0.0):
    system = hyx.ParticleSystem()
    system.setParticleRadius(0.45)
    for place in ((-0.1, 0, -0.3), (0.5, -0.2, 0), (-0.4, 0.1, 0.3)):
        system.createParticle(hyx.Vec3(*place) + hyx.Vec3(0, 0, height), hyx.Vec3())
    stage.simulation.add(system)
    return system


def drawn(rendering, shading):
    return lambda stage: hyxOSG.createVisual(grains(stage), stage.root, rendering, shading)


def among_bodies(stage):
    """Grains and bodies hide each other at their surfaces."""
    hyxOSG.createVisual(grains(stage), stage.root)
    stage.body(hyxCollide.Box(0.9, 0.02, 0.9), (0, -0.2, 0), SAND)


def emitter(stage):
    made = hyx.Emitter()
    made.setHalfExtents(hyx.Vec3(0.5, 0.5, 0.5))
    hyxOSG.createVisual(made, stage.root)
    stage.kept.append(made)
    stage.look_from(hyx.Vec3(1, -3, 1.2))


def contact_graph(stage):
    """Grains that fly into each other, the faster the farther out; drawn small, so that the graph is seen."""
    system = hyx.ParticleSystem()
    system.setParticleRadius(0.2)
    for x in range(-3, 4):
        for z in range(-2, 3):
            system.createParticle(hyx.Vec3(0.39 * x, 0, 0.39 * z), hyx.Vec3(-x, 0, -z))
    stage.simulation.add(system)
    hyxOSG.createParticleContactGraph(system, stage.root, 0.0, 500.0)
    stage.step(1)


def trajectories(stage):
    system = hyx.ParticleSystem()
    system.setParticleRadius(0.1)
    for speed in (0.5, 1.2, 2.0):
        system.createParticle(hyx.Vec3(-0.9, 0, -0.6), hyx.Vec3(speed, 0, 4))
    stage.simulation.add(system)
    hyxOSG.createVisual(system, stage.root)
    hyxOSG.createParticleTrajectoriesVisual(system, stage.root, 0.0, 100)
    stage.step(40)


TILES = {
    "points": drawn(Drawable.SPRITES, Drawable.SIMPLE_SPRITES),
    "points turning": drawn(Drawable.SPRITES, Drawable.ROTATION_SPRITES),
    "points soft": drawn(Drawable.SPRITES, Drawable.ALPHA_SPRITES),
    "quads": drawn(Drawable.QUAD_SPRITES, Drawable.SIMPLE_SPRITES),
    "quads turning": drawn(Drawable.QUAD_SPRITES, Drawable.ROTATION_SPRITES),
    "quads soft": drawn(Drawable.QUAD_SPRITES, Drawable.ALPHA_SPRITES),
    "meshes": drawn(Drawable.TRIANGLES, Drawable.SIMPLE_SPRITES),
    "meshes turning": drawn(Drawable.TRIANGLES, Drawable.ROTATION_SPRITES),
    "meshes soft": drawn(Drawable.TRIANGLES, Drawable.ALPHA_SPRITES),
    "among bodies": among_bodies,
    "emitter": emitter,
    "contact graph": contact_graph,
    "particle trajectories": trajectories,
}
