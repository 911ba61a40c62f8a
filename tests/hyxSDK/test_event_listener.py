"""Python listeners are called at every step, in order, and their errors stop nothing."""

import gc

import hyx
import hyxSDK
import pytest
from physics_scene import box, simulation


class Recorder(hyxSDK.EventListener):
    def __init__(self, log, name=""):
        super().__init__(name)
        self.log = log

    def addNotification(self):
        self.log.append((self.getName(), "added"))

    def removeNotification(self):
        self.log.append((self.getName(), "removed"))

    def preCollide(self, time):
        self.log.append((self.getName(), "preCollide", time))

    def pre(self, time):
        self.log.append((self.getName(), "pre", time))

    def post(self, time):
        self.log.append((self.getName(), "post", time))

    def last(self, time):
        self.log.append((self.getName(), "last", time))


def test_the_hooks_come_in_order_with_the_time():
    log = []
    world = simulation()
    world.setTimeStep(0.5)
    listener = Recorder(log, "a")
    world.add(listener)
    world.step()
    assert world.remove(listener)
    world.step()
    assert log == [
        ("a", "added"),
        ("a", "preCollide", 0),
        ("a", "pre", 0),
        ("a", "post", 0.5),
        ("a", "last", 0.5),
        ("a", "removed"),
    ]


def test_priorities_order_listeners():
    log = []
    world = simulation()
    for name, priority in (("late", 5), ("early", -1), ("first of two", 0), ("second of two", 0)):
        listener = Recorder(log, name)
        listener.setMask(hyxSDK.EventListener.POST_STEP)
        world.add(listener, priority)
    del log[:]
    world.step()
    assert [entry[0] for entry in log] == ["early", "first of two", "second of two", "late"]
    assert {entry[1] for entry in log} == {"post"}


def test_a_listener_pushes_a_body_in_the_same_step():
    pushed = box(0.5, mass=3)

    class Pusher(hyxSDK.EventListener):
        def pre(self, time):
            pushed.addForce(hyx.Vec3(180, 0, 0))

    world = simulation(pushed)
    world.add(Pusher())
    gc.collect()
    world.step()
    assert pushed.getVelocity().x == pytest.approx(1), "the simulation keeps a listener that the script forgot"


def test_a_disabled_listener_is_silent():
    log = []
    listener = Recorder(log)
    world = simulation(listener)
    listener.setEnable(False)
    world.step()
    assert log == [("", "added")]


def test_an_error_in_a_listener_is_reported_and_the_step_goes_on(capfd):
    class Failing(hyxSDK.EventListener):
        def pre(self, time):
            raise ValueError("no such gear")

    errors = hyxSDK.ScriptManager.instance()
    errors.clearErrors()
    falling = box(0.5)
    world = simulation(falling, Failing())
    world.step()
    assert falling.getVelocity().z < 0
    assert capfd.readouterr().err.count("ValueError: no such gear") == 1
    ((where, message, traceback),) = errors.getErrors()
    assert (where, message) == ("hyxSDK::EventListener::pre", "ValueError: no such gear")
    assert "test_event_listener.py" in traceback
    errors.clearErrors()
    assert not errors.hasErrors()


def test_a_listener_may_remove_itself_and_others_during_a_step():
    log = []
    world = simulation()
    other = Recorder(log, "other")

    class Remover(hyxSDK.EventListener):
        def pre(self, time):
            world.remove(other)
            world.remove(self)

    world.add(Remover(), -1)
    world.add(other)
    world.step()
    world.step()
    assert [entry[1] for entry in log] == ["added", "preCollide", "removed"]


def test_a_step_within_a_step_is_refused():
    errors = []
    world = simulation()

    class Nested(hyxSDK.EventListener):
        def pre(self, time):
            try:
                world.step()
            except RuntimeError as error:
                errors.append(str(error))

    world.add(Nested())
    world.step()
    assert errors == ["the simulation is in the middle of a step already"]
    assert world.getTimeStamp() == pytest.approx(1 / 60)


def test_a_listener_without_overrides_does_nothing():
    world = simulation(hyxSDK.EventListener("plain"))
    world.step()
    assert [listener.getName() for listener in world.getEventListeners()] == ["plain"]


@pytest.mark.parametrize("request_to_end", [KeyboardInterrupt, SystemExit])
def test_a_request_to_end_the_program_arrives_as_it_is_and_nothing_is_called_after_it(request_to_end):
    calls = []

    class Ending(hyxSDK.EventListener):
        def pre(self, time):
            raise request_to_end

        def post(self, time):
            calls.append(len([number for number in range(3)]))

    world = simulation(Ending())
    with pytest.raises(request_to_end):
        world.step()
    assert calls == [] and world.getTimeStamp() > 0
