"""Faces that nobody can see are left out, and only those."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import osgDB
import pytest

CORNERS = numpy.array([[x, y, z] for x in (-1, 1) for y in (-1, 1) for z in (-1, 1)], float)
FACES = numpy.array(
    [[0, 1, 3], [0, 3, 2], [4, 6, 7], [4, 7, 5], [0, 4, 5], [0, 5, 1]]
    + [[2, 3, 7], [2, 7, 6], [0, 2, 6], [0, 6, 4], [1, 5, 7], [1, 7, 3]]
)
MESHES = {
    "closed": FACES,
    "open": FACES[:-2],  # without the side that looks up
    "inside out": FACES[:, ::-1],
    "one turned": numpy.vstack([FACES, FACES[:, ::-1] + 8]),
}


def write_model(path, faces):
    corners = numpy.vstack([CORNERS, 0.5 * CORNERS + [0, 0, 3]])
    lines = [f"v {x} {y} {z}" for x, y, z in corners] + ["f " + " ".join(map(str, face + 1)) for face in faces]
    path.write_text("\n".join(lines) + "\n")
    return str(path)


def shown(app, node):
    """How many pixels the node covers, seen from above and from below."""
    app.getSceneRoot().addChild(node)
    covered = []
    for height in (8, -8):
        app.setCameraHome(hyx.Vec3(0, -1, height), hyx.Vec3(0, 0, 0))
        empty_at_corner = app.render().astype(int)
        covered.append(int((abs(empty_at_corner - empty_at_corner[:1]).max(axis=2) > 24).sum()))
    return covered


@pytest.fixture
def stage(app):
    app.initViewer(120, 120)
    app.getSceneDecorator().setBackgroundColor(hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, 1))
    return app


@pytest.mark.parametrize("name", MESHES)
def test_a_model_covers_what_it_covered(stage, tmp_path, name):
    model = osgDB.readNodeFile(write_model(tmp_path / "model.obj", MESHES[name]))
    hidden = shown(stage, model)
    model.getOrCreateStateSet().setMode(0x0B44, 2)  # GL_CULL_FACE off, for all below
    assert shown(stage, model) == hidden and min(hidden) > 300


@pytest.mark.parametrize("name", ["closed", "open", "inside out"])
def test_a_collision_mesh_covers_what_it_covered(stage, name):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Trimesh(CORNERS, MESHES[name])))
    visual = hyxOSG.createVisual(body, osg.Group())
    hidden = shown(stage, visual)
    visual.getOrCreateStateSet().setMode(0x0B44, 2)
    assert shown(stage, visual) == hidden and min(hidden) > 300


def test_a_mesh_that_is_cut_open_shows_its_inside(stage):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 1)))
    cut = hyxOSG.ClipPlane(hyx.Vec3(0, 0, 0.2), hyx.Vec3(0, 0, -1))
    hyxOSG.createVisual(body, cut)
    stage.getSceneRoot().addChild(cut)
    stage.setCameraHome(hyx.Vec3(0, -0.1, 8), hyx.Vec3(0, 0, 0))
    middle = stage.render()[60, 60]
    assert tuple(middle) != (0, 0, 255), "one looks at the floor of the box, not through it"


@pytest.mark.parametrize("program", [False, True])
@pytest.mark.parametrize("closed", [True, False])
@pytest.mark.parametrize("scales", [[(-1, 1, 1)], [(1, 1, -1)], [(-1, -1, -1)], [(-1, 1, 1), (1, -1, 1)]])
def test_what_is_mirrored_looks_as_its_mirror_image(stage, program, closed, scales):
    stage.getSceneDecorator().setEnableShaderState(program)
    mesh = hyxCollide.Trimesh(CORNERS * [1, 1.5, 0.6], FACES if closed else FACES[:-2])
    body = hyx.RigidBody(hyxCollide.Geometry(mesh))
    stage.setCameraHome(hyx.Vec3(2, -5, 4), hyx.Vec3(0, 0, 0))
    pictures = []
    for mirrors in ([], scales):
        below = stage.getSceneRoot()
        for scale in mirrors:
            below.addChild(transform := osg.MatrixTransform(osg.Matrix.scale(*scale)))
            below = transform
        if not closed:  # the open side stays above
            upright = osg.MatrixTransform(osg.Matrix.scale(1, 1, numpy.prod([scale[2] for scale in mirrors])))
            below.addChild(upright)
            below = upright
        visual = hyxOSG.createVisual(body, below)
        pictures.append(stage.render().astype(int))
        below.removeChild(visual)
    assert abs(pictures[0] - pictures[1]).max() <= 4 and len(numpy.unique(pictures[0][..., 0])) > 3
