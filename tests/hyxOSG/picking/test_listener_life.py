"""A Python listener lives as long as somebody knows it: the script, or the native object that it was added to."""

import gc
import sys
import weakref

import _hyxOSG
import _hyxSDK
import hyxOSG
import hyxSDK
import pytest
from overrides import VIRTUAL, native
from playground import playground
from subprocesses import run_python, weighs_memory

STEP_LISTENERS = [hyxSDK.EventListener, hyxOSG.GuiEventListener]


def make(base, **methods):
    """A listener of a derived class, and its weak reference."""
    listener = type("Derived", (base,), methods)()
    return listener, weakref.ref(listener)


@pytest.fixture(autouse=True)
def no_collector():
    """What ends here ends with its last reference."""
    gc.disable()
    yield
    gc.enable()


@pytest.mark.parametrize("base", [hyxSDK.EventListener, *VIRTUAL])
def test_an_unused_listener_ends_with_its_last_reference(base):
    listener, seen = make(base)
    assert sys.getrefcount(listener) == 2
    del listener
    assert seen() is None


@pytest.mark.parametrize("base", STEP_LISTENERS)
def test_a_simulation_keeps_a_listener_until_it_is_removed(base):
    told = []
    listener, seen = make(base, removeNotification=lambda self: told.append(type(self)))
    simulation = hyxSDK.Simulation()
    simulation.add(listener)
    assert sys.getrefcount(listener) == 3
    assert listener.getReferenceCount() == 2
    assert simulation.getEventListeners()[0] is listener
    cls = type(listener)
    del listener
    assert seen() is not None and seen().getReferenceCount() == 2
    assert simulation.remove(seen())
    assert told == [cls] and seen() is None


@pytest.mark.parametrize("base", STEP_LISTENERS)
def test_a_listener_that_was_removed_is_as_before(base):
    listener, seen = make(base)
    simulation = hyxSDK.Simulation()
    for _ in range(3):
        simulation.add(listener)
        simulation.remove(listener)
        assert sys.getrefcount(listener) == 2
        assert listener.getReferenceCount() == 1
    del listener
    assert seen() is None


@pytest.mark.parametrize("base", STEP_LISTENERS)
def test_the_end_of_a_simulation_ends_its_listeners(base):
    told = []
    listener, seen = make(base, removeNotification=lambda self: told.append(self.getSimulation() is not None))
    simulation = hyxSDK.Simulation()
    simulation.add(listener)
    del listener
    simulation.cleanup()
    assert told == [True] and seen() is None
    listener, seen = make(base)
    simulation.add(listener)
    del simulation
    assert sys.getrefcount(listener) == 2
    assert listener.getSimulation() is None
    del listener
    assert seen() is None


@pytest.mark.parametrize("base", STEP_LISTENERS)
def test_an_assembly_keeps_a_listener_in_a_simulation_and_beside_it(base):
    listener, seen = make(base)
    simulation, assembly = hyxSDK.Simulation(), hyxSDK.Assembly()
    assembly.add(listener)
    del listener
    assert seen() is not None
    simulation.add(assembly)
    assert seen().getSimulation() == simulation
    simulation.remove(assembly)
    assert seen() is not None
    assembly.remove(seen())
    assert seen() is None
    listener, seen = make(base)
    assembly.add(listener)
    del listener, assembly
    assert seen() is None


@pytest.mark.parametrize("base", STEP_LISTENERS)
def test_a_listener_in_a_cycle_of_its_own_waits_for_the_collector(base):
    listener, seen = make(base)
    simulation = hyxSDK.Simulation()
    listener.itself = listener
    simulation.add(listener)
    del listener
    gc.collect()
    assert seen() is not None
    simulation.remove(seen())
    assert seen() is not None
    gc.collect()
    assert seen() is None


def test_a_listener_may_be_saved_by_its_finalizer():
    simulation, told = hyxSDK.Simulation(), []

    class Stubborn(hyxOSG.GuiEventListener):
        def __del__(self):
            told.append("finalized")
            simulation.add(self)

        def addNotification(self):
            told.append("added")

    Stubborn()
    assert told == ["finalized", "added"] and len(simulation.getEventListeners()) == 1
    simulation.cleanup()
    assert told == ["finalized", "added"] and simulation.getEventListeners() == [], "Python finalizes an object once"


AT_THE_END = """
import hyxOSG, hyxSDK

class Listener(hyxOSG.GuiEventListener):
    def removeNotification(self):
        print("removed")

class Frames(hyxOSG.ExampleApplicationListener):
    def postFrame(self, app):
        self.frames = getattr(self, "frames", 0) + 1

app = hyxOSG.ExampleApplication()
app.init(None)
simulation, other, assembly = hyxSDK.Simulation(), hyxSDK.Simulation(), hyxSDK.Assembly()
app.initSimulation(simulation)
app.initViewer(32, 32, True)
frames = Frames()
app.addListener(frames)
app.addListener(Frames())
simulation.add(Listener())
other.add(Listener())
assembly.add(Listener())
kept = Listener()
simulation.add(kept)
disowned = Listener()
hyxOSG._hyxOSG.disown_GuiEventListener(disowned)
app.step()
"""


def test_the_end_of_the_program_is_silent():
    done = run_python(AT_THE_END)
    assert (done.returncode, done.stdout.replace("removed\n", ""), done.stderr) == (0, "", "")


def test_an_application_keeps_its_listeners(playground):
    called = []
    listener, seen = make(hyxOSG.ExampleApplicationListener, preFrame=lambda self, app: called.append(app))
    playground.app.addListener(listener)
    playground.app.addListener(None)
    assert sys.getrefcount(listener) == 3
    assert listener.getReferenceCount() == 2
    del listener
    playground.frame()
    assert called == [playground.app]
    type(seen()).preFrame = lambda self, app: None


def test_a_renderer_keeps_its_colour_callback():
    renderer = hyxOSG.LidarOutputRenderer(None)
    callback, seen = make(hyxOSG.LidarOutputRendererColorFunctionCallback)
    renderer.setIntensityColorFunction(callback)
    assert sys.getrefcount(callback) == 3
    del callback
    assert seen() is not None
    renderer.setIntensityColorFunctionFromMode(0)
    assert seen() is None
    callback, seen = make(hyxOSG.LidarOutputRendererColorFunctionCallback)
    renderer.setIntensityColorFunction(callback)
    del callback, renderer
    assert seen() is None


@pytest.mark.parametrize("cls", VIRTUAL)
def test_disowning_after_the_python_object_has_ended_keeps_nothing(cls):
    class Owner:
        pass

    owner = Owner()
    alive = weakref.ref(owner)
    bare = getattr(_hyxOSG, "new_" + cls.__name__)(owner)
    del owner
    gc.collect()
    assert alive() is None
    fillers = [Owner() for _ in range(1000)]  # where it was
    before = [sys.getrefcount(filler) for filler in fillers]
    assert getattr(_hyxOSG, "disown_" + cls.__name__)(bare) is None
    assert [sys.getrefcount(filler) for filler in fillers] == before
    del bare


@pytest.mark.parametrize("cls", VIRTUAL)
def test_disowning_keeps_the_python_object_once(cls):
    disown = getattr(_hyxOSG, "disown_" + cls.__name__)
    new = getattr(_hyxOSG, "new_" + cls.__name__)

    class Target:
        pass

    target = Target()
    bare = new(target)
    count = sys.getrefcount(target)
    assert disown(bare) is None
    assert sys.getrefcount(target) == count + 1
    disown(bare)
    assert sys.getrefcount(target) == count + 1
    assert disown(None) is None
    with pytest.raises(
        TypeError, match=f"in method 'disown_{cls.__name__}', argument 1 of type 'hyxOSG::{cls.__name__} \\*'"
    ):
        disown(target)


DESTROY = {
    hyxOSG.GuiEventListener: _hyxSDK.delete_GuiEventListener,
    hyxOSG.ExampleApplicationListener: sys.modules["_hyx"].delete_Referenced,
    hyxOSG.LidarOutputRendererColorFunctionCallback: _hyxOSG.delete_LidarOutputRendererColorFunctionCallback,
}


@pytest.mark.parametrize("cls", VIRTUAL)
def test_what_was_disowned_and_dropped_lives_until_its_native_object_ends(cls):
    listener, seen = make(cls)
    getattr(_hyxOSG, "disown_" + cls.__name__)(listener)
    handle = listener.this
    del listener
    assert seen() is not None
    DESTROY[cls](handle)
    assert seen() is None


def test_a_simulation_may_be_the_last_to_hold_what_was_disowned():
    simulation = hyxSDK.Simulation()
    listener, seen = make(hyxOSG.GuiEventListener)
    simulation.add(listener)
    _hyxOSG.disown_GuiEventListener(listener)
    _hyxSDK.delete_GuiEventListener(listener)  # the script's reference
    del listener
    assert seen() is not None and seen().getReferenceCount() == 1
    del simulation
    assert seen() is None


def test_deleted_color_callbacks_free_their_python_object():
    callback, seen = make(hyxOSG.LidarOutputRendererColorFunctionCallback)
    _hyxOSG.delete_LidarOutputRendererColorFunctionCallback(callback)
    del callback
    assert seen() is None


def test_a_director_whose_python_object_died_is_plain():
    class Bare:
        def mouseMoved(self, x, y):
            return True

    target = Bare()
    alias = hyxOSG.GuiEventListener.__new__(hyxOSG.GuiEventListener)
    alias.this = _hyxOSG.new_GuiEventListener(target)
    assert alias.mouseMoved(1.0, 2.0) is True
    del target
    assert alias.mouseMoved(1.0, 2.0) is False
    alias.update(1.0, 2.0)
    alias.printSubtree()


def resident_pages():
    with open("/proc/self/statm") as numbers:
        return int(numbers.read().split()[1])


def add_and_forget(listener, simulation):
    simulation.add(listener)
    alias = simulation.getEventListeners()[0]
    del listener
    simulation.remove(alias)


def disown_and_drop(listener, simulation):
    cls = next(cls for cls in type(listener).__mro__ if cls in VIRTUAL)
    getattr(_hyxOSG, "disown_" + cls.__name__)(listener)
    DESTROY[cls](listener)


def call_and_drop(listener, simulation):
    alias = native(listener)
    cls = type(alias)
    for name, arguments in list(VIRTUAL[cls].items())[1:]:
        getattr(alias, name)(*arguments)


@weighs_memory
@pytest.mark.parametrize(
    "cls, use",
    [
        *((cls, lambda listener, simulation: None) for cls in VIRTUAL),
        *((cls, call_and_drop) for cls in VIRTUAL),
        *((cls, disown_and_drop) for cls in VIRTUAL),
        (hyxOSG.GuiEventListener, add_and_forget),
        (hyxSDK.EventListener, add_and_forget),
    ],
)
def test_ten_thousand_listeners_leave_nothing_behind(cls, use):
    simulation = hyxSDK.Simulation()
    derived = type("Derived", (cls,), {})
    seen = weakref.WeakSet()

    def rounds(count):
        for _ in range(count):
            listener = derived()
            seen.add(listener)
            use(listener, simulation)

    rounds(1000)
    pages, count = resident_pages(), sys.getrefcount(derived)
    rounds(10_000)
    assert len(seen) == 0 and sys.getrefcount(derived) == count
    assert resident_pages() - pages < 100
