"""Listeners that a script derives are called, fall back to the native methods, and live as long as they are needed."""

import gc

import hyx
import hyxOSG
import hyxSDK
import pytest

FALLBACKS = [
    ("printSubtree", ()),
    ("setContext", (None,)),
    ("rebind", ()),
    ("addObject", (None, True)),
    ("removeObject", (None,)),
    ("setMask", (25,)),
    ("addNotification", ()),
    ("removeNotification", ()),
    ("update", (1.0, 2.0)),
    ("setInverseTransform", (hyx.AffineMatrix4x4(),)),
]
INPUT = [
    ("mouse", (1, 0, 1.0, 2.0)),
    ("mouseMoved", (1.0, 2.0)),
    ("mouseDragged", (1, 1.0, 2.0)),
    ("keyboard", (65, 0, 1.0, 2.0, True)),
]


class Plain(hyxOSG.GuiEventListener):
    """Overrides nothing: every call comes back to the native method, once."""


@pytest.mark.parametrize("name, arguments", FALLBACKS)
def test_what_is_not_overridden_runs_the_native_method(name, arguments):
    assert getattr(Plain(), name)(*arguments) is None


@pytest.mark.parametrize("name, arguments", INPUT)
def test_input_that_is_not_overridden_is_not_used_up(name, arguments):
    assert getattr(Plain(), name)(*arguments) is False
    assert getattr(hyxOSG.GuiEventListener(), name)(*arguments) is False


def test_the_native_mask_follows_an_override_that_calls_its_base():
    class Masked(hyxOSG.GuiEventListener):
        def setMask(self, mask):
            super().setMask(mask | 8)

    listener = Masked(1)
    assert listener.getMask() == 1
    listener.setMask(2)
    assert listener.getMask() == 10


def test_a_listener_that_nobody_else_keeps_is_still_called():
    calls = []

    class Counting(hyxSDK.EventListener):
        def post(self, time):
            calls.append(time)

    sim = hyxSDK.Simulation()
    sim.setTimeStep(0.25)
    sim.add(Counting())
    gc.collect()
    sim.step()
    sim.step()
    assert calls == [0.25, 0.5]


def test_a_listener_learns_that_it_was_added():
    class Noticing(hyxOSG.GuiEventListener):
        simulation = None

        def addNotification(self):
            self.simulation = self.getSimulation()

    sim, listener = hyxSDK.Simulation(), Noticing()
    sim.add(listener)
    assert listener.simulation == sim


def test_a_forgotten_base_constructor_is_an_error_not_a_crash():
    class Forgetful(hyxOSG.GuiEventListener):
        def __init__(self):
            pass

    with pytest.raises(TypeError, match="called on an object that holds no native one"):
        Forgetful().mouseMoved(1.0, 2.0)
