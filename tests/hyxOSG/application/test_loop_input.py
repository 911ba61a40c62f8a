"""What keys and the window do to the loop, and who gets the events of the window."""

import hyxOSG
import pytest
from application_stage import difference


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


def test_the_help_names_every_key_that_does_something(window, shoot, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)  # a key saves the state there

    def bound(key):
        """Whether the handler of the window does something, and takes it back where it can."""
        again = window.getEnableHelp(), window.getEnableStatus(), window.getAutoStepping(), window.getSpeed()
        does = window.followKey(key)
        window.setEnableHelp(again[0]), window.setEnableStatus(again[1])
        window.setAutoStepping(again[2]), window.setSpeed(again[3])
        return does

    special = {"Page Down": 0xFF56, "Page Up": 0xFF55, "Left": 0xFF51, "Right": 0xFF53, "Escape": 0xFF1B, "Space": 0x20}
    special |= {f"F{number}": 0xFFBD + number for number in range(1, 13)}
    names = {line[:11].strip() for line in window.getKeyHelp()} - {"mouse", ""}
    keys = {name: special.get(name) or ord(name) for name in names}
    assert {key for key in [*range(0x20, 0x7F), *special.values()] if bound(key)} == set(keys.values())
    before = shoot(window)
    window.cancelStop()
    window.followKey(keys["F1"])
    window.step()
    assert window.getEnableHelp() and difference(before, shoot(window)) > 1000
    window.followKey(keys["F1"])
    window.step()
    assert difference(before, shoot(window)) == 0


def test_scenes_leave_the_keys_of_the_window_alone(window):
    for _ in range(40):
        window.addScene("scene.py", "build")
    taken = {line[:11].strip() for line in window.getKeyHelp() if "builds build of" in line}
    assert len(taken) == 33 and not taken & {"e", "f", "r"}
    window.addScene("own.py", "own", ord("f"))  # a program may
    assert not any("fits" in line for line in window.getKeyHelp())


def test_the_line_of_figures_tells_how_it_goes(window, shoot):
    before = shoot(window)
    window.followKey(0xFFBF)  # F2
    window.step()
    assert window.getEnableStatus() and difference(before, shoot(window)) > 200
    assert "frames/s" in window.getStatus() and "contacts" in window.getStatus() and "paused" not in window.getStatus()
    window.setAutoStepping(False)
    assert "paused" in window.getStatus()
