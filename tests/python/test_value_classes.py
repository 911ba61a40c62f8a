"""Values behave like what they are: a few numbers."""

import copy
import pickle

import hyx
import hyxOSG
import hyxRender
import numpy
import osg
import pytest
from hypothesis import given
from hypothesis import strategies as st

numbers = st.floats(allow_nan=False, width=32)
KINDS = [
    (hyx.Vec2, 2),
    (hyx.Vec3, 3),
    (hyx.Vec3f, 3),
    (hyx.Vec4, 4),
    (hyx.Vec4f, 4),
    (hyx.Quat, 4),
    (hyxRender.Color, 4),
]


@pytest.mark.parametrize("kind, size", KINDS)
@given(data=st.data())
def test_numbers_go_in_and_come_out(kind, size, data):
    given_numbers = data.draw(st.tuples(*[numbers] * size))
    value = kind(*given_numbers)
    assert tuple(value) == given_numbers and len(value) == size
    assert [value[i] for i in range(size)] == list(given_numbers) and value[-1] == given_numbers[-1]
    assert value == kind(given_numbers) == kind(list(given_numbers)) == kind(numpy.array(given_numbers))
    assert numpy.array_equal(numpy.array(value), numpy.array(given_numbers))


@pytest.mark.parametrize("kind, size", KINDS)
def test_copies_are_independent(kind, size):
    value = kind(*range(1, size + 1))
    for other in (copy.copy(value), copy.deepcopy(value), pickle.loads(pickle.dumps(value))):
        assert other == value and other is not value
        other[0] = 9
        assert other != value and value[0] == 1


@pytest.mark.parametrize("kind, size", KINDS)
def test_values_are_not_hashable_and_unequal_to_anything_else(kind, size):
    value = kind(*[1] * size)
    with pytest.raises(TypeError):
        hash(value)
    assert value != "x" and value != 1 and value is not None and (value == object()) is False


@pytest.mark.parametrize("kind, size", KINDS)
def test_a_wrong_number_of_numbers_is_refused(kind, size):
    with pytest.raises((TypeError, ValueError)):
        kind([1.0] * (size + 1))
    with pytest.raises(IndexError):
        kind()[size]


def test_the_text_of_a_value_makes_it_again():
    for value in (hyx.Vec3(1, 2.5, -3e-9), hyx.Vec4f(0.1, 0.2, 0.3, 1), hyx.Quat(0, 0, 0.5, 0.5)):
        assert eval(repr(value)) == value


def test_vectors_calculate():
    a, b = hyx.Vec3(1, 2, 3), hyx.Vec3(4, 5, 6)
    assert a + b == hyx.Vec3(5, 7, 9) and b - a == hyx.Vec3(3, 3, 3)
    assert a * 2 == 2 * a == hyx.Vec3(2, 4, 6) and -a == hyx.Vec3(-1, -2, -3)
    assert a.cross(b) == hyx.Vec3(*numpy.cross(a, b)) and a.dot(b) == numpy.dot(a, b)
    with pytest.raises(TypeError):
        a + 1


def test_matrices_are_rows_for_numpy():
    matrix = hyx.AffineMatrix4x4(hyx.Quat(0.5, hyx.Vec3(0, 0, 1)), hyx.Vec3(1, 2, 3))
    array = numpy.array(matrix)
    assert array.shape == (4, 4) and tuple(array[3]) == (1, 2, 3, 1)
    assert hyx.AffineMatrix4x4(array) == matrix == pickle.loads(pickle.dumps(matrix))
    product = matrix * matrix
    assert numpy.allclose(numpy.array(product), array @ array)


def test_lists_of_points_come_from_arrays_and_go_to_them():
    points = numpy.arange(12.0).reshape(4, 3)
    vector = hyx.Vec3Vector(points)
    assert len(vector) == 4 and vector[2] == hyx.Vec3(6, 7, 8)
    assert numpy.array_equal(numpy.array(vector), points)


def test_colours_are_taken_where_a_vector_is_a_colour():
    red = hyxRender.Color(1, 0, 0)
    node = osg.Group()
    hyxOSG.setDiffuseColor(node, red)
    assert tuple(node.getStateSet().getMaterial().getDiffuse()) == (1, 0, 0, 1)
    hyxOSG.Text("a", hyx.Vec3(), red).setColor(hyxRender.Color.Blue())
    with pytest.raises(TypeError, match="not Vec4"):
        hyxOSG.setDiffuseColor(node, hyx.Vec4(1, 0, 0, 1))
