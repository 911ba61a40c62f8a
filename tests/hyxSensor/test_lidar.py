"""The laser scanner: distances and intensities of known surfaces, rings, noise, range, rate."""

import math
import statistics

import hyx
import hyxCollide
import hyxSDK
import hyxSensor
import pytest


@pytest.fixture
def world():
    """A wall at x = 5 and the ground one metre below the origin."""
    simulation = hyxSDK.Simulation()
    wall = hyxCollide.Geometry(hyxCollide.Box(0.5, 10, 10))
    wall.setLocalPosition(hyx.Vec3(5.5, 0, 0))
    simulation.add(wall)
    ground = hyxCollide.Geometry(hyxCollide.Plane(hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, -1)))
    simulation.add(ground)
    return simulation


def scanner(simulation, rings=1, rays=1, across=0.0, up=0.0, frame=None):
    lidar = hyxSensor.Lidar(frame)
    lidar.setResolution(rings, rays)
    lidar.setFieldOfView(across, up)
    simulation.add(lidar)
    return lidar


def test_one_ray_measures_the_wall(world):
    lidar = scanner(world)
    assert lidar.scan() == 1
    (hit,) = lidar.getHits()
    assert hit.distance == pytest.approx(5) and hit.position.x == pytest.approx(5) and hit.ring == 0
    assert 0 < hit.intensity <= 1


def test_a_fan_measures_every_angle(world):
    lidar = scanner(world, rays=31, across=1.0)
    lidar.scan()
    points = lidar.getPoints().tolist()
    assert len(points) == 31
    for i, (x, y, z) in enumerate(points):
        angle = i / 30 - 0.5
        assert x == pytest.approx(5, abs=1e-4) and y == pytest.approx(5 * math.tan(angle), abs=1e-4)
        assert lidar.getDistances()[i] == pytest.approx(5 / math.cos(angle), rel=1e-4)


def test_slanting_light_comes_back_weaker(world):
    lidar = scanner(world, rays=3, across=1.6)
    lidar.scan()
    left, middle, right = lidar.getIntensities().tolist()
    assert left == pytest.approx(right) and left < 0.75 * middle


def test_rings_count_from_the_lowest(world):
    lidar = scanner(world, rings=5, rays=8, across=0.2, up=1.2)
    lidar.scan()
    hits = lidar.getHits()
    low, high = (statistics.mean(hit.position.z for hit in hits if hit.ring == ring) for ring in (0, 4))
    assert low == pytest.approx(-1, abs=1e-4) and high > 2
    assert lidar.getRingCounts() == [8] * 5
    assert sorted(set(lidar.getRings().tolist())) == [0, 1, 2, 3, 4]


def test_out_of_range_is_no_hit(world):
    lidar = scanner(world)
    lidar.setRange(hyx.RangeReal(0.1, 4))
    assert lidar.scan() == 0
    lidar.setRange(hyx.RangeReal(6, 20))
    assert lidar.scan() == 0
    lidar.setRange(hyx.RangeReal(1, 20))
    assert lidar.scan() == 1


def test_noise_has_the_stated_size_and_repeats_with_the_seed(world):
    lidar = scanner(world, rays=800, across=0.01)
    lidar.setDistanceNoise(0.05)
    lidar.setSeed(7)
    lidar.scan()
    first = lidar.getDistances().tolist()
    assert statistics.stdev(first) == pytest.approx(0.05, rel=0.15)
    assert statistics.mean(first) == pytest.approx(5, abs=0.01)
    lidar.setSeed(7)
    lidar.scan()
    assert lidar.getDistances().tolist() == first


def test_the_scanner_rides_on_its_frame_and_ignores_its_body(world):
    mount = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5)))
    mount.setMotionControl(hyx.RigidBody.KINEMATICS)
    mount.setPosition(hyx.Vec3(2, 0, 0))
    world.add(mount)
    lidar = scanner(world, frame=mount.getFrame())
    lidar.setIgnoredBody(mount)
    lidar.scan()
    assert lidar.getHits()[0].distance == pytest.approx(3)
    mount.setRotation(hyx.Quat(math.pi / 2, hyx.Vec3(0, 1, 0)))  # looking down
    lidar.scan()
    assert lidar.getHits()[0].distance == pytest.approx(1)


def test_a_scan_is_made_at_its_rate(world):
    lidar = scanner(world)
    lidar.setScanRate(10.0)
    revisions = []
    for _ in range(60):
        world.step()
        revisions.append(lidar.getRevision())
    assert len(set(revisions)) == pytest.approx(10, abs=1)
    lidar.setEnable(False)
    world.step()
    assert lidar.getRevision() == revisions[-1]


def test_points_measured_elsewhere_are_taken():
    lidar = hyxSensor.Lidar()
    assert lidar.scan() == 0  # in no simulation
    points = memoryview(bytearray(24)).cast("f")
    points[0], points[4] = 3.0, 4.0
    intensities = memoryview(bytearray(16)).cast("d")
    intensities[1] = 0.5
    lidar.setHits(points, intensities)
    assert lidar.getDistances().tolist() == [3, 4] and lidar.getIntensities().tolist() == [0, 0.5]
    with pytest.raises(ValueError, match="three coordinates"):
        lidar.setHits(points, points)


def test_bad_settings_are_refused():
    lidar = hyxSensor.Lidar()
    with pytest.raises(RuntimeError, match="at least one ring"):
        lidar.setResolution(0, 5)
    with pytest.raises(RuntimeError, match="range of a lidar"):
        lidar.setRange(hyx.RangeReal(-1, 5))
    with pytest.raises(RuntimeError, match="field of view"):
        lidar.setFieldOfView(9.0, 0.1)
    with pytest.raises(RuntimeError, match="noise"):
        lidar.setDistanceNoise(-0.1)
