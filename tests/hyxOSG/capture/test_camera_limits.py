"""Sensor cameras of any size, matrix and lens show what rays meet, or say in words what they are not."""

import math
import re

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from hyxOSG import SensorCamera, SensorNoise, SpinningDepthLidar
from PIL import Image

CENTRE, RADIUS = numpy.array((0.0, 0.0, 0.6)), 0.5


def shown_application():
    """A ball above a ground that ends out of sight."""
    app = hyxOSG.ExampleApplication()
    app.initViewer(64, 48)
    ground = hyxCollide.Geometry(hyxCollide.Box(400, 400, 1))
    ground.setLocalPosition(hyx.Vec3(0, 0, -1))
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(RADIUS)), "ball")
    ball.setPosition(hyx.Vec3(*CENTRE))
    for thing in (ground, ball):
        app.getSimulation().add(thing)
        hyxOSG.createVisual(thing, app.getSceneRoot(), 5.0)
    return app


@pytest.fixture(scope="module")
def app():
    with shown_application() as made:
        yield made


def distances(pose, x, y):
    """Depths at which the directions (x, y, 1) of the camera meet the ball and the ground."""
    directions = numpy.stack([x, y, numpy.ones_like(x)], axis=-1) @ pose[:3, :3].T
    towards = pose[:3, 3] - CENTRE
    a, b = (directions**2).sum(-1), (directions * towards).sum(-1)
    square = b * b - a * (towards @ towards - RADIUS**2)
    with numpy.errstate(divide="ignore"):
        ground = numpy.where(directions[..., 2] < 0, -pose[2, 3] / directions[..., 2], math.inf)
    return numpy.where(square > 0, (-b - numpy.sqrt(numpy.maximum(square, 0))) / a, math.inf), ground


def random_matrix(random, size):
    focal, centre = random.uniform(0.4, 3, 2) * size, random.uniform(-0.5, 1.5, 2) * size
    return [[focal[0], 0, centre[0]], [0, focal[1], centre[1]], [0, 0, 1]]


@pytest.mark.parametrize("seed", range(12))
def test_any_size_and_matrix_shows_what_rays_meet(app, seed):
    random = numpy.random.default_rng(seed)
    size = [(1, 1), (1, 7), (5, 1), (1, 300), (2000, 1), (3, 5)][seed] if seed < 6 else random.integers(2, 120, 2)
    camera = SensorCamera(app, *size, K=random_matrix(random, size) if seed % 3 else None)
    camera.look_at((0.2, -4, 1.5), (0, 0, 0.4))
    frame = camera.read("depth", "identity", "rgb")
    K = camera.K
    rows, columns = numpy.mgrid[0 : size[1], 0 : size[0]].astype(float)
    x, y = (columns - K[0, 2]) / K[0, 0], (rows - K[1, 2]) / K[1, 1]
    ball, ground = distances(frame.pose, x, y)
    expected = numpy.minimum(ball, ground)
    clear = (expected < 20) & (numpy.hypot(x, y) < 3)
    for right, down in ((-0.5, 0), (0.5, 0), (0, -0.5), (0, 0.5)):  # pixels by which the outline is farther away
        beside = distances(frame.pose, x + right / K[0, 0], y + down / K[1, 1])[0]
        clear &= (beside < 100) == (ball < 100)
    assert frame.rgb.shape == (size[1], size[0], 3) and frame.depth.shape == (size[1], size[0])
    assert numpy.abs(frame.depth[clear] - expected[clear]).max(initial=0) < 1e-3
    assert ((frame.identity > 0) == (ball < ground))[clear].all()
    camera.close()


@pytest.mark.parametrize("half", [50, 400, 3000])
@pytest.mark.parametrize("near", [0.01, 0.5])
def test_ground_without_end_keeps_its_distance_and_its_normal(half, near):
    with hyxOSG.ExampleApplication() as app:
        app.initViewer(64, 48)
        app.getSimulation().add(ground := hyxCollide.Geometry(hyxCollide.Box(half, half, 1)))
        ground.setLocalPosition(hyx.Vec3(0, 0, -1))
        hyxOSG.createVisual(ground, app.getSceneRoot())
        camera = SensorCamera(app, 64, 48, near=near, far=100)
        camera.look_at((0, -1, 0.3), (5, 3, 0.2))
        frame, K = camera.read("depth", "normals"), camera.K
        rows, columns = numpy.mgrid[0:48, 0:64].astype(float)
        x, y = (columns - K[0, 2]) / K[0, 0], (rows - K[1, 2]) / K[1, 1]
        expected = distances(frame.pose, x, y)[1]
        seen = (expected < 20) & (expected > 2 * near)
        assert seen.sum() > 300 and numpy.abs(frame.depth[seen] - expected[seen]).max() < 1e-3
        assert numpy.abs(frame.normals[seen] @ frame.pose[:3, :3].T - (0, 0, 1)).max() < 1e-3


def test_what_is_smaller_than_a_pixel_is_seen_at_its_middle(app):
    depth = hyxOSG.RenderToImage(1, 1, hyxOSG.RenderTarget.DEPTH_BUFFER, 0, hyxOSG.RenderTarget.DEPTH_COMPONENT)
    depth.setViewMatrixAsLookAt(hyx.Vec3(0, -60, 0.6), hyx.Vec3(*CENTRE), hyx.Vec3(0, 0, 1))
    depth.setProjectionMatrixAsPerspective(3, 1, 10, 100)
    app.addRenderTarget(depth)
    app.render()
    near, far, distance = 10, 100, 59.5
    assert depth.pixels[0, 0] == pytest.approx(far * (distance - near) / (distance * (far - near)), abs=2e-4)
    app.removeRenderTarget(depth)


def test_lenses_come_in_any_shape_and_none_is_none(app):
    pictures = []
    for lens in ((-0.1, 0.02), numpy.array([[-0.1, 0.02, 0, 0, 0]]), numpy.array([[-0.1], [0.02]], numpy.float64)):
        camera = SensorCamera(app, 40, 30, distortion=lens)
        camera.look_at((0.2, -4, 1.5), (0, 0, 0.4))
        pictures.append(camera.read("depth").depth)
    assert (pictures[0] == pictures[1]).all() and (pictures[0] == pictures[2]).all()
    assert SensorCamera(app, 40, 30, distortion=None).read().rgb.shape == (30, 40, 3)


NO_CAMERA = {
    **{f"size {size}": {"width": size} for size in (0, -1, 16385, 2**63, 3.7, math.nan, math.inf)},
    **{f"K {number}": {"K": [[number, 0, 9], [0, 60, 9], [0, 0, 1]]} for number in (0, 1e-300, 1e308, math.nan)},
    **{f"centre {number}": {"K": [[60, 0, number], [0, 60, 9], [0, 0, 1]]} for number in (1e308, -math.inf)},
    "skewed": {"K": [[60, 5, 9], [0, 60, 9], [0, 0, 1]]},
    **{f"lens {lens}": {"distortion": lens} for lens in ((-0.9,), (1e300,), (0, 0, 1), (math.inf,), (0.1,) * 6)},
    "long lens": {"width": 1, "height": 16384, "distortion": (-0.1,)},
    **{f"far {far}": {"far": far} for far in (math.inf, math.nan, 1e30)},
    **{f"near {near}": {"near": near} for near in (0, -1, math.nan, 1e-30)},
    **{f"samples {samples}": {"samples": samples} for samples in (-1, 17, math.nan)},
    **{f"view {angle}": {"field_of_view": angle} for angle in (0, 180, math.nan, 1e-9, 179.9999999)},
}


@pytest.mark.parametrize("wrong", NO_CAMERA.values(), ids=NO_CAMERA.keys())
def test_what_is_no_camera_is_told_when_it_is_made(app, wrong):
    with pytest.raises(ValueError):
        SensorCamera(app, **{"width": 40, "height": 30, **wrong})


@pytest.mark.parametrize(
    "wrong", [{"rings": 2.5}, {"rings": 10**5, "columns": 20000}, {"columns": math.nan}, {"far": math.inf}]
)
def test_what_is_no_spinning_lidar_is_told_when_it_is_made(app, wrong):
    with pytest.raises(ValueError):
        SpinningDepthLidar(app, **wrong)


@pytest.mark.parametrize("steepest", [0.1, 0.7, 1.3])
def test_a_spinning_lidar_of_too_many_columns_says_how_many_it_may_have(app, steepest):
    rings = {"rings": 2, "vertical": (-steepest, steepest)}
    with pytest.raises(ValueError, match="100000 columns, .* degrees .* at most 16384 each way") as refused:
        SpinningDepthLidar(app, columns=100_000, **rings)
    most = int(re.search(r"at most (\d+) columns", str(refused.value))[1])
    assert most > 2000
    SpinningDepthLidar(app, columns=most, **rings)
    with pytest.raises(ValueError, match="columns"):
        SpinningDepthLidar(app, columns=most + 60, **rings)


@pytest.mark.parametrize("name", ["rgb", "depth", "depth_per_square"])
def test_noise_is_none_or_some_and_distances_stay_distances(app, name):
    for wrong in (-1, math.nan, math.inf, 1e308):
        with pytest.raises(ValueError, match=name):
            SensorNoise(**{name: wrong})
    noise = SensorNoise(depth=50.0)
    camera = SensorCamera(app, 40, 30, noise=noise)
    camera.look_at((0.2, -4, 1.5), (0, 0, 0.4))
    assert camera.read("depth").depth.min() == 0
    setattr(noise, name, math.nan)
    with pytest.raises(ValueError, match=name):
        camera.read("depth")


def test_only_what_has_a_place_is_followed(app):
    camera = SensorCamera(app, 40, 30)
    for wrong in (None, "ball", app.getSimulation(), app.getSceneRoot()):
        with pytest.raises(TypeError, match="follows a body"):
            camera.follow(wrong)
    for wrong in (None, "application"):
        with pytest.raises(TypeError, match="ExampleApplication"):
            SensorCamera(wrong, 40, 30)


def test_a_body_that_is_removed_is_followed_where_it_was_and_seen_no_more(app):
    simulation = app.getSimulation()
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)), "box")
    box.setPosition(hyx.Vec3(0.8, -1, 0.6))
    simulation.add(box)
    hyxOSG.createVisual(box, app.getSceneRoot())
    camera = SensorCamera(app, 64, 48, noise=lambda frame: simulation.remove(box))  # between two readings
    camera.follow(box, camera.looking((0, -3, 1), (0, 0, 0)))
    place = camera.pose
    before = camera.read("identity", "flow")
    camera.noise = None
    after = camera.read("identity", "flow")
    assert {body.getName() for body in before.bodies.values()} == {"ball", "box"}
    assert {body.getName() for body in after.bodies.values()} == {"ball"}
    assert (camera.pose == place).all() and numpy.abs(after.flow).max() < 1e-3


def test_cameras_end_with_their_application():
    app = shown_application()
    camera, lidar = SensorCamera(app, 40, 30), SpinningDepthLidar(app, 4, 16)
    camera.read("rgb", "depth")
    lidar.scan()
    app.close()
    for call in (lambda: camera.read("depth"), lidar.scan):
        with pytest.raises(RuntimeError, match="closed"):
            call()
    with pytest.raises(TypeError, match="closed"):
        SensorCamera(app, 8, 8)
    camera.close()
    lidar.close()


def test_noise_may_use_the_camera_that_it_is_of(app):
    camera = SensorCamera(app, 40, 30)
    camera.look_at((0.2, -4, 1.5), (0, 0, 0.4))
    expected = camera.read("depth").depth
    camera.noise = lambda frame: camera.close()
    assert all((frame.depth == expected).all() for frame in hyxOSG.read_cameras([camera, camera], "depth"))


def test_depths_that_are_none_are_kept_or_left_out(app, tmp_path):
    camera = SensorCamera(app, 40, 30)
    camera.look_at((0.2, -4, 1.5), (0, 0, 0.4))
    frame = camera.read("depth")
    clean = frame.depth[5:].copy()
    frame.depth[:5] = numpy.array([math.nan, math.inf, -math.inf, -1.0, 1e30])[:, None]
    frame.save_depth_png(tmp_path / "depth.png")
    steps = numpy.asarray(Image.open(tmp_path / "depth.png"))
    assert not steps[:5].any() and numpy.abs(steps[5:] * 0.001 - clean)[numpy.isfinite(clean)].max() <= 0.00051
    frame.save_npz(tmp_path / "frame.npz")
    with numpy.load(tmp_path / "frame.npz") as stored:
        assert stored["depth"].tobytes() == frame.depth.tobytes()
    for unit in (0, -1, math.nan, math.inf):
        with pytest.raises(ValueError, match="unit"):
            frame.save_depth_png(tmp_path / "none.png", unit)
    frame.depth = numpy.zeros((0, 0), numpy.float32)
    with pytest.raises(ValueError, match="height"):
        frame.save_depth_png(tmp_path / "none.png")
    assert not (tmp_path / "none.png").exists()


def test_long_names_fit_and_null_bytes_do_not(app, tmp_path):
    frame = SensorCamera(app, 40, 30).read("rgb", "depth")
    for ending in (".npz", ".png", ".exr"):
        path = tmp_path / ("n" * (255 - len(ending)) + ending)
        save = {".npz": frame.save_npz, ".png": frame.save_depth_png, ".exr": frame.save_exr}[ending]
        save(path)
        assert path.stat().st_size > 100
        path.unlink()
        with pytest.raises(ValueError, match="null byte"):
            save(tmp_path / f"a{ending}\0{ending}")
        with pytest.raises(FileNotFoundError):
            save("")
    with pytest.raises(RuntimeError, match="null byte"):
        app.takeScreenShot(str(tmp_path / "a.png\0.png"))
    images = app.getImageCapture()
    images.setDirectoryPath(str(tmp_path))
    images.setPrefix("a\0")
    images.startCapture()
    for _ in range(3):
        app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
    with pytest.raises(RuntimeError, match="null byte"):
        images.stopCapture()
    assert not any(tmp_path.iterdir())
