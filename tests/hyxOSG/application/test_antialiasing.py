"""How many samples a pixel a window has, asked for and given."""

import hyx
import hyxIO
import hyxOSG
import numpy
import osg
import pytest

LIGHTING, POINTS, TRIANGLES = 0x0B50, 0, 4


def test_edges_are_smoothed_unless_a_script_says_otherwise(app):
    assert app.getNumSamples() == 4
    app.initViewer(64, 64, True)
    assert app.getNumSamples() == 4
    app.setNumSamples(0)
    assert app.getNumSamples() == 4, "the open window keeps what it has"
    app.initViewer(64, 64, True)
    assert app.getNumSamples() == 0


def test_a_driver_that_has_fewer_gives_what_it_has(app):
    app.setNumSamples(16)
    app.initViewer(64, 64, True)
    assert 4 <= app.getNumSamples() <= 16


@pytest.mark.parametrize("samples", [-1, 17])
def test_numbers_out_of_range_are_refused(app, samples):
    with pytest.raises(RuntimeError, match="0 to 16 samples a pixel"):
        app.setNumSamples(samples)


def test_the_option_sets_it():
    with hyxOSG.ExampleApplication() as app:
        app.init(hyxIO.ArgumentParser(["--samples", "2"]))
        assert app.getNumSamples() == 2


def red_mesh(app, places, mode):
    mesh = osg.Geometry()
    mesh.vertices = places
    mesh.colors = numpy.array([[1, 0, 0, 1]])
    mesh.addElements(mode, numpy.arange(len(places)))
    geode = osg.Geode()
    geode.addDrawable(mesh)
    geode.getOrCreateStateSet().setMode(LIGHTING, 0)
    app.getSceneRoot().addChild(geode)
    app.setCameraHome(hyx.Vec3(0, -5, 0), hyx.Vec3(0, 0, 0))
    app.getSceneDecorator().setBackgroundColor(hyx.Vec3(0, 0, 0))
    return mesh


def levels(app):
    """The values of red in the picture between none and all."""
    red = numpy.unique(app.render()[:, :, 0])
    return len(red[(red > 0) & (red < 255)])


def test_edges_stay_smooth_in_a_window_of_another_size(app):
    app.initViewer(64, 64)
    red_mesh(app, numpy.array([[-1, 0, -1], [1, 0, -0.8], [0.1, 0, 1.2]]), TRIANGLES)
    assert levels(app) >= 3
    app.setWindowRectangle(0, 0, 200, 100)
    assert app.render().shape == (100, 200, 3)
    assert levels(app) >= 3


def test_points_keep_their_colour_until_there_are_edges_beside_them(app):
    app.initViewer(64, 64)
    places = numpy.random.default_rng(1).uniform(-1, 1, (60, 3))
    mesh = red_mesh(app, places, POINTS)
    assert levels(app) == 0
    assert (app.render()[:, :, 0] == 255).sum() > 50
    mesh.addElements(TRIANGLES, numpy.arange(3))
    assert levels(app) >= 3
