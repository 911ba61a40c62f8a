"""Shapes, grids, axes and text that scripts make by themselves."""

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import osg
import pytest
from studio import blue, green, red

RED = hyx.Vec4(1, 0, 0, 1)


def corners(points):
    return hyx.Vec3Vector([hyx.Vec3(*point) for point in points])


def test_a_sphere_is_round_lit_and_in_its_colour(studio):
    studio.root.addChild(hyxOSG.createSphere(hyx.Vec3(0, 0, 0), RED, 0.5))
    small = studio.picture()
    assert small.count(red) > 200
    assert not red(*small.pixel(4, 4))
    studio.clear()
    studio.root.addChild(hyxOSG.createSphere(hyx.Vec3(0, 0, 0), RED, 1.0))
    assert studio.picture().lit() > 3 * small.lit()


def test_a_sphere_takes_a_colour_of_doubles_only():
    with pytest.raises(TypeError, match="argument 2 'color' must be hyx.Vec4 "):
        hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4f(1, 0, 0, 1), 1.0)
    with pytest.raises(RuntimeError, match="radius"):
        hyxOSG.createSphere(hyx.Vec3(), RED, -1.0)


def test_a_cylinder_stands_along_the_y_axis_of_its_transform(studio):
    upright = hyx.AffineMatrix4x4(hyx.Quat(1.5707963, hyx.Vec3(1, 0, 0)), hyx.Vec3())
    node = hyxOSG.createCylinder(upright, RED, 0.1, 2.0)
    studio.root.addChild(node)
    picture = studio.picture()
    column = sum(1 for y in range(picture.height) if max(picture.pixel(64, y)) > 12)
    row = sum(1 for x in range(picture.width) if max(picture.pixel(x, 64)) > 12)
    assert column > 4 * row > 0


def test_lines_join_their_points(studio):
    studio.root.addChild(hyxOSG.createLine(hyx.Vec3(-0.8, 0, 0), hyx.Vec3(0.8, 0, 0), RED, 3.0))
    line = studio.picture()
    assert 100 < line.count(red) < 500
    studio.root.addChild(
        hyxOSG.createPolyline(corners([(0, 0, -0.8), (0, 0, 0.1), (0.1, 0, 0.8)]), hyx.Vec4(0, 0, 1, 1), 3.0)
    )
    assert studio.picture().count(blue) > 60


def test_a_polyline_of_one_point_draws_nothing(studio):
    studio.root.addChild(hyxOSG.createPolyline(corners([(0, 0, 0)]), RED, 5.0))
    assert studio.picture().lit() == 0


def test_a_line_without_width_is_refused():
    with pytest.raises(RuntimeError, match="width"):
        hyxOSG.createLine(hyx.Vec3(), hyx.Vec3(1, 0, 0), RED, 0.0)


def test_cube_lines_are_the_twelve_edges_in_the_given_colour(studio):
    geode = hyxOSG.createCubeLines(
        hyx.Vec3(-0.5, -0.5, -0.5), hyx.Vec3(0.5, 0.5, 0.5), hyxRender.Color(0, 1, 0, 1), 2.0
    )
    assert geode.getDrawable(0).asGeometry().getNumVertices() == 24
    studio.root.addChild(geode)
    picture = studio.picture()
    assert picture.count(green) > 100
    assert max(picture.center()) < 12
    assert hyxOSG.createCubeLines(hyx.Vec3(), hyx.Vec3(1, 1, 1)).getBound().radius() == pytest.approx(0.866, abs=0.01)


def test_text_is_drawn_with_letters_beyond_ascii(studio):
    node = hyxOSG.createText("åα", hyx.Vec3(0, 0, -0.3), hyx.Vec4f(1, 0, 0, 1), 0.8)
    assert node.getDrawable(0).className() == "Text"
    studio.root.addChild(node)
    two = studio.picture().count(red)
    studio.clear()
    studio.root.addChild(hyxOSG.createText("å", hyx.Vec3(0, 0, -0.3), hyx.Vec4f(1, 0, 0, 1), 0.8))
    assert two > 1.3 * studio.picture().count(red) > 60
    assert hyxOSG.createText("x").getBound().valid()
    with pytest.raises(RuntimeError, match="size"):
        hyxOSG.createText("x", hyx.Vec3(), hyx.Vec4f(1, 1, 1, 1), 0.0)


def test_texts_are_attached_found_and_removed_by_index(studio):
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(0.2))
    hyxOSG.createVisual(geometry, studio.root)
    assert not hyxOSG.addText(hyxCollide.Geometry(hyxCollide.Sphere(1)), studio.root, "nobody")
    assert hyxOSG.addText(geometry, studio.root, "first")
    assert hyxOSG.addText(geometry, studio.root, "second", hyx.Vec3(0, 0, 0.3), hyx.Vec4f(0, 1, 0, 1), 0.5)
    assert hyxOSG.findText(geometry, studio.root).getText() == "first"
    second = hyxOSG.findText(geometry, studio.root, 1)
    assert second.getText() == "second" and second.getCharacterHeight() == 0.5
    assert hyxOSG.findText(geometry, studio.root, 2) is None
    assert studio.picture().count(green) > 20
    assert hyxOSG.removeText(geometry, studio.root, 1) and not hyxOSG.removeText(geometry, studio.root, 1)
    assert studio.picture().count(green) == 0
    assert hyxOSG.findText(geometry, studio.root).getText() == "first"


def test_a_grid_of_float_vectors_is_a_geometry_of_doubles_a_geode(studio):
    corner, u, v = (-0.8, 0, -0.8), (1.6, 0, 0), (0, 0, 1.6)
    lines = hyxOSG.createGrid(4, 2, osg.Vec3(*corner), osg.Vec3(*u), osg.Vec3(*v))
    assert lines.className() == "Geometry" and lines.getNumVertices() == 2 * (5 + 3)
    geode = hyxOSG.createGrid(4, 2, hyx.Vec3(*corner), hyx.Vec3(*u), hyx.Vec3(*v), studio.root)
    assert geode.className() == "Geode" and studio.root.getNumChildren() == 1
    drawn = studio.picture().lit()
    assert 300 < drawn < 4000
    studio.clear()
    board = osg.Geode()
    board.addDrawable(hyxOSG.createGrid(4, 2, osg.Vec3(*corner), osg.Vec3(*u), osg.Vec3(*v), True))
    studio.root.addChild(board)
    assert studio.picture().lit() > 2 * drawn


def test_a_grid_refuses_no_cells_and_wrong_vectors():
    vectors = [osg.Vec3(), osg.Vec3(1, 0, 0), osg.Vec3(0, 1, 0)]
    with pytest.raises(RuntimeError, match="1 to 10000 cells"):
        hyxOSG.createGrid(0, 4, *vectors)
    with pytest.raises(TypeError, match="createGrid.. argument 3 .* not None"):
        hyxOSG.createGrid(1, 4, None, *vectors[1:])
    with pytest.raises(TypeError, match="Possible C/C\\+\\+ prototypes"):
        hyxOSG.createGrid(1, 4, *vectors, 1)


def test_a_grid_in_space_has_lines_along_all_edges(studio):
    grid = hyxOSG.create3DGrid(2, 1, 1, osg.Vec3(), osg.Vec3(2, 0, 0), osg.Vec3(0, 1, 0), osg.Vec3(0, 0, 1), 1.0)
    assert grid.getNumVertices() == 2 * (3 * 2 + 2 * 2 + 2 * 3)
    studio.root.addChild(
        hyxOSG.create3DGrid(
            2, 1, 1, hyx.Vec3(-1, 0, -0.5), hyx.Vec3(2, 0, 0), hyx.Vec3(0, 1, 0), hyx.Vec3(0, 0, 1), 2.0
        )
    )
    assert studio.picture().lit() > 200


def test_axes_are_red_green_and_blue_and_grow_with_their_length(studio):
    studio.look_from(hyx.Vec3(2, -3, 2))
    studio.root.addChild(hyxOSG.createAxes())
    picture = studio.picture()
    assert min(picture.count(color) for color in (red, green, blue)) > 10
    assert hyxOSG.createAxes(1.0, 3.0).getBound().radius() > 2 * hyxOSG.createAxes(1.0, 1.0).getBound().radius()
    with pytest.raises(RuntimeError, match="positive"):
        hyxOSG.createAxes(1.0, -1.0)


def test_axes_follow_what_they_are_attached_to(studio):
    geometry = hyxCollide.Geometry(hyxCollide.Box(0.1, 0.1, 0.1))
    body = hyx.RigidBody(geometry)
    frame = hyx.Frame(hyx.AffineMatrix4x4(hyx.Vec3(0, 0, 5)))
    local = hyx.AffineMatrix4x4(hyx.Vec3(1, 0, 0))
    root = studio.root
    axes = [
        ((2, 0, 0), hyxOSG.createAxes(body, local, root)),
        ((1, 0, 0), hyxOSG.createAxes(body, None, root, 2.0)),
        ((2, 0, 0), hyxOSG.createAxes(geometry, local, root, 1.0, 0.5)),
        ((0, 0, 5), hyxOSG.createAxes(geometry, frame, root)),
        ((0, 7, 0), hyxOSG.createAxes(hyx.AffineMatrix4x4(hyx.Vec3(0, 7, 0)), root)),
    ]
    body.setPosition(hyx.Vec3(1, 0, 0))
    studio.picture()
    for place, node in axes:
        assert list(node.getMatrix().getTrans()) == pytest.approx(place)


def test_a_constraint_gets_axes_at_both_attachments(studio):
    first, second = hyx.RigidBody(), hyx.RigidBody()
    first.setPosition(hyx.Vec3(0, 0, 1))
    hinge = hyx.Hinge(hyx.Vec3(0, 0, 0.5), hyx.Vec3(0, 1, 0), first, second)
    assert hyxOSG.createAxes(hinge, studio.root) is True
    assert studio.root.getNumChildren() == 2
    assert studio.root.getChild(0).getBound().center().z == pytest.approx(0.5, abs=0.6)
    assert hyxOSG.createAxes(None, studio.root, 1.0, 1.0) in (False, None)


def test_a_mesh_becomes_a_collision_mesh_with_its_transforms(studio):
    shape = osg.MatrixTransform(osg.Matrix.translate(10, 0, 0))
    sphere = hyxOSG.createSphere(hyx.Vec3(), RED, 1.0)
    shape.addChild(sphere)
    mesh = hyxOSG.createTrimesh(shape)
    xs = [vertex[0] for vertex in mesh.getVertices()]
    assert min(xs) == pytest.approx(9) and max(xs) == pytest.approx(11)
    assert mesh.isClosed()
    assert hyxOSG.createTrimesh(osg.Group()) is None
    assert hyxOSG.createTrimesh(None) is None
