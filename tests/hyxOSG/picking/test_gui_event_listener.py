"""The listener's own operations, and events that reach a Python subclass."""

import _hyxOSG
import hyx
import hyxOSG
import numpy
import pytest
from playground import CENTER, numbers, playground

DEFAULT_MASK, ALL = 25, 31


class Recorder(hyxOSG.GuiEventListener):
    """Writes down what it is told, and says whether the event is used up."""

    def __init__(self, mask=ALL, used_up=False):
        super().__init__(mask)
        self.calls = []
        self.used_up = used_up

    def mouse(self, button, state, x, y):
        self.calls.append(("mouse", button, state, x, y))
        return self.used_up

    def mouseDragged(self, buttons, x, y):
        self.calls.append(("mouseDragged", buttons, x, y))
        return self.used_up

    def mouseMoved(self, x, y):
        self.calls.append(("mouseMoved", x, y))
        return self.used_up

    def keyboard(self, key, modifiers, x, y, down):
        self.calls.append(("keyboard", key, modifiers, x, y, down))
        return self.used_up

    def update(self, x, y):
        self.calls.append(("update", x, y))

    def of(self, name):
        return [call for call in self.calls if call[0] == name]


def test_masks():
    assert hyxOSG.GuiEventListener().getMask() == DEFAULT_MASK
    assert hyxOSG.GuiEventListener(3).getMask() == 3
    with pytest.raises(OverflowError) as refused:
        _hyxOSG.new_GuiEventListener(None, 2**31)
    assert str(refused.value) == (
        "in method 'new_GuiEventListener', argument 2 of type 'hyxSDK::GuiEventListener::ActivationMask'"
    )


@pytest.mark.parametrize("arguments", [(), (None, 1, 2)])
def test_wrong_counts_list_the_prototypes(arguments):
    with pytest.raises(TypeError) as refused:
        _hyxOSG.new_GuiEventListener(*arguments)
    assert str(refused.value).endswith(
        "Wrong number or type of arguments for overloaded function 'new_GuiEventListener'.\n"
        "  Possible C/C++ prototypes are:\n"
        "    hyxOSG::GuiEventListener::GuiEventListener(hyxSDK::GuiEventListener::ActivationMask)\n"
        "    hyxOSG::GuiEventListener::GuiEventListener(PyObject *)\n"
    )


def test_events_reach_the_methods_with_places_and_masks(playground):
    recorder = playground.listen(Recorder())
    events, up = playground.events, playground.up
    events.mouseMotion(100, up(50))
    events.mouseButtonPress(101, up(51), 1)
    events.mouseMotion(110, up(60))
    events.mouseButtonRelease(111, up(61), 1)
    events.keyPress(ord("k"))
    events.keyRelease(ord("k"))
    playground.frame(2)
    assert recorder.of("mouseMoved") == [("mouseMoved", 100, 50)]
    assert recorder.of("mouse") == [("mouse", 1, 0, 101, 51), ("mouse", 1, 1, 111, 61)]
    assert recorder.of("mouseDragged") == [("mouseDragged", 1, 110, 60)]
    keys = recorder.of("keyboard")
    assert [(call[1], call[5]) for call in keys] == [(ord("k"), True), (ord("k"), False)]
    assert all(type(call[5]) is bool for call in keys)
    assert recorder.of("update")[-1] == ("update", 111, 61)


def test_mask_chooses_the_events(playground):
    keys_only = playground.listen(Recorder(8))
    playground.events.mouseMotion(10, 10)
    playground.events.keyPress(ord("j"))
    playground.frame(2)
    assert {call[0] for call in keys_only.calls} == {"keyboard"}


def test_a_used_up_event_stops(playground):
    first, second = playground.listen(Recorder(used_up=True)), playground.listen(Recorder())
    playground.events.keyPress(ord("j"))
    playground.frame(2)
    assert first.of("keyboard") and not second.of("keyboard")
    assert first.of("update") and second.of("update")


def test_a_listener_that_overrides_nothing_uses_nothing_up(playground):
    class Silent(hyxOSG.GuiEventListener):
        pass

    playground.listen(Silent(ALL))
    behind = playground.listen(Recorder())
    playground.events.keyPress(ord("j"))
    playground.events.mouseMotion(30, 30)
    playground.frame(2)
    assert behind.of("keyboard") and behind.of("mouseMoved")


def test_intersect_finds_what_the_physics_has(playground):
    listener = playground.listen(hyxOSG.GuiEventListener())
    camera = playground.app.getCamera()
    found = listener.intersect(*CENTER, camera)
    assert found.getRigidBody() == playground.body
    assert numpy.allclose(numbers(found.getPoint()), (0, -0.5, 0), atol=1e-5)
    assert listener.intersect(*CENTER, camera, True).getNumContacts() == 1
    assert not listener.intersect(1.0, 1.0, camera).isValid()
    assert not listener.intersect(*CENTER, None).isValid()
    assert not hyxOSG.GuiEventListener().intersect(*CENTER, camera).isValid(), "in no simulation"


def test_near_and_far_points(playground):
    listener = hyxOSG.GuiEventListener()
    near, far = hyx.Vec3(), hyx.Vec3()
    listener.getNearFarPoints(playground.app.getCamera(), near, far, *CENTER)
    assert -10 < near.y < far.y and abs(far.x) < 1e-6 * far.y
    with pytest.raises(TypeError, match="GuiEventListener.getNearFarPoints.. argument 3 .* not None"):
        listener.getNearFarPoints(playground.app.getCamera(), near, None, 0.0, 0.0)


def test_nearest_contact(playground):
    listener = playground.listen(hyxOSG.GuiEventListener())
    playground.add_ball(3)
    assert listener.intersect(*CENTER, playground.app.getCamera()).getNumContacts() == 1
    contacts = listener.intersect(*CENTER, playground.app.getCamera(), True).getContacts()
    assert len(contacts) == 2
    assert listener.findIntersectGeometryIndex(contacts) == 0
    assert listener.findIntersectGeometryIndex(list(contacts)[::-1]) == 1
    empty = listener.intersect(1.0, 1.0, playground.app.getCamera()).getContacts()
    assert listener.findIntersectGeometryIndex(empty) == 0, "as many as there are contacts"
