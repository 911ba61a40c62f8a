"""Vectors, rotations and transforms compute what geometry says."""

import math

import hyx
import pytest


@pytest.mark.parametrize(
    "kind, numbers",
    [
        (hyx.Vec2, (1.5, -2)),
        (hyx.Vec3, (1.5, -2, 3)),
        (hyx.Vec3f, (1.5, -2, 3)),
        (hyx.Vec4, (1, 2, 3, 4)),
        (hyx.Vec4f, (1, 2, 3, 4)),
        (hyx.Quat, (0, 0, 0.6, 0.8)),
    ],
)
def test_a_value_is_a_mutable_sequence_of_its_numbers(kind, numbers):
    value = kind(*numbers)
    assert value == kind(numbers) == kind(value)
    assert len(value) == len(numbers)
    assert value[-1] == pytest.approx(numbers[-1])
    assert value[:2] == pytest.approx(numbers[:2])
    value[0] = 7
    assert value.x == 7
    assert value != kind(*numbers)
    with pytest.raises(IndexError):
        value[len(numbers)]
    with pytest.raises(IndexError):
        value[len(numbers)] = 0


def test_arithmetic_works_by_component():
    a, b = hyx.Vec3(1, 2, 3), hyx.Vec3(-2, 0.5, 4)
    assert a + b == hyx.Vec3(-1, 2.5, 7)
    assert a - b == hyx.Vec3(3, 1.5, -1)
    assert 2 * a == a * 2 == hyx.Vec3(2, 4, 6)
    assert a / 2 == hyx.Vec3(0.5, 1, 1.5)
    assert -a == hyx.Vec3(-1, -2, -3)
    assert a.dot(b) == 11
    assert a.cross(b) == hyx.Vec3(6.5, -10, 4.5)
    with pytest.raises(ZeroDivisionError):
        a / 0
    with pytest.raises(TypeError):
        a + 1


@pytest.mark.parametrize(
    "arguments, error",
    [
        (((1, 2),), ValueError),
        (((1, 2, 3, 4),), ValueError),
        ((None,), TypeError),
        (("abc",), TypeError),
        ((1, 2), TypeError),
    ],
)
def test_a_vector_refuses_what_are_not_three_numbers(arguments, error):
    with pytest.raises(error):
        hyx.Vec3(*arguments)


def test_text_reads_back():
    assert repr(hyx.Vec3(0.1, -2, 1e20)) == "hyx.Vec3(0.1, -2, 1e+20)"
    for value in (hyx.Vec4f(0.1, 1 / 3, 2, -1e-9), hyx.Quat(0.1, hyx.Vec3(1, 2, 3)), hyx.Vec2u(3, 2**60)):
        assert eval(repr(value)) == value


def test_a_rotation_turns_by_the_right_hand():
    quarter = hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1))
    assert tuple(quarter * hyx.Vec3(1, 0, 0)) == pytest.approx((0, 1, 0), abs=1e-15)
    assert quarter.getAngle() == pytest.approx(math.pi / 2)
    assert tuple(hyx.Quat(hyx.Vec3(1, 0, 0), hyx.Vec3(-1, 0, 0)) * hyx.Vec3(2, 0, 0)) == pytest.approx(
        (-2, 0, 0), abs=1e-12
    )


def test_products_apply_the_left_factor_first():
    about_z = hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1))
    about_x = hyx.Quat(math.pi / 2, hyx.Vec3(1, 0, 0))
    expected = tuple(about_x * (about_z * hyx.Vec3(1, 0, 0)))
    assert tuple((about_z * about_x) * hyx.Vec3(1, 0, 0)) == pytest.approx(expected)
    matrices = hyx.AffineMatrix4x4(about_z) * hyx.AffineMatrix4x4(about_x)
    assert tuple(matrices.transformPoint(hyx.Vec3(1, 0, 0))) == pytest.approx(expected)
    assert tuple(hyx.Vec3(1, 0, 0) * matrices) == pytest.approx(expected)


@pytest.mark.parametrize("angles", [(0.3, -0.4, 2.5), (0, math.pi / 2, 0.7), (-1, 1.2, -3)])
def test_euler_angles_give_the_same_rotation_back(angles):
    rotation = hyx.Quat.fromEulerAngles(hyx.Vec3(angles))
    again = hyx.Quat.fromEulerAngles(rotation.getEulerAngles())
    for axis in ((1, 0, 0), (0, 1, 0), (0, 0, 1)):
        assert tuple(again * hyx.Vec3(axis)) == pytest.approx(tuple(rotation * hyx.Vec3(axis)), abs=1e-9)


@pytest.mark.parametrize("angle", [0.1, 2, 3, math.pi])
@pytest.mark.parametrize("axis", [(1, 0, 0), (0, 1, 0), (0, 0, 1), (1, -2, 0.5)])
def test_a_matrix_keeps_its_rotation_whatever_the_axis(axis, angle):
    rotation = hyx.Quat(angle, hyx.Vec3(axis))
    read = hyx.AffineMatrix4x4(rotation, hyx.Vec3(1, 2, 3)).getRotate()
    assert abs(read.dot(rotation)) == pytest.approx(1)


def test_an_inverse_takes_a_transform_back():
    matrix = hyx.AffineMatrix4x4.scale(hyx.Vec3(1, 2, 3)) * hyx.AffineMatrix4x4(
        hyx.Quat(1, hyx.Vec3(1, 1, 0)), hyx.Vec3(4, 5, 6)
    )
    point = hyx.Vec3(0.3, -2, 5)
    assert tuple(matrix.inverse().transformPoint(matrix.transformPoint(point))) == pytest.approx(tuple(point))
    with pytest.raises(RuntimeError, match="no inverse"):
        hyx.AffineMatrix4x4.scale(hyx.Vec3(1, 0, 1)).inverse()


def test_a_viewpoint_looks_along_negative_z():
    view = hyx.AffineMatrix4x4.lookAt(hyx.Vec3(4, -6, 3), hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, 1))
    seen = view.transformPoint(hyx.Vec3(0, 0, 1))
    assert tuple(seen) == pytest.approx((0, 0, -math.sqrt(16 + 36 + 4)))
    assert view.transformVector(hyx.Vec3(0, 0, 1)).y > 0


def test_a_plane_measures_distances_on_its_normal():
    plane = hyx.Plane(hyx.Vec3(0, 0, 2), hyx.Vec3(5, 5, 1))
    assert plane.distance(hyx.Vec3(0, 0, 4)) == 3
    assert plane.project(hyx.Vec3(7, 8, 9)) == hyx.Vec3(7, 8, 1)
    with pytest.raises(RuntimeError, match="normal"):
        hyx.Plane(0.0, 0.0, 0.0, 1.0)


def test_a_range_clamps_and_refuses_swapped_bounds():
    bounds = hyx.RangeReal(-1, 2)
    assert [bounds.clamp(x) for x in (-5, 0, 5)] == [-1, 0, 2]
    assert bounds.contains(2) and not bounds.contains(2.1)
    for lower, upper in ((1, 0), (math.nan, 1)):
        with pytest.raises(RuntimeError, match="lower bound"):
            hyx.RangeReal(lower, upper)


def test_a_callback_calls_its_python_function_as_often_as_the_event_happens():
    calls = []
    callback = hyx.Callback(lambda: calls.append(1))
    event = hyx.Event()
    event.add(callback)
    event.add(hyx.Callback(callback))
    event.trigger()
    assert calls == [1], "copies of one callback are one callback"
    assert event.remove(callback)
    event.trigger()
    assert calls == [1]
    with pytest.raises(TypeError, match="callable"):
        hyx.Callback(3)


def test_a_timer_counts_while_it_runs():
    timer = hyx.HighAccuracyTimer(False)
    assert timer.getTime() == 0
    timer.start()
    while timer.getTime() < 2:
        pass
    timer.stop()
    stopped = timer.getTime()
    assert 2 <= stopped == timer.getTime()
    timer.reset()
    assert timer.getTime() == 0


def test_frames_follow_their_parents():
    parent = hyx.Frame(hyx.AffineMatrix4x4(hyx.Quat(math.pi / 2, hyx.Vec3(0, 0, 1)), hyx.Vec3(1, 0, 0)))
    child = hyx.Frame(hyx.AffineMatrix4x4(hyx.Vec3(2, 0, 0)), parent)
    assert tuple(child.getTranslate()) == pytest.approx((1, 2, 0))
    assert tuple(child.transformPointToLocal(hyx.Vec3(1, 2, 0))) == pytest.approx((0, 0, 0), abs=1e-12)
    with pytest.raises(RuntimeError, match="parent"):
        parent.setParent(child)


def test_components_find_what_they_contain_by_name(capfd):
    tree = hyx.Component("tree")
    branch, leaf = hyx.Component("branch"), hyx.Object("leaf")
    tree.addObject(branch)
    branch.addObject(leaf)
    assert tree.findObject("branch").getName() == "branch"
    assert tree.findObject("leaf") is None
    branch.setName("bough")
    tree.rebind()
    assert tree.findObject("branch") is None and tree.findObject("bough") is not None
    tree.addObject(hyx.Object("bough"), True)
    assert [o.getName() for o in tree.getObjects()] == ["bough"] and branch.getContext() is None
    branch.printSubtree()
    assert capfd.readouterr().out == "bough\n  leaf\n"


def test_a_component_forgets_a_context_that_ended():
    part, context = hyx.Component("part"), hyx.Object("context")
    part.setContext(context)
    assert part.getContext() == context
    del context
    assert part.getContext() is None


def test_notices_go_to_the_sink_from_their_level_on(capfd):
    stream, heard = hyx.Notify.instance(), []
    before = stream.getLevel()
    try:
        stream.setSink(lambda level, text: heard.append((level, text)))
        stream.setLevel(hyx.Notify.NOTIFY_WARNING)
        stream.notify(hyx.Notify.NOTIFY_INFO, "quiet")
        stream.notify(hyx.Notify.NOTIFY_ERROR, "loud \u00e5")
        assert heard == [(4, "loud \u00e5")]
        stream.setSink(None)
        stream.notify(hyx.Notify.NOTIFY_WARNING, "to the console")
        assert capfd.readouterr().err == "to the console\n"
        with pytest.raises(TypeError):
            stream.setSink(3)
    finally:
        stream.setSink(None)
        stream.setLevel(before)
