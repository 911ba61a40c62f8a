"""What the parser of robot descriptions does not tell: capsules, transmissions, several roots, lines."""

import hyx
import hyxOSG
import pytest
from PIL import Image

ROBOT = """<robot name="r">
  <link name="base"/>
  <link name="arm">
    <inertial><mass value="1"/><inertia ixx="1" iyy="1" izz="1" ixy="0" ixz="0" iyz="0"/></inertial>
    <visual><geometry><box size="1 1 1"/></geometry></visual>
    <visual><geometry><capsule radius="0.1" length="0.8"/></geometry></visual>
    <collision><geometry><cylinder radius="0.2" length="0.5"/></geometry></collision>
    <collision><origin xyz="0 0 1"/><geometry><capsule radius="0.3" length="0.6"/></geometry></collision>
  </link>
  <joint name="turn" type="continuous"><parent link="base"/><child link="arm"/><axis xyz="0 0 1"/></joint>
  <transmission name="gears"><type>simple</type><joint name="turn"/>
    <actuator name="motor"><mechanicalReduction>50</mechanicalReduction></actuator></transmission>
  <gazebo/><gazebo reference="arm"/>
</robot>"""


@pytest.fixture
def load(app, tmp_path):
    def make(text):
        (tmp_path / "robot.urdf").write_text(text)
        return app.loadTavLangFile(str(tmp_path / "robot.urdf"), app.getSceneRoot())

    return make


def test_capsules_are_read_among_other_shapes(app, load):
    result = load(ROBOT)
    assert result.getErrors() == ()
    (arm,) = [node for node in result.model.children if node.name == "arm"]
    shapes = [part for part in arm.children if "Geometries" in part.type]
    assert [shape.type.rpartition(".")[2] for shape in shapes] == ["Cylinder", "Capsule"]
    assert shapes[1].properties["radius"] == 0.3 and shapes[1].properties["height"] == 0.6
    assert shapes[1].properties["transform"][14] == 1
    seen = [part.properties["shape"] for part in arm.children if part.type == "Visuals.Visual"]
    assert seen == ["Physics3D.Geometries.Box", "Physics3D.Geometries.Capsule"]
    low, high = bounds(app.getSimulation().getRigidBody("arm").getGeometries()[1])
    assert (low.z, high.z) == pytest.approx((1 - 0.6, 1 + 0.6), abs=0.05)


def bounds(geometry):
    low, high = hyx.Vec3(), hyx.Vec3()
    geometry.getShape().getBound(low, high)
    matrix = geometry.getLocalTransform()
    corners = [matrix.transformPoint(corner) for corner in (low, high)]
    return tuple(hyx.Vec3(*(pick(c[i] for c in corners) for i in range(3))) for pick in (min, max))


def test_transmissions_drive_joints_and_parts_know_their_lines(load, tmp_path):
    result = load(ROBOT)
    (gears,) = [node for node in result.model.children if node.type == "Control.ForceActuator"]
    assert gears.name == "gears" and gears.properties["joint"] == "turn" and gears.properties["gear"] == 50
    lines = {node.name: node.getLine() for node in result.model.children}
    assert lines == {"base": 2, "arm": 3, "turn": 10, "gears": 11}
    assert result.model.getRemarks() == (f"{tmp_path}/robot.urdf:13: <gazebo> is not carried over",)


def test_what_many_files_leave_out_is_completed(app, load, tmp_path):
    (tmp_path / "corner.obj").write_text("v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 3 4\nf 1 4 3\n")
    text = ROBOT.replace('<link name="base"/>', "").replace('<parent link="base"/>', '<parent link="world"/>')
    text = text.replace(
        '<box size="1 1 1"/></geometry>', '<mesh filename="corner.obj" scale="0.5"/></geometry><material/>'
    )
    result = load(text)
    assert result.getErrors() == ()
    assert app.getSimulation().getRigidBody("world").getMotionControl() == hyx.RigidBody.STATIC
    (arm,) = [node for node in result.model.children if node.name == "arm"]
    assert [part.properties["scale"] for part in arm.children if "scale" in part.properties] == [(0.5, 0.5, 0.5)]


@pytest.mark.parametrize(
    "shape", ['<box size="1 1 1"/>', '<sphere radius="0.6"/>', '<cylinder radius="1" length="1"/>']
)
@pytest.mark.parametrize("own", [True, False])
def test_textures_of_materials_are_drawn(app, load, tmp_path, shape, own):
    tiles = Image.new("RGB", (64, 64), (220, 20, 20))
    for corner in ((0, 0), (32, 32)):
        tiles.paste((20, 20, 220), (*corner, corner[0] + 32, corner[1] + 32))
    tiles.save(tmp_path / "tiles.png")
    material = '<material name="tiles"><texture filename="tiles.png"/></material>'
    result = load(
        f'<robot name="r">{"" if own else material}<link name="base"><visual><geometry>{shape}</geometry>'
        f'{material if own else """<material name="tiles"/>"""}</visual></link></robot>'
    )
    assert result.getErrors() == ()
    camera = hyxOSG.SensorCamera(app, 120, 90, field_of_view=45, near=0.1, far=50)
    camera.look_at((1, -2.5, 1.5), (0, 0, 0))
    seen = camera.read("rgb").rgb.astype(int)
    camera.close()
    reddish, bluish = seen[..., 0] > 2 * seen[..., 2], seen[..., 2] > 4 * seen[..., 0]
    assert reddish.sum() > 200 and bluish.sum() > 200  # of 10,800; none without the picture


@pytest.mark.parametrize(
    "content, told", [(None, "robot.urdf:3: the texture 'tiles.png' was not found"), (b"no", "read")]
)
def test_a_texture_that_is_missing_or_damaged_is_told_of(app, load, tmp_path, content, told):
    if content:
        (tmp_path / "tiles.png").write_bytes(content)
    look = '<visual><geometry><sphere radius="1"/></geometry>\n<material name="a"><texture filename="tiles.png"/>'
    with pytest.warns(Warning, match=told) as caught:
        result = load(f'<robot name="r">\n<link name="base">{2 * (look + "</material></visual>")}</link></robot>')
    assert result.isSuccess() and result.getErrors() == ()
    assert content or (len(caught) == 1 and result.model.getRemarks() == (f"{tmp_path}/{told}",))


@pytest.mark.parametrize(
    "old, new, line, told",
    [
        ('<link name="base"/>', '<link name="base"/><link name="free"/>', 2, "nor the link 'base'; expected one root"),
        ('radius="0.3"', 'radius="wide"', 8, ""),
        ('<box size="1 1 1"/>', '<box size="1 -1 1"/>', 3, "half extents"),
        ('<mass value="1"/>', '<mass value="1e400"/>', 3, ""),
        ('<child link="arm"/>', '<child link="leg"/>', 3, "expected one root"),
    ],
)
def test_what_is_wrong_is_told_with_a_line(load, tmp_path, old, new, line, told):
    errors = load(ROBOT.replace(old, new)).getErrors()
    assert errors and all(error.startswith(f"{tmp_path}/robot.urdf:") for error in errors)
    assert any(error.startswith(f"{tmp_path}/robot.urdf:{line}:") and told in error for error in errors), errors
