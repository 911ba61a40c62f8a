"""Scans as a real scanner measures them: skew of motion, several returns, materials, chance; and their files."""

import math

import hyx
import hyxCollide
import hyxSDK
import hyxSensor
import numpy
import osgViewer
import pytest


@pytest.fixture
def simulation():
    return hyxSDK.Simulation()


def add(simulation, shape, place, turn=None, material=None):
    geometry = hyxCollide.Geometry(shape)
    geometry.setMaterial(material)
    body = hyx.RigidBody(geometry)
    body.setPosition(hyx.Vec3(*place))
    body.setMotionControl(hyx.RigidBody.KINEMATICS)
    if turn:
        body.setRotation(turn)
    simulation.add(body)
    return body


def scanner(simulation, frame=None, rings=1, rays=360, across=2 * math.pi, up=0.0):
    lidar = hyxSensor.Lidar(frame)
    lidar.setResolution(rings, rays)
    lidar.setFieldOfView(across, up)
    lidar.setRange(hyx.RangeReal(0.1, 200))
    simulation.add(lidar)
    return lidar


def positions(cloud):
    return numpy.stack([cloud[axis] for axis in "xyz"], axis=-1)


@pytest.mark.parametrize("mount", [(0, 0, 0), (0.8, -0.3, 0.5)], ids=["at the centre", "off the centre"])
def test_a_rolling_scan_follows_the_trajectory(simulation, mount):
    """A scanner that drives along and turns sees a wall where each ray met it at its own moment."""
    wall = 30.0
    for place, half in (((wall + 1, 0, 0), (1, 300, 20)), ((-wall - 1, 0, 0), (1, 300, 20))):
        add(simulation, hyxCollide.Box(*half), place)
    speed, spin, start = numpy.array([7.0, 3.0, 0.0]), 1.5, 0.2
    car = add(simulation, hyxCollide.Sphere(0.5), (0, 0, 2), hyx.Quat(start, hyx.Vec3(0, 0, 1)))
    car.setVelocity(hyx.Vec3(*speed))
    car.setAngularVelocity(hyx.Vec3(0, 0, spin))
    frame = hyx.Frame(hyx.AffineMatrix4x4(hyx.Vec3(*mount)), car.getFrame())
    lidar = scanner(simulation, frame, rings=3, rays=720, up=0.2)
    lidar.setIgnoredBody(car)
    lidar.setRolling(True)
    while lidar.getRevision() < 2:
        simulation.step()
    cloud = lidar.cloud
    times = cloud["time"]
    assert times[0] == pytest.approx(0.1) and (numpy.diff(times) >= 0).all() and times[-1] < 0.2
    column = numpy.rint((times - 0.1) * 7200)
    assert numpy.abs(times - 0.1 - column / 7200).max() < 1e-9
    azimuth = 2 * math.pi * (column / 720 - 0.5) + start + spin * times
    heading = start + spin * times
    c, s = numpy.cos(heading), numpy.sin(heading)
    origin = numpy.array([0, 0, 2]) + speed * times[:, None]
    origin += numpy.stack([c * mount[0] - s * mount[1], s * mount[0] + c * mount[1], 0 * c + mount[2]], axis=-1)
    elevation = (cloud["ring"] / 2.0 - 0.5) * 0.2
    ways = numpy.stack(
        [numpy.cos(elevation) * numpy.cos(azimuth), numpy.cos(elevation) * numpy.sin(azimuth), numpy.sin(elevation)], -1
    )
    distance = (numpy.sign(ways[:, 0]) * wall - origin[:, 0]) / ways[:, 0]
    met = positions(cloud)
    assert len(cloud) > 1000 and numpy.abs(met - (origin + ways * distance[:, None])).max() < 1e-5
    still = origin[0] + ways * distance[:, None]
    assert numpy.abs(met - still).max() > 0.5  # a scan at one moment would be elsewhere


def test_what_moves_is_met_where_it_was_at_the_rays_moment(simulation):
    ball = add(simulation, hyxCollide.Box(0.5, 40, 0.5), (10, 0, 0))
    ball.setVelocity(hyx.Vec3(12, 0, 0))
    lidar = scanner(simulation, rays=101, across=1.0)
    lidar.setRolling(True)
    for _ in range(12):
        simulation.step()
    cloud = lidar.cloud
    assert len(cloud) == 101
    assert numpy.abs(cloud["x"] - (9.5 + 12 * cloud["time"])).max() < 1e-5


def test_a_scan_goes_on_after_the_time_was_set_back(simulation):
    add(simulation, hyxCollide.Box(0.5, 40, 5), (10, 0, 0))
    lidar = scanner(simulation, rays=100, across=1.0)
    lidar.setRolling(True)
    for _ in range(9):
        simulation.step()
    simulation.setTimeStamp(0)
    for _ in range(12):
        simulation.step()
    times = lidar.cloud["time"]
    assert len(times) == 100 and 0 <= times.min() and times.max() <= 0.2 and (numpy.diff(times) > 0).all()


def test_a_wide_beam_at_an_edge_has_two_returns(simulation):
    add(simulation, hyxCollide.Box(0.5, 10, 10), (5.5, -10, 0))  # up to y = 0
    add(simulation, hyxCollide.Box(0.5, 40, 40), (20.5, 0, 0))
    lidar = scanner(simulation, rays=1)
    lidar.setBeamDivergence(0.01)
    lidar.setMaxReturns(2)
    assert lidar.scan() == 2
    near, far = lidar.cloud
    assert (near["return"], far["return"], near["returns"], far["returns"]) == (1, 2, 2, 2)
    assert near["x"] == pytest.approx(5, abs=1e-3) and far["x"] == pytest.approx(20, abs=1e-3)
    lidar.setMaxReturns(1)  # the strongest
    lidar.scan()
    assert lidar.cloud["x"][0] == pytest.approx(5, abs=1e-3)
    lidar.setReturnSeparation(20)
    lidar.scan()
    assert 5.1 < lidar.cloud["x"][0] < 19.9


def test_materials_throw_back_and_let_through_their_shares(simulation):
    glass, road = hyx.Material("glass"), hyx.Material("road")
    pane = add(simulation, hyxCollide.Box(0.01, 5, 5), (4, 0, 0), material=glass)
    wall = add(simulation, hyxCollide.Box(0.5, 5, 5), (8.5, 0, 0), material=road)
    lidar = scanner(simulation, rays=1)
    lidar.setMaxReturns(4)
    lidar.setReflectivity(glass, 0.1)
    lidar.setTransparency(glass, 0.8)
    lidar.setReflectivity(None, 0.5)
    lidar.scan()
    first, second = lidar.cloud
    fading = [1 / (1 + distance * 5 / 200) for distance in (3.99, 8)]
    assert first["intensity"] == pytest.approx(0.1 * fading[0])
    assert second["intensity"] == pytest.approx(0.8 * 0.5 * fading[1])
    assert [osgViewer.identifiedBody(int(point["identity"])) for point in (first, second)] == [pane, wall]
    lidar.setReflectivity(road, 0.9)
    lidar.setLeastIntensity(0.2)
    lidar.scan()
    (only,) = lidar.cloud
    assert only["intensity"] == pytest.approx(0.8 * 0.9 * fading[1]) and only["returns"] == 1
    assert (lidar.getReflectivity(road), lidar.getReflectivity(hyx.Material())) == (0.9, 0.5)


def test_chance_has_its_shares_and_its_seed(simulation):
    add(simulation, hyxCollide.Box(0.5, 40, 40), (10.5, 0, 0))
    lidar = scanner(simulation, rings=20, rays=500, across=0.2, up=0.2)
    lidar.setDropout(0.3)
    lidar.setDistanceNoise(0.02)
    clouds = []
    for seed in (1, 1, 2):
        lidar.setSeed(seed)
        lidar.scan()
        clouds.append(lidar.cloud)
    assert (clouds[0] == clouds[1]).all() and len(clouds[0]) != len(clouds[2])
    assert len(clouds[0]) == pytest.approx(7000, abs=200)
    exact = clouds[0]["distance"] * 10 / clouds[0]["x"]
    assert (clouds[0]["distance"] - exact).std() == pytest.approx(0.02, rel=0.05)


def test_rings_stand_where_they_are_put(simulation):
    add(simulation, hyxCollide.Box(0.5, 40, 40), (10.5, 0, 0))
    lidar = scanner(simulation, rays=1)
    lidar.setRingElevations([-0.3, 0.0, 0.05])
    assert lidar.scan() == 3 and lidar.getNumRings() == 3
    assert lidar.cloud["z"] == pytest.approx(10 * numpy.tan([-0.3, 0, 0.05]))
    lidar.setRingElevations([])
    assert lidar.getRingElevations() == [0, 0, 0]


def surfaces():
    rows, columns = numpy.mgrid[0:40, 0:60]
    heights = 0.4 * numpy.sin(rows / 5) * numpy.cos(columns / 7)
    yield "field", hyxCollide.HeightField(60, 40, 12, 8, heights.ravel().tolist())
    spots = [(x / 5 - 6, y / 5 - 4, float(heights[y, x])) for y in range(40) for x in range(60)]
    quads = [(y * 60 + x, y * 60 + x + 1, y * 60 + x + 60, y * 60 + x + 61) for y in range(39) for x in range(59)]
    corners = [index for a, b, c, d in quads for index in (a, b, c, b, d, c)]
    yield "mesh", hyxCollide.Trimesh(spots, corners)
    whole = hyxCollide.Compound()
    whole.add(hyxCollide.Cone(0.8, 1.5), hyx.AffineMatrix4x4(hyx.Vec3(1, 0, 0)))
    whole.add(hyxCollide.Cylinder(0.5, 1), hyx.AffineMatrix4x4(hyx.Vec3(-1, 0, 0)))
    yield "compound", whole


@pytest.mark.parametrize("shape", [pytest.param(shape, id=name) for name, shape in surfaces()])
def test_many_rays_meet_what_one_ray_meets(simulation, shape):
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setMotionControl(hyx.RigidBody.STATIC)
    body.setTransform(hyx.AffineMatrix4x4(hyx.Quat(0.3, hyx.Vec3(0.6, 0.8, 0)), hyx.Vec3(0.2, -0.1, -4)))
    simulation.add(body)
    lidar = scanner(simulation, rings=40, rays=300, up=math.pi - 0.1)
    lidar.scan()
    cloud = lidar.cloud
    assert len(cloud) > 300
    space = simulation.getSpace()
    for point in cloud[:: len(cloud) // 200]:
        way = numpy.array([point[axis] for axis in "xyz"]) / point["distance"]
        hit = space.castRay(hyx.Vec3(0, 0, 0), hyx.Vec3(*(way * 200)))
        assert hit.isValid() and hit.distance == pytest.approx(point["distance"], abs=2e-5)


@pytest.fixture
def cloud(simulation):
    add(simulation, hyxCollide.Box(0.5, 3, 40), (10.5, 0, 0))
    add(simulation, hyxCollide.Box(0.5, 90, 90), (40.5, 0, 0))
    lidar = scanner(simulation, rings=8, rays=400, up=0.3)
    lidar.setBeamDivergence(0.02)
    lidar.setMaxReturns(3)
    lidar.setRolling(True)
    while lidar.getRevision() == 0:
        simulation.step()
    assert lidar.cloud["returns"].max() > 1
    return lidar.cloud


@pytest.mark.parametrize("ending", ["ply", "pcd"])
def test_another_program_reads_the_points_bit_for_bit(cloud, ending, tmp_path):
    open3d = pytest.importorskip("open3d")
    hyxSensor.save_points(tmp_path / f"points.{ending}", cloud)
    read = open3d.t.io.read_point_cloud(str(tmp_path / f"points.{ending}")).point
    assert (read.positions.numpy() == positions(cloud)).all()
    for name in set(cloud.dtype.names) - set("xyz"):
        assert (read[name].numpy().ravel() == cloud[name]).all(), name


def test_surveyors_read_the_points(cloud, tmp_path):
    laspy = pytest.importorskip("laspy")
    hyxSensor.save_points(tmp_path / "points.las", cloud)
    read = laspy.read(tmp_path / "points.las")
    assert numpy.abs(read.xyz - positions(cloud)).max() <= 0.5e-6 + 1e-12
    for name, own in {
        "gps_time": "time",
        "return_number": "return",
        "number_of_returns": "returns",
        "exact intensity": "intensity",
        "distance": "distance",
        "identity": "identity",
        "ring": "ring",
    }.items():
        assert (numpy.asarray(read[name]) == cloud[own]).all(), name
    assert (numpy.asarray(read.intensity) == numpy.rint(65535 * cloud["intensity"].astype(float))).all()
    assert list(read.header.number_of_points_by_return[:3]) == [(cloud["return"] == i).sum() for i in (1, 2, 3)]
    assert read.header.maxs == pytest.approx(positions(cloud).max(axis=0))


def test_files_are_whole_and_other_fields_are_kept(cloud, tmp_path):
    hyxSensor.save_points(tmp_path / "points.npz", cloud)
    assert (numpy.load(tmp_path / "points.npz")["points"] == cloud).all()
    empty = cloud[:0]
    for ending in ("ply", "pcd", "las", "npz"):
        hyxSensor.save_points(tmp_path / f"none.{ending}", empty)
        with pytest.raises(OSError):
            hyxSensor.save_points(tmp_path / "nowhere" / f"points.{ending}", cloud)
    own = numpy.zeros(3, [("z", ">f4"), ("x", "f4"), ("y", "f4"), ("label", "u1")])
    hyxSensor.save_points(tmp_path / "own.ply", own)
    for path, points in (("points.xyz", cloud), ("points.ply", cloud["x"]), ("points.ply", cloud[["x", "y"]])):
        with pytest.raises(ValueError):
            hyxSensor.save_points(tmp_path / path, points)
    assert len(list(tmp_path.iterdir())) == 6


@pytest.mark.parametrize("ending", ["ply", "pcd", "las"])
def test_what_a_file_cannot_hold_is_not_written(tmp_path, ending):
    path = tmp_path / f"points.{ending}"
    places = [(axis, "f8") for axis in "xyz"]
    for name in ("two words", "line\n", "größe", "n" * 40):
        with pytest.raises(ValueError, match="name of a field"):
            hyxSensor.save_points(path, numpy.zeros(3, [*places, (name, "f4")]))
    if ending == "las":
        for place in (math.nan, math.inf):
            with pytest.raises(ValueError, match="finite"):
                hyxSensor.save_points(path, numpy.full(3, place, places))
        with pytest.raises(ValueError, match="15 returns"):
            hyxSensor.save_points(path, numpy.full(3, 20, [*places, ("return", "u1")]))
    assert not any(tmp_path.iterdir())


def test_what_no_scanner_has_is_refused():
    lidar = hyxSensor.Lidar()
    for wrong in (
        lambda: lidar.setMaxReturns(0),
        lambda: lidar.setMaxReturns(9),
        lambda: lidar.setBeamDivergence(-1),
        lambda: lidar.setDropout(1.5),
        lambda: lidar.setTransparency(None, 2),
        lambda: lidar.setReflectivity(None, -1),
        lambda: lidar.setReturnSeparation(math.nan),
        lambda: lidar.setRingElevations([2]),
        lambda: lidar.setRingElevations([math.nan]),
    ):
        with pytest.raises((RuntimeError, ValueError)):
            wrong()
