"""Numbers in quantity cross in one copy, of whatever type and layout they are."""

import hyx
import hyxCollide
import hyxSDK
import numpy
import osg
import pytest
from subprocesses import run_python

POINTS = numpy.arange(12).reshape(4, 3)
LAYOUTS = {
    "list": lambda rows: rows.tolist(),
    "generators": lambda rows: ((int(x) for x in row) for row in rows),
    "rows apart": lambda rows: numpy.repeat(rows, 2, axis=0)[::2],
    "columns apart": lambda rows: numpy.repeat(rows, 2, axis=1)[:, ::2],
    "upside down": lambda rows: rows[::-1].copy()[::-1],
    "columns first": lambda rows: numpy.asfortranarray(rows),
    "memoryview": lambda rows: memoryview(rows),
    **{kind: lambda rows, kind=kind: rows.astype(kind) for kind in "? b B h H i I l L q Q e f d".split()},
}


@pytest.mark.parametrize("layout", LAYOUTS)
def test_any_numbers_become_vertices(layout):
    given = LAYOUTS[layout](POINTS)
    expected = POINTS.astype(bool) if layout == "?" else POINTS
    mesh = osg.Geometry()
    mesh.vertices = given
    assert mesh.vertices.dtype == numpy.float32 and numpy.array_equal(mesh.vertices, expected)


@pytest.mark.parametrize(
    "wrong", [POINTS.T, POINTS[:, :2], POINTS.astype(complex), [["a", "b", "c"]], "abc", 5, [[1, 2]]]
)
def test_what_is_no_row_of_numbers_is_refused_and_changes_nothing(wrong):
    mesh = osg.Geometry()
    mesh.vertices = POINTS
    with pytest.raises((TypeError, ValueError), match="vertices: .*(number|str)"):
        mesh.vertices = wrong
    assert numpy.array_equal(mesh.vertices, POINTS)


def test_a_mesh_keeps_what_is_set():
    mesh = osg.Geometry()
    mesh.vertices, mesh.normals, mesh.texcoords = POINTS, POINTS / 12, POINTS[:, :2]
    mesh.colors = numpy.array([[0.5, 0.25, 0, 1]])
    assert numpy.array_equal(mesh.normals, (POINTS / 12).astype(numpy.float32))
    assert numpy.array_equal(mesh.texcoords, POINTS[:, :2])
    assert mesh.colors.tolist() == [[0.5, 0.25, 0, 1]]
    mesh.colors = numpy.full((4, 4), 51, numpy.uint8)
    assert mesh.colors.dtype == numpy.uint8 and mesh.getColor(3)[0] == pytest.approx(0.2)


@pytest.mark.parametrize("places", [[0, 1, 2], [0, 2, 1], [3, 2, 1]])
@pytest.mark.parametrize("kind", [list, numpy.uint8, numpy.int64, numpy.uint32])
def test_elements_name_the_vertices(places, kind):
    mesh = osg.Geometry()
    mesh.vertices = POINTS
    mesh.addElements(4, places if kind is list else numpy.array(places, kind))
    assert mesh.elements.tolist() == places
    with pytest.raises(ValueError, match="vertices"):
        mesh.vertices = POINTS[: max(places)]


@pytest.mark.parametrize("wrong", [[4], numpy.array([4]), numpy.array([-1]), numpy.array([0.5]), numpy.array([2**40])])
def test_elements_that_name_no_vertex_are_refused(wrong):
    mesh = osg.Geometry()
    mesh.vertices = POINTS
    with pytest.raises((IndexError, ValueError, TypeError)):
        mesh.addElements(0, wrong)
    assert mesh.getNumPrimitiveSets() == 0


def test_shapes_of_many_points_take_and_give_arrays():
    corners = numpy.array([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]], numpy.float32)
    faces = numpy.array([[0, 2, 1], [0, 1, 3], [0, 3, 2], [1, 2, 3]], numpy.int64)
    mesh = hyxCollide.Trimesh(corners, faces)
    assert numpy.array_equal(mesh.vertices, corners) and numpy.array_equal(mesh.triangles, faces)
    mesh.vertices = 2 * corners
    assert numpy.array_equal(mesh.vertices, 2 * corners)
    heights = numpy.arange(6, dtype=numpy.int16).reshape(3, 2)
    field = hyxCollide.HeightField(2, 3, 1.0, 2.0, heights)
    assert numpy.array_equal(field.heights, heights) and field.getHeight(1, 2) == 5
    field.heights = heights[::-1]
    assert field.getHeight(1, 0) == 5


def test_lists_of_values_are_made_of_arrays():
    values = numpy.arange(12, dtype=numpy.float32).reshape(4, 3)
    for kind in (hyx.Vec3Vector, hyx.Vec3fVector):
        assert numpy.array_equal(numpy.array(kind(values)), values)
    assert numpy.array_equal(numpy.array(hyx.RealVector(values[:, 1])), values[:, 1])


def test_grains_are_moved_and_coloured_at_once():
    grains = hyx.ParticleSystem()
    for x in range(3):
        grains.createParticle(hyx.Vec3(x, 0, 0))
    places = numpy.asarray(grains.getPositions()) + [0, 0, 2]
    grains.setPositions(places)
    grains.setVelocities(numpy.eye(3))
    grains.setColors(numpy.full((3, 4), 0.5))
    assert numpy.array_equal(grains.getPositions(), places)
    assert tuple(grains.getParticles()[1].velocity) == (0, 1, 0)
    assert numpy.array_equal(grains.getColors(), numpy.full((3, 4), 0.5))
    with pytest.raises(ValueError, match="3 grains"):
        grains.setPositions(places[:2])


@pytest.fixture
def simulation():
    simulation = hyxSDK.Simulation()
    for x in range(5):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.3)))
        body.setPosition(hyx.Vec3(2 * x, 0, 0))
        simulation.add(body)
    return simulation


@pytest.mark.parametrize("name", ["positions", "rotations", "velocities", "angularVelocities"])
def test_the_state_of_all_bodies_is_an_array(simulation, name):
    one = {"positions": "Position", "rotations": "Rotation", "velocities": "Velocity"}.get(name, "AngularVelocity")
    bodies = simulation.getRigidBodies()
    values = numpy.random.default_rng(3).normal(size=getattr(simulation, name).shape)
    if name == "rotations":
        values /= numpy.linalg.norm(values, axis=1)[:, None]
    setattr(simulation, name, values)
    if name == "rotations":  # of two signs
        values *= numpy.sign((getattr(simulation, name) * values).sum(axis=1))[:, None]
    assert numpy.allclose([tuple(getattr(body, f"get{one}")()) for body in bodies], values)
    assert numpy.allclose(getattr(simulation, name), values)
    write = getattr(simulation, f"set{name[0].upper()}{name[1:]}")
    write(values[:1], (body for body in bodies[3:]))
    assert numpy.allclose(getattr(simulation, name), numpy.vstack([values[:3], values[:1], values[:1]]))
    for wrong in (values[:3], numpy.full_like(values, numpy.nan)):
        with pytest.raises((ValueError, RuntimeError)):
            write(wrong)
        with pytest.raises(ValueError, match=f"{name}: "):
            setattr(simulation, name, wrong)
    with pytest.raises(TypeError, match="RigidBody"):
        write(values[:1], [simulation])


def test_forces_of_chosen_bodies_move_them(simulation):
    bodies = simulation.getRigidBodies()
    simulation.setGravity(hyx.Vec3(0, 0, 0))
    simulation.addForces([[0, 60, 0]], bodies[1:3])
    assert numpy.asarray(simulation.getForces())[:, 1].tolist() == [0, 60, 60, 0, 0]
    simulation.step()
    assert (simulation.velocities[:, 1] > 0).tolist() == [False, True, True, False, False]


def test_contacts_are_arrays_with_the_bodies_places(simulation):
    simulation.setGravity(hyx.Vec3(0, 0, 0))
    simulation.positions = [[0, 0, 0], [0.55, 0, 0], [5, 0, 0], [9, 0, 0], [9, 0.59, 0]]
    simulation.step()
    contacts = simulation.contacts
    assert sorted(map(sorted, contacts["bodies"].tolist())) == [[0, 1], [3, 4]]
    assert contacts["points"].shape == contacts["normals"].shape == contacts["forces"].shape == (2, 3)
    assert numpy.allclose(numpy.linalg.norm(contacts["normals"], axis=1), 1) and contacts["depths"].shape == (2,)


def test_joints_give_and_take_their_state_at_once(simulation):
    bodies = simulation.getRigidBodies()
    simulation.setGravity(hyx.Vec3(0, 0, 0))
    for body in bodies[:2]:
        joint = hyx.Hinge(body, hyx.Frame())
        joint.getMotor1D().setEnable(True)
        simulation.add(joint)
    simulation.setMotorSpeeds([1.0, -2.0])
    for _ in range(30):
        simulation.step()
    assert numpy.allclose(simulation.jointSpeeds, [1, -2], atol=0.02)
    assert numpy.allclose(simulation.jointPositions, [0.5, -1], atol=0.05)
    assert numpy.allclose(simulation.getJointPositions(simulation.getConstraints()[1:]), simulation.jointPositions[1:])


def test_native_arrays_have_rows_with_and_without_numpy(tmp_path):
    sim = hyxSDK.Simulation()
    for height in (1, 2):
        body = hyx.RigidBody()
        body.setPosition((0, 0, height))
        sim.add(body)
    rows = sim.getPositions()
    assert rows[1].tolist() == [0, 0, 2] and rows[:, 2].sum() == 3 and [row[2] for row in rows] == [1, 2]
    assert sim.getPositions([]).shape == (0, 3)
    (tmp_path / "numpy.py").write_text("raise ModuleNotFoundError('there is no numpy')")
    script = "import hyx, hyxSDK; s = hyxSDK.Simulation(); s.add(hyx.RigidBody()); print(s.getPositions().tolist())"
    done = run_python("-c", script, extra_path=str(tmp_path))
    assert done.stdout == "[[0.0, 0.0, 0.0]]\n", done.stderr
