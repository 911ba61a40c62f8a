"""Python subclasses stand in for native virtual functions: what they get, what they may return, how they may fail."""

import _hyxOSG
import hyx
import hyxOSG
import hyxSDK
import osg
import pytest
from overrides import ARGUMENTS, BOOL, RAISING, VIRTUAL, native, overriding
from playground import playground

SIGNATURES = {
    "mouseDragged": "mouseDragged(hyxSDK::GuiEventListener::MouseButtonMask, float, float)",
    "mouseMoved": "mouseMoved(float, float)",
    "mouse": "mouse(hyxSDK::GuiEventListener::MouseButtonMask, hyxSDK::GuiEventListener::MouseState, float, float)",
    "keyboard": "keyboard(int, unsigned int, float, float, bool)",
}


@pytest.mark.parametrize("name", ARGUMENTS)
def test_each_virtual_function_reaches_its_override(name):
    listener = overriding(name, answer=True)()
    listener.calls.clear()
    result = getattr(native(listener), name)(*ARGUMENTS[name])
    assert [call[0] for call in listener.calls] == [name]
    given = listener.calls[0][1]
    if name == "setInverseTransform":
        assert given[0] == ARGUMENTS[name][0]
    else:
        assert given == ARGUMENTS[name]
        assert [type(value) for value in given] == [type(value) for value in ARGUMENTS[name]]
    assert result is (True if name in BOOL else None)


@pytest.mark.parametrize("name", ARGUMENTS)
def test_what_is_not_overridden_runs_the_native_function_once(name, capfd):
    class Plain(hyxOSG.GuiEventListener):
        pass

    listener = Plain()
    result = getattr(native(listener), name)(*ARGUMENTS[name])
    assert result is (False if name in BOOL else None)
    if name == "setMask":
        assert listener.getMask() == 3


def test_an_override_can_call_the_native_function():
    class Doubling(hyxOSG.GuiEventListener):
        def setMask(self, mask):
            super().setMask(2 * mask)

    listener = Doubling()
    native(listener).setMask(4)
    assert listener.getMask() == 8


def test_objects_are_handed_on_as_proxies():
    seen = []

    class Keeper(hyxOSG.GuiEventListener):
        def addObject(self, thing, replace):
            seen.append((thing, replace))

        def setInverseTransform(self, matrix):
            seen.append(matrix.getTranslate())

    listener = Keeper()
    body = hyx.RigidBody("carried")
    native(listener).addObject(body, False)
    assert seen[0][0] == body and seen[0][1] is False
    native(listener).setInverseTransform(hyx.AffineMatrix4x4.translate(hyx.Vec3(1, 2, 3)))
    assert tuple(seen[1]) == (1, 2, 3)


@pytest.mark.parametrize("name", RAISING)
def test_an_error_in_a_raising_method_reaches_the_caller(name):
    def fail(self, *arguments):
        raise KeyError(name)

    failing = overriding(name, answer=fail)()
    with pytest.raises(KeyError, match=name):
        getattr(native(failing), name)(*ARGUMENTS[name])


@pytest.mark.parametrize("name", [name for name in ARGUMENTS if name not in RAISING])
def test_an_error_in_a_reporting_method_is_printed_once_and_goes_no_further(name, capfd):
    def fail(self, *arguments):
        raise ValueError("this one " + name)

    failing = overriding(name, answer=fail)()
    result = getattr(native(failing), name)(*ARGUMENTS[name])
    assert result is (False if name in BOOL else None)
    assert capfd.readouterr().err.count("ValueError: this one " + name) == 1


QUALIFIED = {
    "hyxSDK::EventListener::": ("addNotification", "removeNotification"),
    "hyxOSG::GuiEventListener::": (*BOOL, "update"),
    "hyxOSG::ExampleApplicationListener::": ("preFrame", "postFrame"),
}


@pytest.mark.parametrize(
    "qualifier, name", [(qualifier, name) for qualifier, names in QUALIFIED.items() for name in names]
)
def test_the_script_manager_has_the_error_with_its_place_and_traceback(qualifier, name, capfd):
    def fail(self, *arguments):
        raise ValueError("on record")

    base = next(cls for cls, methods in VIRTUAL.items() if name in methods)
    failing = overriding(name, answer=fail, base=base)()
    manager = hyxSDK.ScriptManager.instance()
    manager.clearErrors()
    getattr(native(failing), name)(*VIRTUAL[base][name])
    ((where, message, traceback),) = manager.getErrors()
    assert (where, message) == (qualifier + name, "ValueError: on record")
    assert "test_directors.py" in traceback and 'raise ValueError("on record")' in traceback
    manager.clearErrors()


def test_errors_that_reach_a_caller_are_not_on_record():
    def fail(self, *arguments):
        raise ValueError("for the caller")

    failing = overriding("setMask", answer=fail)()
    hyxSDK.ScriptManager.instance().clearErrors()
    with pytest.raises(ValueError):
        native(failing).setMask(1)
    assert not hyxSDK.ScriptManager.instance().hasErrors()


@pytest.mark.parametrize("name", ["mouse", "update", "preFrame"])
@pytest.mark.parametrize("request_to_end", [KeyboardInterrupt, SystemExit])
def test_a_request_to_end_the_program_reaches_the_caller(name, request_to_end):
    def end(self, *arguments):
        raise request_to_end

    base = next(cls for cls, methods in VIRTUAL.items() if name in methods)
    ending = overriding(name, answer=end, base=base)()
    with pytest.raises(request_to_end):
        getattr(native(ending), name)(*VIRTUAL[base][name])


@pytest.mark.parametrize("answer", [1, 0, None, "yes"])
@pytest.mark.parametrize("name", BOOL)
def test_only_a_bool_is_a_bool(name, answer):
    listener = overriding(name, answer=answer)()
    with pytest.raises(TypeError) as refused:
        getattr(native(listener), name)(*ARGUMENTS[name])
    assert str(refused.value) == (
        "SWIG director type mismatch : Python code called by 'virtual bool SwigDirector_GuiEventListener::"
        f"{SIGNATURES[name]}' has wrong output value type. Expected bool."
    )


@pytest.mark.parametrize("name", ["update", "rebind"])
def test_other_results_are_dropped(name):
    listener = overriding(name, answer=object())()
    assert getattr(native(listener), name)(*ARGUMENTS[name]) is None


def test_none_makes_a_plain_listener():
    plain = _hyxOSG.new_GuiEventListener(None)
    assert _hyxOSG.disown_GuiEventListener(plain) is None


def test_an_object_without_its_method_is_an_error_of_the_call():
    class Bare:
        pass

    target = Bare()
    bare = _hyxOSG.new_GuiEventListener(target)
    alias = hyxOSG.GuiEventListener.__new__(hyxOSG.GuiEventListener)
    alias.this = bare
    with pytest.raises(AttributeError, match="rebind"):
        alias.rebind()


def test_joining_and_leaving_are_told(playground):
    listener = overriding("addNotification", "removeNotification")()
    playground.simulation.add(listener)
    playground.simulation.remove(listener)
    assert [call[0] for call in listener.calls] == ["addNotification", "removeNotification"]


def test_an_assembly_tells_its_listener_where_it_is():
    assembly, simulation = hyxSDK.Assembly(), hyxSDK.Simulation()
    listener = overriding("setContext", "rebind", "addNotification", "removeNotification")()
    assembly.add(listener)
    assert listener.calls == [("setContext", (assembly,))]
    assembly.rebind()
    simulation.add(assembly)
    simulation.remove(assembly)
    assembly.remove(listener)
    assert [call[0] for call in listener.calls[1:]] == ["rebind", "addNotification", "removeNotification", "setContext"]
    assert listener.calls[-1] == ("setContext", (None,))


def test_an_error_in_a_frame_reaches_whoever_made_it_and_the_next_frame_goes_on(playground):
    errors = [KeyError("the camera moved"), None]

    class Failing(hyxOSG.GuiEventListener):
        def setInverseTransform(self, matrix):
            if error := errors.pop(0):
                raise error

        def mouseMoved(self, x, y):
            return None

    playground.listen(Failing(31))
    playground.app.setCameraHome(hyx.Vec3(0, -10, 1), hyx.Vec3(0, 0, 0))
    with pytest.raises(KeyError, match="the camera moved"):
        playground.frame(3)
    playground.app.setCameraHome(hyx.Vec3(0, -10, 2), hyx.Vec3(0, 0, 0))
    playground.frame(3)
    assert errors == []
    playground.events.mouseMotion(10, 10)
    with pytest.raises(TypeError, match="has wrong output value type"):
        playground.frame()
    playground.frame()


def test_application_listener_is_told_of_frames(playground, capfd):
    class Frames(hyxOSG.ExampleApplicationListener):
        def __init__(self):
            super().__init__()
            self.calls = []

        def preFrame(self, app):
            self.calls.append(("pre", app == playground.app))
            if len(self.calls) > 20:
                raise ValueError("enough frames")

        def postFrame(self, app):
            self.calls.append(("post", app == playground.app))

    frames = Frames()
    playground.app.addListener(frames)
    playground.frame(2)
    assert frames.calls[:4] == [("pre", True), ("post", True)] * 2
    playground.frame(12)
    assert "ValueError: enough frames" in capfd.readouterr().err
    assert frames.calls[-1] == ("post", True), "the frame went on"
    frames.preFrame = lambda app: None


def colors(answer):
    class Colors(hyxOSG.LidarOutputRendererColorFunctionCallback):
        def getLidarPointColor(self, intensity):
            return answer(intensity)

    return Colors()


def ask(callback, intensity):
    return native(callback).getLidarPointColor(intensity)


def test_lidar_colors_come_from_python():
    callback = colors(lambda x: osg.Vec4(x, 0.25, 0.5, 1))
    color = ask(callback, 0.75)
    assert [color[i] for i in range(4)] == [0.75, 0.25, 0.5, 1]
    assert callback.getColorFunction() is not None


@pytest.mark.parametrize("answer", [(1, 0, 0, 1), None, 3])
def test_what_is_no_color_is_refused(answer):
    with pytest.raises(TypeError) as refused:
        ask(colors(lambda x: answer), 0.5)
    assert str(refused.value) == "SWIG director type mismatch in output value of type 'osg::Vec4'"


def test_an_error_in_the_color_reaches_the_caller():
    with pytest.raises(ZeroDivisionError):
        ask(colors(lambda x: 1 / 0), 0.5)


def test_not_overriding_the_color_gives_the_native_one():
    class Plain(hyxOSG.LidarOutputRendererColorFunctionCallback):
        pass

    color = ask(Plain(), 0.5)
    assert [color[i] for i in range(3)] == [0.5, 0.5, 0.5]
