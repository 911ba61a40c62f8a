"""The wrappers of listener-style methods report what the native method throws, with their place, and raise nothing."""

import re

import _hyxOSG
import _probe
import hyx
import hyxCable
import hyxModel
import hyxUtil
import osg
import pytest

SDK, MODEL, VISUAL = (f"swig/configuration/hyxPython/{name}" for name in ("hyxSDK", "hyxModel", "hyxOSG"))
MATRIX = hyx.AffineMatrix4x4()


def make_damage():
    cable = hyxCable.Cable(0.01, 20)
    for x in (-1, 0, 1):
        cable.add(hyx.Vec3(x, 0, 0))
    return hyxCable.CableDamage(cable)


def throwing(name):
    arguments = {
        "CableDamageRenderer": lambda: (make_damage(), osg.Group()),
        "PressureFieldRenderer": lambda: (osg.Group(),),
        "SplineRenderer": lambda: (hyxUtil.Spline(), osg.Group()),
        "SplineRendererOld": lambda: (hyxUtil.Spline(), osg.Group()),
    }.get(name, tuple)
    return getattr(_probe, "throwing" + re.sub("([A-Z])", r"_\1", name).lower())(*arguments())


ROWS = [
    ("CableDamageRenderer", "last", (0.5,), 88, SDK),
    ("DeformableHeightFieldRenderer", "last", (0.5,), 88, SDK),
    ("ExampleApplicationListener", "preFrame", (None,), 205, VISUAL),
    ("ExampleApplicationListener", "postFrame", (None,), 206, VISUAL),
    ("PickHandler", "update", (1.0, 2.0), 78, SDK),
    ("PickHandler", "keyboard", (65, 0, 1.0, 2.0, True), 79, SDK),
    ("PickHandler", "mouse", (1, 0, 1.0, 2.0), 80, SDK),
    ("PickHandler", "mouseDragged", (1, 1.0, 2.0), 82, SDK),
    ("PressureFieldRenderer", "addTriangle", (hyxModel.TriangleData(), MATRIX), 102, MODEL),
    ("PressureFieldRenderer", "clear", (), 103, MODEL),
    ("PressureFieldRenderer", "done", (), 104, MODEL),
    ("PressureFieldRenderer", "updateTransform", (MATRIX,), 105, MODEL),
    ("SplineRenderer", "removeNotification", (), 75, SDK),
    ("SplineRendererOld", "removeNotification", (), 75, SDK),
]


@pytest.fixture
def notices():
    heard = []
    hyx.Notify.instance().setSink(lambda level, text: heard.append((level, text)))
    yield heard
    hyx.Notify.instance().setSink(None)


@pytest.mark.parametrize("cls, method, arguments, line, source", ROWS, ids=[f"{row[0]}_{row[1]}" for row in ROWS])
def test_what_the_native_method_throws_is_a_notice(notices, cls, method, arguments, line, source):
    with pytest.raises(SystemError, match="without .*exception"):
        getattr(_hyxOSG, f"{cls}_{method}")(throwing(cls), *arguments)
    assert notices == [(4, f"_wrap_{cls}_{method}({line}), {source}: on purpose")]


@pytest.mark.parametrize("cls, method", sorted({(row[0], row[1]) for row in ROWS}))
def test_wrong_arguments_are_still_errors(notices, cls, method):
    with pytest.raises(TypeError, match=f"{cls}_{method}"):
        getattr(_hyxOSG, f"{cls}_{method}")(throwing(cls), "x", "y", "z", 1, 2, 3, 4)
    assert notices == []
