"""What keys and the window do to the loop, and who gets the events of the window."""

import hyxOSG
import pytest


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
