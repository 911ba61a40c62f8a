"""Colours, opacity, light switches, outlines, wire frames, normals and uniforms."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import osg
import pytest
from studio import blue, green, red

RED, GREEN, BLUE = hyx.Vec4f(1, 0, 0, 1), hyx.Vec4f(0, 1, 0, 1), hyx.Vec4f(0, 0, 1, 1)


KEPT = []  # geometries, whose end would take their visuals away


def ball(root, radius=0.8, y=0.0):
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(radius))
    KEPT.append((geometry, root))
    geometry.setLocalPosition(hyx.Vec3(0, y, 0))
    return hyxOSG.createVisual(geometry, root)


def material(node):
    return node.getStateSet().getMaterial()


def test_each_colour_setter_changes_its_part_only():
    node = ball(osg.Group())
    hyxOSG.setDiffuseColor(node, hyx.Vec4f(0.1, 0.2, 0.3, 1))
    hyxOSG.setAmbientColor(node, hyx.Vec4f(0.4, 0.5, 0.6, 1))
    hyxOSG.setSpecularColor(node, hyx.Vec4f(0.7, 0.8, 0.9, 1))
    hyxOSG.setShininess(node, 42.0)
    assert list(material(node).getDiffuse())[:3] == pytest.approx([0.1, 0.2, 0.3])
    assert list(material(node).getAmbient())[:3] == pytest.approx([0.4, 0.5, 0.6])
    assert list(material(node).getSpecular())[:3] == pytest.approx([0.7, 0.8, 0.9])
    assert material(node).getShininess() == 42


@pytest.mark.parametrize("wrong", [255, -1, 1.01, float("inf")])
@pytest.mark.parametrize("part", range(4))
@pytest.mark.parametrize("name", ["Diffuse", "Ambient", "Specular"])
def test_a_colour_outside_its_range_is_told_and_clamped(name, part, wrong):
    node = ball(osg.Group())
    change = getattr(hyxOSG, f"set{name}Color")
    color = [1, 0, 0.5, 1]
    color[part] = wrong
    with pytest.warns(RuntimeWarning, match="from 0 to 1"):
        change(node, color)
    color[part] = 0 if wrong < 0 else 1
    assert list(getattr(material(node), f"get{name}")()) == color
    with pytest.raises(ValueError, match="NaN"):
        change(node, [*color[:3], float("nan")])
    assert list(getattr(material(node), f"get{name}")()) == color


def test_opacity_and_shininess_outside_their_ranges_are_told_and_clamped():
    node = ball(osg.Group())
    with pytest.warns(RuntimeWarning, match="1000 is taken for 128"):
        hyxOSG.setShininess(node, 1000)
    with pytest.warns(RuntimeWarning, match="3 is taken for 1"):
        hyxOSG.setAlpha(node, 3)
    assert material(node).getShininess() == 128 and material(node).getDiffuse()[3] == 1
    for change in (hyxOSG.setShininess, hyxOSG.setAlpha):
        with pytest.raises(ValueError, match="NaN"):
            change(node, float("nan"))


def test_wrong_colours_are_refused_and_no_node_is_no_error():
    node = ball(osg.Group())
    with pytest.raises(TypeError):
        hyxOSG.setDiffuseColor(node, hyx.Vec4(1, 0, 0, 1))
    with pytest.raises(TypeError, match="setDiffuseColor.. argument 2 .* not None"):
        hyxOSG.setDiffuseColor(node, None)
    hyxOSG.setAmbientColor(None, RED)
    hyxOSG.setAlpha(None, 0.5)


def test_the_nearest_colour_wins(studio):
    body = hyx.RigidBody()
    for x in (-0.5, 0.5):
        geometry = hyxCollide.Geometry(hyxCollide.Sphere(0.4))
        body.add(geometry, hyx.AffineMatrix4x4(hyx.Vec3(x, 0, 0)))
    group = hyxOSG.createVisual(body, studio.root)
    hyxOSG.setDiffuseColor(group, RED)
    hyxOSG.setDiffuseColor(body.getGeometries()[1], GREEN, studio.root)
    picture = studio.picture()
    assert picture.count(red) > 100 and picture.count(green) > 100
    hyxOSG.setDiffuseColor(group, BLUE)
    assert studio.picture().count(green) > 100
    hyxOSG.setDiffuseColor(group, BLUE, True)
    picture = studio.picture()
    assert picture.count(green) == 0 and picture.count(blue) > 200
    hyxOSG.setDiffuseColor(body, RED, studio.root)
    assert studio.picture().count(red) > 200


def test_a_visual_does_not_lend_its_colour_to_others_of_its_shape(studio):
    one, other = ball(studio.root), ball(studio.root)
    hyxOSG.setDiffuseColor(one, RED)
    assert other.getStateSet() is None


def test_a_colour_beats_the_material_of_a_loaded_model(studio):
    model = hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(0, 1, 0, 1), 0.8)
    holder = osg.Group()
    holder.addChild(model)
    studio.root.addChild(holder)
    hyxOSG.setDiffuseColor(model, GREEN, True)
    assert studio.picture().count(green) > 200


def test_highlights_and_shininess_are_seen(studio):
    node = ball(studio.root)
    studio.app.getSceneDecorator().getLightSource(hyxOSG.SceneDecorator.LIGHT0).setSpecular(hyx.Vec4f(1, 1, 1, 1))
    hyxOSG.setDiffuseColor(node, hyx.Vec4f(0.2, 0, 0, 1))
    hyxOSG.setSpecularColor(node, hyx.Vec4f(0, 0, 0, 1))
    matt = studio.picture()
    hyxOSG.setSpecularColor(node, hyx.Vec4f(1, 1, 1, 1))
    hyxOSG.setShininess(node, 5.0)
    wide = studio.picture()
    hyxOSG.setShininess(node, 100.0)
    narrow = studio.picture()
    white = lambda r, g, b: g > 40  # noqa: E731
    assert wide.count(white) > narrow.count(white) >= matt.count(white) == 0


def test_transparent_nodes_show_what_is_behind(studio):
    behind, front = ball(studio.root, 0.5, 2.0), ball(studio.root, 0.8, 0.0)
    hyxOSG.setDiffuseColor(behind, GREEN)
    hyxOSG.setAmbientColor(behind, GREEN)
    hyxOSG.setDiffuseColor(front, RED)
    opaque = studio.picture().center()
    hyxOSG.setAlpha(front, 0.3)
    assert front.getStateSet().isTransparent()
    seen = studio.picture().center()
    assert seen[1] > opaque[1] + 15 and seen[0] > 5
    hyxOSG.setAlpha(front, 1.0)
    assert not front.getStateSet().isTransparent() and studio.picture().center() == opaque
    hyxOSG.setDiffuseColor(front, hyx.Vec4f(1, 0, 0, 0.0))
    assert studio.picture().center()[1] > opaque[1] + 15


def test_a_light_is_switched_for_one_node(studio):
    node = ball(studio.root)
    hyxOSG.setDiffuseColor(node, RED)
    lit = studio.picture().center()[0]
    hyxOSG.setEnableLight(False, 0, node)
    assert studio.picture().center()[0] < lit / 2
    hyxOSG.setEnableLight(True, 0, node)
    assert studio.picture().center()[0] == lit
    for light in (-1, 8):
        with pytest.raises(RuntimeError, match="0 to 7"):
            hyxOSG.setEnableLight(True, light, node)
    hyxOSG.setEnableLight(True, 0, None)


def test_an_outline_surrounds_the_node_and_goes_again(studio):
    node = ball(studio.root, 0.5)
    plain = studio.picture()
    assert hyxOSG.setEnableOutline(node, True, hyxRender.Color(0, 0, 1, 1), 3.0) is True
    assert hyxOSG.getEnableOutline(node)
    outlined = studio.picture()
    assert outlined.count(blue) > 60 and plain.count(blue) == 0
    assert outlined.center() == plain.center()
    hyxOSG.setEnableOutline(node, True)
    assert studio.picture().count(lambda r, g, b: r > 200 and g > 200 and b < 60) > 60
    hyxOSG.setEnableOutline(node, False)
    assert not hyxOSG.getEnableOutline(node)
    assert studio.picture().difference(plain) == 0
    assert hyxOSG.setEnableOutline(None, True) is False and hyxOSG.getEnableOutline(None) is False
    with pytest.raises(RuntimeError, match="width"):
        hyxOSG.setEnableOutline(node, True, hyxRender.Color(1, 1, 1, 1), 0.0)


def test_wire_frames_show_edges_only(studio):
    node = ball(studio.root)
    full = studio.picture().lit()
    assert hyxOSG.setEnableWireFrameMode(node, True)
    assert studio.picture().lit() < 0.8 * full
    assert hyxOSG.setEnableWireFrameMode(node, False)
    assert studio.picture().lit() == full
    assert hyxOSG.toggleWireFrameMode(node) is True and studio.picture().lit() < 0.8 * full
    assert hyxOSG.toggleWireFrameMode(node) is False and studio.picture().lit() == full
    holder = osg.Group()
    holder.addChild(node)
    studio.root.removeChild(node)
    studio.root.addChild(holder)
    hyxOSG.setEnableWireFrameMode(holder, True)
    assert hyxOSG.forceWireFrameModeOn(node) and studio.picture().lit() < 0.8 * full
    for function in (hyxOSG.forceWireFrameModeOn, hyxOSG.toggleWireFrameMode):
        assert function(None) is False


def roof():
    mesh = osg.Geometry()
    mesh.setVertexArray([(-1, 0, 0), (0, 0, 0.3), (0, 1, 0.3), (-1, 1, 0), (1, 0, 0), (1, 1, 0)])
    mesh.addElements(4, [0, 1, 2, 0, 2, 3, 1, 4, 5, 1, 5, 2])
    geode = osg.Geode()
    geode.addDrawable(mesh)
    return geode, mesh


def test_smoothing_joins_normals_below_the_crease_angle():
    geode, mesh = roof()
    assert hyxOSG.smoothNormals(geode, 3.0) == 1
    assert mesh.getNormal(1)[2] > 0.99  # a single face has 0.958
    assert mesh.getNumVertices() == 6
    geode, mesh = roof()
    assert hyxOSG.smoothNormals(geode, 0.1) == 1
    assert mesh.getNumVertices() > 6
    assert hyxOSG.smoothNormals(None) == 0
    with pytest.raises(RuntimeError, match="crease angle"):
        hyxOSG.smoothNormals(geode, -1.0)


def test_smoothing_takes_faces_without_area_and_needles_around_one_place():
    mesh = osg.Geometry()
    ring = [(math.cos(i), math.sin(i), 0.1 * (i % 2)) for i in range(700)]
    mesh.setVertexArray([(0, 0, 1), *ring])
    fan = [corner for i in range(1, 700) for corner in (0, i, i + 1)]
    mesh.addElements(4, [*fan, 3, 3, 4, 5, 5, 5])
    assert hyxOSG.smoothNormals(mesh, 0.3) == 1
    lengths = [math.dist(mesh.getNormal(i), (0, 0, 0)) for i in range(mesh.getNumVertices())]
    assert lengths == pytest.approx([1.0] * len(lengths), abs=1e-5)
    assert hyxOSG.createTrimesh(mesh) is not None


def test_smoothing_one_visual_leaves_others_of_its_shape_alone():
    root = osg.Group()
    geometries = [hyxCollide.Geometry(hyxCollide.Box(1, 1, 1)) for _ in range(2)]
    nodes = [hyxOSG.createVisual(geometry, root) for geometry in geometries]
    assert hyxOSG.smoothNormals(nodes[0], 3.1) == 1
    meshes = [n.getChild(0).asGroup().getChild(0).asGeode().getDrawable(0).asGeometry() for n in nodes]
    assert sorted(map(abs, meshes[1].getNormal(0))) == pytest.approx([0, 0, 1])
    assert meshes[0] != meshes[1]
    assert sorted(map(abs, meshes[0].getNormal(0))) == pytest.approx([3**-0.5] * 3, abs=0.01), (
        "the corner's faces are joined"
    )


def test_uniforms_are_added_and_replaced():
    node = osg.Group()
    hyxOSG.setUniformFloat(node, "strength", 0.25)
    hyxOSG.setUniformInt(node, "count", 7)
    state = node.getStateSet()
    assert state.getUniform("strength").getFloat() == 0.25 and state.getUniform("count").getInt() == 7
    hyxOSG.setUniformFloat(node, "strength", 2.0)
    assert state.getUniform("strength").getFloat() == 2.0
    assert hyxOSG.setUniformFloat(None, "u", 1.0) is None
    with pytest.raises(OverflowError):
        hyxOSG.setUniformInt(node, "count", 2**31)
    with pytest.raises(TypeError, match="setUniformFloat.. argument 2 .* not None"):
        hyxOSG.setUniformFloat(node, None, 1.0)
