"""Calls as Python's users write them: keywords, sequences of numbers, NumPy's scalars, paths; and what they say."""

import inspect
import pathlib

import _hyx_proxy
import _sample
import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
import osg
import pytest
from _hyx_proxy import function, member
from PIL import Image
from python.test_operations import Base

with_defaults = function(
    _sample.with_defaults, None, None, ('number, text="b, (", base=_sample.new_Base(), flag=True',)
)


def head(call):
    """The first line of what a call raises."""
    with pytest.raises((TypeError, OverflowError)) as caught:
        call()
    return str(caught.value).splitlines()[0]


def box():
    return hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))


def test_keywords_take_their_places_and_gaps_their_defaults():
    base = Base()
    assert with_defaults(number=1) == _sample.with_defaults(1)
    assert with_defaults(1, text="x", base=base, flag=False) == _sample.with_defaults(1, "x", base, False)
    assert with_defaults(flag=False, number=2, base=base) == _sample.with_defaults(2, "b, (", base, False)
    assert with_defaults(1, flag=False) == _sample.with_defaults(1, "b, (", base, False)
    assert head(lambda: with_defaults(text="x")) == "with_defaults() is missing argument 1, 'number'"
    assert head(lambda: with_defaults(1, number=2)) == "with_defaults() got multiple values for argument 'number'"
    assert head(lambda: with_defaults(1, colour=2)) == "with_defaults() got an unexpected keyword argument 'colour'"
    assert head(lambda: with_defaults(1, text=2)) == "with_defaults() argument 2 'text' must be str, not int"


def test_keywords_choose_among_forms_and_reach_constructors():
    assert hyx.Vec3(x=1, y=2, z=3) == hyx.Vec3(1, 2, 3)
    assert hyx.Plane(d=2, normal=(0, 0, 1)).getD() == 2
    assert hyxCollide.Box(halfExtents=hyx.Vec3(1, 2, 3)).getHalfExtents() == hyx.Vec3(1, 2, 3)
    description = hyxOSG.SceneDescription(fileName="scene.py", scriptFunction="build", slowUnittest=True)
    assert (description.slowUnittest, description.unittest, description.stopAfter) == (True, True, -1)

    class Listener(hyxOSG.GuiEventListener):
        pass

    assert isinstance(Listener(mask=3), Listener)


def test_every_argument_with_a_name_can_be_given_by_it():
    """The names in the signatures are those that the calls know."""
    checked = 0
    for package in (hyx, hyxSDK, hyxCollide, osg, hyxOSG):
        owners = [package, *(v for v in vars(package).values() if isinstance(v, type))]
        for operation in [v for owner in owners for v in vars(owner).values() if isinstance(v, _hyx_proxy.function)]:
            names = inspect.signature(operation).parameters
            if names and "args" not in names:
                with pytest.raises((TypeError, OverflowError)) as caught:
                    operation(**{name: object() for name in names})
                assert "argument 1 '" in str(caught.value) or "PyObject" in str(caught.value), operation
                checked += 1
    assert checked > 20


@pytest.mark.parametrize("make", [tuple, list, numpy.array, lambda row: numpy.array([row, row], numpy.float32)[1]])
def test_sequences_stand_for_vectors_quaternions_and_colours(make):
    body = box()
    body.setPosition(make([1, 2, 3]))
    body.setRotation(make([0, 0, 0, 1]))
    assert body.getPosition() == hyx.Vec3(1, 2, 3) and body.getRotation() == hyx.Quat(0, 0, 0, 1)
    point = hyxOSG.LidarOutputRendererLegendPoint(0.5, make([1, 0, 0.5, 1]))
    point.color = make([0, 1, 0.5, 1])
    assert tuple(point.color) == (0, 1, 0.5, 1)
    assert hyxOSG.createSphere(make([0, 0, 1]), make([1, 0, 0, 1]), 2.0).getNumDrawables() == 1
    rows = make([make([0, 0, 0]), make([1, 1, 1])])
    assert hyxOSG.createPolyline(rows, make([1, 1, 1, 1]), 2.0).getNumDrawables() == 1


def test_a_sequence_of_a_wrong_size_is_told_with_its_reason():
    with pytest.raises(TypeError, match="argument 1 'position' must be hyx.Vec3 or a sequence of its values") as caught:
        box().setPosition((1, 2))
    assert "expected 3 numbers, got 2" in str(caught.value.__cause__)


def test_what_a_call_writes_is_no_sequence(app):
    near, far = [0, 0, 0], [1, 1, 1]
    assert "must be hyx.Vec3, not list" in head(lambda: hyxOSG.getNearFarPoints(app.getCamera(), 1.0, 1.0, near, far))


def test_scalars_of_numpy_are_numbers():
    body = box()
    body.setMass(numpy.float32(2.5))
    assert body.getMass() == 2.5
    assert hyx.Vec3(numpy.float32(1), numpy.int64(2), numpy.float64(3)) == hyx.Vec3(1, 2, 3)
    node = hyxOSG.GeometryNode()
    node.setAutoRemove(numpy.bool_(False))
    assert node.getAutoRemove() is False
    assert hyx.RealVector([1, 2, 3])[numpy.int32(1)] == 2
    group = osg.Group()
    group.addChild(node)
    assert group.getChild(numpy.uint8(0)) is node


def test_numpy_scales_vectors_and_keeps_arrays():
    vector = hyx.Vec3(1, 2, 3)
    for number in (numpy.float64(2), numpy.float32(2), numpy.int64(2)):
        for product in (number * vector, vector * number):
            assert isinstance(product, hyx.Vec3) and product == hyx.Vec3(2, 4, 6)
    array = numpy.array([1.0, 1.0, 1.0])
    for sum_ in (array + vector, vector + array):
        assert isinstance(sum_, numpy.ndarray) and sum_.tolist() == [2, 3, 4]
    assert numpy.add.reduce(vector) == 6 and numpy.sqrt(vector)[0] == 1
    with pytest.raises(TypeError):
        vector + "x"


def test_paths_are_texts(tmp_path):
    assert with_defaults(1, pathlib.PurePosixPath("/a")) == _sample.with_defaults(1, "/a")
    Image.new("RGB", (5, 3)).save(tmp_path / "picture.png")
    assert hyxOSG.createTexture(tmp_path / "picture.png").getImage().s() == 5


def test_messages_name_the_argument_what_it_should_be_and_what_it_is():
    node, group = hyxOSG.GeometryNode(), osg.Group()
    for call, text in [
        (lambda: node.setAutoRemove(), "GeometryNode.setAutoRemove() takes 1 argument (0 given)"),
        (lambda: node.setAutoRemove(1), "GeometryNode.setAutoRemove() argument 1 'autoRemove' must be bool, not int"),
        (lambda: group.addChild("x"), "Group.addChild() argument 1 'child' must be osg.Node or None, not str"),
        (lambda: group.getChild(-1), "Group.getChild() argument 1 'i' is out of range for unsigned int"),
        (lambda: hyxOSG.createGrid(1, "x"), "createGrid() takes 5 or 6 arguments (2 given)"),
        (
            lambda: hyxOSG.createGrid(1, 2, None, None, "x"),
            "createGrid() argument 3 'corner' must be osg.Vec3f or a sequence of its values, not None",
        ),
        (
            lambda: hyxOSG.createGrid(1, 2, 3, 4, 5, 6),
            "createGrid() has no form for (int, int, int, int, int, int)",
        ),
        (
            lambda: hyxOSG.GeometryNode.getAutoRemove(group),
            "GeometryNode.getAutoRemove() must be called on hyxOSG.GeometryNode, not Group",
        ),
    ]:
        assert head(call) == text


def test_an_error_of_the_native_call_is_not_tried_again():
    calls = []

    def numbers():
        calls.append(1)
        yield 1.0
        raise TypeError("mine")

    class Numbers:
        __iter__ = staticmethod(numbers)

    with pytest.raises(TypeError, match="^mine$"):
        hyx.RealVector(Numbers())
    assert len(calls) == 1


def test_errors_of_conversions_that_are_the_users_own_arrive():
    class Failing:
        def __float__(self):
            raise ZeroDivisionError

        __index__ = __fspath__ = __float__

    for call in (
        lambda: box().setMass(Failing()),
        lambda: osg.Group().getChild(Failing()),
        lambda: hyxOSG.createTexture(Failing()),
    ):
        with pytest.raises(ZeroDivisionError):
            call()


def test_a_parameter_list_must_fit_the_forms():
    for wrong in ((), ("a", "b"), (1,), "a"):
        with pytest.raises(TypeError, match="parameters must be a tuple of 1 str"):
            function(_sample.with_defaults, None, None, wrong)
    assert member(_sample.Settings_size_get).__name__ == "Settings_size_get"
