"""Colours by name, and the command line."""

import hyx
import hyxIO
import hyxRender
import pytest


@pytest.mark.parametrize(
    "name, numbers",
    [
        ("orange", (1, 165 / 255, 0, 1)),
        ("Red", (1, 0, 0, 1)),
        ("#336699", (0.2, 0.4, 0.6, 1)),
        ("#33669980", (0.2, 0.4, 0.6, 128 / 255)),
    ],
)
def test_colours_have_names(name, numbers):
    assert tuple(hyxRender.Color(name)) == pytest.approx(numbers)


@pytest.mark.parametrize("name", ["", "reddish", "#12345", "#gggggg", "336699"])
def test_unknown_colours_are_refused(name):
    with pytest.raises(RuntimeError, match="is no colour"):
        hyxRender.Color(name)


def test_colours_convert_to_vectors_and_back():
    color = hyxRender.Color(0.25, 0.5, 0.75)
    assert color.a == 1
    assert color.toVec4f() == hyx.Vec4f(0.25, 0.5, 0.75, 1)
    assert hyxRender.Color(color.toVec4f()) == color
    assert hyxRender.Color((0.25, 0.5, 0.75, 1)) == color


def test_options_are_read_as_what_they_are():
    arguments = [
        "--window-size",
        "800x600",
        "--time-step=0.01",
        "model.json",
        "--offscreen",
        "--rpc-port",
        "8080",
        "second",
    ]
    parser = hyxIO.ArgumentParser(arguments)
    assert parser.getSize("--window-size") == (800, 600)
    assert parser.getReal("--time-step") == 0.01
    assert parser.getInteger("--rpc-port") == 8080
    assert parser.has("--offscreen") and not parser.has("--full-screen")
    assert parser.getPositional() == ["model.json", "second"]
    assert parser.getArguments() == arguments


def test_a_program_adds_options_of_its_own():
    parser = hyxIO.ArgumentParser()
    parser.addOption("--mass", "Mass of the load in kg", "12.5")
    parser.addFlag("--wind", "Let the wind blow")
    assert parser.getReal("--mass") == 12.5
    parser.parse(["--mass", "7", "--wind"])
    assert parser.getReal("--mass") == 7 and parser.has("--wind")
    assert "Mass of the load in kg" in parser.getHelp()
    with pytest.raises(RuntimeError, match="declared already"):
        parser.addFlag("--mass", "again")


@pytest.mark.parametrize(
    "arguments, reason",
    [
        (["--no-such-option"], "no-such-option"),
        (["--time-step", "soon"], "not a number"),
        (["--time-step", "-1"], "not above zero"),
        (["--window-size", "800"], "640x480"),
        (["--rpc-port", "1.5"], "whole number"),
        (["--time-step"], "time-step"),
    ],
)
def test_malformed_options_are_refused_with_the_reason(arguments, reason):
    with pytest.raises(ValueError, match=reason):
        hyxIO.ArgumentParser(arguments)


def test_an_undeclared_option_cannot_be_asked_for():
    with pytest.raises(ValueError, match="--depth"):
        hyxIO.ArgumentParser().getReal("--depth")


def test_help_is_printed(capfd):
    parser = hyxIO.ArgumentParser(["--help"])
    assert parser.isHelpRequested()
    assert "--journal-record" in capfd.readouterr().out
