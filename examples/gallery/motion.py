"""What shows how bodies move, what they were cut from, and the ground that they dig."""

import hyx
import hyxCollide
import hyxModel
import hyxOSG
import hyxRender
import hyxSDK
import hyxTerrain

from gallery.stage import SAND

COLORS = (hyxRender.Color(0, 0, 1, 1), hyxRender.Color(1, 0, 0, 1))


def thrown_balls(stage):
    bodies = []
    for speed in (0.5, 1.2, 2.0):
        body, _ = stage.body(hyxCollide.Sphere(0.1), (-0.9, 0.3 * speed, -0.6), SAND, moves=True)
        body.setVelocity(hyx.Vec3(speed, 0, 4))
        bodies.append(body)
    return bodies


def body_trajectories(stage):
    thrown_balls(stage)
    hyxOSG.createRigidBodyTrajectoriesVisual(stage.simulation, stage.root, 0.0, 100)
    stage.step(40)


def coloured_trajectories(stage):
    thrown_balls(stage)
    colors = hyxOSG.ScalarColorMap(hyxRender.ColorVector(COLORS), 0.0, 4.0)
    hyxOSG.createRigidBodyTrajectoriesVisual(stage.simulation, stage.root, 0.0, 100, colors)
    stage.step(40)


def frame_trajectories(stage):
    for body in thrown_balls(stage):
        stage.simulation.add(hyx.ObserverFrame(body))
    hyxOSG.createFrameTrajectoryDrawable(stage.simulation, stage.root, 25, hyx.Vec4f(0, 0.5, 0, 1))
    stage.step(40)


def fracture(stage, watch):
    generator = hyxModel.FractureGenerator()
    generator.setNumFragments(7)
    stage.simulation.add(generator)
    body, _ = stage.body(hyxCollide.Box(0.5, 0.5, 0.5), (0, 0, 0), SAND, moves=True)
    watch(generator, stage.root)
    for piece in generator.fracture(body, hyx.Vec3()):
        piece.setPosition(piece.getPosition() * 1.5)
    stage.look_from(hyx.Vec3(2, -3, 1.5))


def emitted_bodies(stage):
    made = hyx.RigidBodyEmitter()
    made.setRate(60.0)
    stage.simulation.add(made)
    hyxOSG.createVisual(made, stage.root)
    stage.step(20)
    stage.look_from(hyx.Vec3(2, -4, 1))


def terrain(stage):
    ground = hyxTerrain.Terrain(24, 24, 0.1, 1.0)
    for i in range(24):
        for j in range(24):
            ground.setHeight(i, j, 0.5 if 8 < i < 16 and 8 < j < 16 else 0.0)
    instance = hyxSDK.TerrainInstance(ground)
    stage.simulation.add(instance)
    hyxOSG.createVisual(instance, stage.root)
    stage.look_from(hyx.Vec3(1.15, -1.6, 2.2), hyx.Vec3(1.15, 1.1, 0))


def colour_pieces(generator, root):
    hyxOSG.addRenderColorCallbackToFracture(generator, root, hyx.Vec4f(0.3, 0.5, 0.9, 1))


TILES = {
    "body trajectories": body_trajectories,
    "coloured by speed": coloured_trajectories,
    "frame trajectories": frame_trajectories,
    "fracture": lambda stage: fracture(stage, hyxOSG.addRenderCallbackToFracture),
    "coloured fracture": lambda stage: fracture(stage, colour_pieces),
    "emitted bodies": emitted_bodies,
    "terrain": terrain,
}
