"""Trees of any depth end well: refused where walks recur, walked in a loop where they do not."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import pytest

DEEP = 40_000  # levels, more than recursion has stack for


def test_components_are_no_rings_and_not_too_deep():
    upper, lower = hyxSDK.Assembly(), hyxSDK.Assembly()
    upper.addObject(lower, False)
    with pytest.raises(RuntimeError, match="a component cannot contain itself"):
        lower.addObject(upper, False)
    with pytest.raises(RuntimeError, match="at most 1000 levels deep"):
        for _ in range(DEEP):
            below = hyxSDK.Assembly()
            lower.addObject(below, False)
            lower = below
    with pytest.raises(RuntimeError, match="at most 1000 levels deep"):
        for _ in range(DEEP):
            above = hyxSDK.Assembly()
            above.addObject(upper, False)
            upper = above


def test_a_long_chain_of_frames_is_walked_and_ends():
    tip = hyx.Frame()
    tip.setLocalTranslate((0, 0, 1))
    for _ in range(DEEP):
        below = hyx.Frame()
        below.setParent(tip)
        tip = below
    assert tip.getTranslate().z == 1
    del tip, below


def test_a_robot_of_too_many_links_in_a_row_is_refused(tmp_path):
    links = "".join(f'<link name="{i}"/>' for i in range(DEEP))
    joints = "".join(
        f'<joint name="j{i}" type="fixed"><parent link="{i}"/><child link="{i + 1}"/></joint>' for i in range(DEEP - 1)
    )
    path = tmp_path / "chain.urdf"
    path.write_text(f'<robot name="chain">{links}{joints}</robot>')
    with hyxOSG.ExampleApplication() as app, pytest.warns(RuntimeWarning, match="links in a row"):
        app.init(None)
        app.initSimulation()
        assert not app.getSimulation().getRigidBodies()
        app.showFile(str(path))


def test_a_script_that_fails_in_a_listener_of_an_ending_assembly_ends_nothing():
    class Listener(hyxOSG.GuiEventListener):
        def setContext(self, context):
            raise KeyError(context)

    assembly = hyxSDK.Assembly()
    listener = Listener()
    with pytest.raises(KeyError):
        assembly.add(listener)
    del assembly, listener


def test_many_bodies_at_one_place_go_out_in_a_moment():
    world = hyxSDK.Simulation()
    for _ in range(1500):
        world.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5))))
    world.cleanup()
    assert not world.getRigidBodies()
