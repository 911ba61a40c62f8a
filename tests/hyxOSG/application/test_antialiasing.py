"""How many samples a pixel a window has, asked for and given."""

import hyxIO
import hyxOSG
import pytest


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
