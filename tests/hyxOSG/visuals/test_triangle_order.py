"""Triangles of meshes that are drawn share their vertices with those just before them, and stay the same triangles."""

import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import osgDB
import pytest


def shuffled_ball(rows=24, columns=40):
    u, v = numpy.meshgrid(numpy.arange(columns), numpy.linspace(0, numpy.pi, rows + 1)[1:-1])
    turn = 2 * numpy.pi * u / columns
    rings = numpy.stack([numpy.sin(v) * numpy.cos(turn), numpy.sin(v) * numpy.sin(turn), -numpy.cos(v)], -1)
    points = numpy.concatenate([rings.reshape(-1, 3), [[0, 0, -1], [0, 0, 1]]])
    here, right = numpy.arange(columns), (numpy.arange(columns) + 1) % columns
    triangles = [numpy.stack([0 * here + len(points) - 2, right, here], 1)]
    for row in range(rows - 2):
        low, high = row * columns, (row + 1) * columns
        triangles += [numpy.stack([low + here, low + right, high + right], 1)]
        triangles += [numpy.stack([low + here, high + right, high + here], 1)]
    last = (rows - 2) * columns
    triangles += [numpy.stack([last + here, last + right, 0 * here + len(points) - 1], 1)]
    return points, numpy.random.default_rng(3).permutation(numpy.concatenate(triangles))


def lit_again(triangles, kept=24):
    """How often a vertex is lit, on average, where results of the last few are kept."""
    recent, lit = [], 0
    for vertex in triangles.ravel().tolist():
        if vertex not in recent:
            lit += 1
            recent = [*recent, vertex][-kept:]
    return lit / len(numpy.unique(triangles))


def places(points, triangles):
    """The triangles by the places of their corners, whichever comes first."""
    corners = numpy.round(numpy.asarray(points, float)[triangles], 4).tolist()
    return sorted(min(each[i:] + each[:i] for i in range(3)) for each in corners)


def drawn_shape(points, triangles, tmp_path):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Trimesh(points, triangles)))
    return hyxOSG.createTrimesh(hyxOSG.createVisual(body, osg.Group()))  # while the body is there


def drawn_file(points, triangles, tmp_path):
    lines = ["v {} {} {}".format(*point) for point in points.tolist()]
    lines += ["f {} {} {}".format(*each) for each in (triangles + 1).tolist()]
    (tmp_path / "ball.obj").write_text("\n".join(lines))
    return hyxOSG.createTrimesh(osgDB.readNodeFile(str(tmp_path / "ball.obj")))


@pytest.mark.parametrize("make", [drawn_shape, drawn_file])
def test_neighbours_are_drawn_one_after_the_other(make, tmp_path):
    points, triangles = shuffled_ball()
    mesh = make(points, triangles, tmp_path)
    drawn = numpy.array(mesh.triangles)
    assert places(mesh.vertices, drawn) == places(points, triangles)
    assert lit_again(triangles) > 4
    assert lit_again(drawn) < 1.6
