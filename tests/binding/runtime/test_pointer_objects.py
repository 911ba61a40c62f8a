"""The Python objects that carry native pointers and packed bytes."""

import gc
import re
import sys

import _sample
import pytest
from subprocesses import run_python


def test_repr_names_the_last_spelling_and_the_object():
    handle = _sample.wrap_address(64, "sample::Renamed *")
    assert repr(handle) == str(handle) == f"<Swig Object of type 'sample::ThirdName *' at {hex(id(handle))}>"
    assert repr(_sample.wrap_address(64, "")).startswith("<Swig Object of type 'unknown' at 0x")
    assert repr(handle) == handle.__repr__()


def test_appended_views_follow_directly():
    first, second, third = (_sample.wrap_address(n, "sample::Other *") for n in (8, 16, 24))
    assert first.next() is None
    first.append(second)
    first.append(third)
    assert first.next() is third and third.next() is second
    assert repr(first) == "".join(re.sub(r">.*", ">", repr(h)) for h in (first, third, second))
    with pytest.raises(TypeError, match="^Attempt to append a non SwigPyObject$"):
        first.append("text")


def test_ownership_flag():
    handle = _sample.wrap_address(8, "sample::Other *")
    assert handle.own() is False and handle.own(True) is False and handle.own() is True
    assert handle.own(False) is True
    assert handle.acquire() is None and handle.own() is True
    assert handle.disown() is None and handle.own() is False
    with pytest.raises(TypeError, match="own expected at most 1 argument"):
        handle.own(1, 2)


def test_equality_is_that_of_the_native_pointers():
    a, b = _sample.wrap_address(8, "sample::Other *"), _sample.wrap_address(8, "sample::RootBase *")
    assert a == b and not a != b and a != _sample.wrap_address(16, "sample::Other *")
    assert (a == 8) is False and (a != "text") is True
    with pytest.raises(TypeError):
        a < b
    assert int(a) == 8


def test_packed_objects_show_their_bytes_while_they_fit():
    packed = _sample.new_packed(3, "int *")
    assert repr(packed) == "<Swig Packed at _000102_p_int>" and str(packed) == "_000102_p_int"
    assert repr(_sample.new_packed(511, "int *")).startswith("<Swig Packed at _0001")
    assert repr(_sample.new_packed(512, "int *")) == "<Swig Packed _p_int>"
    assert str(_sample.new_packed(512, "int *")) == "_p_int"
    assert _sample.new_null_packed() is None


def test_an_owned_object_without_destructor_reports_the_leak_once():
    result = run_python(
        "import _sample; x = _sample.new_Derived(); del x; y = _sample.new_Derived(); y.disown(); del y"
    )
    assert result.stdout == "swig/python detected a memory leak of type 'sample::Derived *', no destructor found.\n"


def test_a_failing_python_destroy_is_unraisable_and_pending_errors_survive(capfd):
    result = run_python("""
import _sample
class Base:
    def __swig_destroy__(handle):
        seen.append((handle.own(), int(handle)))
        raise ValueError("destroying")
seen = []
_sample.Base_swigregister(Base)
def fails():
    held = _sample.new_Base()
    addresses.append(int(held))
    raise KeyError("kept")
addresses = []
try:
    fails()
except KeyError as error:
    error.__traceback__ = None
    assert error.args == ("kept",)
assert seen == [(False, addresses[0])]
""")
    assert result.returncode == 0 and "ValueError: destroying" in result.stderr and "Exception ignored" in result.stderr


def test_types_of_the_family_are_subclassable_and_named():
    handle = _sample.wrap_address(8, "")
    assert type(handle).__module__ == "swig_runtime_data4" and type(handle).__name__ == "SwigPyObject"
    subclass = type("Sub", (type(handle),), {})
    assert issubclass(subclass, type(handle))
    assert [name for name in ("disown", "acquire", "own", "append", "next") if not hasattr(handle, name)] == []


def test_handles_do_not_leak_references():
    gc.collect()
    handle_type = type(_sample.wrap_address(8, ""))
    before = sys.getrefcount(handle_type)
    for _ in range(1000):
        _sample.wrap_address(8, "sample::Base *")
        _sample.new_packed(8, "int *")
    assert sys.getrefcount(handle_type) - before < 10
