"""Classes that override native virtual functions, and the calls that reach them.

`native(listener)` is another proxy of the same native object. A call through it is a virtual call, as the library makes
it; a call through the listener itself runs the native implementation. It does not keep the listener alive.
"""

import hyx
import hyxOSG
import osg

ARGUMENTS = {
    "printSubtree": (),
    "setContext": (None,),
    "rebind": (),
    "addObject": (None, True),
    "removeObject": (None,),
    "setMask": (3,),
    "addNotification": (),
    "removeNotification": (),
    "mouseDragged": (1, 2.0, 3.0),
    "mouseMoved": (2.0, 3.0),
    "mouse": (1, 0, 2.0, 3.0),
    "keyboard": (65, 4, 2.0, 3.0, True),
    "update": (2.0, 3.0),
    "setInverseTransform": (hyx.AffineMatrix4x4(),),
}
RAISING = ("printSubtree", "setContext", "rebind", "addObject", "removeObject", "setMask", "setInverseTransform")
BOOL = ("mouseDragged", "mouseMoved", "mouse", "keyboard")
VIRTUAL = {
    hyxOSG.GuiEventListener: ARGUMENTS,
    hyxOSG.ExampleApplicationListener: {"preFrame": (None,), "postFrame": (None,)},
    hyxOSG.LidarOutputRendererColorFunctionCallback: {"getLidarPointColor": (0.5,)},
}


def good_answer(name):
    return True if name in BOOL else osg.Vec4(1, 0, 0, 1) if name == "getLidarPointColor" else None


def native(listener):
    base = next(cls for cls in type(listener).__mro__ if cls.__module__ == "hyxOSG")
    alias = base.__new__(base)
    alias.this = listener.this
    return alias


def overriding(*names, answer=None, base=hyxOSG.GuiEventListener):
    """A class that overrides these methods, which write their arguments down."""

    def make(name):
        def method(self, *arguments):
            self.calls.append((name, arguments))
            return answer(self, *arguments) if callable(answer) else answer

        return method

    return type("Overriding", (base,), {"calls": [], **{name: make(name) for name in names}})
