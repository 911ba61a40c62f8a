"""What is asked for by a name that is not there: the answer tells which names were probably meant."""

import hyx
import hyxIO
import hyxSDK
import pytest


@pytest.fixture
def simulation():
    made = hyxSDK.Simulation()
    arm = hyxSDK.Assembly("arm")
    for name in ("upper_arm", "lower_arm", "hand"):
        arm.add(hyx.RigidBody(name))
    joint = hyx.BallJoint(hyx.Vec3(0, 0, 0), arm.getRigidBody("hand"))
    joint.setName("wrist")
    arm.add(joint)
    made.add(arm)
    return made


def test_bodies_and_joints_are_found_by_name(simulation):
    arm = simulation.getAssembly("arm")
    for owner in (simulation, arm):
        assert owner.body("hand") == simulation.getRigidBody("hand")
        assert owner.constraint("wrist") == simulation.getConstraint("wrist")


@pytest.mark.parametrize(
    "ask, told",
    [
        (lambda sim: sim.body("uper_arm"), "'uper_arm'; did you mean 'upper_arm'"),
        (lambda sim: sim.getAssembly("arm").body("hands"), "did you mean 'hand'"),
        (lambda sim: sim.constraint("wirst"), "did you mean 'wrist'"),
        (lambda sim: sim.body("zzz"), "none of the name 'zzz'\"$"),
    ],
)
def test_names_that_are_not_there_raise_with_the_nearest(simulation, ask, told):
    with pytest.raises(KeyError, match=told):
        ask(simulation)


@pytest.mark.parametrize(
    "argument, told",
    [
        ("--frame-rat=3", "did you mean --frame-rate"),
        ("--framrate", "did you mean --frame-rate"),
        ("--quit", "not expected: --quit$"),
    ],
)
def test_unknown_options_tell_the_nearest(argument, told):
    parser = hyxIO.ArgumentParser()
    parser.addOption("--frame-rate", "frames per second", "30")
    with pytest.raises(ValueError, match=told):
        parser.parse([argument])
