"""Objects that play at being pointer objects, chains and rings of them, and objects used after their end."""

import gc
import weakref

import _hyxOSG
import _sample
import pytest
from subprocesses import run_python


def pointer(address=8, name="sample::Base *"):
    return _sample.wrap_address(address, name)


def survives(code):
    """Runs code in a process of its own, which must reach its end."""
    done = run_python("import _sample\n" + code + "\nprint('survived')")
    assert "survived\n" in done.stdout and done.returncode == 0, done.stderr[-2000:]
    return done


def test_instances_of_a_derived_pointer_type_are_collected():
    class Derived(type(pointer())):
        pass

    kept = [Derived() for _ in range(1000)]
    kept[0].other = kept[0]
    ended = weakref.ref(kept[0])
    del kept
    for _ in range(3):
        gc.collect()  # does nothing while a thread that another test has left collects
    assert ended() is None
    with pytest.raises(TypeError):
        _sample.base_value(Derived())


@pytest.mark.parametrize("bases", ["object", "type(_sample.new_Base())", "datetime.datetime"])
@pytest.mark.parametrize("slots", ["()", "tuple('abcd')"])
def test_a_class_with_the_pointer_types_name_is_none(bases, slots):
    survives(f"""
import datetime
Named = type("swig_runtime_data4.SwigPyObject", ({bases},), {{"__slots__": {slots}}})
fake = Named(1, 1, 1) if issubclass(Named, datetime.datetime) else Named()
for use in (_sample.base_value, _sample.delete_Base, _sample.new_Base().append, _sample.new_Base().__eq__):
    try:
        use(fake)
    except TypeError:
        pass
""")


def test_rings_of_views_end_where_they_close():
    alone, first, second = pointer(8, ""), pointer(16, ""), pointer(24, "sample::Other *")
    alone.append(alone)
    first.append(second)
    first.append(second)
    assert repr(alone).count("Swig Object") == 1 and repr(first).count("Swig Object") <= 4
    for ring in (alone, first):
        assert _sample.convert_object(ring, "hyx::Vec3 *")[0] == -1
    assert _sample.convert_object(first, "sample::Other *")[0] == 0


def test_a_chain_of_views_longer_than_the_stack_is_released():
    survives("""
head = _sample.wrap_address(8, "")
for _ in range(300_000):
    head.append(_sample.wrap_address(8, ""))
assert len(repr(head)) > 3_000_000
try:
    _sample.base_value(head)
except TypeError:
    del head
""")


class Loop:
    @property
    def this(self):
        return self


class Endless:
    @property
    def this(self):
        return Endless()


def itself():
    class Proxy:
        pass

    proxy = Proxy()
    proxy.this = proxy
    return proxy


@pytest.mark.parametrize("make", [Loop, Endless, itself])
def test_a_this_that_never_arrives_is_no_pointer(make):
    with pytest.raises(TypeError, match="argument 1 of type 'sample::Base const &'"):
        _sample.base_value(make())


def test_a_computed_this_lives_as_long_as_the_call():
    survives("""
class Base:
    __swig_destroy__ = _sample.delete_Base
class Computed:
    @property
    def this(self):
        return _sample.new_Base()
_sample.Base_swigregister(Base)
assert [_sample.base_value(Computed()) for _ in range(1000)] == [1] * 1000
assert _sample.live_bases() < 100
""")


@pytest.mark.parametrize("interrupt", [KeyboardInterrupt, SystemExit, GeneratorExit])
@pytest.mark.parametrize(
    "function", [_sample.base_value, _sample.which, _sample.delete_Base, _hyxOSG.new_LidarOutputRendererLegend]
)
def test_an_interrupt_while_this_is_computed_arrives(function, interrupt):
    class Interrupted:
        @property
        def this(self):
            raise interrupt

    with pytest.raises(interrupt):
        function(Interrupted())


def test_a_borrowed_descriptor_leads_nowhere():
    survives("""
class Proxy:
    __slots__ = ("one", "two", "three", "this")
class Bare:
    __slots__ = ()
    this = Proxy.this
class Other:
    __slots__ = ("one",)
    this = Proxy.this
for cls in (Bare, Other, type("Derived", (Other, Bare), {}), type("Number", (int,), {"this": Proxy.this})):
    for use in (_sample.base_value, _sample.which, _sample.delete_Base):
        try:
            use(cls())
        except TypeError:
            pass
""")


@pytest.mark.parametrize(
    "cls", ["type(iter([]))", "Nameless()", "int", "type", "5", "None", "print", "Refusing", "type(_sample.new_Base())"]
)
def test_whatever_is_registered_as_a_proxy_class(cls):
    survives(f"""
class Nameless:
    def __getattribute__(self, name):
        raise AttributeError(name)
class Refusing:
    def __new__(cls):
        raise TypeError("no")
_sample.Base_swigregister({cls})
base = _sample.new_Base()
for _ in range(3):
    try:
        _sample.Base_self(base)
    except (AttributeError, TypeError):
        pass
base.disown()
""")


def test_an_empty_packed_object_has_texts():
    empty = type(_sample.new_packed(3, "int *"))()
    assert str(empty) == "_unknown" and repr(empty) == "<Swig Packed at _unknown>"


def test_acquired_objects_never_take_the_published_table_away():
    survives("""
import sys
for _ in range(20):
    _sample.wrap_address(8, "sample::Other *").acquire()
import hyxOSG
assert sys.getrefcount(sys.modules["swig_runtime_data4"].type_pointer_capsule) >= 2
assert len(_sample.chain_sizes()) > 3
""")


def test_an_interrupted_truth_test_is_no_truth():
    class Interrupted:
        def __bool__(self):
            raise KeyboardInterrupt

    handle = pointer()
    with pytest.raises(KeyboardInterrupt):
        handle.own(Interrupted())
    assert handle.own() is False


def test_a_deleted_object_is_null_to_its_pointer_object():
    base = _sample.new_Base()
    live = _sample.live_bases()
    _sample.delete_Base(base)
    _sample.delete_Base(base)
    assert _sample.live_bases() == live - 1 and int(base) == 0
    with pytest.raises(TypeError, match="invalid null reference in method 'Base_name', argument 1"):
        _sample.Base_name(base)


def test_what_lies_inside_of_another_object_cannot_be_owned():
    settings = _sample.new_Settings()
    view = _sample.Settings_origin_borrow(settings)
    handle = getattr(view, "this", view)
    for own in (handle.acquire, lambda: handle.own(True)):
        with pytest.raises(ValueError, match="cannot be owned"):
            own()
    assert handle.own(False) is False


def test_a_destroy_function_may_keep_the_dying_object():
    survives("""
kept = []
class Base:
    __swig_destroy__ = kept.append
_sample.Base_swigregister(Base)
for _ in range(100):
    _sample.new_Base()
assert len(kept) == 100 and not kept[0].own(), len(kept)
assert "sample::Base" in repr(kept)
""")


INSIDE = {
    "a member": "_hyxOSG.ExampleApplication_m_sceneLoadEvent_get(keep(_hyxOSG.new_ExampleApplication()))",
    "behind a reference": "_osg.MatrixTransform_getMatrix(keep(_osg.new_MatrixTransform()))",
    "an element": "_hyxOSG.LidarOutputRendererLegend_front(keep(_hyxOSG.new_LidarOutputRendererLegend(2)))",
    "an iterator itself": "_hyxOSG.SwigPyIterator_incr(keep(_hyxOSG.LidarOutputRendererLegend_begin("
    "keep(_hyxOSG.new_LidarOutputRendererLegend(2)))))",
}
DELETE = {
    "a member": "_hyx.delete_Event",
    "behind a reference": "_osg.delete_Matrixd",
    "an element": "_hyxOSG.delete_LidarOutputRendererLegendPoint",
    "an iterator itself": "_hyxOSG.delete_SwigPyIterator",
}


@pytest.mark.parametrize("registered", ["", "import hyx, hyxOSG, osg"])
@pytest.mark.parametrize("place", INSIDE)
def test_what_lies_inside_of_another_object_cannot_be_deleted(place, registered):
    done = survives(f"""
import _hyx, _hyxOSG, _osg
{registered}
kept = []
def keep(value):
    kept.append(value)
    return value
inside = {INSIDE[place]}
for delete in ({DELETE[place]}, {DELETE[place]}, lambda of: getattr(of, "this", of).acquire()):
    try:
        delete(inside)
    except (RuntimeError, ValueError) as error:
        print(error)
""")
    assert done.stdout.count("the object lies inside of another one") == 3
