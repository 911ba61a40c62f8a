"""Which error reaches the caller when code of the user runs during a conversion, or several arguments are wrong."""

import _hyxOSG as flat
import hyxOSG
import pytest
from subprocesses import run_python


def failing(error):
    yield hyxOSG.LidarOutputRendererLegendPoint()
    raise error


class Refusing:
    def __init__(self, error):
        self.error = error

    def __iter__(self):
        raise self.error


CALLS = [
    flat.new_LidarOutputRendererLegend,  # chooses among forms
    lambda points: flat.LidarOutputRendererLegend___setslice__(hyxOSG.LidarOutputRendererLegend(), 0, 0, points),
]


@pytest.mark.parametrize("call", CALLS)
@pytest.mark.parametrize("make", [failing, Refusing])
@pytest.mark.parametrize("error", [ZeroDivisionError, KeyboardInterrupt, MemoryError])
def test_errors_of_an_iteration_reach_the_caller(call, make, error):
    with pytest.raises(error):
        call(make(error()))


@pytest.mark.parametrize("call", CALLS)
@pytest.mark.parametrize("make", [lambda: Refusing(TypeError()), lambda: failing(TypeError()), lambda: [1, 2], object])
def test_what_is_no_sequence_of_points_fits_no_form(call, make):
    with pytest.raises(TypeError, match="Wrong number or type of arguments for overloaded function"):
        call(make())


def test_a_null_self_is_refused_after_the_arguments():
    with pytest.raises(TypeError, match="^in method 'Text_setText', argument 2 of type"):
        flat.Text_setText(None, 5)
    with pytest.raises(TypeError, match="^invalid null reference in method 'Text_setText', argument 1 of type 'hyxOSG"):
        flat.Text_setText(None, "x")
    with pytest.raises(TypeError, match="^invalid null reference in method 'PickHandler_intersect', argument 2 of"):
        flat.PickHandler_intersect(None, None, None, True)


@pytest.mark.parametrize("name", ["SplineShader_setNumActiveElements", "CableDamageRenderer_getOsgNode"])
def test_sizes_are_spelled_in_one_way(name):
    with pytest.raises(TypeError, match=f"in method '{name}', argument 2 of type 'size_t'"):
        getattr(flat, name)(None, "x")


@pytest.mark.parametrize("name", ["GuiEventListener", "ExampleApplicationListener"])
@pytest.mark.parametrize("other", [object(), 5, type("Slots", (), {"__slots__": ()})()])
def test_directors_forward_only_to_what_can_be_watched(name, other):
    with pytest.raises(TypeError, match="cannot be weakly referenced"):
        getattr(flat, f"new_{name}")(other)


SUB_INTERPRETER = """
import _xxsubinterpreters as interpreters
{first}
interpreter = interpreters.create()
try:
    interpreters.run_string(interpreter, "import _hyxOSG")
except interpreters.RunFailedError as error:
    print("ImportError" in str(error) and "_hyxOSG works in the main interpreter only" in str(error))
import _hyxOSG
print(len(dir(_hyxOSG)) > 845)
"""


@pytest.mark.parametrize("first", ["", "import _hyxOSG", "import hyxOSG"])
def test_sub_interpreters_are_refused(first):
    done = run_python(SUB_INTERPRETER.format(first=first))
    assert (done.stdout, done.returncode) == ("True\nTrue\n", 0), done.stderr[-1000:]
