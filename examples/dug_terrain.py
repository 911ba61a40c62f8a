"""A blade digs a trench through a hill of two soils; one picture for each way to look at the soil.

dug_terrain.py [--output FOLDER]
"""

import argparse
import math
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import hyxSDK
import hyxTerrain

COLUMNS, SIZE = 96, 0.08


def make_soil():
    soil = hyxTerrain.Terrain(COLUMNS, COLUMNS, SIZE, 0.6)
    clay = hyxTerrain.SoilMaterial()
    clay.density, clay.reposeAngle = 1900.0, 0.9
    kind = soil.addMaterial(clay)
    for y in range(COLUMNS):
        for x in range(COLUMNS):
            away = math.hypot(x - 60, y - 40) / 30
            soil.setHeight(x, y, 0.5 * math.exp(-away * away))
            if y > 45:
                soil.setColumnMaterial(x, y, kind, 0.4)
    return soil


def make_blade(sim, soil):
    """A plate, two metres wide, that is driven through the hill."""
    plate = hyxCollide.Geometry(hyxCollide.Box(0.03, 0.8, 0.3))
    body = hyx.RigidBody(plate)
    body.setMotionControl(hyx.RigidBody.KINEMATICS)
    body.setPosition(hyx.Vec3(1.2, 3.3, 0.18))
    body.setVelocity(hyx.Vec3(1.0, 0, 0))
    sim.add(body)
    soil.addTool(hyxTerrain.DigTool(body, hyx.Vec3(0, -0.8, -0.3), hyx.Vec3(0, 0.8, -0.3), hyx.Vec3(-0.1, 0, 0.3)))
    soil.getSoilParticles().addObstacle(body)
    return body


def drive_over(sim):
    """A heavy ball rolls along the edge and leaves a track."""
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.35)))
    ball.setMass(900)
    ball.setPosition(hyx.Vec3(0.6, 1.0, 0.4))
    ball.setVelocity(hyx.Vec3(1.6, 0, 0))
    ball.setAngularVelocity(hyx.Vec3(0, 1.6 / 0.35, 0))
    sim.add(ball)
    return ball


def overlays(renderer):
    """Name and switches of each picture."""
    colors = hyxRender.ColorVector([hyxRender.Color(0.72, 0.6, 0.4), hyxRender.Color(0.5, 0.3, 0.22)])
    renderer.setTerrainMaterialsColors(colors)
    yield "surface", []
    yield "heights", ["RenderHeights"]
    yield "compaction", ["RenderCompaction"]
    yield "materials", ["RenderTerrainMaterials"]
    yield "velocities", ["RenderVelocityField"]
    yield "stones", ["RenderSoilParticlesMesh"]
    renderer.setRenderHeightField(False)
    yield "solid_mass", ["RenderVoxelSolidMass"]
    yield "voxel_compaction", ["RenderVoxelCompaction", "RenderVoxelBoundingBox"]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the pictures")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(960, 540)
    app.setCameraHome(hyx.Vec3(3.2, -3.6, 4.2), hyx.Vec3(4.0, 3.2, 0))

    soil = make_soil()
    terrain = hyxSDK.TerrainInstance(soil)
    sim.add(terrain)
    blade, ball = make_blade(sim, soil), drive_over(sim)
    root = app.getSceneRoot()
    renderer = hyxOSG.TerrainVoxelRenderer(terrain, root)
    for body, color in ((blade, (0.9, 0.65, 0.1, 1)), (ball, (0.3, 0.35, 0.4, 1))):
        hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, root), hyx.Vec4f(*color))

    before = soil.getMass()
    app.stopAfter(2.5)
    app.run()
    soil.addMass(72, 18, 500.0)  # a load is tipped, and is still sliding in the pictures
    for _ in range(10):
        sim.step()
    for name, switches in overlays(renderer):
        for switch in switches:
            getattr(renderer, "set" + switch)(True)
        picture = options.output / f"dug_terrain_{name}.png"
        app.takeScreenShot(str(picture))
        print(picture)
        for switch in switches:
            getattr(renderer, "set" + switch)(False)
    print(
        f"mass kept to {abs(soil.getMass() / (before + 500) - 1):.1e}, "
        f"{soil.getSoilParticles().getNumParticles()} grains"
    )


if __name__ == "__main__":
    main()
