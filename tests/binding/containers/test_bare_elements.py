"""Elements of a legend where no proxy classes are registered: views that keep their legend, and nothing more."""

import pytest
from subprocesses import run_python

LEGEND = """
import gc, sys
import _hyxOSG as flat
legend = flat.new_LidarOutputRendererLegend(3)
reads = [flat.LidarOutputRendererLegend_front, flat.LidarOutputRendererLegend_back,
         lambda of: flat.LidarOutputRendererLegend___getitem__(of, 1)]
"""


def printed(code):
    done = run_python(LEGEND + code)
    assert done.returncode == 0, done.stderr[-2000:]
    return done.stdout


def test_an_element_is_itself_alone():
    assert not printed("""
for read in reads:
    element = read(legend)
    assert repr(element).count("Swig Object") == 1 and element.next() is None
    try:
        flat.LidarOutputRendererLegend_clear(element)
    except TypeError:
        pass
    assert flat.LidarOutputRendererLegend_size(legend) == 3
legend.disown()
""")


def test_reading_leaves_no_reference_and_an_element_keeps_its_legend():
    assert not printed("""
before = sys.getrefcount(legend)
for read in reads:
    for _ in range(100):
        read(legend)
assert sys.getrefcount(legend) == before
kept = [read(legend) for read in reads]
assert sys.getrefcount(legend) == before + 3
flat.LidarOutputRendererLegendPoint_intensity_set(kept[0], 4.0)
del legend
spare = [flat.new_LidarOutputRendererLegend(3) for _ in range(100)]
assert flat.LidarOutputRendererLegendPoint_intensity_get(kept[0]) == 4.0
for each in [*spare, kept[0].__swig_container]: each.disown()
""")


def test_moving_an_iterator_makes_no_chain():
    assert not printed("""
position = flat.LidarOutputRendererLegend_begin(legend)
before = sys.getrefcount(position)
for _ in range(100):
    moved = flat.SwigPyIterator_incr(position)
    assert moved.next() is None
    flat.SwigPyIterator_decr(moved)
del moved
assert sys.getrefcount(position) == before
for each in (position, legend): each.disown()
""")


@pytest.mark.parametrize("operation", ["distance", "equal", "__eq__", "__ne__", "__sub__"])
def test_iterators_of_two_kinds_raise_with_the_text(operation):
    assert not printed(f"""
forward, backward = flat.LidarOutputRendererLegend_begin(legend), flat.LidarOutputRendererLegend_rbegin(legend)
try:
    flat.SwigPyIterator_{operation}(forward, backward)
except RuntimeError as error:
    assert str(error) == "bad iterator type" and "std::invalid_argument" in repr(error.this), error
else:
    raise AssertionError
for each in (forward, backward, legend): each.disown()
""")


def test_an_allocator_ends_in_silence():
    assert not printed("flat.LidarOutputRendererLegend_get_allocator(legend)\nlegend.disown()")
