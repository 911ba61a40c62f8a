"""Soil: mass is conserved, slopes stand no steeper than they may, loads compact, digging frees grains."""

import math

import hyx
import hyxCollide
import hyxSDK
import hyxTerrain
import pytest

STEP = 1 / 60


def terrain(columns=32, size=0.1, depth=1.0):
    return hyxTerrain.Terrain(columns, columns, size, depth)


def run(soil, steps):
    for _ in range(steps):
        soil.step(STEP)


def steepest(soil):
    columns = soil.getNumColumnsX()
    heights = [[soil.getHeight(x, y) for x in range(columns)] for y in range(columns)]
    along_x = (abs(row[x + 1] - row[x]) for row in heights for x in range(columns - 1))
    along_y = (abs(b - a) for low, high in zip(heights, heights[1:]) for a, b in zip(low, high))
    return math.atan(max(max(along_x), max(along_y)) / soil.getElementSize())


def column_mass(soil, x, y):
    return sum(voxel.solidMass + voxel.fluidMass for voxel in soil.getVoxels(x, y))


def test_a_new_terrain_is_flat_and_weighs_its_volume():
    soil = terrain()
    assert soil.getHeight(0, 0) == soil.getHeight(31, 31) == 0
    assert soil.getMass() == pytest.approx(1500 * 32 * 32 * 0.1 * 0.1 * 1.0)
    (voxel,) = soil.getVoxels(3, 4)
    assert (voxel.bottom, voxel.thickness, voxel.compaction) == (-1.0, 1.0, 1.0)
    assert voxel.solidMass == pytest.approx(15.0) and voxel.fluidMass == 0


def test_a_heap_slides_to_the_angle_of_repose_and_keeps_its_mass():
    soil = terrain()
    soil.addMass(16, 16, 300.0)
    before = soil.getMass()
    assert soil.getHeight(16, 16) > 20
    run(soil, 400)
    assert steepest(soil) == pytest.approx(soil.getMaterial(0).reposeAngle, abs=0.01)
    assert soil.getMass() == pytest.approx(before, rel=1e-12)
    assert soil.getFluidMass(16, 16) == 0  # all at rest again
    heap = [soil.getHeight(16 + d, 16) for d in range(8)]
    assert heap == sorted(heap, reverse=True) and heap[0] > 0.3


def test_sliding_soil_is_on_the_move_and_goes_down():
    soil = terrain()
    soil.addMass(16, 16, 300.0)
    run(soil, 3)
    assert soil.getFluidMass(18, 16) > 0
    velocity = soil.getFluidVelocity(18, 16)
    assert velocity.x > 0 and velocity.z < 0
    assert soil.getFluidVelocity(0, 0).length() == 0


def test_gentler_soil_makes_a_flatter_heap():
    def height(angle):
        soil = terrain()
        material = hyxTerrain.SoilMaterial()
        material.reposeAngle = angle
        soil.setMaterial(0, material)
        soil.addMass(16, 16, 100.0)
        run(soil, 400)
        return soil.getHeight(16, 16)

    assert height(0.3) < height(0.5) < height(0.8)


def test_setting_heights_adds_and_takes_mass():
    soil = terrain()
    soil.setHeight(5, 6, 0.25)
    assert soil.getHeight(5, 6) == pytest.approx(0.25)
    assert column_mass(soil, 5, 6) == pytest.approx(1500 * 0.01 * 1.25)
    soil.setHeight(5, 6, -5.0)  # no deeper than the rock
    assert soil.getHeight(5, 6) == -1.0 and soil.getVoxels(5, 6) == []


def test_heights_cross_as_an_array_both_ways():
    soil = terrain(4)
    soil.setHeight(1, 2, 0.5)
    view = soil.getHeights()
    assert view.shape == (4, 4) and view.dtype == "float32" and view[2, 1] == 0.5
    other = terrain(4)
    other.setHeights(view)
    assert other.getHeight(1, 2) == 0.5 and other.getHeight(0, 0) == 0
    with pytest.raises(ValueError, match="one height for each column"):
        terrain(5).setHeights(view)


def test_world_height_and_normal_follow_position_and_slope():
    soil = terrain()
    for y in range(32):
        for x in range(32):
            soil.setHeight(x, y, 0.05 * x)
    soil.setPosition(hyx.Vec3(10, 20, 5))
    assert soil.getWorldHeight(10.55, 21) == pytest.approx(5 + 0.275)
    normal = soil.getWorldNormal(11, 21)
    assert normal.z == pytest.approx(math.cos(math.atan(0.5))) and normal.x < 0 and abs(normal.y) < 1e-9


def test_a_load_compacts_and_keeps_the_mass():
    soil = terrain()
    before = column_mass(soil, 8, 8)
    sunk = soil.compact(8, 8, 1e5)
    assert 0.001 < sunk < 0.2
    assert soil.getHeight(8, 8) == pytest.approx(-sunk)
    assert soil.getSurfaceCompaction(8, 8) > 1.05
    assert column_mass(soil, 8, 8) == pytest.approx(before, rel=1e-12)
    assert soil.compact(8, 8, 1e5) == pytest.approx(0, abs=1e-9)  # the same load again
    assert soil.compact(8, 8, 4e5) > 0.001
    assert soil.compact(9, 9, 1e3) == pytest.approx(0, abs=1e-12)  # too light


def test_digging_frees_grains_of_the_same_mass():
    soil = terrain()
    before = soil.getMass()
    dug = sum(soil.dig(x, y, -0.3) for x in range(10, 16) for y in range(10, 16))
    assert dug == pytest.approx(36 * 1500 * 0.01 * 0.3)
    grains = soil.getSoilParticles()
    assert grains.getNumParticles() > 20
    assert dug - grains.getMass() < 36  # what makes no whole grain yet is kept
    assert soil.getMass() == pytest.approx(before, rel=1e-12)


def test_grains_at_rest_become_soil_again():
    soil = terrain()
    before = soil.getMass()
    for x in range(10, 16):
        soil.dig(x, 12, -0.2)
    first = soil.getSoilParticles().getNumParticles()
    run(soil, 300)
    assert 0 < first and soil.getSoilParticles().getNumParticles() < first / 2
    assert soil.getMass() == pytest.approx(before, rel=1e-12)


def blade(soil, speed):
    body = hyx.RigidBody()
    body.setMotionControl(hyx.RigidBody.KINEMATICS)
    body.setPosition(hyx.Vec3(0.5, 1.5, -0.1))
    body.setVelocity(hyx.Vec3(speed, 0, 0))
    tool = hyxTerrain.DigTool(body, hyx.Vec3(0, -0.4, 0), hyx.Vec3(0, 0.4, 0), hyx.Vec3(-0.1, 0, 0.4))
    soil.addTool(tool)
    return body, tool


@pytest.mark.parametrize("particles", [True, False])
def test_a_blade_digs_a_trench_and_feels_the_soil(particles):
    soil = terrain()
    soil.setEnableSoilParticles(particles)
    before = soil.getMass()
    body, tool = blade(soil, 1.0)
    for _ in range(60):
        body.setPosition(body.getPosition() + body.getVelocity() * STEP)
        soil.step(STEP)
        assert tool.getSoilForce().x <= 0
    assert tool.getDugMass() > 20
    assert soil.getHeight(8, 15) < -0.02  # behind the blade
    assert soil.getHeight(8, 25) == pytest.approx(0, abs=0.05)  # beside it
    assert (soil.getSoilParticles().getNumParticles() > 0) == particles
    assert soil.getMass() == pytest.approx(before, rel=1e-12)


def test_a_disabled_tool_digs_nothing():
    soil = terrain()
    _, tool = blade(soil, 1.0)
    tool.setEnable(False)
    run(soil, 10)
    assert tool.getDugMass() == 0
    assert soil.removeTool(tool) and not soil.removeTool(tool) and soil.getTools() == []


def test_material_of_a_column_changes_its_mass_with_the_density():
    soil = terrain()
    heavy = hyxTerrain.SoilMaterial()
    heavy.density = 3000.0
    kind = soil.addMaterial(heavy)
    soil.setColumnMaterial(3, 3, kind, 0.25)
    assert soil.getSurfaceMaterial(3, 3) == kind and soil.getSurfaceMaterial(4, 3) == 0
    assert soil.getHeight(3, 3) == pytest.approx(0)
    assert column_mass(soil, 3, 3) == pytest.approx(0.01 * (0.75 * 1500 + 0.25 * 3000))


def test_bad_values_are_refused():
    with pytest.raises(RuntimeError, match="2 to 4096"):
        hyxTerrain.Terrain(1, 5, 0.1, 1.0)
    with pytest.raises(RuntimeError, match="element size"):
        hyxTerrain.Terrain(5, 5, 0.0, 1.0)
    soil = terrain(4)
    with pytest.raises(RuntimeError, match="no such column"):
        soil.getHeight(4, 0)
    with pytest.raises(RuntimeError, match="finite"):
        soil.setHeight(0, 0, math.nan)
    with pytest.raises(RuntimeError, match="no such soil material"):
        soil.addMass(0, 0, 1.0, 7)
    with pytest.raises(RuntimeError):
        hyxTerrain.DigTool(None, hyx.Vec3(), hyx.Vec3(1, 0, 0), hyx.Vec3())


def instance_with_ball(radius=0.3, mass=400.0):
    simulation = hyxSDK.Simulation()
    soil = terrain()
    instance = hyxSDK.TerrainInstance(soil)
    simulation.add(instance)
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(radius)))
    ball.setMass(mass)
    ball.setPosition(hyx.Vec3(1.5, 1.5, radius + 0.05))
    simulation.add(ball)
    return simulation, soil, instance, ball


def test_a_body_rests_on_the_terrain_and_sinks_into_it():
    simulation, soil, instance, ball = instance_with_ball()
    for _ in range(120):
        simulation.step()
    sunk = -soil.getHeight(15, 15)
    assert sunk > 0.002
    assert 0.3 - sunk - 1e-3 < ball.getPosition().z < 0.3


def test_without_compaction_nothing_sinks():
    simulation, soil, instance, ball = instance_with_ball()
    instance.setEnableCompaction(False)
    for _ in range(60):
        simulation.step()
    assert soil.getHeight(15, 15) == 0
    assert ball.getPosition().z == pytest.approx(0.3, abs=0.03)


def test_the_surface_leaves_the_simulation_with_its_instance():
    simulation, soil, instance, ball = instance_with_ball()
    count = len(simulation.getRigidBodies())
    simulation.remove(instance)
    assert len(simulation.getRigidBodies()) == count - 1
    for _ in range(60):
        simulation.step()
    assert ball.getPosition().z < -1


@pytest.mark.parametrize("height", [None, 0.03, 0.25, 7.0])
def test_cells_of_one_size_hold_all_soil(height):
    soil = hyxTerrain.Terrain(16, 12, 0.1, 0.5)
    soil.setPosition(hyx.Vec3(3, 4, 5))
    kind = soil.addMaterial(hyxTerrain.SoilMaterial())
    for x in range(16):
        soil.setColumnMaterial(x, 3, kind, 0.2)
        soil.compact(x, 5, 2e5)
    if height != 7:
        assert set(soil.cells(height)["material"]) == {0, kind}
    soil.addMass(8, 6, 10.0)
    for _ in range(5):
        soil.step(STEP)
    cells = soil.cells(height)
    size = height or 0.1
    assert cells["solidMass"].sum() + cells["fluidMass"].sum() == pytest.approx(soil.getMass(), rel=1e-9)
    assert cells["fluidMass"].sum() > 0
    steps = (cells["z"] - (5 - 0.5)) / size - 0.5
    assert abs(steps - steps.round()).max() < 1e-9
    places = {(round(x, 6), round(y, 6), round(z, 6)) for x, y, z in zip(cells["x"], cells["y"], cells["z"])}
    assert len(places) == len(cells)
    column = cells[(abs(cells["x"] - 3.8) < 1e-6) & (abs(cells["y"] - 4.6) < 1e-6)]
    assert column["solidMass"].sum() + column["fluidMass"].sum() == pytest.approx(column_mass(soil, 8, 6), rel=1e-12)
    full = column["solidMass"][:-1] + column["fluidMass"][:-1]
    assert len(full) < 2 or full.min() > 0.5 * full.max()
    with pytest.raises(ValueError):
        soil.cells(0)
