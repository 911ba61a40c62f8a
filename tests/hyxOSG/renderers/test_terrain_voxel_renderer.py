"""The terrain renderer: surface, colours, voxels, velocities and grains are seen, and follow the soil."""

import hyx
import hyxOSG
import hyxRender
import hyxSDK
import hyxTerrain
import pytest
from hyxOSG import TerrainVoxelRenderer
from stage import Stage

SWITCHES = {
    "RenderVoxelSolidMass": False,
    "RenderVoxelFluidMass": False,
    "RenderVoxelBoundingBox": False,
    "RenderHeightField": True,
    "RenderVoxelCompaction": False,
    "RenderTerrainMaterials": False,
    "RenderVelocityField": False,
    "RenderSoilParticles": True,
    "RenderSoilParticlesMesh": False,
}


@pytest.fixture
def stage(tmp_path):
    return Stage(tmp_path, eye=(1.5, -2.5, 2.5), center=(1.5, 1.5, 0))


def soil():
    """Sand beside earth, a sliding heap, a pressed track and a hole with its grains."""
    terrain = hyxTerrain.Terrain(32, 32, 0.1, 0.5)
    kind = terrain.addMaterial(hyxTerrain.SoilMaterial())
    for y in range(32):
        for x in range(16):
            terrain.setColumnMaterial(x, y, kind, 0.2)
        terrain.compact(2, y, 2e5)
    for x in range(20, 26):
        for y in range(6, 10):
            terrain.dig(x, y, -0.2)
    terrain.addMass(12, 18, 250.0)
    for _ in range(4):
        terrain.step(1 / 60)
    return terrain


def covered(picture):
    return len(picture.pixels) - picture.count((0, 0, 0), 0)


def yellow(picture):
    return sum(r > 180 and g > 180 and b < 60 for r, g, b in picture.pixels)


def test_the_surface_is_drawn_in_its_color(stage):
    terrain = hyxTerrain.Terrain(32, 32, 0.1, 0.5)
    renderer = TerrainVoxelRenderer(terrain, stage.root)
    brown = stage.shoot()
    assert covered(brown) > 3000
    renderer.setColor(hyx.Vec4f(0, 1, 0, 1))
    green = stage.shoot()
    assert sum(g > 60 and r < 20 and b < 20 for r, g, b in green.pixels) > 0.9 * covered(brown)
    assert renderer.getColor() == hyx.Vec4f(0, 1, 0, 1)
    assert renderer.getTerrain().getElementSize() == terrain.getElementSize()
    assert renderer.getNode().className() == "GeometryNode"


def test_a_change_of_the_soil_shows_in_the_next_frame(stage):
    terrain = hyxTerrain.Terrain(32, 32, 0.1, 0.5)
    stage.renderer = TerrainVoxelRenderer(terrain, stage.root)
    before = stage.shoot()
    for x in range(10, 20):
        for y in range(10, 20):
            terrain.setHeight(x, y, 0.6)
    after = stage.shoot()
    assert before.differs(after) > 500
    assert min(after.rows_of(lambda *c: c != (0, 0, 0))) < min(before.rows_of(lambda *c: c != (0, 0, 0)))


def test_the_surface_lies_where_the_terrain_is(stage):
    terrain = hyxTerrain.Terrain(8, 8, 0.1, 0.5)
    stage.renderer = TerrainVoxelRenderer(terrain, stage.root)
    lit = lambda *color: color != (0, 0, 0)
    left = stage.shoot().columns_of(lit)
    terrain.setPosition(hyx.Vec3(2.4, 0, 0))
    right = stage.shoot().columns_of(lit)
    assert max(left) < 100 < min(right)


@pytest.mark.parametrize("switch", SWITCHES)
def test_a_switch_keeps_its_value_and_changes_the_picture(stage, switch):
    renderer = TerrainVoxelRenderer(soil(), stage.root)
    set_, get = (getattr(renderer, prefix + switch) for prefix in ("set", "get"))
    assert get() is SWITCHES[switch]
    before = stage.shoot()
    set_(not SWITCHES[switch])
    assert get() is not SWITCHES[switch]
    assert before.differs(stage.shoot()) > 30
    set_(SWITCHES[switch])
    assert before.differs(stage.shoot()) == 0


def test_heights_are_colored_over_their_range(stage):
    terrain = hyxTerrain.Terrain(32, 32, 0.1, 0.5)
    for y in range(32):
        for x in range(32):
            terrain.setHeight(x, y, 0.01 * x)
    renderer = TerrainVoxelRenderer(terrain, stage.root)
    renderer.setRenderHeights(True)
    assert renderer.getRenderHeights() is True
    own = stage.shoot()
    violet = [c for c in own.columns_of(lambda r, g, b: b > 1.5 * g and r > g)]
    bright = [c for c in own.columns_of(lambda r, g, b: r > 100 and g > 100 and b < 0.5 * g)]
    assert violet and bright and max(violet) < min(bright)
    renderer.setRenderHeights(True, hyx.RangeReal(10, 20))  # all is below: one colour
    assert not any(r > 100 and g > 100 for r, g, b in stage.shoot().pixels)


def test_compaction_is_colored(stage):
    terrain = hyxTerrain.Terrain(32, 32, 0.1, 0.5)
    for y in range(32):
        for x in range(8):
            terrain.compact(x, y, 1e6)
    renderer = TerrainVoxelRenderer(terrain, stage.root)
    renderer.setRenderCompaction(True, hyx.RangeReal(0.9, 1.2))
    assert renderer.getRenderCompaction() is True
    picture = stage.shoot()
    red = picture.columns_of(lambda r, g, b: r > 60 and g < r / 2 and b < r / 2)
    assert len(red) > 300 and max(red) < 100


def test_materials_take_the_given_colors(stage):
    renderer = TerrainVoxelRenderer(soil(), stage.root)
    colors = hyxRender.ColorVector([hyxRender.Color(1, 0, 0), hyxRender.Color(0, 0, 1)])
    renderer.setTerrainMaterialsColors(colors)
    renderer.setRenderTerrainMaterials(True)
    picture = stage.shoot()
    blue = picture.columns_of(lambda r, g, b: b > 40 and r < 20 and g < 20)
    assert picture.reddish() > 300 and len(blue) > 300 and max(blue) < 120
    assert len(renderer.getTerrainMaterialColors()) == 2
    assert renderer.getRenderDefaultTerrainMaterial() is True
    renderer.setRenderDefaultTerrainMaterial(False)
    assert stage.shoot().reddish() < 100


def test_voxel_values_run_to_the_color_of_the_largest(stage):
    renderer = TerrainVoxelRenderer(soil(), stage.root)
    renderer.setRenderHeightField(False)
    renderer.setRenderVoxelSolidMass(True)
    renderer.setMaxVoxelValueColor(hyx.Vec4f(0, 1, 0, 1))
    green = lambda picture: sum(g > 60 and r < g / 2 and b < g / 2 for r, g, b in picture.pixels)
    assert green(stage.shoot()) > 500
    renderer.setMaxVoxelValueColor(hyx.Vec4f(1, 0, 0, 1))
    picture = stage.shoot()
    assert green(picture) == 0 and picture.reddish() > 500


def test_only_moving_soil_has_velocities(stage):
    terrain = soil()
    renderer = TerrainVoxelRenderer(terrain, stage.root)
    renderer.setRenderVelocityField(True)
    moving = yellow(stage.shoot())
    assert moving > 50
    renderer.setVelocityFieldLineColor(hyx.Vec4(0, 1, 1, 1))
    assert yellow(stage.shoot()) == 0
    renderer.setVelocityFieldLineColor(hyx.Vec4(1, 1, 0, 1))
    for _ in range(400):
        terrain.step(1 / 60)
    assert yellow(stage.shoot()) < moving / 5


def test_a_mesh_for_the_grains_must_be_readable(stage, tmp_path):
    renderer = TerrainVoxelRenderer(soil(), stage.root)
    renderer.setRenderSoilParticlesMesh(True)
    stones = stage.shoot()
    with pytest.raises(RuntimeError, match="cannot be read"):
        renderer.setSoilParticleMeshData(str(tmp_path / "none.obj"))
    assert renderer.getSoilParticleMeshModelFilename() == renderer.getSoilParticleMeshTextureFilename() == ""
    model = tmp_path / "flake.obj"
    model.write_text("v -1 -1 0\nv 1 -1 0\nv 0 1 0\nf 1 2 3\nf 3 2 1\n")
    renderer.setSoilParticleMeshData(str(model))
    assert renderer.getSoilParticleMeshModelFilename() == str(model)
    assert stones.differs(stage.shoot()) > 20
    with pytest.raises(RuntimeError, match="texture"):
        renderer.setSoilParticleMeshData(str(model), str(tmp_path / "none.png"))
    renderer.setSoilParticleMeshData("")
    assert stones.differs(stage.shoot()) == 0


def test_a_renderer_is_found_by_its_terrain_and_simulation(stage):
    terrain = hyxTerrain.Terrain(8, 8, 0.1, 0.5)
    instance = hyxSDK.TerrainInstance(terrain)
    assert TerrainVoxelRenderer.find(terrain, stage.simulation) is None
    renderer = TerrainVoxelRenderer(instance, stage.root)
    assert TerrainVoxelRenderer.find(terrain, stage.simulation) is None  # not in this simulation yet
    stage.simulation.add(instance)
    found = TerrainVoxelRenderer.find(terrain, stage.simulation)
    found.setColor(hyx.Vec4f(0.25, 0.5, 0.75, 1))
    assert renderer.getColor() == hyx.Vec4f(0.25, 0.5, 0.75, 1)
    assert TerrainVoxelRenderer.find(terrain, hyxSDK.Simulation()) is None
    assert TerrainVoxelRenderer.find(hyxTerrain.Terrain(4, 4, 1.0, 1.0), None) is None


def test_the_visual_of_an_instance_follows_the_simulation(stage):
    terrain = hyxTerrain.Terrain(32, 32, 0.1, 0.5)
    terrain.setPosition(hyx.Vec3(0, 0, 0))
    instance = hyxSDK.TerrainInstance(terrain)
    stage.simulation.add(instance)
    renderer = hyxOSG.createVisual(instance, stage.root)
    assert isinstance(renderer, TerrainVoxelRenderer)
    before = stage.shoot()
    assert covered(before) > 3000
    terrain.addMass(16, 16, 200.0)
    stage.step(30)
    assert before.differs(stage.shoot()) > 300


def test_nothing_is_drawn_without_terrain_or_group(stage):
    with pytest.raises(RuntimeError, match="needs a group"):
        TerrainVoxelRenderer(hyxTerrain.Terrain(4, 4, 1.0, 1.0), None)
    with pytest.raises(RuntimeError, match="needs a terrain"):
        TerrainVoxelRenderer(None, stage.root)


def test_a_terrain_dug_down_to_the_rock_is_still_drawn(stage):
    terrain = hyxTerrain.Terrain(16, 16, 0.1, 0.2)
    for y in range(16):
        for x in range(16):
            terrain.removeAbove(x, y, -1.0)
    assert terrain.getMass() == 0
    renderer = TerrainVoxelRenderer(terrain, stage.root)
    renderer.setRenderVoxelSolidMass(True)
    renderer.setRenderCompaction(True)
    renderer.setRenderTerrainMaterials(True)
    assert covered(stage.shoot()) > 300


def test_colors_are_those_of_the_first_picture_with_a_program(stage):
    stage.app.getSceneDecorator().setEnableShaderState(True)
    renderer = TerrainVoxelRenderer(soil(), stage.root)
    renderer.setRenderHeightField(False)
    renderer.setRenderVoxelSolidMass(True)
    renderer.setMaxVoxelValueColor(hyx.Vec4f(1, 0, 0, 1))
    assert stage.shoot().reddish() > 500


def test_the_edges_of_boxes_are_seen_along_both_axes(tmp_path):
    stage = Stage(tmp_path, eye=(1.5, 1.3, 3), center=(1.5, 1.5, 0))
    renderer = stage.renderer = TerrainVoxelRenderer(hyxTerrain.Terrain(8, 8, 0.4, 0.8), stage.root)
    renderer.setRenderHeightField(False)
    renderer.setRenderVoxelSolidMass(True)
    bare = stage.shoot()
    renderer.setRenderVoxelBoundingBox(True)
    drawn, width = stage.shoot(), bare.size[0]
    dark = [a != b and max(b) < 60 for a, b in zip(bare.pixels, drawn.pixels, strict=True)]
    rows = [sum(dark[y * width + 60 : y * width + 140]) for y in range(40, 110)]
    columns = [sum(dark[y * width + x] for y in range(40, 110)) for x in range(60, 140)]
    assert max(rows) > 70 and max(columns) > 35  # whole lines from side to side
