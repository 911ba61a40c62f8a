"""Parts of large closed meshes that look away are not sent to the driver, which no picture shows."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import pytest


def knobbly_ring(columns=72, rows=36):
    """A closed mesh that hides much of itself, of 5,184 triangles."""
    turn, around = numpy.meshgrid(numpy.arange(columns) / columns, numpy.arange(rows) / rows, indexing="ij")
    turn, around = 2 * numpy.pi * turn.ravel(), 2 * numpy.pi * around.ravel()
    thick = 0.6 + 0.15 * numpy.sin(9 * turn) * numpy.sin(5 * around)
    away = 1.6 + thick * numpy.cos(around)
    points = numpy.column_stack([away * numpy.cos(turn), away * numpy.sin(turn), thick * numpy.sin(around)])
    i, j = numpy.meshgrid(numpy.arange(columns), numpy.arange(rows), indexing="ij")
    right, up = (i + 1) % columns, (j + 1) % rows
    a, b, c, d = (corner.ravel() for corner in (i * rows + j, right * rows + j, right * rows + up, i * rows + up))
    return points, numpy.concatenate([numpy.column_stack([a, b, c]), numpy.column_stack([a, c, d])])


class Stage:
    def __init__(self, app):
        self.app = app
        app.initViewer(160, 120)
        app.getSceneDecorator().setEnableShadows(True)
        self.frame = osg.MatrixTransform()
        app.getSceneRoot().addChild(self.frame)
        ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(6, 6, 0.1)))
        ground.setPosition(hyx.Vec3(0, 0, -2))
        hyxOSG.createVisual(ground, app.getSceneRoot())
        self.bodies = [ground]  # visuals go with theirs

    def visual(self, points):
        self.bodies.append(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Trimesh(points, knobbly_ring()[1]))))
        return hyxOSG.createVisual(self.bodies[-1], self.frame)

    def pictures(self, shown, hidden):
        """From around it, near and far, and from within the hole."""
        shown.setNodeMask(0xFFFFFFFF)
        hidden.setNodeMask(0)
        eyes = [(7 * numpy.cos(a), 7 * numpy.sin(a), h) for a in numpy.arange(0, 6.2, 0.5) for h in (-1, 1, 5)]
        taken = []
        for eye in [*eyes, (0.3, 0.2, 0.1), (2.7, 0, 1.2), (0.01, 0, 9)]:
            self.app.setCameraHome(hyx.Vec3(*eye), hyx.Vec3(0, 0, 0))
            taken.append(self.app.render().copy())
        return numpy.array(taken)


def mesh_of(node):
    """The first drawable at or below the node."""
    if isinstance(node, osg.Geode):
        return node.getDrawable(0)
    return next(filter(None, (mesh_of(node.getChild(i)) for i in range(node.getNumChildren()))), None)


@pytest.fixture
def stage(app):
    return Stage(app)


@pytest.mark.parametrize("scale", [(1, 1, 1), (1, 0.5, 1.4), (-1, 1, 1)])
def test_pictures_are_those_of_the_whole_mesh(stage, scale):
    """A mesh whose places were set anew is drawn whole."""
    points, _ = knobbly_ring()
    stage.frame.setMatrix(osg.Matrixd.scale(*scale))
    patched = stage.visual(points)
    whole = stage.visual(points)
    mesh = mesh_of(whole)
    mesh.vertices = numpy.array(mesh.vertices)
    pictures = stage.pictures(patched, whole)
    assert (pictures == stage.pictures(whole, patched)).all()
    assert (pictures[0] != pictures[1]).any(axis=2).mean() > 0.1


def test_places_that_change_are_seen(stage):
    """The ring is turned over in the mesh itself: what looked away looks here."""
    points, _ = knobbly_ring()
    turned = stage.visual(points)
    other = stage.visual(points)
    stage.pictures(turned, other)
    for visual in (turned, other):
        mesh = mesh_of(visual)
        mesh.vertices = numpy.array(mesh.vertices) * [1, -1, -1]
    other.getOrCreateStateSet().setMode(0x0B44, 2)  # GL_CULL_FACE off, for all below
    changed = (stage.pictures(turned, other) != stage.pictures(other, turned)).any(axis=3)
    assert changed.mean(axis=(1, 2)).max() < 0.01
