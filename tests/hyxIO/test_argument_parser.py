"""The command line is read as what was declared, and refused with the reason."""

import hyxIO
import pytest


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
        (["--stop-after=", "2"], "'' is not a number"),
        (["--stop-after", "inf"], "not finite"),
        (["--click-port", "-1"], "'-1' is not a port"),
        (["--co-simulation-port", "65536"], "'65536' is not a port"),
        (["--time-step"], "time-step"),
    ],
)
def test_malformed_options_are_refused_with_the_reason(arguments, reason):
    with pytest.raises(ValueError, match=reason):
        hyxIO.ArgumentParser(arguments)


def test_an_empty_value_is_empty_and_leaves_the_next_argument():
    parser = hyxIO.ArgumentParser()
    parser.addOption("--title", "Of the plot", "none")
    parser.parse(["--title=", "model.json", "--", "--title="])
    assert parser.has("--title") and parser.getString("--title") == ""
    assert parser.getPositional() == ["model.json", "--title="]


def test_an_undeclared_option_cannot_be_asked_for():
    with pytest.raises(ValueError, match="--depth"):
        hyxIO.ArgumentParser().getReal("--depth")


def test_help_is_printed(capfd):
    parser = hyxIO.ArgumentParser(["--help"])
    assert parser.isHelpRequested()
    assert "--journal-record" in capfd.readouterr().out
