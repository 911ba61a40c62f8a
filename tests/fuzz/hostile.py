"""Objects that do at every turn what a conversion does not expect; programs take them by name from MAKERS."""

from __future__ import annotations

import signal

import _hyxOSG
import _osg
import hyx
import hyxOSG
import hyxSDK

pool: dict[int, object] = {}  # the values of the running program
KEEPER = _osg.new_Group()  # of nodes that are handed over uncounted: with it each lives as long as programs know it
LONGEST = 10  # seconds of a processor that a program may take; it may wait six times as long


def begin() -> None:
    """Starts a program: without values, and with the whole time before it."""
    destroy()
    signal.setitimer(signal.ITIMER_PROF, LONGEST)
    signal.setitimer(signal.ITIMER_REAL, 6 * LONGEST)


class Loop:
    @property
    def this(self):
        return self


class Fresh:
    """A new native object at each look-up."""

    @property
    def this(self):
        return _hyxOSG.new_LidarOutputRendererLegendPoint()


class Failing:
    def __getattr__(self, name):
        raise ZeroDivisionError(name)

    def __iter__(self):
        yield hyxOSG.LidarOutputRendererLegendPoint()
        raise ZeroDivisionError

    def __float__(self):
        raise ZeroDivisionError

    __index__ = __len__ = __bool__ = __float__


class Shrinking(list):
    """Numbers that vanish while they are read."""

    def __init__(self):
        super().__init__(Thief(self) for _ in range(3))


class Thief:
    def __init__(self, owner):
        self.owner = owner

    def __float__(self):
        self.owner.clear()
        return 1.0

    def __index__(self):
        self.owner.clear()
        return 1


def destroy() -> None:
    """Lets all values of the program go."""
    pool.clear()


class Destroying:
    """Lets go of everything while it is converted."""

    @property
    def this(self):
        destroy()
        return None

    def __iter__(self):
        destroy()
        return iter(())


class Listener(hyxSDK.EventListener):
    def pre(self, time):
        destroy()

    post = last = preCollide = pre

    def addNotification(self):
        destroy()


class Gui(hyxOSG.GuiEventListener):
    def update(self, x, y):
        destroy()

    def addNotification(self):
        destroy()

    def removeNotification(self):
        raise ZeroDivisionError


class Frames(hyxOSG.ExampleApplicationListener):
    def preFrame(self, app):
        destroy()

    def postFrame(self, app):
        raise ZeroDivisionError


class Colors(hyxOSG.LidarOutputRendererColorFunctionCallback):
    def getLidarPointColor(self, intensity):
        destroy()
        return hyx.Vec3(1, 2, 3)


def chained():
    head = _hyxOSG.new_LidarOutputRendererLegendPoint()
    head.append(head)
    head.append(_hyxOSG.new_LidarOutputRendererLegend(2))
    return head


def named():
    return type("swig_runtime_data4.SwigPyObject", (), {"__slots__": tuple("abcd")})()


def derived():
    return type("Derived", (type(_hyxOSG.new_LidarOutputRendererLegendPoint()),), {})()


MAKERS = {
    "loop": Loop,
    "fresh": Fresh,
    "failing": Failing,
    "shrinking": Shrinking,
    "destroying": Destroying,
    "listener": Listener,
    "gui": Gui,
    "frames": Frames,
    "colors": Colors,
    "chained": chained,
    "named": named,
    "derived": derived,
    "slots": type("Slots", (), {"__slots__": ()}),
    "object": object,
    "generator": lambda: (item for item in (1, 2, 3)),
    "lone surrogate": lambda: "\ud800",
    "bytes": lambda: b"bytes",
    "huge": lambda: 10**400,
    "nan": lambda: float("nan"),
    "class": lambda: hyx.Vec3,
}


def kept(node: object) -> object:
    _osg.Group_addChild(KEEPER, node)
    return node


def make(name: str) -> object:
    return MAKERS[name]()
