"""The run of all scenes that take part in tests."""

import hyx
import hyxIO
import hyxOSG
import pytest

SCENES = """
import hyx, hyxOSG
seen = []
def note(name, sim):
    seen.append(name)
    sim.add(hyx.RigidBody(name))
def good(sim): note("good", sim)
def long(sim): note("long", sim)
def slow(sim): note("slow", sim)
def private(sim): note("private", sim)
def broken(sim): raise ValueError("no ground")
def still(sim, app):
    note("still", sim)
    app.setStepCallback(hyx.Callback(lambda: app.setAutoStepping(False)))
"""


@pytest.fixture
def run(tmp_path, capfd):
    """Adds scenes as (function, unittest, stopAfter, slowUnittest); gives exit code, printed lines and times."""
    script = tmp_path / "scenes.py"
    script.write_text(SCENES)

    def start(*scenes, options=()):
        app = hyxOSG.ExampleApplication()
        app.init(hyxIO.ArgumentParser(["--no-graphics", "--test-scenes", *options]))
        times = []
        app.m_sceneLoadEvent.add(hyx.Callback(lambda: times.append(0.0)))

        class Clock(hyxOSG.ExampleApplicationListener):
            def postFrame(self, application):
                times[-1] = application.getTimeStamp()

        clock = Clock()
        app.addListener(clock)
        for name, *rest in scenes:
            app.addScene(str(script), name, *rest)
        return app.run(raise_errors=False), capfd.readouterr().out.splitlines(), times

    return start


def test_each_scene_runs_for_its_time(run):
    code, lines, times = run(("good", True), ("long", True, 2.5))
    assert code == 0 and lines == ["scene 0: passed", "scene 1: passed"]
    assert times == pytest.approx([1.0, 2.5], abs=1e-6)


def test_scenes_that_take_no_part_are_left_out(run):
    assert run(("private", False, 0.1), ("slow", True, 0.1, True), ("good", True, 0.1))[1] == ["scene 2: passed"]
    assert run(("private", False, 0.1), ("slow", True, 0.1, True), options=["--slow-scenes"])[1] == ["scene 1: passed"]


def test_a_scene_that_fails_does_not_keep_the_others_from_running(run):
    code, lines, _ = run(("broken", True, 0.1), ("missing", True, 0.1), ("good", True, 0.1))
    assert code == 1 and lines == ["scene 0: a script failed", "scene 1: a script failed", "scene 2: passed"]


def test_a_scene_that_pauses_itself_has_ended(run):
    code, lines, times = run(("still", True, 60.0), ("good", True, 0.1))
    assert code == 0 and lines == ["scene 0: passed", "scene 1: passed"] and times[0] < 0.1
