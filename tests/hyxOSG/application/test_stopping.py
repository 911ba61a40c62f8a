"""Ctrl-C, exits and errors of scripts end every long call, and other threads have their turn meanwhile."""

import os
import signal
import threading
import time

import hyxNet
import hyxOSG
import pytest
from application_stage import add_box

LONGEST_WAIT = 0.1  # seconds between Ctrl-C and its exception


def run_with_two_frames_a_second(app):
    app.setTargetFPS(2)
    app.run()


LONG_CALLS = {
    "run": lambda app: app.run(),
    "run slowly": run_with_two_frames_a_second,
    "stepTo": lambda app: app.getSimulation().stepTo(1e6),
    "update": lambda app: hyxNet.CoSimulationServer(0, "secret").update(-1),
    "a long wait": lambda app: hyxNet.CoSimulationServer(0, "secret").update(60000),
}


@pytest.mark.parametrize("call", LONG_CALLS.values(), ids=LONG_CALLS.keys())
def test_an_interrupt_ends_every_long_call_at_once(window, call):
    sent = []

    def interrupt():
        sent.append(time.monotonic())
        os.kill(os.getpid(), signal.SIGINT)

    timer = threading.Timer(0.2, interrupt)
    timer.start()
    with pytest.raises(KeyboardInterrupt):
        call(window)
    assert time.monotonic() - sent[0] < LONGEST_WAIT


class Raiser(hyxOSG.ExampleApplicationListener):
    """Raises in its third frame, once."""

    def __init__(self, method, error):
        super().__init__()
        self.error, self.frames, self.after = error, 0, 0
        setattr(self, method, self.frame)

    def frame(self, _):
        self.frames += 1
        if self.frames == 3:
            raise self.error


@pytest.mark.parametrize("method", ["preFrame", "postFrame"])
@pytest.mark.parametrize("error", [KeyboardInterrupt("now"), SystemExit(4)])
def test_what_ends_the_program_arrives_as_it_is(window, method, error):
    first, second = Raiser(method, error), Raiser(method, None)
    window.addListener(first)
    window.addListener(second)
    with pytest.raises(type(error)) as caught:
        window.run()
    assert caught.value is error
    assert (first.frames, second.frames) == (3, 2)  # nothing ran after it


def test_other_threads_have_their_turn_and_stop_the_loop(window):
    for number in range(10):
        add_box(window, f"box{number}", (0, 0, 1 + 2 * number))
    turns, ended = 0, False

    def count():
        nonlocal turns
        while not ended:
            turns += 1
            time.sleep(0)

    thread = threading.Thread(target=count)
    thread.start()
    timer = threading.Timer(0.5, window.stop, args=(7,))
    begun = time.monotonic()
    timer.start()
    try:
        assert window.run() == 7
    finally:
        ended = True
        thread.join()
    taken = time.monotonic() - begun
    assert taken < 3 and turns / taken > 1000


def test_calls_of_other_threads_wait_for_the_step(window):
    """Bodies come and go on another thread while the loop steps and draws them."""
    simulation, failures, rounds = window.getSimulation(), [], 0
    ended = False

    def change():
        nonlocal rounds
        while not ended:
            try:
                body = add_box(window, "", (0, 0, 5))
                hyxOSG.createVisual(body, window.getSceneRoot())
                simulation.remove(body)
                rounds += 1
            except Exception as error:
                failures.append(error)
                return

    thread = threading.Thread(target=change)
    thread.start()
    threading.Timer(1, window.stop).start()
    window.run()
    ended = True
    thread.join()
    assert not failures and rounds > 10


def test_a_thread_that_does_not_own_the_window_cannot_draw(window, tmp_path):
    failures = []

    def draw():
        try:
            window.takeScreenShot(str(tmp_path / "other.png"))
        except RuntimeError as error:
            failures.append(str(error))

    thread = threading.Thread(target=draw)
    thread.start()
    thread.join()
    assert "belongs to the thread that opened it" in failures[0] and not (tmp_path / "other.png").exists()
    window.takeScreenShot(str(tmp_path / "own.png"))
    assert (tmp_path / "own.png").stat().st_size > 0
