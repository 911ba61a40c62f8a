"""The loop: how it runs, how it ends, and how fast it goes."""

import os
import subprocess
import time

import hyx
import hyxOSG
import hyxSDK
import pytest
from application_stage import add_box, steps_of
from subprocesses import run_python


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
    assert app.getTimeStamp() - before <= 0.25 + app.getTimeStep()  # what is beyond is forgotten
    before = app.getTimeStamp()
    app.synchronizedStep(True)
    assert app.getTimeStamp() > before


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


def test_an_interrupt_ends_the_loop_at_the_next_frame(app):
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
