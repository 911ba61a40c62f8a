"""How simulated time keeps to real time, what a frame has time for, and what a paused window costs."""

import json
import time

import hyx
import hyxIO
import hyxOSG
import pytest
from application_stage import add_box


class Stopwatch(hyxOSG.ExampleApplicationListener):
    """Ends the loop after some seconds, and tells what it did in them."""

    def __init__(self, seconds, settling=0.3):
        super().__init__()
        self.settling, self.seconds, self.frames, self.start = settling, seconds, 0, None
        self.begin = time.monotonic()

    def postFrame(self, app):
        now = time.monotonic()
        if self.start is None:
            if now - self.begin > self.settling:
                self.start, self.simulated, self.used = now, app.getTimeStamp(), time.process_time()
            return
        self.frames += 1
        if now - self.start > self.seconds:
            passed = now - self.start
            self.factor = (app.getTimeStamp() - self.simulated) / passed
            self.rate = self.frames / passed
            self.load = (time.process_time() - self.used) / passed
            app.stop()


def run(app, seconds=1.5, **further):
    watch = Stopwatch(seconds, **further)
    app.addListener(watch)
    app.setRealTimeSync(True)
    app.run()
    return watch


def test_short_steps_keep_to_real_time(window):
    window.setTimeStep(0.001)
    assert run(window).factor == pytest.approx(1, abs=0.02)
    assert window.getRealTimeFactor() == pytest.approx(1, abs=0.1) and window.getFrameRate() > 20


@pytest.mark.parametrize("speed", [0.25, 3])
def test_time_runs_at_the_speed_asked_for(window, speed):
    window.setSpeed(speed)
    assert window.getSpeed() == speed and window.getRealTimeSync()
    assert run(window).factor == pytest.approx(speed, rel=0.05)
    for wrong in (0, -1, float("nan"), float("inf")):
        with pytest.raises(RuntimeError, match="positive"):
            window.setSpeed(wrong)


def test_heavy_steps_leave_time_to_draw(window):
    window.setStepCallback(hyx.Callback(lambda: time.sleep(0.05)))
    assert run(window).rate > 12  # 15 on a machine of its own


def test_long_steps_do_not_hold_the_picture_up(window):
    window.setTimeStep(0.1)
    watch = run(window)
    assert watch.rate > 30 and watch.factor == pytest.approx(1, abs=0.1)


def draws(path):
    """How often a traced run drew."""
    line = next(line for line in path.read_text().splitlines() if '"total of draw"' in line)
    return json.loads(line.rstrip(","))["args"]["count"]


@pytest.mark.parametrize("moves", [False, True])
def test_a_paused_window_rests_until_something_changes(window, tmp_path, moves):
    trace = tmp_path / "trace.json"
    window.init(hyxIO.ArgumentParser(["--profile", str(trace)]))
    body = add_box(window)
    window.createVisual(window.getSimulation())

    class Mover(hyxOSG.ExampleApplicationListener):
        def preFrame(self, app):
            position = body.getPosition()
            body.setPosition(position + hyx.Vec3(0.01, 0, 0))

    mover = Mover()
    if moves:
        window.addListener(mover)
    window.setAutoStepping(False)
    watch = run(window)
    frames = watch.frames + 0.3 * watch.rate
    assert draws(trace) > 0.8 * frames if moves else draws(trace) < 0.4 * frames
    assert moves or watch.load < 0.06  # 0.03 on a machine that does nothing else
