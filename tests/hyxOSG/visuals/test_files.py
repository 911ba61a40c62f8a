"""Scene files and model files."""

import json
import time

import hyx
import hyxOSG
import hyxSDK
import numpy
import osg
import osgDB
import pytest

TETRAHEDRON = [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)]
FACES = [(0, 2, 1), (0, 1, 3), (1, 2, 3), (2, 0, 3)]


def ply(extra_faces=()):
    lines = [
        "ply",
        "format ascii 1.0",
        "comment by a test",
        f"element vertex {len(TETRAHEDRON)}",
        "property float x",
        "property float y",
        "property float z",
        f"element face {len(FACES) + len(extra_faces)}",
        "property list uchar int vertex_indices",
        "end_header",
    ]
    lines += [" ".join(map(str, point)) for point in TETRAHEDRON]
    return "\n".join(lines + [" ".join(map(str, (len(face), *face))) for face in (*FACES, *extra_faces)]) + "\n"


def obj():
    lines = [f"v {x} {y} {z}" for x, y, z in TETRAHEDRON]
    return "\n".join(lines + ["f " + " ".join(str(i + 1) for i in face) for face in FACES]) + "\n"


def stl():
    facets = "".join(
        "facet normal 0 0 0\nouter loop\n"
        + "".join("vertex %g %g %g\n" % TETRAHEDRON[i] for i in face)
        + "endloop\nendfacet\n"
        for face in FACES
    )
    return f"solid made\n{facets}endsolid made\n"


@pytest.mark.parametrize("name, text", [("m.ply", ply()), ("m.obj", obj()), ("m.stl", stl())])
def test_models_are_read_with_all_their_triangles(tmp_path, name, text):
    file = tmp_path / name
    file.write_text(text)
    node = hyxOSG.readNodeFile(str(file), False)
    mesh = hyxOSG.createTrimesh(node)
    assert mesh.getNumTriangles() == 4
    assert node.getBound().radius() == pytest.approx(0.866, abs=0.05)


def test_a_large_stl_file_is_read_in_a_moment(tmp_path):
    count, path = 60_000, tmp_path / "large.stl"
    facets = numpy.zeros(count, dtype=[("numbers", "<f4", (4, 3)), ("attribute", "<u2")])
    grid = numpy.arange(count)
    corners = numpy.stack([grid % 300, grid // 300, 0 * grid], axis=1)
    facets["numbers"] = numpy.stack(
        [0 * corners + (0, 0, 1), corners, corners + (1, 0, 0), corners + (0, 1, 0)], axis=1
    )
    path.write_bytes(bytes(80) + count.to_bytes(4, "little") + facets.tobytes())
    start = time.process_time()
    node = hyxOSG.readNodeFile(str(path), False)
    assert time.process_time() - start < 1
    assert len(hyxOSG.createTrimesh(node).getIndices()) == 3 * count


def test_a_file_is_read_once_and_again_when_asked(tmp_path):
    file = tmp_path / "kept.obj"
    file.write_text(obj())
    first = hyxOSG.readNodeFile(str(file))
    assert hyxOSG.readNodeFile(str(file), True) == first
    assert hyxOSG.readNodeFile(str(file), False) != first


def test_options_give_the_folder_to_look_in(tmp_path):
    (tmp_path / "hidden.ply").write_text(ply())
    options = osgDB.Options()
    assert hyxOSG.readNodeFile("hidden.ply", options) is None
    options.setDatabasePath(str(tmp_path))
    assert hyxOSG.readNodeFile("hidden.ply", options) is not None
    assert hyxOSG.readNodeFile("hidden.ply", options, False) is not None


@pytest.mark.parametrize(
    "name, text",
    [
        ("cut.ply", ply()[:-20]),
        ("index.ply", ply([(0, 1, 9)])),
        ("count.ply", ply().replace("vertex 4", "vertex 4000000000")),
        ("type.ply", ply().replace("float x", "strange x")),
        ("empty.ply", ""),
        ("headless.ply", "ply\nformat ascii 1.0\n"),
        ("text.glb", "no model"),
        ("none.unknown", "what"),
        ("junk.lwo", "FORM\0\0\1\0LWO2junk"),
        ("junk.md2", "IDP2" + "\x7f" * 64),
    ],
)
def test_damaged_and_unknown_files_give_nothing(tmp_path, name, text):
    file = tmp_path / name
    file.write_bytes(text.encode("latin-1"))
    node = hyxOSG.readNodeFile(str(file))
    assert node is None or hyxOSG.createTrimesh(node) is None
    assert hyxOSG.readNodeFile(str(tmp_path)) is None and hyxOSG.readNodeFile(str(tmp_path / "missing.obj")) is None


@pytest.mark.parametrize("ending", "glb gltf obj stl ply dae fbx off 3ds osgt".split())
def test_an_empty_file_is_told_from_damage(tmp_path, ending):
    file = tmp_path / f"m.{ending}"
    file.touch()
    with pytest.warns(RuntimeWarning, match="it is empty: export or copy it again"):
        assert hyxOSG.readNodeFile(file) is None
    file.write_text("hello world")
    with pytest.warns(RuntimeWarning, match="cannot be read: ") as told:
        assert hyxOSG.readNodeFile(file) is None
    assert "is empty" not in str(told[0].message) and "No suitable" not in str(told[0].message)


@pytest.mark.parametrize(
    "name, reason",
    [
        ("m.unknown", r'there is no reader for the ending "\.unknown"'),
        ("model", "no ending of its name says of what kind it is"),
    ],
)
def test_a_kind_that_nothing_reads_is_told_from_damage(tmp_path, name, reason):
    file = tmp_path / name
    file.write_text("what")
    with pytest.warns(RuntimeWarning, match=reason):
        assert hyxOSG.readNodeFile(str(file)) is None


SCENE = {
    "gravity": [0, 0, -1.5],
    "materials": [{"name": "ice", "friction": 0.05, "density": 500}],
    "bodies": [
        {"name": "ground", "motion": "static", "geometries": [{"shape": "plane"}]},
        {
            "name": "arm",
            "position": [0, 0, 2],
            "rpy": [0, 0, 90],
            "velocity": [1, 2, 3],
            "geometries": [
                {"shape": "box", "halfExtents": [0.5, 0.1, 0.1], "material": "ice", "color": [1, 0, 0, 1]},
                {"shape": "sphere", "radius": 0.2, "position": [1, 0, 0], "sensor": True},
            ],
        },
    ],
    "constraints": [
        {
            "name": "joint",
            "type": "hinge",
            "body1": "arm",
            "body2": "ground",
            "position": [0, 0, 2],
            "axis": [0, 1, 0],
            "speed": 2.5,
            "range": [-1, 1],
        }
    ],
}


def written(tmp_path, scene, name="scene.json"):
    file = tmp_path / name
    file.write_text(scene if isinstance(scene, str) else json.dumps(scene))
    return str(file)


def test_a_scene_file_fills_the_simulation_and_is_drawn(tmp_path):
    simulation, root = hyxSDK.Simulation(), osg.Group()
    assert hyxOSG.readFile(written(tmp_path, SCENE), simulation, root) is True
    arm = simulation.getRigidBody("arm")
    assert list(arm.getPosition()) == [0, 0, 2] and list(arm.getVelocity()) == pytest.approx([1, 2, 3])
    assert arm.getRotation().getAngle() == pytest.approx(1.5708, abs=1e-3)
    assert arm.getMass() == pytest.approx(
        500 * 0.04 + 1000 * 4.18879 * 0.008, rel=0.01
    ) or arm.getMass() == pytest.approx(20, rel=0.01)
    assert simulation.getGravity()[2] == -1.5
    assert simulation.getMaterial("ice").getFriction() == 0.05
    assert simulation.getConstraint("joint") is not None
    box, sensor = arm.getGeometries()
    assert list(hyxOSG.findGeometryNode(box, root).getStateSet().getMaterial().getDiffuse()) == [1, 0, 0, 1]
    assert hyxOSG.findGeometryNode(sensor, root).getNumChildren() == 0
    simulation.step()


def test_parts_of_a_scene_file_are_chosen_by_a_mask(tmp_path):
    file = written(tmp_path, SCENE)
    simulation, parent, root = hyxSDK.Simulation(), hyxSDK.Assembly("parent"), osg.Group()
    assert hyxOSG.readFile(file, simulation, root, parent, 1.0, True, 1) is True
    assert parent.getRigidBody("arm") is not None and simulation.getRigidBody("arm") is None
    assert simulation.getMaterial("ice") is None and parent.getConstraint("joint") is None
    sensor = parent.getRigidBody("arm").getGeometries()[1]
    assert hyxOSG.findGeometryNode(sensor, root).getNumChildren() == 1
    undrawn = hyxSDK.Simulation()
    assert hyxOSG.readFile(file, undrawn, None) is True and len(undrawn.getRigidBodies()) == 2


@pytest.mark.parametrize(
    "change",
    [
        "no json",
        "[]",
        {"bodies": 3},
        {"bodies": [{"geometries": [{"shape": "blob"}]}]},
        {"bodies": [{"geometries": [{"shape": "box"}]}]},
        {"bodies": [{"geometries": [{"shape": "sphere", "radius": -1}]}]},
        {"bodies": [{"geometries": [{"shape": "mesh", "file": "no.stl"}]}]},
        {"bodies": [{"motion": "sideways"}]},
        {"constraints": [{"type": "hinge", "body1": "nobody"}]},
    ],
)
def test_wrong_scene_files_are_refused_and_add_nothing(tmp_path, change):
    simulation, root = hyxSDK.Simulation(), osg.Group()
    assert hyxOSG.readFile(written(tmp_path, change), simulation, root) is False
    assert len(simulation.getRigidBodies()) == 0 and root.getNumChildren() == 0


def test_scene_files_need_a_simulation_and_a_known_kind(tmp_path):
    assert hyxOSG.readFile(written(tmp_path, SCENE), None, osg.Group()) is False
    assert hyxOSG.readFile(written(tmp_path, "x", "scene.xyz"), hyxSDK.Simulation(), None) is False
    assert hyxOSG.readFile(str(tmp_path / "missing.json"), hyxSDK.Simulation(), None) is False


def test_a_robot_is_read_into_the_simulation(tmp_path):
    robot = """<robot name="one"><link name="base"><inertial><mass value="2"/>
    <inertia ixx="1" ixy="0" ixz="0" iyy="1" iyz="0" izz="1"/>
    </inertial><collision><geometry><box size="1 1 1"/></geometry></collision>
    <visual><geometry><box size="1 1 1"/></geometry></visual></link></robot>"""
    simulation, root = hyxSDK.Simulation(), osg.Group()
    assert hyxOSG.readFile(written(tmp_path, robot, "one.urdf"), simulation, root) is True
    assert simulation.getRigidBody("base") is not None and root.getNumChildren() > 0
    assert hyxOSG.readFile(written(tmp_path, "<robot", "bad.urdf"), simulation, root) is False


def test_models_are_written_whole_with_their_materials_or_not_at_all(tmp_path, capfd):
    model = osg.Group()
    model.addChild(hyxOSG.createSphere(hyx.Vec3(0, 0, 0), hyx.Vec4(1, 0, 0, 1), 2.0))
    assert osgDB.writeNodeFile(model, str(tmp_path / "ball.obj"))
    assert sorted(path.name for path in tmp_path.iterdir()) == ["ball.mtl", "ball.obj"]
    read = hyxOSG.readNodeFile(str(tmp_path / "ball.obj"))
    assert read.getBound().radius() == pytest.approx(model.getBound().radius(), rel=1e-3)
    for kind in ("dae", "ply", "unheard"):
        assert not osgDB.writeNodeFile(model, str(tmp_path / f"ball.{kind}"))
        assert f'cannot write "{tmp_path}/ball.{kind}"' in capfd.readouterr().err
    assert len(list(tmp_path.iterdir())) == 2
