"""A simulation steps exactly, forgets what left it, and goes back to saved states."""

import gc
import math

import hyx
import hyxCollide
import hyxSDK
import hyxWire
import pytest
from physics_scene import box, ground, run, simulation


def pile(floor=None):
    return simulation(
        floor or ground(), *(box(0.2, (i % 5 * 0.43, i // 5 % 4 * 0.43, 0.3 + i // 20 * 0.5)) for i in range(60))
    )


def poses(world):
    return [(tuple(b.getPosition()), tuple(b.getRotation())) for b in world.getRigidBodies()]


def test_equal_simulations_stay_equal_to_the_last_bit():
    first, second = pile(), pile()
    for _ in range(120):
        first.step()
        second.step()
    assert poses(first) == poses(second)
    assert first.getSpace().getNumContactPoints() > 50


@pytest.mark.parametrize("floor", [ground, lambda: hyxCollide.Geometry(hyxCollide.Plane())], ids=["body", "geometry"])
def test_a_restored_state_goes_on_the_same_way_each_time(floor):
    world = pile(floor())
    run(world, 1)
    state, then = world.saveState(), poses(world)
    run(world, 2)
    assert poses(world) != then
    futures = []
    for _ in range(2):
        world.restoreState(state)
        assert poses(world) == then and world.getTimeStamp() == pytest.approx(1)
        run(world, 2)
        futures.append(poses(world))
    assert futures[0] == futures[1]


def test_a_state_survives_in_a_file(tmp_path):
    world = simulation(box(0.5, (1, 2, 3)))
    file = str(tmp_path / "state")
    world.save(file)
    run(world, 1)
    world.restore(file)
    assert tuple(world.getRigidBodies()[0].getPosition()) == pytest.approx((1, 2, 3))
    with pytest.raises(FileNotFoundError, match="nowhere"):
        world.restore(str(tmp_path / "nowhere"))
    with pytest.raises(FileNotFoundError, match="missing"):
        world.save(str(tmp_path / "missing" / "state"))


@pytest.mark.parametrize(
    "damage",
    [
        lambda state: b"",
        lambda state: state[:-1],
        lambda state: b"other" + state,
        lambda state: state + b"x",
        lambda state: state[:-16] + b"\xff" * 16,
        lambda state: simulation().saveState(),
    ],
)
def test_a_damaged_state_changes_nothing(damage):
    world = simulation(box(0.5, (1, 2, 3)))
    state = world.saveState()
    run(world, 0.5)
    before = poses(world)
    with pytest.raises(RuntimeError):
        world.restoreState(damage(state))
    assert poses(world) == before and world.getTimeStamp() == pytest.approx(0.5)


def test_time_is_counted_in_steps():
    world = simulation()
    world.setTimeStep(0.1)
    assert world.stepTo(1.0) == 10 and world.getTimeStamp() == pytest.approx(1, abs=1e-12)
    assert world.stepTo(0.5) == 0
    for never in (1e300, 1e16):
        with pytest.raises(RuntimeError, match="more steps away"):
            world.stepTo(never)
    world.setTimeStep(0.25)
    assert world.getTimeStamp() == pytest.approx(1, abs=1e-12)
    world.setTimeStamp(100.0)
    world.step()
    assert world.getTimeStamp() == 100.25
    for step in (0.0, -1.0, math.nan, math.inf):
        with pytest.raises(RuntimeError):
            world.setTimeStep(step)


def test_gravity_pulls_where_it_is_set_to():
    falling = box(0.5)
    world = simulation(falling)
    world.setGravity(hyx.Vec3(1, 0, 0))
    run(world, 1)
    assert tuple(falling.getVelocity()) == pytest.approx((1, 0, 0))


def test_what_is_removed_leaves_space_contacts_and_lists():
    first, second = box(0.5, (0, 0, 0.5), name="first"), box(0.5, (0, 0, 1.5), name="second")
    world = simulation(ground(), first, second)
    run(world, 1)
    revision = world.getStructureRevision()
    assert world.remove(first) and not world.remove(first)
    assert world.getStructureRevision() > revision
    assert world.getRigidBody("first") is None and world.getRigidBody("second").getName() == "second"
    assert len(world.getSpace().getGeometries()) == 2
    run(world, 2)
    assert second.getPosition().z == pytest.approx(0.5, abs=1e-2)
    world.add(first)
    assert first.getSimulation().getRigidBody("first").getName() == "first"


def test_an_object_is_in_one_simulation_only():
    shared = box(0.5)
    simulation_of_it, other = simulation(shared), simulation()
    with pytest.raises(RuntimeError, match="another simulation"):
        other.add(shared)
    simulation_of_it.add(shared)
    assert len(simulation_of_it.getRigidBodies()) == 1
    simulation_of_it.remove(shared)
    other.add(shared)
    assert len(other.getRigidBodies()) == 1


def test_a_simulation_that_ends_lets_its_bodies_go():
    survivor = box(0.5)
    world = simulation(survivor, ground())
    space = world.getSpace()
    run(world, 0.1)
    del world
    gc.collect()
    assert survivor.getSimulation() is None
    with pytest.raises(RuntimeError, match="ended"):
        space.getGeometries()
    other = simulation(survivor)
    run(other, 0.5)
    assert survivor.getVelocity().z < -4


def test_references_are_returned_over_many_rounds():
    world = simulation(ground())
    keeper = box(0.2, (0, 0, 1))
    for _ in range(200):
        world.add(keeper)
        joint = hyx.BallJoint(hyx.Vec3(0, 0, 1), keeper)
        world.add(joint)
        world.step()
        assert len(world.getRigidBodies()) == 2 and len(world.getSpace().getGeometries()) == 2
        world.remove(joint)
        world.remove(keeper)
    del joint
    gc.collect()
    assert keeper.getReferenceCount() == 1


def test_cleanup_empties_the_simulation():
    assembly = hyxSDK.Assembly("assembly")
    assembly.add(box(0.5))
    world = simulation(ground(), hyxCollide.Geometry(hyxCollide.Sphere(1)), assembly, hyx.Material("steel"))
    run(world, 0.1)
    world.cleanup()
    assert (
        world.getRigidBodies()
        == world.getSpace().getGeometries()
        == world.getAssemblies()
        == world.getMaterials()
        == []
    )
    assert world.getTimeStamp() == 0
    world.step()


def test_what_is_built_after_cleanup_goes_on_as_in_a_new_simulation():
    def fill(world):  # they fall onto each other in an order that a used collision tree would change
        hung = box(0.2, (2, 0, 3))
        boxes = [box(0.25, (i % 3 * 0.5 + 0.01 * i, i % 2 * 0.4, 0.5 + i * 0.45)) for i in range(20)]
        for item in (ground(), *boxes, hung, hyx.Hinge((2, 0, 4), (0, 1, 0), hung)):
            world.add(item)
        run(world, 1.5)
        return poses(world)

    world = hyxSDK.Simulation()
    first = fill(world)
    world.cleanup()
    assert fill(world) == first


def test_an_assembly_enters_moves_and_leaves_as_one():
    outer, inner = hyxSDK.Assembly("outer"), hyxSDK.Assembly("inner")
    first, second = box(0.2, (0, 0, 0), name="first"), box(0.2, (1, 0, 0), name="second")
    joint = hyx.LockJoint(first, second)
    joint.setName("joint")
    outer.add(first)
    outer.add(inner)
    inner.add(second)
    inner.add(joint)
    world = simulation(outer)
    assert {b.getName() for b in world.getRigidBodies()} == {"first", "second"}
    assert world.getConstraint("joint").getNumBodies() == 2
    assert world.getAssembly("inner").getRigidBody("second") is not None
    outer.transform(hyx.AffineMatrix4x4(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)), hyx.Vec3(0, 0, 5)))
    assert tuple(second.getPosition()) == pytest.approx((0, 1, 5))
    late = box(0.2, (9, 0, 0), name="late")
    inner.add(late)
    assert world.getRigidBody("late") is not None
    assert world.remove(outer)
    assert world.getRigidBodies() == [] and late.getSimulation() is None
    with pytest.raises(RuntimeError, match="contain itself"):
        inner.add(outer)


def test_a_body_gains_and_loses_geometries_while_it_is_simulated():
    growing = box(0.5, (0, 0, 0.5))
    world = simulation(ground(), growing)
    run(world, 0.5)
    foot = hyxCollide.Geometry(hyxCollide.Box(0.1, 0.1, 0.5))
    growing.add(foot, hyx.AffineMatrix4x4(hyx.Vec3(0, 0, -0.6)))
    assert len(world.getSpace().getGeometries()) == 3
    run(world, 2)
    assert growing.getPosition().z > 0.6
    growing.remove(foot)
    run(world, 2)
    assert growing.getPosition().z == pytest.approx(0.5, abs=2e-2)


def test_sleeping_bodies_wake_when_their_support_goes():
    lower, upper = box(0.5, (0, 0, 0.5)), box(0.5, (0, 0, 1.5))
    world = simulation(ground(), lower, upper)
    world.setEnableAutoSleep(True)
    run(world, 5)
    resting = upper.getPosition()
    run(world, 1)
    assert upper.getPosition() == resting
    world.remove(lower)
    run(world, 2)
    assert upper.getPosition().z == pytest.approx(0.5, abs=2e-2)


def test_sleeping_bodies_wake_when_gravity_turns():
    resting = box(0.5, (0, 0, 0.5))
    world = simulation(ground(), resting)
    world.setEnableAutoSleep(True)
    run(world, 5)
    world.setGravity(hyx.Vec3(0, 0, 2))
    run(world, 2)
    assert resting.getVelocity().z == pytest.approx(4, rel=1e-2)


def test_poses_of_all_bodies_come_as_one_array():
    numpy = pytest.importorskip("numpy")
    world = simulation(box(0.5, (1, 2, 3)), box(0.5, (4, 5, 6)))
    world.getRigidBodies()[1].setRotation(hyx.Quat(0, 0, 0.6, 0.8))
    poses = numpy.asarray(world.getPoses())
    assert poses.shape == (2, 7)
    assert poses[0].tolist() == [1, 2, 3, 0, 0, 0, 1]
    assert poses[1] == pytest.approx([4, 5, 6, 0, 0, 0.6, 0.8])
    assert numpy.asarray(simulation().getPoses()).size == 0


def test_joints_come_back_as_what_they_are():
    hung = box(0.5)
    hinge, ball = hyx.Hinge(hyx.Vec3(), hyx.Vec3(0, 0, 1), hung), hyx.BallJoint(hyx.Vec3(), hung)
    hinge.setName("hinge")
    world = simulation(hung, hinge, ball)
    assert [type(joint) for joint in world.getConstraints()] == [hyx.Hinge, hyx.BallJoint]
    world.getConstraint("hinge").getMotor1D().setSpeed(3.0)
    assert hinge.getMotor1D().getSpeed() == 3
    assert world.getConstraint("other") is None


def test_statistics_tell_of_the_last_step():
    world = pile()
    world.step()
    statistics = world.getStatistics()
    assert 0 < statistics["collision"] + statistics["solver"] <= statistics["step"] < 1


@pytest.mark.parametrize("count", [0, -1, 2**31 - 1, 2**31, 2**63])
@pytest.mark.parametrize("owner", [hyxSDK.Simulation, lambda: hyxWire.Wire(0.02, 6)], ids=["solver", "wire"])
def test_rounds_without_end_are_refused(owner, count):
    subject = owner()
    set_count = getattr(subject, "setNumIterations", None) or subject.setNumSubsteps
    with pytest.raises((RuntimeError, OverflowError, TypeError), match="setNum|takes 1 to"):
        set_count(count)


def test_a_step_of_an_emitter_makes_a_bounded_number_of_bodies():
    emitter = hyx.RigidBodyEmitter()
    world = simulation(emitter)
    emitter.step(1e308)
    assert len(world.getRigidBodies()) == 1000
