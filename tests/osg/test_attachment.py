"""Scenes without rings, and of a depth that every walk has stack for."""

import time

import hyx
import hyxCollide
import hyxOSG
import osg
import osgViewer
import pytest

RING, DEPTH = "cannot stand below itself", "at most 1000 groups deep"


def ways_in(group):
    """Each way to put a node into a group that has one child."""
    ways = [group.addChild]
    if hasattr(group, "insertChild"):
        first = group.getShadowedScene() if hasattr(group, "getShadowedScene") else group
        ways += [
            lambda node: group.insertChild(0, node),
            lambda node: group.setChild(0, node),
            lambda node: group.replaceChild(first.getChild(0), node),
        ]
    return ways


GROUPS = {
    "group": osg.Group,
    "switch": osg.Switch,
    "matrix transform": osg.MatrixTransform,
    "transform": hyxOSG.Transform,
    "decorator": lambda: hyxOSG.SceneDecorator(64, 48),
}


@pytest.mark.parametrize("make", GROUPS.values(), ids=GROUPS.keys())
def test_a_group_never_stands_below_itself(make):
    group, above = make(), osg.Group()
    group.addChild(osg.Group())
    above.addChild(group)
    for put in ways_in(group):
        for node in (group, above):
            with pytest.raises((RuntimeError, ValueError), match=RING):
                put(node)
    assert above.getNumParents() == 0 and group.getNumParents() == 1


def test_render_children_form_no_rings():
    node, above, other = hyxOSG.GeometryNode(), osg.Group(), hyxOSG.GeometryNode()
    above.addChild(node)
    for flag in (node.RENDER_DATA, node.GEOMETRY_DATA):
        for ring in (node, above):
            with pytest.raises((RuntimeError, ValueError), match=RING):
                node.setRenderChild(flag, ring)
    hidden, other_hidden = osg.Group(), osg.Group()
    node.setRenderChild(node.RENDER_DATA, hidden)
    other.setRenderChild(node.RENDER_DATA, other_hidden)
    hidden.addChild(other)
    other_hidden.addChild(node)  # hidden children are no part of the scene, until they are shown
    copy = node.clone(osg.CopyOp(7))
    assert copy.getRenderChild(node.RENDER_DATA).getChild(0).className() == "GeometryNode"
    node.selectRenderChild(node.RENDER_DATA)
    with pytest.raises((RuntimeError, ValueError), match=RING):
        other.selectRenderChild(node.RENDER_DATA)
    assert other.getSelectedRenderChild() == node.GEOMETRY_DATA


def test_the_scene_of_an_application_stands_once(window):
    for node in (window.getSceneRoot(), window.getSceneDecorator()):
        with pytest.raises(RuntimeError, match=RING):
            window.getSceneRoot().addChild(node)


@pytest.mark.parametrize("upwards", [False, True])
def test_a_scene_has_a_greatest_depth(upwards):
    first = last = osg.Group()
    with pytest.raises(RuntimeError, match=DEPTH):
        for _ in range(100_000):
            node = osg.Group()
            (node.addChild(last) if upwards else last.addChild(node))
            last = node
    with pytest.raises(RuntimeError, match=DEPTH):
        halves = [osg.Group(), first if not upwards else last]
        deep = osg.Group()
        halves[0].addChild(deep)
        deep.addChild(halves[1])


def test_shared_groups_are_passed_once():
    """Each level doubles the ways to the lowest group: 2 to the power of 300."""
    begun = time.monotonic()
    top = osg.Group()
    for _ in range(300):
        left, right, above = osg.Group(), osg.Group(), osg.Group()
        for side in (left, right):
            side.addChild(top)
            above.addChild(side)
        top = above
    assert time.monotonic() - begun < 5


def test_a_viewer_shows_no_scene_that_its_own_camera_is_in():
    viewer, above = osgViewer.Viewer(), osg.Group()
    above.addChild(viewer.getCamera())
    for scene in (viewer.getCamera(), above):
        with pytest.raises(RuntimeError, match=RING):
            viewer.setSceneData(scene)
    viewer.setSceneData(osg.Group())


def test_a_switch_turns_on_only_children_that_it_has():
    choice = osg.Switch()
    for place in (0, 2**32 - 1):
        with pytest.raises(IndexError):
            choice.setSingleChildOn(place)


@pytest.mark.parametrize("geode", [osg.Geode, hyxOSG.Text, hyxOSG.SplineShader])
def test_geodes_take_drawables_only(geode):
    """Whose visitors take all that they hold for drawables."""
    parent, body = geode(), hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
    before = parent.getNumChildren()
    attempts = [
        lambda: parent.addChild(osg.Group()),
        lambda: parent.insertChild(0, osg.Group()),
        lambda: hyxOSG.createVisual(body, parent),
        lambda: hyxOSG.createAxes(hyx.AffineMatrix4x4(), parent),
        lambda: hyxOSG.PressureFieldRenderer(parent),
        lambda: hyxOSG.PickHandler(osgViewer.Viewer(), parent),
    ]
    for attempt in attempts:
        with pytest.raises((ValueError, RuntimeError), match="holds drawables only"):
            attempt()
    assert parent.getNumChildren() == before
