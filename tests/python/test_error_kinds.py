"""What the native side refuses comes as the error that Python has for it; the flat functions keep RuntimeError."""

import pickle

import _hyx
import _hyxOSG
import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import pytest

VALUES = {
    "constructor": lambda: hyxCollide.Sphere(-1),
    "method": lambda: hyxSDK.Simulation().setTimeStep(0),
    "keyword": lambda: hyx.RigidBody().setMass(mass=-1),
    "application": lambda: hyxOSG.ExampleApplication().setSpeed(speed=-1),
    "function": lambda: hyxOSG.createGrid(0, 10, (1, 0, 0), (0, 1, 0), (0, 0, 0)),
}
PLACES = {
    "scene": lambda: hyxOSG.ExampleApplication().getCallbackIdx(3),
}


@pytest.mark.parametrize(
    "call, kind",
    [(v, ValueError) for v in VALUES.values()] + [(p, IndexError) for p in PLACES.values()],
    ids=[*VALUES, *PLACES],
)
def test_a_refused_value_or_place_is_also_the_error_of_the_flat_functions(call, kind):
    with pytest.raises(kind, match=r"\w+ \w+") as refused:
        call()
    assert isinstance(refused.value, RuntimeError) and refused.value.__cause__ is None
    again = pickle.loads(pickle.dumps(refused.value))
    assert type(again) is type(refused.value) and again.args == refused.value.args


@pytest.mark.parametrize(
    "call",
    [
        lambda: _hyx.RigidBody_setMass(hyx.RigidBody(), -1.0),
        lambda: _hyxOSG.ExampleApplication_getCallbackIdx(hyxOSG.ExampleApplication(), 3),
    ],
    ids=["value", "place"],
)
def test_a_flat_function_raises_nothing_but_runtime_error(call):
    with pytest.raises(RuntimeError) as refused:
        call()
    assert type(refused.value) is RuntimeError


@pytest.mark.parametrize(
    "take",
    [hyx.Vec3, hyx.Vec4f, hyx.RealVector, hyx.Vec3Vector, lambda text: hyxCollide.Trimesh(text, [0, 1, 2])],
    ids=["value", "colour", "list", "rows", "mesh"],
)
@pytest.mark.parametrize("text", ["a", "abc", "abcd"])
def test_a_text_is_no_sequence_of_numbers(take, text):
    with pytest.raises(TypeError, match="number.* not str"):
        take(text)
