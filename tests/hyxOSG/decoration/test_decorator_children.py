"""The decorator's children are those of the shadowed scene."""

import hyx
import hyxOSG
import pytest
from decorated_stage import changed, stage


@pytest.fixture
def decorator():
    """One of its own, so that the indices begin at 0."""
    return hyxOSG.SceneDecorator(64, 48)


def names(group):
    return [group.getChild(i).getName() for i in range(group.getNumChildren())]


def node(name):
    made = hyxOSG.Transform()
    made.setName(name)
    return made


def test_children_go_into_the_shadowed_scene(decorator):
    nodes = [node(name) for name in "abc"]
    assert decorator.addChild(nodes[0]) is True
    assert decorator.addChild(nodes[2]) is True
    assert decorator.insertChild(1, nodes[1]) is True
    assert names(decorator.getShadowedScene()) == ["a", "b", "c"]
    assert names(decorator.getNonShadowedScene()) == []
    assert decorator.insertChild(99, node("end")) is True
    assert names(decorator.getShadowedScene()) == ["a", "b", "c", "end"]


def test_children_are_replaced(decorator):
    first, second, other = node("first"), node("second"), node("other")
    decorator.addChild(first)
    decorator.getNonShadowedScene().addChild(second)
    assert decorator.replaceChild(first, other) is True
    assert names(decorator.getShadowedScene()) == ["other"]
    assert decorator.replaceChild(second, first) is True
    assert names(decorator.getNonShadowedScene()) == ["first"]
    assert decorator.replaceChild(second, first) is False, "it is no longer there"
    assert decorator.setChild(0, second) is True
    assert names(decorator.getShadowedScene()) == ["second"]
    assert decorator.setChild(1, other) is False


def test_children_are_removed(decorator):
    nodes = [node(name) for name in "abcdef"]
    for made in nodes:
        decorator.addChild(made)
    aside = node("aside")
    decorator.getNonShadowedScene().addChild(aside)
    assert decorator.removeChild(nodes[0]) is True
    assert decorator.removeChild(nodes[0]) is False
    assert decorator.removeChild(aside) is True
    assert names(decorator.getNonShadowedScene()) == []
    assert decorator.removeChild(0) is True
    assert names(decorator.getShadowedScene()) == ["c", "d", "e", "f"]
    assert decorator.removeChild(0, 2) is True
    assert names(decorator.getShadowedScene()) == ["e", "f"]
    assert decorator.removeChildren(1, 99) is True
    assert names(decorator.getShadowedScene()) == ["e"]
    assert decorator.removeChild(5) is False
    assert decorator.removeChildren(0, 0) is False


@pytest.mark.parametrize(
    "call",
    [
        lambda d: d.addChild(None),
        lambda d: d.insertChild(0, None),
        lambda d: d.setChild(0, None),
        lambda d: d.removeChild(None),
        lambda d: d.replaceChild(None, None),
    ],
)
def test_null_is_no_child(decorator, call):
    assert call(decorator) is False


def test_a_negative_index_is_refused(decorator):
    with pytest.raises(OverflowError):
        decorator.insertChild(-1, node("a"))
    with pytest.raises(TypeError, match="SceneDecorator.removeChild"):
        decorator.removeChild(-1)


def test_what_is_added_is_drawn(stage):
    plain = stage.picture()
    sphere = hyxOSG.createSphere(hyx.Vec3(1.5, 0, 1), hyx.Vec4(0, 1, 0, 1), 0.4)
    stage.decorator.addChild(sphere)
    assert changed(stage.picture(), plain).sum() > 200
    stage.decorator.removeChild(sphere)
    assert not changed(stage.picture(), plain).any()
