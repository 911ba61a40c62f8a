"""The fourth component of every colour that a renderer takes lets through what is behind."""

import hyx
import hyxOSG
import hyxRender
import hyxUtil
import pytest
from test_force_arrow_renderer import resting_box
from test_terrain_voxel_renderer import soil


def tube(kind):
    def show(stage):
        spline = hyxUtil.CubicSpline()
        for x in (-2, 0, 2):
            spline.add(hyx.Vec3(x, 0, 0))
        renderer = kind(spline, stage.root)
        renderer.setRadius(0.3)
        return renderer, lambda *color: renderer.setColor(hyx.Vec4f(*color))

    return show


def surface(stage):
    renderer = hyxOSG.TerrainVoxelRenderer(soil(), stage.root)
    renderer.setRenderSoilParticles(False)
    return renderer, lambda *color: renderer.setColor(hyx.Vec4f(*color))


def kinds_of_soil(stage):
    renderer, _ = surface(stage)
    renderer.setRenderTerrainMaterials(True)
    return renderer, lambda *color: renderer.setTerrainMaterialsColors([hyxRender.Color(*color)])


def fullest_voxels(stage):
    renderer, _ = surface(stage)
    renderer.setRenderHeightField(False)
    renderer.setRenderVoxelSolidMass(True)
    return renderer, lambda *color: renderer.setMaxVoxelValueColor(hyx.Vec4f(*color))


def velocities(stage):
    renderer, _ = surface(stage)
    renderer.setRenderHeightField(False)
    renderer.setRenderVelocityField(True)
    return renderer, lambda *color: renderer.setVelocityFieldLineColor(hyx.Vec4(*color))


def arrow(stage):
    renderer = hyxOSG.ForceArrowRenderer()
    renderer.setScale(0.02)
    stage.simulation.add(renderer)
    box = resting_box(stage)
    renderer.add(box, hyx.Vec3(), hyxRender.Color(1, 1, 0, 1))
    stage.step(30)
    return renderer, lambda *color: renderer.setColor(box, hyxRender.Color(*color))


WAYS = {
    "tube": tube(hyxOSG.SplineRenderer),
    "tube of triangles": tube(hyxOSG.SplineRendererOld),
    "surface": surface,
    "kinds of soil": kinds_of_soil,
    "fullest voxels": fullest_voxels,
    "velocities": velocities,
    "arrow": arrow,
}


@pytest.mark.parametrize("program", [False, True])
@pytest.mark.parametrize("way", WAYS)
def test_a_quarter_of_opacity_dims_it_before_black(stage, way, program):
    stage.decorator.setEnableShaderState(program)
    stage.renderer, paint = WAYS[way](stage)
    paint(1, 1, 0, 1)
    stage.shoot()
    full = stage.shoot()
    paint(1, 1, 0, 0.25)
    stage.shoot()
    thin = stage.shoot()
    # Red tells: voxels with small values stay blue.
    bright = [i for i, (r, g, b) in enumerate(full.pixels) if r > 120 and b < 100]
    assert len(bright) > 20
    share = sum(thin.pixels[i][0] for i in bright) / sum(full.pixels[i][0] for i in bright)
    assert share < 0.7
