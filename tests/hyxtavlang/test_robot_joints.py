"""The physics of robot descriptions: friction, inertia, and the kinds of joints."""

import math

import hyx
import hyxtavlang
import numpy
import pytest
from physics_scene import GRAVITY

LINK = (
    '<link name="{0}"><inertial><mass value="{1}"/>'
    '<inertia ixx="{2}" iyy="{3}" izz="{4}" ixy="{5}" ixz="{6}" iyz="{7}"/></inertial></link>'
)
WHEEL = LINK.format("wheel", 2, 0.5, 0.5, 0.5, 0, 0, 0)


@pytest.fixture
def load(app, tmp_path):
    """Loads links and joints under a static base; gravity is off."""

    def make(text, **choices):
        app.getSimulation().setGravity(hyx.Vec3())
        (tmp_path / "model.urdf").write_text(f'<robot name="model"><link name="base"/>{text}</robot>')
        result = app.loadTavLangFile(str(tmp_path / "model.urdf"), None)
        assert result.getErrors() == ()
        return app.getSimulation()

    return make


def joint(kind, child="wheel", name="axle", axis="0 0 1", inside="", parent="base"):
    return (
        f'<joint name="{name}" type="{kind}"><parent link="{parent}"/><child link="{child}"/>'
        f'<axis xyz="{axis}"/>{inside}</joint>'
    )


def test_damping_slows_a_wheel_exponentially(load):
    world = load(WHEEL + joint("continuous", inside='<dynamics damping="0.25"/>'))
    world.setTimeStep(1e-3)
    wheel, axle = world.getRigidBody("wheel"), world.getConstraints()[0]
    assert axle.getViscosity() == 0.25 and axle.getFriction() == 0
    wheel.setAngularVelocity(hyx.Vec3(0, 0, 4))
    for _ in range(1000):
        world.step()
    assert axle.getCurrentSpeed() == pytest.approx(4 * math.exp(-0.25 / 0.5), rel=2e-3)
    rows = axle.getNumRows()
    assert axle.getRowForce(rows - 1) == pytest.approx(-0.25 * axle.getCurrentSpeed(), rel=1e-2)
    axle.setViscosity(0)
    world.step()
    assert axle.getNumRows() == rows - 1


def test_friction_takes_a_constant_torque_and_then_holds(load):
    world = load(WHEEL + joint("continuous", inside='<dynamics friction="0.5"/>'))
    world.setTimeStep(1e-3)
    wheel, axle = world.getRigidBody("wheel"), world.getConstraints()[0]
    wheel.setAngularVelocity(hyx.Vec3(0, 0, 2))
    for _ in range(1000):
        world.step()
    assert axle.getCurrentSpeed() == pytest.approx(2 - 0.5 / 0.5, rel=1e-3)
    wheel.setAngularVelocity(hyx.Vec3())
    for _ in range(1000):
        wheel.addTorque(hyx.Vec3(0, 0, 0.49))  # less than the friction
        world.step()
    assert axle.getCurrentSpeed() == pytest.approx(0, abs=1e-6)
    for _ in range(1000):
        wheel.addTorque(hyx.Vec3(0, 0, 0.75))
        world.step()
    assert axle.getCurrentSpeed() == pytest.approx((0.75 - 0.5) / 0.5, rel=1e-3)


def test_friction_of_a_slide_holds_its_load_on_a_slope(load):
    world = load(
        WHEEL
        + joint(
            "prismatic",
            axis="0 0 1",
            inside='<limit lower="-9" upper="9" effort="9" velocity="9"/><dynamics friction="10" damping="0"/>',
        )
    )
    world.setGravity(hyx.Vec3(0, 0, -4))  # 8 N
    for _ in range(60):
        world.step()
    assert world.getConstraints()[0].getAngle() == pytest.approx(0, abs=1e-6)
    world.setGravity(hyx.Vec3(0, 0, -9))  # 18 N
    for _ in range(60):
        world.step()
    assert world.getConstraints()[0].getCurrentSpeed() == pytest.approx(-(18 - 10) / 2, rel=1e-3)


@pytest.mark.parametrize("kind, axis", [("revolute", "0 0 1"), ("prismatic", "0 1 0"), ("continuous", "1 0 0")])
def test_motors_keep_the_velocity_limit(load, kind, axis):
    limit = '<limit lower="-99" upper="99" effort="1e4" velocity="1.5"/>'
    world = load(WHEEL + joint(kind, axis=axis, inside=limit))
    axle = world.getConstraints()[0]
    motor = axle.getMotor1D()
    motor.setEnable(True)
    assert motor.getMaximumSpeed() == 1.5
    for wanted, reached in ((1e9, 1.5), (-7.0, -1.5), (0.7, 0.7)):
        motor.setSpeed(wanted)
        world.step()
        start = axle.getAngle()
        for _ in range(60):
            world.step()
        assert motor.getSpeed() == wanted and motor.getTargetSpeed() == reached
        assert axle.getCurrentSpeed() == pytest.approx(reached, rel=1e-6)
        assert axle.getAngle() - start == pytest.approx(reached, rel=1e-6)


@pytest.mark.parametrize("value", [-1.0, math.nan, math.inf])
def test_resistance_must_be_a_number_that_is_not_negative(load, value):
    axle = load(WHEEL + joint("continuous")).getConstraints()[0]
    for change in (axle.setFriction, axle.setViscosity):
        with pytest.raises(RuntimeError):
            change(value)
    assert axle.getFriction() == axle.getViscosity() == 0


TENSOR = (0.5, 0.4, 0.3, 0.1, -0.05, 0.08)  # xx yy zz xy xz yz
MATRIX = numpy.array([[0.5, 0.1, -0.05], [0.1, 0.4, 0.08], [-0.05, 0.08, 0.3]])


@pytest.mark.parametrize("turn", ["0 0 0", "0.3 -0.7 1.1"])
def test_products_of_inertia_turn_a_torque_aside(load, turn):
    link = LINK.format("wheel", 2, *TENSOR).replace("<mass", f'<origin xyz="0.1 0.2 0.3" rpy="{turn}"/><mass')
    world = load(link + joint("floating"))
    body = world.getRigidBody("wheel")
    roll, pitch, yaw = map(float, turn.split())
    x, y, z = (
        numpy.array([[1, 0, 0], [0, math.cos(roll), -math.sin(roll)], [0, math.sin(roll), math.cos(roll)]]),
        numpy.array([[math.cos(pitch), 0, math.sin(pitch)], [0, 1, 0], [-math.sin(pitch), 0, math.cos(pitch)]]),
        numpy.array([[math.cos(yaw), -math.sin(yaw), 0], [math.sin(yaw), math.cos(yaw), 0], [0, 0, 1]]),
    )
    tensor = z @ y @ x @ MATRIX @ (z @ y @ x).T
    body.addTorque(hyx.Vec3(0, 0, 1))
    world.step()
    expected = numpy.linalg.solve(tensor, [0, 0, 1]) * world.getTimeStep()
    assert tuple(body.getAngularVelocity()) == pytest.approx(expected, rel=1e-2, abs=1e-5)
    assert tuple(body.getInertia()) == pytest.approx(numpy.diag(tensor))
    assert tuple(body.getProductsOfInertia()) == pytest.approx(tensor[numpy.triu_indices(3, 1)])


def test_a_planar_joint_leaves_the_plane_and_the_turn_about_its_normal(load):
    world = load(WHEEL + joint("planar", axis="1 0 0"))
    world.setGravity(hyx.Vec3(-9, 0, -9))
    body = world.getRigidBody("wheel")
    body.setVelocity(hyx.Vec3(5, 2, 0))
    body.setAngularVelocity(hyx.Vec3(3, 4, 0))
    for _ in range(60):
        world.step()
    place, spin = body.getPosition(), body.getAngularVelocity()
    assert place.x == pytest.approx(0, abs=0.02) and place.y == pytest.approx(2, rel=1e-2) and place.z < -4
    assert spin.x == pytest.approx(3, rel=1e-2) and abs(spin.y) < 0.05  # 4 at first


def test_a_floating_joint_holds_nothing(load):
    world = load(WHEEL + joint("floating"))
    world.setGravity(hyx.Vec3(0, 0, -GRAVITY))
    for _ in range(60):
        world.step()
    assert world.getConstraints() == [] and world.getRigidBody("wheel").getPosition().z < -4


FINGERS = WHEEL + LINK.format("finger", 0.1, 0.01, 0.01, 0.01, 0, 0, 0) + joint("continuous")


def test_a_mimic_joint_follows_its_leader(load):
    world = load(
        FINGERS
        + joint(
            "revolute",
            "finger",
            "follower",
            "0 1 0",
            '<limit lower="-9" upper="9" effort="50" velocity="9"/>'
            '<mimic joint="axle" multiplier="-0.5" offset="0.2"/>',
        )
    )
    leader, follower = world.getConstraints()
    leader, follower = (leader, follower) if leader.getName() == "axle" else (follower, leader)
    leader.getMotor1D().setSpeed(0.5)
    leader.getMotor1D().setEnable(True)
    for _ in range(120):
        world.step()
    assert leader.getAngle() == pytest.approx(1, rel=1e-2)
    assert follower.getAngle() == pytest.approx(0.2 - 0.5 * leader.getAngle(), abs=0.02)


def test_a_mimic_of_nothing_is_refused(app, tmp_path):
    (tmp_path / "model.urdf").write_text(
        '<robot name="model"><link name="base"/>'
        + WHEEL
        + joint("continuous", inside='<mimic joint="nobody"/>')
        + "</robot>"
    )
    errors = app.loadTavLangFile(str(tmp_path / "model.urdf"), None).getErrors()
    assert len(errors) == 1 and "axle" in errors[0] and "nobody" in errors[0]
    assert app.getSimulation().getRigidBodies() == []


def test_links_fixed_to_a_massless_one_become_one_body(load):
    world = load(LINK.format("hull", 3, 1, 1, 1, 0, 0, 0) + joint("fixed", "hull", inside='<origin xyz="0 0 2"/>'))
    (body,) = world.getRigidBodies()
    assert body.getName() == "base" and body.getMass() == 3 and body.getCenterOfMass().z == pytest.approx(2)
    assert body.getMotionControl() == hyx.RigidBody.DYNAMICS


def test_links_fixed_to_each_other_weigh_together(load):
    world = load(
        LINK.format("rod", 1, 0.1, 0.2, 0.3, 0, 0, 0)
        + LINK.format("end", 3, 0.4, 0.5, 0.6, 0, 0, 0)
        + joint("floating", "rod")
        + joint("fixed", "end", "weld", parent="rod", inside='<origin xyz="2 0 0" rpy="0 0 1.5707963267948966"/>')
    )
    body = world.getRigidBody("rod")
    assert world.getConstraints() == [] and world.getRigidBody("end") is None
    assert body.getMass() == 4 and tuple(body.getCenterOfMass()) == pytest.approx((1.5, 0, 0))
    across = 1 * 1.5**2 + 3 * 0.5**2
    assert tuple(body.getInertia()) == pytest.approx((0.1 + 0.5, 0.2 + 0.4 + across, 0.3 + 0.6 + across))
    body.addTorque(hyx.Vec3(0, 0, 1))
    world.step()
    assert body.getAngularVelocity().z == pytest.approx(world.getTimeStep() / (0.9 + across), rel=1e-3)


BALL = (
    '<link name="{0}"><inertial><mass value="1"/><inertia ixx="1" iyy="1" izz="1" ixy="0" ixz="0" iyz="0"/></inertial>'
    '<collision><geometry><sphere radius="0.5"/></geometry></collision></link>'
)


@pytest.mark.parametrize("collide", [True, False])
def test_links_that_no_joint_connects_collide_when_asked(app, tmp_path, collide):
    slide = '<limit lower="-9" upper="9" effort="9" velocity="9"/><origin xyz="{} 0 0"/>'
    (tmp_path / "model.urdf").write_text(
        '<robot name="model"><link name="base"/>'
        + BALL.format("left")
        + BALL.format("right")
        + "".join(joint("prismatic", name, name, "1 0 0", slide.format(x)) for name, x in (("left", -1), ("right", 1)))
        + "</robot>"
    )
    params = hyxtavlang.OptParams()
    assert params.getSelfCollision() is True
    params.setSelfCollision(collide)
    app.loadTavLangFile(str(tmp_path / "model.urdf"), None, params)
    world = app.getSimulation()
    world.getRigidBody("left").setVelocity(hyx.Vec3(3, 0, 0))
    for _ in range(60):
        world.step()
    moved = world.getRigidBody("right").getPosition().x != 1
    assert moved == collide
