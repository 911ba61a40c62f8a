"""Points, camera data, lists and enumerations are what Python knows: they compare, copy, pickle and count."""

import copy
import enum
import pickle
from collections.abc import MutableSequence

import hyx
import hyxOSG
import osg
import pytest


def camera_data():
    data = hyxOSG.CameraData(None)
    data.eye, data.center, data.up = (1, 2, 3), (4, 5, 6), (0, 0, 1)
    data.fieldOfView, data.valid = 35.0, True
    return data


def point(intensity):
    return hyxOSG.LidarOutputRendererLegendPoint(intensity, (intensity, 0, 0.5, 1))


def legend(*intensities):
    return hyxOSG.LidarOutputRendererLegend([point(number) for number in intensities])


@pytest.mark.parametrize("make", [camera_data, lambda: point(0.25), lambda: legend(0.25, 0.5)])
def test_copies_are_equal_and_of_their_own(make):
    value = make()
    for other in (copy.copy(value), copy.deepcopy(value), pickle.loads(pickle.dumps(value))):
        assert other == value and other is not value and type(other) is type(value)
        if hasattr(other, "append"):
            other.append(point(1.0))
        elif hasattr(other, "eye"):
            other.eye = (0, 0, 0)
        else:
            other.intensity = 1.0
        assert other != value and value == make()
    assert value != 3
    with pytest.raises(TypeError):
        hash(value)


def test_the_legend_is_a_mutable_sequence():
    points = legend(0.0, 0.25, 0.5)
    assert isinstance(points, MutableSequence)
    points.insert(1, point(0.125))
    points += [point(0.75)]
    points.extend([point(1.0)])
    assert [p.intensity for p in points] == [0.0, 0.125, 0.25, 0.5, 0.75, 1.0]
    assert [p.intensity for p in reversed(points)][:2] == [1.0, 0.75]
    assert point(0.25) in points and points.index(point(0.25)) == 2 and points.count(point(9.0)) == 0
    points.remove(point(0.25))
    assert (points.pop(0).intensity, points.pop().intensity) == (0.0, 1.0)
    points.reverse()
    assert [p.intensity for p in points] == [0.75, 0.5, 0.125]
    points.insert(points.begin(), point(0.0))
    assert points[0].intensity == 0 and len(points) == 4
    with pytest.raises(ValueError):
        points.remove(point(7.0))


@pytest.mark.parametrize(
    "values",
    [hyx.RealVector([1, 2, 3]), hyx.Vec3Vector([(1, 2, 3), (4, 5, 6), (7, 8, 9)])],
    ids=["numbers", "vectors"],
)
def test_native_lists_are_mutable_sequences(values):
    first = values[0]
    assert isinstance(values, MutableSequence)
    assert first in values and values.index(first) == 0 and values.count(first) == 1
    values.reverse()
    assert values[2] == first and next(reversed(values)) == first
    values.remove(first)
    assert first not in values and len(values) == 2


def test_enumerations_are_ints_with_names():
    method = hyxOSG.SceneDecorator.SHADOWMAP
    assert isinstance(method, enum.IntEnum) and method == 1 and method | 2 == 3
    assert repr(method) == "<ShadowMethod.SHADOWMAP: 1>"
    assert hyxOSG.SceneDecorator_SHADOWMAP is method
    assert pickle.loads(pickle.dumps(method)) is method
    assert hyxOSG.Text.BASE_LINE is hyxOSG.Text.LEFT_BASE_LINE
    assert isinstance(hyxOSG.DIFFUSE_TEXTURE, hyxOSG.TextureMode)
    text = hyxOSG.Text()
    text.setAxisAlignment(hyxOSG.Text.XZ_PLANE)
    text.setAxisAlignment(2)


def test_nodes_are_no_values():
    one, other = osg.Group(), osg.Group()
    assert one != other and hash(one) == hash(one)
