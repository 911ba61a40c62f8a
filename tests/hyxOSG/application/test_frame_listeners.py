"""Who is told of frames, and what becomes of their errors."""

import gc
import os
import weakref

import _hyxOSG
import hyx
import hyxOSG
import hyxSDK
import pytest
from application_stage import add_box, difference, steps_of


class Recorder(hyxOSG.ExampleApplicationListener):
    def __init__(self):
        super().__init__()
        self.calls = []

    def preFrame(self, app):
        self.calls.append(("pre", app.getTimeStamp()))

    def postFrame(self, app):
        self.calls.append(("post", app.getTimeStamp()))


def test_pausing_can_rest_the_listeners_too(app):
    listener = Recorder()
    app.addListener(listener)
    app.setAutoStepping(False)
    assert app.getEnablePauseUpdate()
    app.step()
    assert len(listener.calls) == 2
    app.setEnablePauseUpdate(False)
    app.step()
    assert len(listener.calls) == 2 and not app.getEnablePauseUpdate()


def test_listeners_are_told_before_and_after_each_frame(app):
    listener = Recorder()
    app.addListener(listener)
    app.addListener(listener)
    app.addListener(None)
    app.step()
    step = app.getTimeStep()
    assert listener.calls == [("pre", 0), ("post", pytest.approx(step))]


def test_a_removed_listener_is_told_nothing_more_and_let_go():
    app = hyxOSG.ExampleApplication()
    app.init(None)

    class Once(Recorder):
        def preFrame(self, app):
            super().preFrame(app)
            app.removeListener(self)

    once, other = Once(), Recorder()
    app.addListener(once)
    app.addListener(other)
    app.step()
    assert [call[0] for call in once.calls] == ["pre"] and len(other.calls) == 2
    assert not app.removeListener(once) and app.removeListener(other)
    app.addListener(other)
    app.step()
    assert len(once.calls) == 1 and len(other.calls) == 4
    seen = weakref.ref(other)
    del other
    assert seen(), "the application has it"
    app.close()
    assert seen() is None


def test_an_error_of_a_listener_does_not_stop_the_frame(app, capfd):
    class Failing(hyxOSG.ExampleApplicationListener):
        def preFrame(self, app):
            raise ValueError("no such frame")

        def postFrame(self, app):
            app.stop(3)

    listener = Failing()
    app.addListener(listener)
    assert app.run(raise_errors=False) == 3
    assert "ValueError: no such frame" in capfd.readouterr().err


def test_errors_of_scripts_can_pause_the_simulation(app, capfd):
    app.handleReactiveScriptErrors()
    app.setStepCallback(hyx.Callback(lambda: 1 / 0))
    app.step()
    assert app.getAutoStepping()
    app.handleReactiveScriptErrors()
    assert not app.getAutoStepping()
    assert "ZeroDivisionError" in capfd.readouterr().err
    app.setAutoStepping(True)
    app.handleReactiveScriptErrors()
    assert app.getAutoStepping(), "no new error"
    app.step()
    app.handleReactiveScriptErrors(False)
    app.handleReactiveScriptErrors()
    assert app.getAutoStepping(), "the new one was let pass"


@pytest.mark.parametrize("errors", [0, 1100])
def test_new_errors_pause_after_others_were_forgotten(app, capfd, errors):
    manager = hyxSDK.ScriptManager.instance()
    app.setStepCallback(hyx.Callback(lambda: 1 / 0))
    for _ in range(3 + errors):
        app.stepSimulation()
    app.handleReactiveScriptErrors(False)
    if not errors:
        manager.clearErrors()
    app.stepSimulation()
    assert manager.getNumErrors() == min(1000, 1 + errors)
    app.handleReactiveScriptErrors()
    assert not app.getAutoStepping()
    manager.clearErrors()


def test_a_listener_cannot_make_a_frame_inside_a_frame(app):
    failures = []

    class Nested(hyxOSG.ExampleApplicationListener):
        def preFrame(self, app):
            try:
                app.step()
            except RuntimeError as error:
                failures.append(str(error))

        def postFrame(self, app):
            pass

    listener = Nested()
    app.addListener(listener)
    app.step()
    assert len(failures) == 1 and "already" in failures[0]
    assert steps_of(app, 1) == 1


def test_a_disowned_listener_lives_with_the_application(app):
    told = []

    class Kept(hyxOSG.ExampleApplicationListener):
        def preFrame(self, app):
            told.append(app.getTimeStamp())

    listener = Kept()
    _hyxOSG.disown_ExampleApplicationListener(listener)
    app.addListener(listener)
    del listener
    gc.collect()
    app.step()
    assert told == [0]


def test_the_native_call_of_a_listener_reaches_its_override(app):
    recorder = Recorder()
    handle = recorder.this  # not the object itself: for that the call is one of the override, upwards
    _hyxOSG.ExampleApplicationListener_preFrame(handle, app)
    _hyxOSG.ExampleApplicationListener_postFrame(handle, app)
    assert recorder.calls == [("pre", 0), ("post", 0)]
    hyxOSG.ExampleApplicationListener.preFrame(recorder, app)
    assert len(recorder.calls) == 2


def test_a_listener_without_overrides_does_nothing(app):
    listener = hyxOSG.ExampleApplicationListener()
    listener.preFrame(app)
    listener.postFrame(app)

    class Silent(hyxOSG.ExampleApplicationListener):
        pass

    silent = Silent()
    for one in (listener, silent):
        app.addListener(one)
    assert steps_of(app, 2) == 2


def test_the_error_of_a_scenes_key_is_shown_and_ends_nothing(window, shoot, tmp_path, capfd):
    path = tmp_path / "ruin.py"
    path.write_text("def ruin(simulation, app):\n    raise ValueError('the blueprint is lost')\n")
    listener = Recorder()
    window.addListener(listener)
    add_box(window, "kept")
    window.createVisual(window.getSimulation())
    window.addScene(str(path), "ruin", ord("r"))
    before = shoot(window)
    window.getViewer().getEventQueue().keyPress(ord("r"))
    window.step()
    assert [name for name, _ in listener.calls] == ["pre", "post"]
    assert "blueprint is lost" in window.getSceneError()
    assert capfd.readouterr().err.count("ValueError: the blueprint is lost") == 1
    assert [body.getName() for body in window.getSimulation().getRigidBodies()] == ["kept"]
    picture = shoot(window)
    assert difference(before[:30], picture[:30]) > 300, "the reason is on the picture"
    path.write_text("def ruin(simulation, app): pass\n")
    os.utime(path, (1, 1))
    assert window.followKey(ord("r")) and window.getSceneError() == ""
    assert window.getSimulation().getRigidBodies() == []


def test_an_error_of_each_frame_is_printed_once_and_can_fail_the_run(app, capfd):
    class Failing(hyxOSG.ExampleApplicationListener):
        def preFrame(self, app):
            raise ValueError("no such frame")

    listener = Failing()
    app.addListener(listener)
    app.stopAfter(2)
    with pytest.raises(ValueError, match="no such frame"):
        app.run(raise_errors=True)
    printed = capfd.readouterr().err
    assert printed.count("Traceback") == 1 and "(10 times" in printed and "(100 times" in printed
    assert app.getTimeStamp() == pytest.approx(2)
    app.stopAfter(2.5)
    assert app.run(raise_errors=False) == 0
