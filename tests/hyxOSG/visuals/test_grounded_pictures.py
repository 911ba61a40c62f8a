"""What a first picture shows untuned: colours in the shade, shadows of bodies alone, the whole scene in view."""

import colorsys
import math

import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import pytest
from off_screen import OffScreen
from PIL import Image

SIZE = 192
KEPT = []  # bodies, whose end would take their visuals away


class Set(OffScreen):
    def __init__(self, folder, **options):
        super().__init__(SIZE, SIZE, **options)
        self.file = str(folder / "picture.png")

    def add(self, shape, place=(0, 0, 0), color=None):
        body = hyx.RigidBody(hyxCollide.Geometry(shape))
        body.setMotionControl(hyx.RigidBody.STATIC)
        body.setPosition(hyx.Vec3(*place))
        KEPT.append(body)
        visual = hyxOSG.createVisual(body, self.root)
        if color:
            hyxOSG.setDiffuseColor(visual, hyx.Vec4f(*color, 1))
        return visual

    def picture(self, eye=None, center=(0, 0, 0)):
        if eye:
            self.look_from(hyx.Vec3(*eye), hyx.Vec3(*center))
        for _ in range(2):  # the first frame after a change also places lights and transforms
            self.app.takeScreenShot(self.file)
        return numpy.asarray(Image.open(self.file).convert("RGB")).astype(int)


@pytest.fixture(scope="module")
def whole_set(tmp_path_factory):
    made = Set(tmp_path_factory.mktemp("grounded"))
    yield made
    made.app.close()


@pytest.fixture
def scene(whole_set):
    yield whole_set
    while whole_set.root.getNumChildren():
        whole_set.root.removeChild(whole_set.root.getChild(0))
    whole_set.decorator.setEnableShadows(False)
    KEPT.clear()


def luminance(pixel):
    return 0.2126 * pixel[0] + 0.7152 * pixel[1] + 0.0722 * pixel[2]


def hue(pixel):
    return 360 * colorsys.rgb_to_hsv(*(value / 255 for value in pixel))[0]


@pytest.mark.parametrize("color", [(0.8, 0.2, 0.1), (0.2, 0.7, 0.3), (0.1, 0.3, 0.9)])
@pytest.mark.parametrize("shadows", [False, True])
def test_a_coloured_box_keeps_its_hue_in_the_shade(scene, color, shadows):
    scene.decorator.setEnableShadows(shadows)
    scene.add(hyxCollide.Box(0.5, 0.5, 0.5), color=color)
    front, back = scene.picture((0, -4, 0))[SIZE // 2, SIZE // 2], scene.picture((0, 4, 0))[SIZE // 2, SIZE // 2]
    assert luminance(front) > luminance(back) >= luminance(front) / 4
    assert abs(hue(front) - hue(back)) < 5


def test_an_ambient_colour_that_was_set_stays(scene):
    box = scene.add(hyxCollide.Box(0.5, 0.5, 0.5))
    hyxOSG.setAmbientColor(box, hyx.Vec4f(0, 1, 0, 1))
    hyxOSG.setDiffuseColor(box, hyx.Vec4f(1, 0, 0, 1))
    red, green, _ = scene.picture((0, 4, 0))[SIZE // 2, SIZE // 2]
    assert green > 60 > 10 > red


def test_labels_cast_no_shadow(scene):
    scene.decorator.setEnableShadows(True)
    scene.add(hyxCollide.Box(3, 3, 0.1), (0, 0, -0.1))
    view = (0, -0.1, 6)
    bare = scene.picture(view)
    for label in (
        hyxOSG.createText("MMMM", hyx.Vec3(0, 0, 1), hyx.Vec4f(1, 1, 1, 0), 1.0),
        hyxOSG.Text("MMMM", hyx.Vec3(-1, 0, 1), hyx.Vec4(1, 1, 1, 0)),
    ):
        scene.root.addChild(label)
    assert abs(scene.picture(view) - bare).max() <= 3
    scene.add(hyxCollide.Box(0.3, 0.3, 0.3), (0, 0, 1.5))
    assert abs(scene.picture(view) - bare).max() > 60


def test_a_filled_grid_takes_shadows(scene):
    scene.decorator.setEnableShadows(True)
    board = osg.Geode()
    board.addDrawable(hyxOSG.createGrid(4, 4, osg.Vec3(-3, -3, 0), osg.Vec3(6, 0, 0), osg.Vec3(0, 6, 0), True))
    scene.root.addChild(board)
    caster = scene.add(hyxCollide.Box(0.4, 0.4, 0.4), (0, 0, 1.5))
    with_shadow = scene.picture((0, -6, 5))
    caster.setNodeMask(0xFFFFFFFF & ~hyxOSG.ExampleApplication.CASTS_SHADOWS_MASK)
    darker = (scene.picture() - with_shadow).max(axis=2) > 30
    assert darker.sum() > 100


def test_the_first_view_is_of_what_lies_on_a_plane(scene):
    scene.add(hyxCollide.Plane(0.0, 0.0, 1.0, 0.0))
    for x in range(5):
        scene.add(hyxCollide.Box(0.5, 0.5, 0.5), (1.5 * x - 3, 0, 0.5), (1, 0, 0))
    scene.look_from(hyx.Vec3(0, -8, 3))
    scene.app.fitSceneIntoView()
    picture = scene.picture()
    boxes = (picture[..., 0] > 60) & (picture[..., 1] < picture[..., 0] / 3)
    assert boxes.sum() > 0.03 * SIZE * SIZE


def test_a_plane_alone_comes_into_view(scene):
    scene.add(hyxCollide.Plane(0.0, 0.0, 1.0, 0.0))
    scene.look_from(hyx.Vec3(0, -8, 3))
    scene.app.fitSceneIntoView()
    lit = scene.picture().max(axis=2) > 12
    assert 0.05 < lit.mean() < 0.9


@pytest.mark.parametrize("scale", [0.1, 7.0])
def test_scaled_models_are_as_bright_as_others(scene, scale):
    made = []
    for factor in (1, scale):
        board = osg.Geode()
        board.addDrawable(hyxOSG.createGrid(4, 4, osg.Vec3(-3, -3, 0), osg.Vec3(6, 0, 0), osg.Vec3(0, 6, 0), True))
        size = hyxOSG.Transform()
        size.setScale(hyx.Vec3(factor, factor, factor))
        size.addChild(board)
        scene.root.addChild(size)
        made.append(scene.picture((0, -0.1, 5 * factor))[SIZE // 2, SIZE // 2])
        scene.root.removeChild(size)
    assert abs(made[0] - made[1]).max() <= 3 and 40 < made[0].max() < 250


def test_each_mesh_is_drawn_as_itself(scene):
    """Meshes come and go, each in the place in memory of one before it."""
    seen = set()
    for half in (0.2, 0.3, 0.4, 0.5, 0.6):
        corners = [hyx.Vec3(x, 0, z) for x, z in ((-half, -half), (half, -half), (half, half), (-half, half))]
        geometry = hyxCollide.Geometry(hyxCollide.Trimesh(corners, [0, 1, 2, 0, 2, 3]))
        visual = hyxOSG.createVisual(geometry, scene.root)
        seen.add(round(visual.getBound().radius(), 3))
        scene.root.removeChild(visual)
        del visual, geometry, corners
    assert len(seen) == 5


def test_a_drawn_sphere_covers_what_the_physical_one_does(scene):
    scene.add(hyxCollide.Sphere(1))
    eye = 6.0
    pixels = (scene.picture((0, -eye, 0)) > 6).any(axis=2).sum()
    outline = 1 / math.sqrt(eye**2 - 1) / math.tan(math.radians(22.5)) * SIZE / 2
    assert pixels == pytest.approx(math.pi * outline**2, rel=0.012)


def test_edges_are_smooth(tmp_path):
    scene = Set(tmp_path, samples=4)
    box = scene.add(hyxCollide.Box(0.7, 0.7, 0.7), color=(1, 1, 1))
    hyxOSG.setEnableLight(False, 0, box)  # evenly grey
    picture = scene.picture((0.6, -4, 0.5))[..., 0]
    scene.app.close()
    levels = {level for level in picture.flat if 0 < level < picture.max()}
    assert len(levels) >= 3  # with none and all of four samples five grey levels


def test_two_applications_draw_in_turn(scene, tmp_path):
    scene.add(hyxCollide.Sphere(0.8))
    first = scene.picture((0, -4, 0))
    for _ in range(2):
        other = Set(tmp_path)
        other.add(hyxCollide.Box(0.3, 0.3, 0.3))
        second = other.picture((0, -4, 0))
        assert (scene.picture() == first).all() and (other.picture() == second).all() and (first != second).any()
        other.app.close()
        assert (scene.picture() == first).all()
