"""Who holds scene-graph objects, counted."""
import gc

import _hyxOSG
import _osg
import hyx
import hyxOSG
import osg
import pytest

NODES = {"GeometryNode": hyxOSG.GeometryNode, "Transform": hyxOSG.Transform}


def count(node):
    return _osg.Referenced_referenceCount(node)


@pytest.mark.parametrize("name", NODES)
def test_construction_takes_one_reference_and_deletion_drops_it(name):
    node = NODES[name]()
    assert count(node) == 1
    holder = osg.Group()
    holder.addChild(node)
    assert count(node) == 2
    getattr(_hyxOSG, f"delete_{name}")(node)
    assert count(holder.getChild(0)) == 2  # the group's, and that of the proxy just made
    assert holder.getNumChildren() == 1


@pytest.mark.parametrize("name", NODES)
def test_the_end_of_the_proxy_drops_its_reference(name):
    node = NODES[name]()
    holder = osg.Group()
    holder.addChild(node)
    del node
    gc.collect()
    assert count(holder.getChild(0)) == 2


@pytest.mark.parametrize("name", ["GeometryNode", "Transform", "Group"])
def test_helpers_take_and_release_one_reference(name):
    node = osg.Group() if name == "Group" else NODES[name]()
    assert getattr(_hyxOSG, f"{name}_reference")(node) is None
    assert count(node) == 2
    assert getattr(_hyxOSG, f"{name}_unreference")(node) is None
    assert count(node) == 1
    getattr(_hyxOSG, f"{name}_reference")(None)
    getattr(_hyxOSG, f"{name}_unreference")(None)


def test_the_particle_drawable_is_handed_over_uncounted():
    made = hyxOSG.ParticleSystemDrawable(None)
    assert count(made) == 0
    geode = osg.Geode()
    geode.addDrawable(made)
    assert count(made) == 1


def test_created_nodes_are_borrowed():
    node = hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 1, 1, 1), 1.0)
    assert count(node) == 0
    holder = osg.Group()
    holder.addChild(node)
    del node
    gc.collect()
    assert holder.getNumChildren() == 1 and holder.getChild(0).getBound().valid()


def test_results_of_clone_are_borrowed():
    for made in (hyxOSG.GeometryNode(), hyxOSG.ParticleSystemDrawable(None)):
        clone = made.clone(osg.CopyOp())
        assert count(clone) == 0
