"""The legend is a Python sequence: a list of points, but for the differences that are stated here."""

import gc

import _hyxOSG
import pytest
from hyxOSG import LidarOutputRendererLegend as Legend
from hyxOSG import LidarOutputRendererLegendPoint as Point


def point(intensity):
    made = Point()
    made.intensity = intensity
    return made


def points(values):
    return [point(value) for value in values]


def legend(values):
    return Legend(points(values))


def values(sequence):
    return [element.intensity for element in sequence]


def test_reading_from_the_end_on_copies_everything_but_writing_does_not():
    sequence = legend([1, 2])
    assert values(sequence[2:]) == [1, 2]
    assert values(sequence[7:1]) == [1]
    del sequence[2:]
    assert values(sequence) == [1, 2]
    sequence[2:] = points([3])
    assert values(sequence) == [1, 2, 3]


@pytest.mark.parametrize("huge", [2**62, 2**63 - 1, 2**80])
def test_slices_take_bounds_of_any_size(huge):
    sequence = legend([1, 2, 3])
    assert values(sequence[-huge:huge]) == [1, 2, 3]
    assert values(sequence[::huge]) == [1]
    assert values(sequence[::-huge]) == [3]
    sequence[::-huge] = points([9])
    del sequence[::huge]
    assert values(sequence) == [2, 9]


def test_slice_refusals_say_why():
    sequence = legend([1, 2, 3, 4])
    with pytest.raises(ValueError, match="^slice step cannot be zero$"):
        sequence[::0]
    with pytest.raises(ValueError, match="^attempt to assign sequence of size 1 to extended slice of size 2$"):
        sequence[::2] = points([9])
    with pytest.raises(TypeError):
        sequence["a":]
    assert values(sequence) == [1, 2, 3, 4]


def test_a_slice_that_empties_the_legend_while_it_is_read_is_harmless():
    sequence = legend(range(5))

    class Emptying:
        def __index__(self):
            sequence.clear()
            return 4

    assert values(sequence[: Emptying()]) == []


def test_flat_slices_have_step_one():
    sequence = legend(range(6))
    assert values(_hyxOSG.LidarOutputRendererLegend___getslice__(sequence, 1, -2)) == []
    assert values(_hyxOSG.LidarOutputRendererLegend___getslice__(sequence, 1, 4)) == [1, 2, 3]
    _hyxOSG.LidarOutputRendererLegend___setslice__(sequence, 1, 3, points([9]))
    assert values(sequence) == [0, 9, 3, 4, 5]
    _hyxOSG.LidarOutputRendererLegend___setslice__(sequence, 0, 2)
    assert values(sequence) == [3, 4, 5]
    _hyxOSG.LidarOutputRendererLegend___delslice__(sequence, 1, 99)
    assert values(sequence) == [3]
    _hyxOSG.LidarOutputRendererLegend___setitem__(sequence, slice(None))
    assert not sequence


def test_assigning_a_legend_to_a_part_of_itself_reads_it_first():
    sequence = legend([1, 2, 3])
    sequence[1:2] = sequence
    assert values(sequence) == [1, 1, 2, 3, 3]


@pytest.mark.parametrize(
    "make", [list, tuple, iter, lambda items: (item for item in items), lambda items: dict(enumerate(items)).values()]
)
def test_any_iterable_of_points_makes_a_legend(make):
    assert values(Legend(make(points([1, 2])))) == [1, 2]


def test_constructors_fill_and_copy():
    assert values(Legend()) == []
    assert values(Legend(2)) == [0, 0]
    assert values(Legend(2, point(5))) == [5, 5]
    original = legend([1, 2])
    copy = Legend(original)
    copy.append(point(3))
    assert (values(original), values(copy)) == ([1, 2], [1, 2, 3])


@pytest.mark.parametrize("wrong", [[1, 2], [None], "ab", object(), 1.5])
def test_what_is_no_iterable_of_points_is_refused(wrong):
    with pytest.raises(TypeError, match="Possible C/C\\+\\+ prototypes are"):
        Legend(wrong)


def test_a_foreign_item_leaves_the_target_unchanged():
    sequence = legend([1, 2])
    with pytest.raises(TypeError):
        sequence[:] = [*points([3]), 4]
    with pytest.raises(TypeError):
        _hyxOSG.LidarOutputRendererLegend___setslice__(sequence, 0, 1, [4])
    assert values(sequence) == [1, 2]


def test_what_an_iterable_raises_reaches_the_caller():
    def broken():
        yield point(1)
        raise ZeroDivisionError

    with pytest.raises(ZeroDivisionError):
        Legend(broken())


def test_elements_are_views_that_keep_the_legend_alive():
    sequence = legend([1, 2])
    first = sequence[0]
    first.intensity = 7
    assert values(sequence) == [7, 2]
    for view in (first, sequence.front(), sequence.back()):
        assert getattr(view, "__swig_container") is sequence
    address = int(first.this)
    del sequence, view
    gc.collect()
    assert first.intensity == 7 and int(first.this) == address


def test_popped_points_are_copies():
    sequence = legend([1, 2])
    popped = sequence.pop()
    assert not hasattr(popped, "__swig_container") and popped.this.own()
    popped.intensity = 9
    assert values(sequence) == [1]


def test_the_ends_of_an_empty_legend_are_refused():
    empty = Legend()
    with pytest.raises(IndexError, match="^pop from empty container$"):
        empty.pop()
    for end in (empty.front, empty.back, empty.pop_back):
        with pytest.raises(IndexError):
            end()


def test_storage_grows_as_asked():
    sequence = legend([1])
    sequence.reserve(50)
    assert sequence.capacity() >= 50 and sequence.size() == 1 and not sequence.empty()
    sequence.resize(3)
    sequence.resize(4, point(8))
    assert values(sequence) == [1, 0, 0, 8]
    sequence.resize(1)
    sequence.assign(2, sequence[0])
    assert values(sequence) == [1, 1]
    sequence.clear()
    assert sequence.empty() and sequence.capacity() >= 50


def test_sizes_that_cannot_be_are_runtime_errors():
    sequence = legend([1])
    with pytest.raises(RuntimeError, match="^vector::reserve$"):
        sequence.reserve(2**62)
    with pytest.raises(RuntimeError, match="^vector::_M_default_append$"):
        sequence.resize(2**62)
    with pytest.raises(RuntimeError, match="^vector::_M_fill_insert$"):
        sequence.resize(2**62, sequence[0])
    with pytest.raises(OverflowError, match="reserve.. argument 1 'size' is out of range for .*::size_type"):
        sequence.reserve(-1)


def test_swap_exchanges_the_contents():
    one, two = legend([1]), legend([2, 3])
    one.swap(two)
    assert (values(one), values(two)) == ([2, 3], [1])


def test_the_allocator_is_an_owned_object():
    allocator = _hyxOSG.LidarOutputRendererLegend_get_allocator(legend([]))
    assert "std::allocator< hyxOSG::LidarOutputRendererLegendPoint > *" in repr(allocator)


def test_erase_and_insert_return_positions():
    sequence = legend([1, 2, 3])
    after = sequence.erase(sequence.begin() + 1)
    assert after.value().intensity == 3 and values(sequence) == [1, 3]
    at = sequence.insert(sequence.begin(), point(0))
    assert at.value().intensity == 0 and at - sequence.begin() == 0
    assert sequence.insert(sequence.end(), 2, point(9)) is None
    assert values(sequence) == [0, 1, 3, 9, 9]
    end = sequence.erase(sequence.begin() + 3, sequence.end())
    assert end == sequence.end() and values(sequence) == [0, 1, 3]


def test_positions_of_another_legend_are_refused():
    one, two = legend([1, 2]), legend([3, 4])
    kept = two.begin()
    for position in (kept, one.end()):
        with pytest.raises(IndexError):
            one.erase(position)
    with pytest.raises(IndexError):
        one.insert(kept, point(9))
    with pytest.raises(IndexError):
        one.erase(one.begin() + 1, one.begin())
    with pytest.raises(TypeError):
        one.erase(one.rbegin())
    assert (values(one), values(two)) == ([1, 2], [3, 4])


VECTOR = "std::vector< hyxOSG::LidarOutputRendererLegendPoint >"
ELEMENT = f"{VECTOR}::value_type const &"


@pytest.mark.parametrize(
    "name, arguments, message",
    [
        ("push_back", (None,), f"invalid null reference in method '{{}}', argument 2 of type '{ELEMENT}'"),
        ("append", (3,), f"in method '{{}}', argument 2 of type '{ELEMENT}'"),
        ("reserve", ("x",), f"in method '{{}}', argument 2 of type '{VECTOR}::size_type'"),
        ("swap", (None,), f"invalid null reference in method '{{}}', argument 2 of type '{VECTOR} &'"),
        ("__getslice__", (0, "x"), f"in method '{{}}', argument 3 of type '{VECTOR}::difference_type'"),
        ("assign", (1, None), f"invalid null reference in method '{{}}', argument 3 of type '{ELEMENT}'"),
        ("push_back", (), "{} expected 2 arguments, got 1"),
    ],
)
def test_refusals_name_the_argument(name, arguments, message):
    function = f"LidarOutputRendererLegend_{name}"
    with pytest.raises(TypeError) as refusal:
        getattr(_hyxOSG, function)(legend([]), *arguments)
    assert str(refusal.value) == message.format(function)


def test_self_is_named_with_its_constness():
    with pytest.raises(TypeError, match=f"argument 1 of type '{VECTOR} const \\*'"):
        _hyxOSG.LidarOutputRendererLegend_size(3)
    with pytest.raises(TypeError, match=f"argument 1 of type '{VECTOR} \\*'"):
        _hyxOSG.LidarOutputRendererLegend_clear(3)


def test_overloads_list_their_prototypes():
    with pytest.raises(TypeError) as refusal:
        _hyxOSG.LidarOutputRendererLegend___getitem__(legend([]), "a")
    assert str(refusal.value) == (
        "Wrong number or type of arguments for overloaded function 'LidarOutputRendererLegend___getitem__'.\n"
        "  Possible C/C++ prototypes are:\n"
        f"    {VECTOR}::__getitem__(SWIGPY_SLICEOBJECT *)\n"
        f"    {VECTOR}::__getitem__({VECTOR}::difference_type) const\n"
    )
    with pytest.raises(TypeError) as refusal:
        _hyxOSG.new_LidarOutputRendererLegend("a")
    assert str(refusal.value).endswith(
        f"    {VECTOR}::vector()\n"
        f"    {VECTOR}::vector({VECTOR} const &)\n"
        f"    {VECTOR}::vector({VECTOR}::size_type)\n"
        f"    {VECTOR}::vector({VECTOR}::size_type,{ELEMENT})\n"
    )
