"""Surfaces that change: a height field under load and a mesh whose vertices move are drawn as they are now."""

import hyx
import hyxCollide
import hyxModel
import hyxOSG
import pytest
from hyxOSG import DeformableHeightFieldRenderer, DeformableMeshUpdater

RESOLUTION = 150  # more than one tile each way


@pytest.fixture
def deformer(stage):
    field = hyxCollide.HeightField(RESOLUTION, RESOLUTION, 6.0, 6.0)
    geometry = hyxCollide.Geometry(field)
    stage.simulation.add(geometry)
    return hyxModel.HeightFieldDeformer(geometry)


def drawn(picture):
    return len(picture.pixels) - picture.count((0, 0, 0), 0)


def test_the_field_is_drawn_where_it_is(stage, deformer):
    assert drawn(stage.shoot()) == 0
    renderer = DeformableHeightFieldRenderer(deformer, stage.root)
    assert renderer.isValid()
    assert drawn(stage.shoot()) > 5000


def test_a_track_shows_after_the_next_step(stage, deformer):
    renderer = DeformableHeightFieldRenderer(deformer, stage.root)
    stage.simulation.add(renderer)
    smooth = stage.shoot()
    for x in range(-10, 11):
        deformer.press(hyx.Vec3(x / 5, 0, 0), 20000.0)
    assert stage.shoot().differs(smooth) == 0
    stage.step()
    tracked = stage.shoot()
    assert tracked.differs(smooth) > 200
    deformer.reset()
    renderer.last(0.0)
    assert stage.shoot().differs(smooth) == 0


def test_changes_across_tiles_leave_no_gap(stage, deformer):
    stage.app.setCameraHome(hyx.Vec3(0, 0, 8), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 1, 0))
    renderer = DeformableHeightFieldRenderer(deformer, stage.root)
    full = drawn(stage.shoot())
    for x in range(-14, 15):
        for y in range(-14, 15):
            deformer.press(hyx.Vec3(x / 5, y / 5, 0), 500.0 * (1 + (x * 7 + y * 13) % 5))
    renderer.last(0.0)
    holes = stage.shoot()
    assert drawn(holes) == pytest.approx(full, abs=full * 0.02)
    width = holes.size[0]
    middle = [holes.pixels[row * width + 60 : row * width + 140] for row in range(50, 100)]
    assert all(pixel != (0, 0, 0) for row in middle for pixel in row)


def test_marking_it_dirty_draws_the_same(stage, deformer):
    renderer = DeformableHeightFieldRenderer(deformer, stage.root)
    deformer.press(hyx.Vec3(0, 0, 0), 50000.0)
    renderer.last(0.0)
    before = stage.shoot()
    renderer.setAsDirty()
    renderer.last(0.0)
    assert stage.shoot().differs(before) == 0


def test_wire_frame_leaves_holes(stage, deformer):
    stage.app.setCameraHome(hyx.Vec3(0, -1, 1), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 0, 1))
    renderer = DeformableHeightFieldRenderer(deformer, stage.root)
    surface = drawn(stage.shoot())
    renderer.forceWireFrameRendering()
    assert drawn(stage.shoot()) < 0.8 * surface


def test_the_node_follows_the_geometry_and_takes_colors(stage, deformer):
    renderer = DeformableHeightFieldRenderer(deformer, stage.root)
    node = renderer.getHeightFieldNode()
    hyxOSG.setDiffuseColor(node, hyx.Vec4f(1, 0, 0, 1))
    assert int(node.getGeometry().this) == int(deformer.getGeometry().this)
    assert stage.shoot().reddish() > 3000


def test_without_a_deformer_there_is_nothing(stage):
    renderer = DeformableHeightFieldRenderer(None, stage.root)
    assert not renderer.isValid() and renderer.getHeightFieldNode() is None
    renderer.last(1.0)
    renderer.setAsDirty()
    renderer.forceWireFrameRendering()
    assert drawn(stage.shoot()) == 0


def sheet(size, height=0.0):
    return [hyx.Vec3(x * size, y * size, height) for x, y in ((-1, -1), (1, -1), (1, 1), (-1, 1))]


def trimesh(vertices):
    return hyxCollide.Trimesh(vertices, [0, 1, 2, 0, 2, 3])


def test_a_mesh_is_drawn_at_once_and_follows_its_vertices(stage):
    mesh = trimesh(sheet(1.0))
    updater = DeformableMeshUpdater(mesh, stage.root)
    small = drawn(stage.shoot())
    mesh.updateVertices(sheet(2.0))
    assert drawn(stage.shoot()) == small
    updater.update()
    assert drawn(stage.shoot()) > 2.5 * small
    mesh.updateVertices(sheet(1.0))
    updater.update(True)
    assert drawn(stage.shoot()) == small


def test_normals_follow_the_vertices(stage):
    stage.app.setCameraHome(hyx.Vec3(0, 0, 8), hyx.Vec3(0, 0, 0), hyx.Vec3(0, 1, 0))
    mesh = trimesh(sheet(2.0))
    updater = DeformableMeshUpdater(mesh, stage.root)
    flat = max(stage.shoot().pixels)
    tilted = sheet(2.0)
    tilted[2].z = tilted[3].z = 6.0
    mesh.updateVertices(tilted)
    updater.update()
    assert max(stage.shoot().pixels) != flat


def test_forcing_is_a_setting(stage):
    updater = DeformableMeshUpdater(trimesh(sheet(1.0)), stage.root)
    assert not updater.getForceUpdate()
    updater.setForceUpdate(True)
    assert updater.getForceUpdate()
    before = stage.shoot()
    updater.update()
    assert stage.shoot().differs(before) == 0


def test_without_a_mesh_or_a_group_nothing_is_drawn(stage):
    DeformableMeshUpdater(None, stage.root).update()
    DeformableMeshUpdater(trimesh(sheet(1.0)), None).update(True)
    assert drawn(stage.shoot()) == 0
