"""The loop: how it runs, how it ends, how fast it goes, and who is told."""

import gc
import os
import signal
import subprocess
import time

import _hyxOSG
import hyx
import hyxOSG
import hyxSDK
import pytest
from application_stage import add_box
from subprocesses import run_python


class Recorder(hyxOSG.ExampleApplicationListener):
    def __init__(self):
        super().__init__()
        self.calls = []

    def preFrame(self, app):
        self.calls.append(("pre", app.getTimeStamp()))

    def postFrame(self, app):
        self.calls.append(("post", app.getTimeStamp()))


def steps_of(app, frames):
    before = app.getTimeStamp()
    for _ in range(frames):
        app.executeOneStepWithoutGraphics()
    return round((app.getTimeStamp() - before) / app.getTimeStep())


def test_the_loop_ends_after_the_simulated_time(window):
    window.stopAfter(0.5)
    assert window.run() == 0
    assert window.getTimeStamp() == pytest.approx(0.5, abs=1e-6)
    assert window.shouldStop() and window.done()
    assert window.initialized()


def test_stopping_gives_the_exit_code_and_can_be_taken_back(app):
    assert not app.done() and app.getExitCode() == 0
    app.stop(7)
    assert app.shouldStop() and app.done() and app.getExitCode() == 7
    assert app.run() == 7
    app.cancelStop()
    assert not app.shouldStop() and app.getExitCode() == 0


def test_a_negative_time_never_stops_and_no_number_is_refused(app):
    app.stopAfter(0)
    assert app.shouldStop()
    app.stopAfter(-1)
    assert not app.shouldStop()
    with pytest.raises(RuntimeError, match="must be a number"):
        app.stopAfter(float("nan"))


def test_one_turn_steps_once(app):
    assert steps_of(app, 1) == 1
    app.step()
    app.stepWrapper()
    app.stepSimulation()
    assert app.getTimeStamp() == pytest.approx(4 * app.getTimeStep())


def test_a_turn_with_graphics_measures_itself(window):
    timer = hyx.HighAccuracyTimer()
    time.sleep(0.02)
    assert window.executeOneStepWithGraphics(timer) is True
    assert 0 < timer.getTime() < 20000 and not timer.isRunning()
    assert window.getTimeStamp() == pytest.approx(window.getTimeStep())
    window.stop()
    assert window.executeOneStepWithGraphics(timer) is False
    assert window.executeOneStepWithoutGraphics() is False


def test_a_paused_application_does_not_step_but_tells_of_it(app):
    events = []
    app.autoStepEvent.add(events.append)
    app.setAutoStepping(False)
    assert not app.getAutoStepping() and steps_of(app, 3) == 0
    app.setAutoStepping(True)
    assert steps_of(app, 3) == 3
    app.setAutoStepping(False, False)
    assert events == [False, True]


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


def quickest(operation):
    """Seconds that the operation takes at best, on a machine that may be busy."""
    times = []
    for _ in range(5):
        start = time.monotonic()
        operation()
        times.append(time.monotonic() - start)
    return min(times)


def test_an_idle_turn_sleeps(app):
    app.setAutoStepping(False)
    start, used = time.monotonic(), time.process_time()
    for _ in range(20):
        app.step()
    assert time.monotonic() - start > 0.08
    assert time.process_time() - used < 0.5 * (time.monotonic() - start)
    app.setAutoStepping(True)
    assert quickest(app.throttleIdleCpuUsageBySleeping) < 0.004
    app.setAutoStepping(False)
    assert quickest(app.throttleIdleCpuUsageBySleeping) >= 0.004
    app.setAutoStepping(True)


def test_the_time_step_is_the_simulations(app):
    app.setTimeStep(0.01)
    assert app.getTimeStep() == app.getSimulation().getTimeStep() == 0.01
    app.step()
    assert app.getTimeStamp() == pytest.approx(0.01)
    for wrong in (0, -1, float("nan"), float("inf")):
        with pytest.raises(RuntimeError):
            app.setTimeStep(wrong)
    assert app.getTimeStep() == 0.01


def test_the_target_frame_rate_is_kept_by_sleeping(app):
    app.setTargetFPS(50)
    assert app.getTargetFPS() == 50
    start, used = time.monotonic(), time.process_time()
    for _ in range(20):
        app.step()
    elapsed = time.monotonic() - start
    assert 0.36 < elapsed < 1.5
    assert time.process_time() - used < 0.5 * elapsed
    app.setTargetFPS(0)
    assert app.getTargetFPS() == 0


def test_simulated_time_follows_real_time(app):
    assert app.getRealTimeSync() is False
    app.setRealTimeSync(True)
    assert app.getRealTimeSync()
    app.step()
    start, simulated = time.monotonic(), app.getTimeStamp()
    while time.monotonic() - start < 0.4:
        app.step()
    elapsed = time.monotonic() - start
    assert app.getTimeStamp() - simulated == pytest.approx(elapsed, abs=0.1)
    time.sleep(0.5)
    before = app.getTimeStamp()
    app.synchronizedStep()
    assert round((app.getTimeStamp() - before) / app.getTimeStep()) == 10  # what is beyond is forgotten
    before = app.getTimeStamp()
    app.synchronizedStep(True)
    assert app.getTimeStamp() > before


def test_listeners_are_told_before_and_after_each_frame(app):
    listener = Recorder()
    app.addListener(listener)
    app.addListener(listener)
    app.addListener(None)
    app.step()
    step = app.getTimeStep()
    assert listener.calls == [("pre", 0), ("post", pytest.approx(step))]


def test_an_error_of_a_listener_does_not_stop_the_frame(app, capfd):
    class Failing(hyxOSG.ExampleApplicationListener):
        def preFrame(self, app):
            raise ValueError("no such frame")

        def postFrame(self, app):
            app.stop(3)

    listener = Failing()
    app.addListener(listener)
    assert app.run() == 3
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


def test_the_step_callback_follows_each_step(app):
    times = []
    app.setStepCallback(hyx.Callback(lambda: times.append(app.getTimeStamp())))
    app.stepSimulation()
    app.stepSimulation()
    step = app.getTimeStep()
    assert times == pytest.approx([step, 2 * step])
    copy = app.getStepCallback()
    copy()
    assert len(times) == 3
    app.setStepCallback(hyx.Callback())
    app.stepSimulation()
    assert len(times) == 3


@pytest.fixture
def interrupts():
    """Python's own answer to interrupts, which a shell's background jobs start without."""
    before = signal.signal(signal.SIGINT, signal.default_int_handler)
    yield
    signal.signal(signal.SIGINT, before)


def test_an_interrupt_ends_the_loop_at_the_next_frame(app, interrupts):
    app.initViewer(32, 32)
    app.setTargetFPS(100)
    subprocess.Popen(
        ["sh", "-c", f"sleep 0.3; kill -INT {os.getpid()}"]
    )  # a thread would not run: the loop keeps the interpreter
    start = time.monotonic()
    with pytest.raises(KeyboardInterrupt):
        app.run()
    assert time.monotonic() - start < 10
    assert not app.breakRequested() and not app.shouldStop()


PENDING = """
import collections, signal, hyxOSG
app = hyxOSG.ExampleApplication()
def interrupt(*_):
    raise KeyboardInterrupt
signal.signal(signal.SIGALRM, interrupt)
signal.setitimer(signal.ITIMER_REAL, 0.1)
try:
    collections.deque(iter(app.QUESTION, True), maxlen=0)  # a loop in which the interpreter does not look for signals
except KeyboardInterrupt:
    print("interrupted")
"""


@pytest.mark.parametrize("question", ["breakRequested", "done"])
def test_a_pending_interrupt_is_a_request_to_break(question):
    done = run_python(PENDING.replace("QUESTION", question))
    assert done.stdout == "interrupted\n", done.stderr


def test_a_master_outside_steps_a_unit(app):
    assert app.m_isFMU is False
    app.m_isFMU = True
    app.step()
    assert app.m_isFMU is True and app.getTimeStamp() == 0
    app.stepSimulation()  # as the master does
    assert app.getTimeStamp() == app.getTimeStep()
    app.m_isFMU = False
    app.step()
    assert app.getTimeStamp() == 2 * app.getTimeStep()


def test_solvers_have_names_and_change_the_simulations_solver(app):
    multi, iterative = hyxOSG.ExampleApplication.MULTI, hyxOSG.ExampleApplication.ITERATIVE
    for solver in (multi, iterative):
        app.setSolverType(solver)
        assert app.getSolverType() == app.getSimulation().getSolver() == solver
        assert app.getSolverType(app.getSolverName(solver).lower()) == solver
    app.changeSolver()
    assert app.getSolverType() == app.getSimulation().getSolver() == multi
    app.changeSolver()
    assert app.getSolverType() == iterative
    assert app.getSolverType("no such solver") == hyxOSG.ExampleApplication.NUM_SOLVERS
    assert app.getSolverName(99) == ""
    with pytest.raises(RuntimeError):
        app.setSolverType(2)


def test_a_new_simulation_takes_the_chosen_step_and_solver_over(app):
    app.setTimeStep(0.005)
    app.setSolverType(hyxOSG.ExampleApplication.MULTI)
    simulation = hyxSDK.Simulation()
    app.initSimulation(simulation)
    assert simulation.getTimeStep() == 0.005 and simulation.getSolver() == hyxOSG.ExampleApplication.MULTI
    app.getSimulation().setGravity(hyx.Vec3(0, 0, -1))
    assert app.getGravity().z == simulation.getGravity().z == -1
    other = hyxSDK.Simulation()
    app.initSimulation(other, False)
    assert other.getTimeStep() == pytest.approx(1 / 60)


@pytest.mark.parametrize("of", [lambda body: body, lambda body: body.getGeometries()[0]], ids=["bodies", "geometries"])
def test_a_pair_that_touches_pauses_the_simulation(app, of):
    ground = add_box(app, "ground", static=True)
    falling = add_box(app, "falling", (0, 0, 1.3))
    assert app.getEnableAutoPausing()
    app.addAutoPausePair(of(falling), of(ground))
    for _ in range(200):
        app.step()
        if not app.getAutoStepping():
            break
    assert not app.getAutoStepping()
    assert falling.getPosition().z == pytest.approx(1, abs=0.1)
    app.setAutoStepping(True)
    assert steps_of(app, 5) == 5  # touching on does not pause again

    falling.setPosition(hyx.Vec3(0, 0, 1.3))
    app.setEnableAutoPausing(False)
    assert not app.getEnableAutoPausing() and steps_of(app, 60) == 60
    app.setEnableAutoPausing(True)
    falling.setPosition(hyx.Vec3(0, 0, 1.3))
    app.removeAutoPausePair(of(ground), of(falling))
    assert steps_of(app, 60) == 60
    with pytest.raises(RuntimeError):
        app.addAutoPausePair(of(ground), None)


def test_the_frame_lock_is_always_the_same(app):
    assert app.getFrameMutex() is not None
    assert app.getFrameMutex() == app.getFrameMutex()


def queue_of(app):
    """The events of the application's window."""
    return app.getCamera().getGraphicsWindow().getEventQueue()


def press(app, key):
    queue = queue_of(app)
    queue.keyPress(key)
    queue.keyRelease(key)
    app.step()


def test_escape_ends_the_loop_unless_it_must_not(window):
    assert window.getQuitEventSetsDone()
    window.setQuitEventSetsDone(False)
    press(window, 0xFF1B)
    assert not window.getQuitEventSetsDone() and not window.done()
    window.setQuitEventSetsDone(True)
    press(window, 0xFF1B)
    assert window.done()


def test_keys_pause_and_step(window):
    press(window, ord("e"))
    assert not window.getAutoStepping()
    before = window.getTimeStamp()
    press(window, ord("."))
    assert window.getTimeStamp() == pytest.approx(before + window.getTimeStep())


def test_a_closed_window_ends_the_loop(window):
    queue_of(window).closeWindow()
    window.setQuitEventSetsDone(False)
    window.step()
    assert not window.done()
    window.setQuitEventSetsDone(True)
    assert window.done()
    with pytest.raises(RuntimeError, match="closed"):
        window.takeScreenShot("never.png")


class Input(hyxOSG.GuiEventListener):
    """Remembers its events and uses keys up."""

    def __init__(self):
        super().__init__(hyxOSG.GuiEventListener.ALL)
        self.events = []

    def keyboard(self, key, modifiers, x, y, down):
        self.events.append(("key", key, down))
        return True

    def mouse(self, button, state, x, y):
        self.events.append(("mouse", button, state, round(x), round(y)))
        return False

    def mouseDragged(self, buttons, x, y):
        self.events.append(("dragged", buttons, round(x), round(y)))
        return False

    def mouseMoved(self, x, y):
        self.events.append(("moved", round(x), round(y)))
        return False

    def update(self, x, y):
        self.events.append(("update", round(x), round(y)))


def test_listeners_of_the_simulation_get_the_windows_events(window):
    listener = Input()
    window.getSimulation().add(listener)
    window.step()
    listener.events.clear()
    queue = queue_of(window)
    queue.mouseMotion(40, 30)  # from the upper left corner
    queue.mouseButtonPress(40, 30, 1)
    queue.mouseMotion(60, 30)
    queue.mouseButtonRelease(60, 30, 1)
    queue.keyPress(ord("e"))
    window.step()
    window.step()
    events = [event for event in listener.events if event[0] != "update"]
    assert [event[0] for event in events] == ["moved", "mouse", "dragged", "mouse", "key"]
    assert [event[-2:] for event in events[:4]] == [pytest.approx((x, 90), abs=1.5) for x in (40, 40, 60, 60)]
    assert [event[1:-2] for event in events[1:4]] == [(1, 0), (1,), (1, 1)] and events[4] == ("key", ord("e"), True)
    assert ("update",) + events[3][-2:] in listener.events
    assert window.getAutoStepping()  # the key was used up


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
