"""The sensor camera against rays, projections and motions that are known."""

import math

import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
from hyxOSG import SensorCamera

K = numpy.array([[300.0, 0, 150.0], [0, 310.0, 118.0], [0, 0, 1]])
SIZE = 320, 240
DISTORTIONS = [(), (-0.25, 0.08, 0.001, -0.002, 0.0), (0.1, 0.02)]


@pytest.fixture
def things(app):
    """A ball and a box on a ground, each with its visual."""
    app.initViewer(160, 120)
    simulation = app.getSimulation()
    made = {}
    for name, shape, place in (
        ("ground", hyxCollide.Box(20, 20, 0.5), (0, 0, -0.5)),
        ("ball", hyxCollide.Sphere(0.5), (0.3, 0, 0.5)),
        ("box", hyxCollide.Box(0.3, 0.4, 0.5), (-1.2, 0.5, 0.5)),
    ):
        body = made[name] = hyx.RigidBody(hyxCollide.Geometry(shape))
        body.setPosition(hyx.Vec3(*place))
        if name == "ground":
            body.setMotionControl(hyx.RigidBody.STATIC)
        simulation.add(body)
        hyxOSG.createVisual(body, app.getSceneRoot(), 5.0 if name == "ball" else 1.0)
    return made


def pixel_rays(pose, matrix, size):
    """Origins and directions of all pixels, (h, w, 3), in the world; directions reach 1 m along the view."""
    rows, columns = numpy.mgrid[0 : size[1], 0 : size[0]]
    x, y = (columns - matrix[0, 2]) / matrix[0, 0], (rows - matrix[1, 2]) / matrix[1, 1]
    return pose[:3, 3], numpy.stack([x, y, numpy.ones_like(x)], axis=-1) @ pose[:3, :3].T


def sphere_distance(origin, directions, center, radius):
    """Along the view; infinite where the ray misses."""
    to = origin - center
    a, b, c = (directions**2).sum(-1), directions @ to, to @ to - radius**2
    root = b * b - a * c
    with numpy.errstate(invalid="ignore"):
        return numpy.where(root >= 0, (-b - numpy.sqrt(root)) / a, numpy.inf)


def test_distance_normals_and_identities_follow_the_shapes(app, things):
    camera = SensorCamera(app, *SIZE, K=K)
    camera.look_at((0.5, -4, 1.5), (0, 0, 0.4))
    frame = camera.read("depth", "identity", "normals")
    ball, box, ground = (things[name] for name in ("ball", "box", "ground"))
    assert set(frame.bodies.values()) == {ball, box, ground}
    origin, directions = pixel_rays(camera.pose, K, SIZE)
    numbers = {id(body): number for number, body in frame.bodies.items()}
    place = numpy.array(tuple(ball.getPosition()))
    expected = sphere_distance(origin, directions, place, 0.5)
    with numpy.errstate(divide="ignore"):
        floor = numpy.where(directions[..., 2] < 0, -origin[2] / directions[..., 2], numpy.inf)
    seen_ball, seen_ground = frame.identity == numbers[id(ball)], frame.identity == numbers[id(ground)]
    # Nothing stands before the ball: its outline is the exact one, though it is drawn in facets.
    assert (numpy.isfinite(expected) == seen_ball).all()
    assert numpy.abs(frame.depth[seen_ball] - expected[seen_ball]).max() < 1e-4
    assert numpy.abs(frame.depth[seen_ground] - floor[seen_ground]).max() < 1e-3
    assert numpy.isinf(frame.depth[frame.identity == 0]).all()
    hits = origin + directions * frame.depth[..., None]
    outward = ((hits - place) / 0.5)[seen_ball] @ camera.pose[:3, :3]
    assert (frame.normals[seen_ball] * outward).sum(-1).min() > 1 - 1e-5
    assert numpy.allclose(frame.normals[seen_ground] @ camera.pose[:3, :3].T, (0, 0, 1), atol=1e-4)


@pytest.mark.parametrize("distortion", DISTORTIONS, ids=["straight", "barrel", "pincushion"])
def test_points_appear_where_the_calibration_says(app, things, distortion):
    camera = SensorCamera(app, 640, 480, K=[[600, 0, 300], [0, 620, 250], [0, 0, 1]], distortion=distortion)
    camera.look_at((0.5, -4, 1.5), (0, 0, 0.4))
    box = things["box"]
    for place in ((-1.5, 0.5, 0.7), (0.9, 1.0, 1.2), (0.2, -0.5, 0.3)):
        box.setPosition(hyx.Vec3(*place))
        things["ball"].setPosition(hyx.Vec3(50, 0, 0))
        frame = camera.read("identity", "depth")
        mask = frame.identity == next(n for n, body in frame.bodies.items() if body is box)
        rows, columns = numpy.nonzero(mask)
        # Each pixel back into the world: on the box's surface.
        x, y = undistort((columns - 300) / 600, (rows - 250) / 620, distortion)
        depth = frame.depth[mask]
        points = numpy.stack([x * depth, y * depth, depth], axis=-1) @ camera.pose[:3, :3].T + camera.pose[:3, 3]
        outside = numpy.abs(points - numpy.array(place)) - numpy.array((0.3, 0.4, 0.5))
        # A tenth of a pixel at this distance; with a lens an edge is that of the nearest drawn pixel.
        pixel = depth.max() / 600
        off = numpy.abs(outside.max(axis=-1)) / pixel
        assert outside.max() < (0.1 if not distortion else 1) * pixel + 1e-4
        assert numpy.mean(off < 0.1) > (0.999 if not distortion else 0.97) and numpy.median(off) < 0.01


@pytest.mark.parametrize("distortion", DISTORTIONS, ids=["straight", "barrel", "pincushion"])
def test_the_middle_of_a_ball_is_where_its_projection_is(app, things, distortion):
    camera = SensorCamera(app, 640, 480, K=[[600, 0, 300], [0, 620, 250], [0, 0, 1]], distortion=distortion)
    camera.look_at((0.5, -4, 1.5), (0, 0, 0.4))
    ball = things["ball"]
    things["box"].setPosition(hyx.Vec3(50, 0, 0))
    for place in ((-1.1, 0, 1.1), (1.3, -0.3, 0.9)):
        ball.setPosition(hyx.Vec3(*place))
        frame = camera.read("identity")
        rows, columns = numpy.nonzero(frame.identity == next(n for n, body in frame.bodies.items() if body is ball))
        x, y = undistort((columns - 300) / 600, (rows - 250) / 620, distortion)
        # A ball's rays fill a cone round its middle: the mean over its solid angle is its axis.
        rays = numpy.stack([x, y, numpy.ones_like(x)], axis=-1)
        length = numpy.linalg.norm(rays, axis=-1)
        area = solid_angle(x, y, distortion) / length**3
        axis = (rays / length[:, None] * area[:, None]).sum(axis=0)
        middle = (numpy.array(place) - camera.pose[:3, 3]) @ camera.pose[:3, :3]
        assert numpy.abs(600 * (axis[:2] / axis[2] - middle[:2] / middle[2])).max() < 0.1


def solid_angle(x, y, distortion):
    """How much of the straight picture a pixel of the bent one takes, by differences."""
    if not distortion:
        return numpy.ones_like(x)
    step = 1e-5
    right, down = distort(x + step, y, distortion), distort(x, y + step, distortion)
    here = distort(x, y, distortion)
    xx, yx, xy, yy = right[0] - here[0], right[1] - here[1], down[0] - here[0], down[1] - here[1]
    return step**2 / (xx * yy - xy * yx)


def distort(x, y, coefficients):
    k1, k2, p1, p2, k3 = (*coefficients, *[0] * (5 - len(coefficients)))
    square = x * x + y * y
    radial = 1 + square * (k1 + square * (k2 + square * k3))
    return (
        x * radial + 2 * p1 * x * y + p2 * (square + 2 * x * x),
        y * radial + p1 * (square + 2 * y * y) + 2 * p2 * x * y,
    )


def undistort(x, y, coefficients):
    """By the fixed-point iteration of the usual calibration libraries."""
    k1, k2, p1, p2, k3 = (*coefficients, *[0] * (5 - len(coefficients)))
    straight_x, straight_y = x, y
    for _ in range(100):
        square = straight_x**2 + straight_y**2
        radial = 1 + square * (k1 + square * (k2 + square * k3))
        tangential_x = 2 * p1 * straight_x * straight_y + p2 * (square + 2 * straight_x**2)
        tangential_y = p1 * (square + 2 * straight_y**2) + 2 * p2 * straight_x * straight_y
        straight_x, straight_y = (x - tangential_x) / radial, (y - tangential_y) / radial
    return straight_x, straight_y


def test_flow_is_the_motion_of_surfaces_and_camera(app, things):
    camera = SensorCamera(app, *SIZE, K=K)
    camera.look_at((0, -4, 0.5), (0, 0, 0.5))
    camera.read("flow")
    still = camera.read("flow").flow
    assert numpy.abs(still).max() < 1e-3
    box = things["box"]
    box.setPosition(hyx.Vec3(-1.2 + 0.1, 0.5, 0.5))  # 0.1 m to the right of the picture
    frame = camera.read("flow", "identity", "depth")
    mask = frame.identity == next(n for n, body in frame.bodies.items() if body is box)
    expected = 0.1 * K[0, 0] / frame.depth[mask]
    assert numpy.abs(frame.flow[mask][:, 0] - expected).max() < 0.01
    assert numpy.abs(frame.flow[mask][:, 1]).max() < 0.01 and numpy.abs(frame.flow[~mask]).max() < 1e-3
    camera.look_at((0.2, -4, 0.5), (0.2, 0, 0.5))
    frame = camera.read("flow", "depth")
    seen = numpy.isfinite(frame.depth)
    assert numpy.allclose(frame.flow[seen][:, 0], -0.2 * K[0, 0] / frame.depth[seen], atol=0.02)


def test_a_camera_follows_its_body_and_colours_are_upright(app, things):
    ball = things["ball"]
    hyxOSG.setDiffuseColor(hyxOSG.findGeometryNode(ball.getGeometries()[0], app.getSceneRoot()), hyx.Vec4f(1, 0, 0, 1))
    box = things["box"]
    camera = SensorCamera(app, *SIZE, field_of_view=50)
    camera.follow(box, camera.looking((0, -3, 1), (1.5, -0.5, 0)))
    before = camera.read("rgb", "identity")
    red = before.rgb.astype(int) @ (2, -1, -1) > 60
    number = next(n for n, body in before.bodies.items() if body is ball)
    assert red.sum() > 500 and (red & (before.identity == number)).sum() > 0.9 * red.sum()
    for body in (box, ball):
        body.setRotation(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)))
    box.setPosition(hyx.Vec3(5, 5, 0.5))
    ball.setPosition(hyx.Vec3(5.5, 6.5, 0.5))  # turned with the box
    after = camera.read("identity")
    assert (after.identity == number).sum() == pytest.approx((before.identity == number).sum(), rel=0.01)


def test_several_cameras_are_read_in_one_drawing(app, things):
    cameras = [SensorCamera(app, 64, 48) for _ in range(3)]
    for camera, x in zip(cameras, (-2, 0, 2)):
        camera.look_at((x, -4, 1), (x, 0, 0.5))
    together = hyxOSG.read_cameras(cameras, "rgb", "depth")
    for camera, frame in zip(cameras, together):
        alone = camera.read("rgb", "depth")
        assert (alone.rgb == frame.rgb).all() and (alone.depth == frame.depth).all()


def test_files_hold_what_was_read_and_noise_has_its_seed(app, things, tmp_path):
    from PIL import Image

    noisy = [SensorCamera(app, 64, 48, noise=hyxOSG.SensorNoise(rgb=3, depth=0.01, seed=seed)) for seed in (1, 1, 2)]
    for camera in noisy:
        camera.look_at((0, -4, 1), (0, 0, 0.5))
    first, same, other = (camera.read("rgb", "depth") for camera in noisy)
    assert (first.rgb == same.rgb).all() and (first.depth == same.depth).all() and (first.depth != other.depth).any()
    clean = SensorCamera(app, 64, 48)
    clean.look_at((0, -4, 1), (0, 0, 0.5))
    seen = numpy.isfinite(first.depth)
    assert (first.depth[seen] - clean.read("depth").depth[seen]).std() == pytest.approx(0.01, rel=0.1)
    first.save_npz(tmp_path / "frame.npz")
    with numpy.load(tmp_path / "frame.npz") as stored:
        assert (stored["depth"] == first.depth).all() and (stored["K"] == first.K).all()
    first.save_depth_png(tmp_path / "depth.png")
    millimetres = numpy.asarray(Image.open(tmp_path / "depth.png"))
    assert numpy.abs(millimetres[seen] * 0.001 - first.depth[seen]).max() <= 0.00051 and not millimetres[~seen].any()
    with pytest.raises(OSError):
        first.save_npz(tmp_path / "nowhere" / "frame.npz")
    assert sorted(path.name for path in tmp_path.iterdir()) == ["depth.png", "frame.npz"]


def test_high_range_files_hold_every_channel(app, things, tmp_path):
    OpenEXR = pytest.importorskip("OpenEXR")
    camera = SensorCamera(app, 64, 48)
    camera.look_at((0, -4, 1), (0, 0, 0.5))
    frame = camera.read(*SensorCamera.CHANNELS)
    frame.save_exr(tmp_path / "frame.exr")
    with OpenEXR.File(str(tmp_path / "frame.exr"), separate_channels=True) as file:
        read = {name: channel.pixels for name, channel in file.channels().items()}
        header = dict(file.header())  # the file empties its own
    assert (read["Z"] == frame.depth).all() and (read["id"] == frame.identity).all()
    for name, own in (("N", frame.normals), ("flow", frame.flow)):
        assert all((read[f"{name}.{axis}"] == own[..., i]).all() for i, axis in zip(range(own.shape[-1]), "XYZ"))
    assert (header["K"] == frame.K).all() and (header["pose"] == frame.pose).all()
    light = numpy.stack([read[name] for name in "RGB"], axis=-1).astype(float)
    coded = numpy.where(light <= 0.0031308, light * 12.92, 1.055 * light ** (1 / 2.4) - 0.055)
    assert numpy.abs(255 * coded - frame.rgb).max() < 0.5
    with pytest.raises(FileNotFoundError):
        frame.save_exr(tmp_path / "nowhere" / "frame.exr")


@pytest.mark.parametrize(
    "wrong",
    [
        {"width": 0},
        {"K": [[1, 2], [3, 4]]},
        {"K": [[-1, 0, 0], [0, 1, 0], [0, 0, 1]]},
        {"near": 2, "far": 1},
        {"field_of_view": 180},
        {"distortion": (1, 2, 3, 4, 5, 6)},
        {"distortion": (-3.0,)},
        {"distortion": (math.nan,)},
    ],
    ids=str,
)
def test_what_cannot_be_a_camera_is_refused(app, things, wrong):
    with pytest.raises(ValueError):
        SensorCamera(app, **{"width": 64, "height": 48, **wrong})
    camera = SensorCamera(app, 64, 48)
    with pytest.raises(ValueError, match="heat"):
        camera.read("heat")
    with pytest.raises(ValueError):
        camera.look_at((0, 0, 0), (0, 0, 1))


WRONG_POSES = {
    "a shift in the last row": [[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [1, 2, 3, 1]],
    "mirrored": numpy.diag([1, 1, -1, 1]),
    "sheared": [[1, 0.5, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]],
    "scaled": numpy.diag([2, 1, 0.5, 1]),
    "no number": numpy.full((4, 4), math.nan),
    "too small": numpy.eye(3),
}


def test_a_pose_is_what_a_matrix_of_either_kind_means(app, things):
    by_rows, by_columns = SensorCamera(app, 64, 48), SensorCamera(app, 64, 48)
    turn = hyx.AffineMatrix4x4.rotate(hyx.Quat(0.3, hyx.Vec3(1, 2, 3)))
    offset = turn * hyx.AffineMatrix4x4.translate(hyx.Vec3(0.1, 0.2, 0.9))
    columns = numpy.array([[offset.get(row, column) for row in range(4)] for column in range(4)])
    by_rows.follow(things["box"], offset)
    by_columns.follow(things["box"], columns)
    assert (by_rows.pose == by_columns.pose).all()
    assert numpy.allclose(by_rows.pose[:3, 3], (-1.1, 0.7, 1.4))
    for camera in (by_rows, hyxOSG.SpinningDepthLidar(app, 2, 8)):
        camera.pose = offset
        assert (camera.pose == columns).all()
        for wrong in WRONG_POSES.values():
            with pytest.raises(ValueError, match="pose"):
                camera.pose = wrong
            with pytest.raises(ValueError, match="pose"):
                camera.follow(things["box"], wrong)
        assert (camera.pose == columns).all()


@pytest.mark.parametrize("distortion", DISTORTIONS, ids=["straight", "barrel", "pincushion"])
def test_an_outline_through_a_lens_is_that_of_exact_rays(app, things, distortion):
    camera = SensorCamera(app, 320, 240, K=K, distortion=distortion)
    camera.look_at((0.5, -4, 1.5), (0, 0, 0.4))
    things["box"].setPosition(hyx.Vec3(50, 0, 0))
    rows, columns = numpy.mgrid[0:240, 0:320]
    x, y = undistort((columns - K[0, 2]) / K[0, 0], (rows - K[1, 2]) / K[1, 1], distortion)
    directions = numpy.stack([x, y, numpy.ones_like(x)], axis=-1) @ camera.pose[:3, :3].T
    for place in ((-0.8, 0, 1.1), (1.0, -0.3, 0.9), (0.2, 0.4, 0.6)):
        things["ball"].setPosition(hyx.Vec3(*place))
        frame = camera.read("identity", "depth", "normals")
        expected = sphere_distance(camera.pose[:3, 3], directions, numpy.array(place), 0.5)
        number = next(n for n, body in frame.bodies.items() if body is things["ball"])
        seen = frame.identity == number
        assert (seen != numpy.isfinite(expected)).sum() <= 1  # a ray may touch it
        both = seen & numpy.isfinite(expected)
        assert numpy.abs(frame.depth[both] - expected[both]).max() < 1e-4
