"""Conversion of Python objects to native pointers and back."""

import _sample
import pytest

GENERAL, REFERENCE, DISOWNING = 0, 1, 2


class WithDict:
    def __init__(self, this):
        self.this = this


class WithSlots:
    __slots__ = ("this",)

    def __init__(self, this):
        self.this = this


class WithProperty:
    def __init__(self, this):
        self._hidden = this

    @property
    def this(self):
        return self._hidden


class WithGetattr:
    def __init__(self, this):
        object.__setattr__(self, "hidden", this)

    def __getattr__(self, name):
        if name == "this":
            return self.hidden
        raise AttributeError(name)


class SlotsSubclass(WithSlots):
    pass


HOLDERS = [WithDict, WithSlots, WithProperty, WithGetattr, SlotsSubclass]


@pytest.mark.parametrize("outer", HOLDERS)
@pytest.mark.parametrize("inner", HOLDERS)
def test_this_is_found_however_an_object_keeps_it(outer, inner):
    handle = _sample.new_Base()
    for _ in range(3):
        assert _sample.convert_object(outer(inner(handle)), "sample::Base *")[:2] == (0, int(handle))


def test_a_class_that_changes_is_looked_at_again():
    class Changing:
        pass

    first, second = _sample.new_Base(), _sample.new_Derived()
    holder = Changing()
    assert _sample.convert_object(holder, "")[0] == -1
    holder.this = first
    assert _sample.convert_object(holder, "")[1] == int(first)
    Changing.this = property(lambda self: second)
    assert _sample.convert_object(holder, "")[1] == int(second)
    del Changing.this
    assert _sample.convert_object(holder, "")[1] == int(first)


@pytest.mark.parametrize("foreign", [3, "text", object(), WithDict, type("Empty", (), {"__slots__": ("this",)})()])
def test_objects_without_a_pointer_do_not_convert_and_raise_nothing(foreign):
    assert _sample.convert_object(foreign, "sample::Base *")[0] == -1


def test_none_is_null_but_no_reference():
    assert _sample.convert_object(None, "sample::Base *", GENERAL) == (0, 0, -99)
    assert _sample.convert_object(None, "sample::Base *", REFERENCE) == (-13, 0, -99)
    assert _sample.convert_object(None, "sample::Base *", DISOWNING)[0] == 0


def test_ownership_is_reported_and_moves():
    handle = _sample.new_Base()
    assert _sample.convert_object(handle, "sample::Base *")[2] == 1
    assert _sample.convert_object(handle, "sample::Base *", DISOWNING)[0] == 0
    assert handle.own() is False and _sample.convert_object(handle, "sample::Base *")[2] == 0
    _sample.delete_Base(handle)


def test_the_first_fitting_view_of_a_chain_counts():
    base, other = _sample.new_Unrelated(), _sample.new_Both()
    base.append(other)
    assert _sample.convert_object(base, "sample::Other *")[1] == _sample.convert_object(other, "sample::Other *")[1]
    assert _sample.convert_object(base, "")[1] == int(base)
    base.disown(), other.disown()


class Base:
    __swig_destroy__ = _sample.delete_Base
    __slots__ = ("this", "ran")

    def __init__(self):
        self.ran = True


@pytest.fixture
def registered():
    _sample.Base_swigregister(Base)


def test_results_are_proxies_made_without_init(registered):
    handle = _sample.new_Base()
    assert type(handle).__name__ == "SwigPyObject"  # constructor results are bare
    borrowed = _sample.Base_self(handle)
    assert type(borrowed) is Base and not hasattr(borrowed, "ran") and borrowed.this.own() is False
    copy = _sample.Base_copy(borrowed)
    assert type(copy) is Base and copy.this.own() is True and copy.this != handle
    assert _sample.Base_copy.__name__ == "Base_copy"


def test_swiginit_attaches_and_appends(registered):
    instance = Base()
    first, second = _sample.new_Base(), _sample.new_Both()
    assert _sample.Base_swiginit(instance, first) is None and instance.this is first
    _sample.Base_swiginit(instance, second)
    assert instance.this is first and first.next() is second
    with pytest.raises(TypeError, match="Attempt to append a non SwigPyObject"):
        _sample.Base_swiginit(instance, 3)
    with pytest.raises(TypeError, match="^swiginit expected 2 arguments, got 1$"):
        _sample.Base_swiginit(instance)
    with pytest.raises(TypeError, match="^swigregister expected 1 arguments, got 2$"):
        _sample.Base_swigregister((Base, Base))
    assert _sample.Base_swigregister((Base,)) is None


def test_native_objects_die_exactly_once(registered):
    start = _sample.live_bases()
    for _ in range(100):
        owner = _sample.new_Base()
        _sample.Base_copy(owner)
        _sample.Base_self(owner)
        del owner
    assert _sample.live_bases() == start
    handle = _sample.new_Base()
    _sample.delete_Base(handle)
    assert handle.own() is False and _sample.live_bases() == start
    del handle
    assert _sample.live_bases() == start


def test_pointers_published_in_doc_strings():
    with_pointer, without, null, broken = _sample.published_functions()
    address = _sample.published_address()
    assert with_pointer.__doc__ == "Does this. swig_ptr: _" + address.to_bytes(8, "little").hex() + "_p_int"
    assert _sample.convert_function(with_pointer, "int *") == (0, address)
    assert _sample.convert_function(with_pointer, "sample::Base *")[0] == -1
    assert _sample.convert_function(without, "int *")[0] == -1
    assert _sample.convert_function(null, "int *") == (0, 0)
    assert _sample.convert_function(broken, "int *")[0] == -1
    assert _sample.convert_function(_sample.wrap_address(64, "int *"), "int *") == (0, 64)


def test_pointer_and_packed_constants_are_installed():
    constants = _sample.installed_constants()
    assert int(constants["VALUE"]) == _sample.published_address() and constants["VALUE"].own() is False
    assert str(constants["BYTES"]) == "_29000000_p_int" and constants["NOTHING"] is None


def test_function_pointers_travel_wrapped():
    doubling = _sample.doubling()
    assert _sample.call_function(doubling, 21) == 42
    with pytest.raises(TypeError, match="argument 1 of type 'int \\(\\*\\)\\(int\\)'"):
        _sample.call_function(len, 21)
