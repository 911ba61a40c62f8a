"""Meshes and points coloured by arrays of numbers, and the bar that says which colour is which."""

import math

import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import pytest
from off_screen import OffScreen

SIZE = 160


@pytest.fixture
def stage():
    made = OffScreen(SIZE, SIZE)
    made.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1))
    made.look_from(hyx.Vec3(0, -0.01, 4))
    yield made
    made.app.close()


def sheet(count=9):
    x, y = numpy.meshgrid(numpy.linspace(-1, 1, count), numpy.linspace(-1, 1, count))
    corner = (numpy.arange(count - 1)[:, None] * count + numpy.arange(count - 1)).ravel()
    right, up = corner + 1, corner + count
    faces = numpy.concatenate([numpy.stack([corner, right, up], 1), numpy.stack([right, up + 1, up], 1)])
    return numpy.stack([x.ravel(), y.ravel(), 0 * x.ravel()], 1), faces


def shape_visual(stage, vertices, faces):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Trimesh(vertices, faces)))
    stage.kept = [*getattr(stage, "kept", ()), body]
    return hyxOSG.createVisual(body, stage.root)


@pytest.mark.parametrize("name", ["viridis", "coolwarm", "gray", "plasma_r"])
def test_colours_run_through_the_map_from_end_to_end(stage, name):
    vertices, faces = sheet(65)
    scale = hyxOSG.colorBy(shape_visual(stage, vertices, faces), vertices[:, 0], name, lit=False)
    assert (scale.low, scale.high) == (-1, 1)
    row = stage.app.render()[SIZE // 2].astype(int)
    drawn = numpy.flatnonzero((row < 250).any(axis=1))
    places = numpy.linspace(-1, 1, len(drawn))
    expected = 255 * scale.colors(places)[:, :3]
    assert len(drawn) > SIZE / 2 and abs(row[drawn] - expected)[3:-3].max() < 12


def test_values_of_a_mesh_meet_its_sharp_edges(stage):
    """The drawn box has three vertices at each corner, where the mesh has one."""
    corners = numpy.array([(x, y, z) for x in (-1, 1) for y in (-1, 1) for z in (-1, 1)], float) / 2
    quads = [(0, 1, 3, 2), (4, 6, 7, 5), (0, 4, 5, 1), (2, 3, 7, 6), (0, 2, 6, 4), (1, 5, 7, 3)]
    faces = [t for a, b, c, d in quads for t in ((a, b, c), (a, c, d))]
    hyxOSG.colorBy(shape_visual(stage, corners, faces), corners[:, 2], "gray", lit=False)
    middle = stage.app.render()[SIZE // 2, SIZE // 2]
    assert middle.min() > 250, "the upper side has the upper end of the map everywhere"


def test_one_of_two_equal_bodies_is_coloured(stage):
    visuals = []
    for x in (-1, 1):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.4, 0.4, 0.4)))
        body.setPosition(hyx.Vec3(x, 0, 0))
        stage.kept = [*getattr(stage, "kept", ()), body]
        visuals.append(hyxOSG.createVisual(body, stage.root))
    hyxOSG.colorBy(visuals[0], lambda vertices: 0 * vertices[:, 0], "copper", 0, 1, lit=False)
    picture = stage.app.render().astype(int)
    assert picture[SIZE // 2, SIZE // 4].max() < 5, "copper begins with black"
    assert picture[SIZE // 2, 3 * SIZE // 4].max() > 100


def test_light_falls_on_the_colours(stage):
    vertices, faces = sheet()
    visual = shape_visual(stage, vertices, faces)
    hyxOSG.setDiffuseColor(visual, hyx.Vec4f(0, 1, 0, 1))
    hyxOSG.colorBy(visual, 0 * vertices[:, 0] + 1, "bwr", 0, 1)
    lit = stage.app.render()[SIZE // 2, SIZE // 2].astype(int)
    stage.decorator.setEnableLights(hyxOSG.SceneDecorator.LIGHT1)
    other = stage.app.render()[SIZE // 2, SIZE // 2].astype(int)
    assert lit[0] > 3 * lit[2] and lit[0] > other[0] + 20


def test_points_are_coloured_and_coloured_again(stage):
    cloud = osg.Geometry()
    cloud.vertices = [(0, 0, 0), (1, 0, 0)]
    cloud.addElements(0, [0, 1])
    hyxOSG.colorBy(cloud, [0, 10], "gray", lit=False)
    assert cloud.colors[:, 0] == pytest.approx([0, 1])
    hyxOSG.colorBy(cloud, [numpy.nan, 5], "gray", 0, 10)
    assert cloud.colors[:, 0] == pytest.approx([0.5, 0.5], abs=0.01)


@pytest.mark.parametrize(
    "low, high, ticks", [(0, 1, [0, 0.2, 0.4, 0.6, 0.8, 1]), (-7, 13, [-5, 0, 5, 10]), (3, 3, [3]), (0, 3e-7, None)]
)
def test_ticks_are_round_numbers_of_the_interval(low, high, ticks):
    found = hyxOSG.ColorScale("viridis", low, high).ticks()
    assert 1 <= len(found) <= 6 and all(low - 1e-9 <= tick <= high + 1e-9 for tick in found)
    if ticks:
        assert found == pytest.approx(ticks)


def test_the_bar_shows_the_map_and_goes(stage):
    before = stage.app.render().astype(int)
    scale = hyxOSG.ColorScale("inferno", 0, 300)
    bar = hyxOSG.ColorBar(stage.app, scale, "Pa", place=(20, 20), size=(20, 120))
    picture = stage.app.render().astype(int)
    column = picture[SIZE - 20 - 120 : SIZE - 20, 30][::-1]  # upwards
    expected = 255 * scale.colors(numpy.linspace(0, 300, 120))[:, :3]
    assert abs(column - expected)[2:-2].max() < 12
    beside = (abs(picture - before).max(axis=2) > 60)[:, 44:]
    assert beside.sum() > 60, "numbers"
    bar.scale = hyxOSG.ColorScale("gray", 0, 1)
    assert (numpy.ptp(stage.app.render()[SIZE - 80, 30].astype(int))) < 3
    bar.remove()
    assert (stage.app.render() == before).all()


@pytest.mark.parametrize(
    "call, words",
    [
        (lambda: hyxOSG.ColorScale("virdis"), "no colour map 'virdis': choose one of rainbow"),
        (lambda: hyxOSG.ColorScale("gray", 2, 1), "upwards between finite ends, not from 2 to 1"),
        (lambda: hyxOSG.colorBy(osg.Group(), [1]), "no mesh below"),
    ],
)
def test_what_cannot_be_meant_is_refused(call, words):
    with pytest.raises(ValueError, match=words):
        call()


def test_numbers_and_vertices_must_agree(stage):
    vertices, faces = sheet()
    visual = shape_visual(stage, vertices, faces)
    with pytest.raises(ValueError, match="80 values for 81 vertices"):
        hyxOSG.colorBy(visual, vertices[:80, 0])


@pytest.mark.parametrize("turned", ["", "_r"])
@pytest.mark.parametrize("name", ["tab10", "Set3", "tab20c", "flag", "gist_ncar", "turbo"])
def test_maps_of_matplotlib_are_those_of_matplotlib(name, turned):
    matplotlib = pytest.importorskip("matplotlib")
    values = numpy.linspace(-3, 5, 1001)
    theirs = matplotlib.colormaps[name + turned]((values + 3) / 8)
    assert abs(hyxOSG.ColorScale(name + turned, -3, 5).colors(values) - theirs).max() < 1e-6


@pytest.mark.parametrize("low, high", [(0, math.inf), (-math.inf, 0), (math.nan, 1)])
def test_a_scale_has_finite_ends(low, high):
    with pytest.raises(ValueError, match="finite ends"):
        hyxOSG.ColorScale("viridis", low, high)


@pytest.mark.parametrize(
    "low, high, label", [(1e6, 1.00001e6, "p"), (-1e-7, 3e-7, "p"), (0, 1, "equivalent stress, MPa")]
)
def test_what_a_bar_says_stays_in_the_picture(low, high, label):
    made = OffScreen(400, 300)
    without = made.app.render().astype(int)
    bar = hyxOSG.ColorBar(made.app, hyxOSG.ColorScale("gray", low, high), label)
    written = abs(made.app.render().astype(int) - without).max(axis=(0, 2)) > 24
    made.app.close()
    assert written.any() and not written[-2:].any() and written[-60:].any()
    assert bar.scale.high == high


@pytest.mark.parametrize("low, high", [(1e6, 1.00001e6), (273.15, 273.1501), (-2e-9, 1e-9), (0, 1)])
def test_numbers_beside_a_bar_are_told_apart(stage, monkeypatch, low, high):
    said, text = [], hyxOSG.Text
    stand_in = type("Text", (text,), {"__init__": lambda self, *a: (said.append(a[0]), text.__init__(self, *a))[1]})
    monkeypatch.setattr(hyxOSG, "Text", stand_in)
    bar = hyxOSG.ColorBar(stage.app, hyxOSG.ColorScale("gray", low, high))
    assert len(said) == len(set(said)) >= 3
    assert numpy.allclose([float(number) for number in said], bar.scale.ticks(), rtol=0, atol=(high - low) / 100)
