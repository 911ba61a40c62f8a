"""Models of MJCF files against the reading of the format's own library."""

import pathlib

import gymnasium
import hyx
import hyxtavlang
import mujoco
import numpy
import pytest

ASSETS = pathlib.Path(gymnasium.__file__).parent / "envs" / "mujoco" / "assets"
FILES = sorted(ASSETS.glob("*.xml"))
SINGLE = {mujoco.mjtJoint.mjJNT_HINGE: "Hinge", mujoco.mjtJoint.mjJNT_SLIDE: "Prismatic"}


@pytest.fixture(params=FILES, ids=lambda path: path.stem)
def pair(request, app):
    """What we and what the format's library read from one file."""
    app.getSimulation().setGravity(hyx.Vec3(0, 0, -9.81))
    result = app.loadTavLangFile(str(request.param), None)
    assert result.getErrors() == ()
    return result, mujoco.MjModel.from_xml_path(str(request.param))


def nodes(result, kind):
    return [node for node in result.model.children if node.type.startswith(kind)]


def bodies(result):
    found = nodes(result, "Physics3D.Body")
    return found if found[0].name == "world" else [None, *found]


def tensor(xx, yy, zz, xy, xz, yz):
    return numpy.array([[xx, xy, xz], [xy, yy, yz], [xz, yz, zz]])


def turn(quaternion):
    matrix = numpy.zeros(9)
    mujoco.mju_quat2Mat(matrix, quaternion)
    return matrix.reshape(3, 3)


def test_bodies_weigh_and_stand_as_the_format_says(pair):
    result, model = pair
    data = mujoco.MjData(model)
    mujoco.mj_kinematics(model, data)
    ours = bodies(result)
    assert len(ours) == model.nbody
    for index in range(1, model.nbody):
        given = ours[index].properties
        assert ours[index].name == model.body(index).name
        assert given["mass"] == pytest.approx(model.body_mass[index], rel=1e-9)
        assert given["centerOfMass"] == pytest.approx(model.body_ipos[index], abs=1e-9)
        axes = turn(model.body_iquat[index])
        expected = axes @ numpy.diag(model.body_inertia[index]) @ axes.T
        assert tensor(*given["inertia"]) == pytest.approx(expected, rel=1e-9, abs=1e-9 * expected.max())
        place = numpy.array(given["transform"]).reshape(4, 4)
        assert place[3, :3] == pytest.approx(data.xpos[index], abs=1e-9)
        assert place[:3, :3].T == pytest.approx(data.xmat[index].reshape(3, 3), abs=1e-9)


def test_joints_turn_as_the_format_says(pair):
    result, model = pair
    ours = [node for node in nodes(result, "Robotics.Joints") if "Lock" not in node.type]
    assert [node.name for node in ours] == [model.joint(index).name for index in range(model.njnt)]
    for index, node in enumerate(ours):
        given, kind = node.properties, SINGLE.get(model.jnt_type[index])
        if not kind:
            continue
        assert kind in node.type
        assert given["axis"] == pytest.approx(model.jnt_axis[index], abs=1e-9)
        assert given["anchor"] == pytest.approx(model.jnt_pos[index], abs=1e-9)
        assert ("lower" in given) == model.jnt_limited[index]
        if "lower" in given:
            assert (given["lower"], given["upper"]) == pytest.approx(tuple(model.jnt_range[index]), abs=1e-9)
        address = model.jnt_dofadr[index]
        assert given["damping"] == model.dof_damping[address] and given["friction"] == model.dof_frictionloss[address]
        assert given["stiffness"] == model.jnt_stiffness[index]
        assert given["start"] == pytest.approx(model.qpos0[model.jnt_qposadr[index]])


def sizes(node):
    given, kind = node.properties, node.type.rpartition(".")[2]
    if kind == "Plane":
        return list(given["halfSizes"])
    values = {"Box": "halfExtents", "Ellipsoid": "radii"}
    if kind in values:
        return list(given[values[kind]])
    return [given["radius"]] + ([given["height"] / 2] if "height" in given else [])


def test_shapes_are_those_of_the_format(pair):
    result, model = pair
    found = [shape for body in bodies(result) if body for shape in body.children if "Geometries" in shape.type]
    assert len(found) == model.ngeom
    for index, shape in enumerate(found):
        place = numpy.array(shape.properties["transform"]).reshape(4, 4)
        assert place[3, :3] == pytest.approx(model.geom_pos[index], abs=1e-9)
        assert place[:3, :3].T == pytest.approx(turn(model.geom_quat[index]), abs=1e-9)
        expected = sizes(shape)
        assert expected == pytest.approx(model.geom_size[index][: len(expected)], abs=1e-9)
        assert shape.properties["friction"] == model.geom_friction[index][0]
        assert shape.properties["belongsTo"] == model.geom_contype[index]
        assert shape.properties["collidesWith"] == model.geom_conaffinity[index]


def test_actuators_pull_as_the_format_says(pair):
    result, model = pair
    ours = nodes(result, "Control")
    assert len(ours) == model.nu
    for index, node in enumerate(ours):
        given = node.properties
        assert given["joint"] == model.joint(model.actuator_trnid[index][0]).name
        assert given["gear"] == model.actuator_gear[index][0]
        assert (given["lowerControl"], given["upperControl"]) == tuple(model.actuator_ctrlrange[index])


def random_poses(result, model, count=10):
    """Positions of our joints, and those of all of the format's."""
    random = numpy.random.default_rng(1)
    address = [model.jnt_qposadr[model.joint(name).id] for name in result.joints.names]
    for _ in range(count):
        pose = model.qpos0.copy()
        pose[address] += random.uniform(-1, 1, len(address))
        yield pose[address], pose


def test_joint_positions_put_bodies_where_the_format_does(pair):
    result, model = pair
    data = mujoco.MjData(model)
    assembly = result.getAssembly()
    for positions, pose in random_poses(result, model):
        result.joints.position = positions
        assert result.joints.position == pytest.approx(positions, abs=1e-9)
        data.qpos[:] = pose
        mujoco.mj_kinematics(model, data)
        for index in range(1, model.nbody):
            body = assembly.getRigidBody(model.body(index).name)
            if not model.body(index).name or body is None or body.getMotionControl() == hyx.RigidBody.STATIC:
                continue  # a part of another one
            assert tuple(body.getPosition()) == pytest.approx(data.xpos[index], abs=1e-9)
            x, y, z, w = body.getRotation()
            assert abs(numpy.dot((w, x, y, z), data.xquat[index])) == pytest.approx(1, abs=1e-9)


def test_gravity_pulls_at_the_joints_as_in_the_format(pair):
    result, model = pair
    model.dof_armature[:] = 0
    data = mujoco.MjData(model)
    model.opt.gravity[:] = 0, 0, -9.81
    # Bodies between the joints of one body have their names with a slash, and next to no weight.
    massive = [
        body
        for body in result.getAssembly().getRigidBodies()
        if "/" not in body.getName() and body.getMotionControl() == hyx.RigidBody.DYNAMICS
    ]

    def energy(positions):
        result.joints.position = positions
        return sum(9.81 * body.getMass() * body.getWorldCenterOfMass().z for body in massive)

    dofs = [model.jnt_dofadr[model.joint(name).id] for name in result.joints.names]
    for positions, pose in random_poses(result, model):
        data.qpos[:] = pose
        mujoco.mj_forward(model, data)
        step = 1e-4
        for index, dof in enumerate(dofs):
            change = numpy.zeros(len(positions))
            change[index] = step
            slope = (energy(positions + change) - energy(positions - change)) / (2 * step)
            assert slope == pytest.approx(data.qfrc_bias[dof], rel=1e-6, abs=1e-6)
