"""Transform nodes set with the physics library's values."""

import math

import hyx
import hyxCollide
import hyxOSG
import osg
import pytest


def where(node, point):
    return list(node.getMatrix().transform(osg.Vec3d(*point)))


def test_scale_rotation_and_translation_are_kept_apart():
    node = hyxOSG.Transform()
    node.setTranslate(hyx.Vec3(10, 0, 0))
    node.setRotate(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)))
    node.setScale(hyx.Vec3(2, 3, 4))
    assert where(node, (1, 0, 0)) == pytest.approx([10, 2, 0])
    node.setTranslate(hyx.Vec3(0, 0, 5))
    assert where(node, (0, 1, 1)) == pytest.approx([-3, 0, 9])
    node.setRotate(hyx.Quat())
    assert where(node, (1, 1, 1)) == pytest.approx([2, 3, 9])


def test_a_matrix_replaces_all_three():
    node = hyxOSG.Transform()
    node.setScale(hyx.Vec3(9, 9, 9))
    node.setMatrix(hyx.AffineMatrix4x4(hyx.Quat(math.pi, hyx.Vec3(0, 0, 1)), hyx.Vec3(1, 2, 3)))
    assert where(node, (1, 0, 0)) == pytest.approx([0, 2, 3])
    node.setScale(hyx.Vec3(2, 2, 2))
    assert where(node, (1, 0, 0)) == pytest.approx([-1, 2, 3])


@pytest.mark.parametrize("scale", [(0, 1, 1), (1, float("nan"), 1), (1, 1, float("inf"))])
def test_scales_that_flatten_are_refused(scale):
    node = hyxOSG.Transform()
    with pytest.raises(RuntimeError, match="scale factors"):
        node.setScale(hyx.Vec3(*scale))
    assert where(node, (1, 1, 1)) == [1, 1, 1]


@pytest.mark.parametrize("wrong", [float("nan"), float("inf")])
def test_places_that_are_no_numbers_are_refused(wrong):
    node = hyxOSG.Transform()
    node.setTranslate(hyx.Vec3(1, 2, 3))
    place = hyx.Vec3(0, wrong, 0)
    with pytest.raises(RuntimeError, match="translation must be finite"):
        node.setTranslate(place)
    with pytest.raises(RuntimeError, match="matrix must be finite"):
        node.setMatrix(hyx.AffineMatrix4x4(hyx.Quat(), place))
    assert where(node, (0, 0, 0)) == [1, 2, 3]


def test_the_zero_rotation_is_refused_and_others_are_normalised():
    node = hyxOSG.Transform()
    with pytest.raises(RuntimeError, match="quaternion"):
        node.setRotate(hyx.Quat(0, 0, 0, 0))
    node.setRotate(hyx.Quat(0, 0, 5, 5))
    assert where(node, (1, 0, 0)) == pytest.approx([0, 1, 0])


def test_names_are_kept():
    node = hyxOSG.Transform()
    node.setName("knot")
    assert osg.Object.getName(node) == "knot"


def test_children_are_added_once_and_never_in_a_ring():
    node, inner, child = hyxOSG.Transform(), hyxOSG.Transform(), osg.Group()
    assert node.addChild(child) is True and node.addChild(child) is False and node.addChild(None) is False
    assert node.addChild(inner) is True
    for group in (inner, node):
        with pytest.raises(RuntimeError, match="below itself"):
            group.addChild(node)
    assert node.getNumChildren() == 2


def test_the_visual_of_a_geometry_is_seen_through_the_transform():
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(1))
    visual = hyxOSG.GeometryNode(geometry)
    visual.setRenderChild(visual.GEOMETRY_DATA, hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 1, 1, 1), 1.0))
    node = hyxOSG.Transform()
    assert node.addChild(visual) is True and node.addChild(visual) is False
    node.setTranslate(hyx.Vec3(5, 0, 0))
    geometry.setLocalPosition(hyx.Vec3(0, 3, 0))
    visual.updateTransform()
    assert list(node.getBound().center()) == pytest.approx([5, 3, 0], abs=0.01)
