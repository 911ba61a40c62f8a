"""References that scripts take and release by hand, and results that nobody holds."""

import gc

import _hyxOSG
import _osg
import hyx
import hyxOSG
import osg
import pytest

MAKERS = {"GeometryNode": hyxOSG.GeometryNode, "Transform": hyxOSG.Transform, "Text": hyxOSG.Text, "Group": osg.Group}


def count(node):
    return _osg.Referenced_referenceCount(node)


@pytest.mark.parametrize("name", MAKERS)
def test_helpers_take_and_release_one_reference(name):
    node = MAKERS[name]()
    assert getattr(_hyxOSG, f"{name}_reference")(node) is None
    assert count(node) == 2
    assert getattr(_hyxOSG, f"{name}_unreference")(node) is None
    assert count(node) == 1
    getattr(_hyxOSG, f"{name}_reference")(None)
    getattr(_hyxOSG, f"{name}_unreference")(None)


def test_created_nodes_are_held_by_their_proxy():
    node = hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 1, 1, 1), 1.0)
    assert count(node) == 1 and not node.thisown
    holder = osg.Group()
    holder.addChild(node)
    del node
    gc.collect()
    assert holder.getNumChildren() == 1 and holder.getChild(0).getBound().valid()


def test_results_of_clone_are_held_by_their_proxy():
    for made in (hyxOSG.GeometryNode(), hyxOSG.ParticleSystemDrawable(None)):
        clone = made.clone(osg.CopyOp())
        assert count(clone) == 1
