"""Nodes that follow a geometry."""

import gc

import _hyxOSG
import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import osg
import pytest


def update(node):
    visitor = osg.NodeVisitor()
    visitor.setVisitorType(osg.NodeVisitor_UPDATE_VISITOR)
    node.accept(visitor)


def place(node):
    return list(node.getMatrix().getTrans())


@pytest.fixture
def geometry():
    return hyxCollide.Geometry(hyxCollide.Box(1, 1, 1), "box")


def test_a_node_follows_its_geometry_at_each_update(geometry):
    node = hyxOSG.GeometryNode(geometry)
    geometry.setLocalPosition(hyx.Vec3(1, 2, 3))
    assert place(node) == [0, 0, 0]
    update(node)
    assert place(node) == [1, 2, 3]
    geometry.setLocalPosition(hyx.Vec3(4, 5, 6))
    node.updateTransform()
    assert place(node) == [4, 5, 6]


def test_only_update_visitors_move_a_node(geometry):
    node = hyxOSG.GeometryNode(geometry)
    geometry.setLocalPosition(hyx.Vec3(1, 0, 0))
    visitor = osg.NodeVisitor()
    node.traverse(visitor)
    assert place(node) == [0, 0, 0]
    visitor.setVisitorType(osg.NodeVisitor_UPDATE_VISITOR)
    node.traverse(visitor)
    assert place(node) == [1, 0, 0]
    with pytest.raises(
        TypeError,
        match="GeometryNode.traverse.. argument 1 .* not None",
    ):
        node.traverse(None)


def test_the_geometry_can_be_changed_and_taken_away(geometry):
    node = hyxOSG.GeometryNode()
    assert node.getGeometry() is None
    node.updateTransform()
    node.setGeometry(geometry)
    assert node.getGeometry() == geometry
    other = hyxCollide.Geometry(hyxCollide.Sphere(1))
    other.setLocalPosition(hyx.Vec3(7, 0, 0))
    node.setGeometry(other)
    assert place(node) == [7, 0, 0]
    geometry.setLocalPosition(hyx.Vec3(1, 0, 0))
    update(node)
    assert place(node) == [7, 0, 0]
    node.setGeometry(None)
    assert node.getGeometry() is None


def test_a_node_forgets_a_geometry_that_ends():
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(1))
    node = hyxOSG.GeometryNode(geometry)
    node.setAutoRemove(False)
    del geometry
    gc.collect()
    assert node.getGeometry() is None
    update(node)


@pytest.mark.parametrize("in_simulation", [True, False])
def test_a_node_forgets_a_geometry_that_ends_with_its_body(in_simulation):
    simulation = hyxSDK.Simulation()
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)))
    node = hyxOSG.GeometryNode(body.getGeometries()[0])
    node.setAutoRemove(False)
    if in_simulation:
        simulation.add(body)
        simulation.remove(body)
        assert node.getGeometry() == body.getGeometries()[0]  # out of the simulation, but alive
    del body
    gc.collect()
    assert node.getGeometry() is None
    update(node)


@pytest.mark.parametrize("auto", [True, False])
def test_a_node_leaves_the_scene_with_its_geometry_when_told_to(geometry, auto):
    root, simulation = osg.Group(), hyxSDK.Simulation()
    body = hyx.RigidBody(geometry)
    simulation.add(body)
    node = hyxOSG.GeometryNode(geometry)
    node.setAutoRemove(auto)
    assert node.getAutoRemove() is auto
    root.addChild(node)
    simulation.remove(body)
    assert root.getNumChildren() == (0 if auto else 1)


def test_remove_node_heeds_its_own_geometry_only(geometry):
    root = osg.Group()
    node = hyxOSG.GeometryNode(geometry)
    root.addChild(node)
    node.removeNode(None, hyxCollide.Geometry(hyxCollide.Sphere(1)))
    node.removeNode(None, None)
    assert root.getNumChildren() == 1
    node.removeNode(None, geometry)
    assert root.getNumChildren() == 0


def test_a_node_leaves_all_its_parents(geometry):
    groups = [osg.Group(), osg.Group()]
    node = hyxOSG.GeometryNode(geometry)
    node.removeFromParents()
    for group in groups:
        group.addChild(node)
    node.removeFromParents()
    assert [group.getNumChildren() for group in groups] == [0, 0] and node.getNumParents() == 0


def test_render_children_are_kept_apart_and_one_is_shown():
    node = hyxOSG.GeometryNode()
    data, shape = osg.Group(), osg.Group()
    assert node.getRenderChild(node.GEOMETRY_DATA) is None
    assert node.getSelectedRenderChild() == node.GEOMETRY_DATA
    node.setRenderChild(node.GEOMETRY_DATA, shape)
    node.setRenderChild(node.RENDER_DATA, data)
    assert node.getRenderChild(node.RENDER_DATA) == data and node.getNumChildren() == 1 and node.getChild(0) == shape
    node.selectRenderChild(node.RENDER_DATA)
    assert node.getChild(0) == data and node.getSelectedRenderChild() == node.RENDER_DATA == 1
    node.setRenderChild(node.RENDER_DATA, None)
    assert node.getNumChildren() == 0 and node.getRenderChild(node.GEOMETRY_DATA) == shape
    for call in (node.selectRenderChild, node.getRenderChild):
        with pytest.raises(RuntimeError, match="render flag 3"):
            call(3)


def test_the_object_protocol_tells_the_class(geometry):
    node = hyxOSG.GeometryNode(geometry)
    assert (node.className(), node.libraryName()) == ("GeometryNode", "hyxOSG")
    assert (
        node.isSameKindAs(hyxOSG.GeometryNode()) and not node.isSameKindAs(osg.Group()) and not node.isSameKindAs(None)
    )
    fresh = node.cloneType()
    assert fresh.className() == "GeometryNode"


def test_copies_follow_the_same_geometry(geometry):
    node = hyxOSG.GeometryNode(geometry)
    node.setRenderChild(node.GEOMETRY_DATA, osg.Group())
    node.setRenderChild(node.RENDER_DATA, osg.Group())
    node.setAutoRemove(False)
    for copy in (hyxOSG.GeometryNode(node), hyxOSG.GeometryNode(node, osg.CopyOp())):
        assert copy.getGeometry() == geometry and copy.getAutoRemove() is False
        assert copy.getRenderChild(1) == node.getRenderChild(1) and copy.getNumChildren() == 1
        geometry.setLocalPosition(hyx.Vec3(3, 0, 0))
        update(copy)
        assert place(copy) == [3, 0, 0]
    holder = osg.Group()
    clone = node.clone(osg.CopyOp())
    assert clone.className() == "GeometryNode"
    with pytest.raises(
        TypeError,
        match="GeometryNode.clone.. argument 1 .* not None",
    ):
        node.clone(None)
    with pytest.raises(TypeError, match="not None"):
        hyxOSG.GeometryNode(None, None)
    assert holder.getNumChildren() == 0


def test_the_shape_callback_is_a_member_that_can_be_replaced(geometry):
    root = osg.Group()
    node = hyxOSG.createVisual(geometry, root)
    plain = hyxOSG.GeometryNode(geometry)
    before = node.getRenderChild(node.GEOMETRY_DATA)
    geometry.getShape()
    box = hyxCollide.Box(2, 2, 2)
    geometry.setShape(box)
    rebuilt = node.getRenderChild(node.GEOMETRY_DATA)
    assert rebuilt != before and rebuilt.getBound().radius() == pytest.approx(2 * 3**0.5)
    node.shapeCallback = plain.shapeCallback  # an empty one
    box.setHalfExtents(hyx.Vec3(1, 1, 1))
    assert node.getRenderChild(node.GEOMETRY_DATA) == rebuilt
    with pytest.raises(TypeError, match="invalid null reference"):
        _hyxOSG.GeometryNode_shapeCallback_set(node, None)
