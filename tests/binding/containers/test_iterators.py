"""Iterators over native sequences: bounds, arithmetic, comparison, and what they keep alive."""

import gc
import random
import weakref

import _hyxOSG
import pytest
from hyxOSG import LidarOutputRendererLegend as Legend


def legend(values):
    sequence = Legend(len(values))
    for index, value in enumerate(values):
        sequence[index].intensity = value
    return sequence


def closed(sequence):
    return sequence.iterator()


def test_for_loops_see_every_element():
    assert [element.intensity for element in legend(range(4))] == [0, 1, 2, 3]


def test_an_empty_sequence_ends_at_once():
    with pytest.raises(StopIteration) as end:
        closed(Legend()).next()
    assert end.value.value is None


def test_random_walks_agree_with_a_position():
    chance = random.Random(3)
    length = 6
    sequence = legend(range(length))
    iterator = closed(sequence)
    at = 0
    for _ in range(400):
        step = chance.choice([0, 1, 1, 2, 3, -1, -1, -2, -3])
        target = at + step
        move = chance.choice(["advance", "count", "add"])
        inside = 0 <= target <= length
        if move == "add":
            if inside:
                assert (iterator + step) - iterator == step
                assert (iterator - -step) - iterator == step
            else:
                with pytest.raises(StopIteration):
                    iterator + step
            continue
        change = iterator.advance if move == "advance" else iterator.incr if step >= 0 else iterator.decr
        amount = step if move == "advance" else abs(step)
        if inside:
            change(amount)
            at = target
        else:
            with pytest.raises(StopIteration):
                change(amount)
            at = max(0, min(length, target))  # it stops at the end that it ran into
        assert iterator - closed(sequence) == at
        if at < length:
            assert iterator.value().intensity == at
        else:
            with pytest.raises(StopIteration):
                iterator.value()


def test_next_and_previous_walk_in_step():
    iterator = closed(legend([1, 2]))
    assert iterator.next().intensity == 1
    assert iterator.__next__().intensity == 2
    with pytest.raises(StopIteration):
        iterator.next()
    assert iterator.previous().intensity == 2
    assert iterator.previous().intensity == 1
    with pytest.raises(StopIteration):
        iterator.previous()
    assert iterator.value().intensity == 1


def test_values_are_copies():
    sequence = legend([1])
    value = closed(sequence).value()
    value.intensity = 9
    assert sequence[0].intensity == 1 and value.this.own()


def test_adding_leaves_the_operand_and_adding_in_place_moves_it():
    iterator = closed(legend(range(5)))
    moved = iterator + 2
    assert (moved.value().intensity, iterator.value().intensity) == (2, 0)
    assert moved.this.own()
    iterator += 3
    assert iterator.value().intensity == 3
    iterator -= 1
    assert iterator.value().intensity == 2
    assert (iterator - 2).value().intensity == 0


def test_an_iterator_moved_in_place_outlives_the_proxy_that_owns_it():
    iterator = closed(legend(range(5)))
    for _ in range(4):
        iterator += 1
        gc.collect()
    assert iterator.value().intensity == 4
    assert iterator.__swig_container.this.own()  # the owner, not the proxy before
    bare = _hyxOSG.SwigPyIterator_incr(_hyxOSG.SwigPyIterator_copy(iterator).this)
    gc.collect()
    with pytest.raises(StopIteration):
        _hyxOSG.SwigPyIterator_value(bare)


def test_moving_returns_the_same_native_iterator_unowned():
    iterator = closed(legend(range(5)))
    for moved in (iterator.incr(), iterator.incr(2), iterator.decr(), iterator.advance(-1)):
        assert int(moved.this) == int(iterator.this) and not moved.this.own()
    assert iterator.value().intensity == 1


def test_differences_count_from_the_right_operand():
    first = closed(legend(range(5)))
    third = first + 3
    assert third - first == 3 and first - third == -3
    assert first.distance(third) == 3 and third.distance(first) == -3


def test_equality_is_that_of_positions():
    sequence = legend(range(3))
    first, other = closed(sequence), closed(sequence)
    assert first == other and first.equal(other) and not first != other
    other.incr()
    assert first != other and not first.equal(other)
    assert sequence.begin() + 3 == sequence.end()


def test_the_other_direction_counts_backwards():
    sequence = legend(range(4))
    assert [(sequence.rbegin() + i).value().intensity for i in range(4)] == [3, 2, 1, 0]
    assert sequence.rend() - sequence.rbegin() == 4


def test_iterators_are_not_equal_to_other_things():
    iterator = closed(legend([1]))
    assert (iterator == "text") is False and (iterator != None) is True  # noqa: E711
    assert _hyxOSG.SwigPyIterator___eq__(iterator, "text") is NotImplemented
    assert _hyxOSG.SwigPyIterator___ne__(iterator, None) is NotImplemented
    assert _hyxOSG.SwigPyIterator___add__(iterator, "text") is NotImplemented
    assert _hyxOSG.SwigPyIterator___sub__(iterator, "text") is NotImplemented
    with pytest.raises(TypeError):
        iterator + "text"
    with pytest.raises(OverflowError):
        iterator + 2**70


@pytest.mark.parametrize("compare", ["distance", "equal", "__eq__", "__ne__", "__sub__"])
def test_iterators_of_another_kind_are_refused_with_the_native_exception(compare):
    sequence = legend([1])
    with pytest.raises(RuntimeError) as refusal:
        getattr(sequence.begin(), compare)(sequence.rbegin())
    assert str(refusal.value) == "bad iterator type" and "std::invalid_argument *" in repr(refusal.value.this)


def test_counts_of_any_size_end_at_the_bounds():
    iterator = closed(legend(range(3)))
    with pytest.raises(StopIteration):
        iterator.advance(2**62)
    with pytest.raises(StopIteration):
        iterator.advance(-(2**63))
    assert iterator.value().intensity == 0


@pytest.mark.parametrize("make", ["iterator", "begin", "rbegin"])
def test_iterators_keep_their_sequence_alive(make):
    sequence = legend([5])
    alive = weakref.ref(sequence)
    iterator = getattr(sequence, make)()
    copy = iterator.copy()
    del sequence, iterator
    gc.collect()
    assert alive() is not None and copy.value().intensity == 5
    del copy
    gc.collect()
    assert alive() is None


def test_refusals_name_the_argument():
    iterator = closed(legend([1]))
    with pytest.raises(TypeError, match="^SwigPyIterator.advance.. argument 1 'steps' must be int, not str"):
        iterator.advance("x")
    with pytest.raises(
        TypeError,
        match="^SwigPyIterator.equal.. argument 1 '.*' must be hyxOSG.SwigPyIterator, not None",
    ):
        iterator.equal(None)
    for name in ("incr", "decr"):
        with pytest.raises(TypeError) as refusal:
            getattr(_hyxOSG, f"SwigPyIterator_{name}")(iterator, "x")
        assert str(refusal.value) == (
            f"Wrong number or type of arguments for overloaded function 'SwigPyIterator_{name}'.\n"
            "  Possible C/C++ prototypes are:\n"
            f"    swig::SwigPyIterator::{name}(size_t)\n"
            f"    swig::SwigPyIterator::{name}()\n"
        )


@pytest.mark.parametrize("make", ["begin", "end", "rbegin", "rend", "iterator"])
def test_open_iterators_have_no_value_outside(make):
    iterator = getattr(Legend(), make)()
    with pytest.raises(StopIteration):
        iterator.value()
    sequence = legend([1, 2])
    with pytest.raises(StopIteration):
        (getattr(sequence, make)() + 10**12).value() if make != "iterator" else iterator.next()
    assert len(list(getattr(sequence, make)())) in (0, 2)


def test_iterators_follow_their_sequence_as_it_grows_and_shrinks():
    sequence = legend([1, 2])
    first, end, closed_one = sequence.begin(), sequence.end(), sequence.iterator()
    for value in range(1000):
        sequence.append(sequence[0])
    assert first.value().intensity == 1 and end.value().intensity == 1 and end - first == 2
    assert len(list(closed_one)) == 1002
    sequence.insert(first + 1, sequence[1])
    assert (first + 2).value().intensity == 2
    sequence.clear()
    with pytest.raises(StopIteration):
        first.value()
    with pytest.raises(IndexError):
        sequence.erase(end)


def test_views_follow_their_elements_and_say_when_those_are_gone():
    sequence = legend([1, 2, 3])
    view, last, color = sequence[0], sequence.back(), sequence[1].color
    for _ in range(1000):
        sequence.append(view)
    view.intensity, color[0] = 7, 0.5
    assert sequence[0].intensity == 7 and sequence[1].color[0] == 0.5 and last.intensity == 3
    other = legend([9])
    sequence.swap(other)
    assert view.intensity == 7 and other[0].intensity == 7
    other.resize(2)
    assert view.intensity == 7 and color[0] == 0.5
    with pytest.raises(
        TypeError, match="LidarOutputRendererLegendPoint.intensity belongs to an object that holds no native one"
    ):
        last.intensity  # noqa: B018
    other.clear()
    for gone in (lambda: view.intensity, lambda: color[0]):
        with pytest.raises(TypeError, match="an object that holds no native one"):
            gone()


@pytest.mark.parametrize("make", ["begin", "end", "rbegin", "rend", "iterator"])
def test_a_deleted_sequence_is_empty_to_its_iterators(make):
    sequence, other = legend([1, 2, 3]), legend([4])
    iterator, same = getattr(sequence, make)(), getattr(sequence, make)()
    _hyxOSG.delete_LidarOutputRendererLegend(sequence)
    kept = [legend(range(3)) for _ in range(20)]  # takes the memory that was freed
    for place in (iterator, same, iterator.copy(), iterator + 0):
        for move in (place.value, place.next, place.previous, place.__next__):
            with pytest.raises(StopIteration):
                move()
        assert list(place) == []
        for use in (lambda: other.erase(place), lambda: other.insert(place, other[0])):  # noqa: B023
            with pytest.raises((IndexError, TypeError)):
                use()
    assert (iterator - same, len(other), len(kept)) == (0, 1, 20)


@pytest.mark.parametrize("make", ["begin", "iterator"])
def test_iterators_keep_the_sequence_that_its_object_gives_up(make):
    sequence = legend(range(2000))
    iterator = getattr(sequence, make)()
    del sequence.this
    kept = [legend(range(2000)) for _ in range(5)]
    assert [iterator.next().intensity for _ in range(2000)] == list(range(2000)) and kept
