"""The types that proxy classes are made of, over the rows of the sample module."""

import functools
import gc
import inspect
import pydoc
import sys
import weakref

import _hyx_proxy
import _sample
import pytest
from _hyx_proxy import Handle, constructor, function, member, method


class Base(Handle):
    __slots__ = ()
    __init__ = constructor(_sample.new_Base, _sample.Base_swiginit, "($self, /)", "Makes a base.")
    name = method(_sample.Base_name, "($self, /)", "Its name.")
    greeting = method(_sample.Base_greeting, "($self, name, /)", "Greets somebody.")
    value = function(_sample.base_value, "(base, /)", "Its value.")


class Settings(Handle):
    __slots__ = ()
    # The sample has no initialiser of its own for this class; any class's attaches the object.
    __init__ = constructor(_sample.new_Settings, _sample.Base_swiginit)
    size = member(_sample.Settings_size_get, _sample.Settings_size_set, "Its size.")
    title = member(_sample.Settings_title_get)


@pytest.fixture(autouse=True, scope="module")
def registered():
    """Messages name the class that was registered last, by other tests too."""
    _sample.Base_swigregister(Base)


def message(call, *arguments, **keywords):
    with pytest.raises(TypeError) as caught:
        call(*arguments, **keywords)
    return str(caught.value)


def test_a_method_does_what_its_flat_function_does():
    base = Base()
    assert base.name() == _sample.Base_name(base)
    assert base.greeting("you") == f"{base.name()} greets you"
    assert Base.name(base) == base.name()
    bound = base.greeting
    assert bound("you") == base.greeting("you")


def test_a_function_in_a_class_does_not_bind():
    base = Base()
    assert Base.value(base) == base.value(base) == _sample.base_value(base)
    assert base.value is Base.value


def test_wrong_calls_speak_in_python_terms_and_show_the_native_prototypes():
    base = Base()
    for call, text in [
        (lambda: base.name(1), "Base.name() takes no arguments (1 given)"),
        (lambda: Base.name(), "Base.name() needs the object that it is called on"),
        (lambda: base.greeting(), "Base.greeting() takes 1 argument (0 given)"),
        (lambda: base.greeting(3), "Base.greeting() argument 1 must be str, not int"),
        (lambda: base.greeting(name="you"), "Base.greeting() got an unexpected keyword argument 'name'"),
        (lambda: Base.name(None), "Base.name() must be called on "),
    ]:
        told = message(call)
        assert told.startswith(text) and "\n  Possible C/C++ prototypes are:\n    sample::Base::" in told


def test_an_operation_tells_what_it_is():
    assert (Base.greeting.__name__, Base.greeting.__qualname__) == ("greeting", "Base.greeting")
    assert Base.greeting.__module__ == __name__
    assert str(inspect.signature(Base.greeting)) == "(self, name, /)"
    assert str(inspect.signature(Base().greeting)) == "(name, /)"
    assert str(inspect.signature(Base.value)) == "(base, /)"
    assert str(inspect.signature(Base)) == "()"
    assert Base.greeting.__wrapped_function__ is _sample.Base_greeting
    assert repr(Base.greeting) == f"<method {__name__}.Base.greeting>"


def test_help_lists_methods_with_their_texts():
    text = pydoc.plain(pydoc.render_doc(Base))
    assert "greeting(self, name, /)\n |      Greets somebody." in text
    assert "value(base, /)\n |      Its value." in text


def test_a_member_reads_and_writes_the_native_one():
    settings = Settings()
    settings.size = 2.5
    assert settings.size == _sample.Settings_size_get(settings) == 2.5
    with pytest.raises(TypeError, match="^Settings.size must be float, not str"):
        settings.size = "large"
    assert settings.size == 2.5
    assert Settings.size.__doc__ == "Its size."


def test_a_member_without_a_setter_is_read_only_and_none_can_be_deleted():
    settings = Settings()
    with pytest.raises(AttributeError, match="'title' .* read only"):
        settings.title = "x"
    with pytest.raises(AttributeError, match="'size' .* deleted"):
        del settings.size


def test_a_constructor_needs_an_object_of_its_class():
    assert "Base.__init__ needs an object of its class" in message(Base.__init__)
    assert "Base.__init__ needs an object of its class" in message(Base.__init__, Settings())


def test_all_ways_of_making_an_object_run_its_constructor(monkeypatch):
    class Derived(Base):
        def __init__(self, name):
            super().__init__()
            self.label = name

    made = [Base(), Base(*[]), functools.partial(Base)(), type.__call__(Base), Derived("mine"), Base.__new__(Base)]
    made[-1].__init__()
    assert {one.name() for one in made} == {"Base"} and made[4].label == "mine"
    first = made[0].this
    made[0].__init__()
    assert made[0].this is first and first.next() is not None
    assert message(Base, size=1).startswith("Base() got an unexpected keyword argument 'size'")
    references = sys.getrefcount(Base)
    for _ in range(100):
        Base()
        with pytest.raises(TypeError):
            Base(1)
    assert sys.getrefcount(Base) == references
    monkeypatch.setattr(Base, "__init__", lambda self, *numbers: setattr(Base, "given", numbers))
    Base(1, 2)
    assert Base.given == (1, 2)


def test_a_class_without_a_constructor_says_so():
    class Borrowed(Handle):
        __slots__ = ()

    assert message(Borrowed) == "Borrowed has no constructor: the library makes its objects"


def test_the_proxy_deletes_what_it_owns_and_only_that():
    class Owning(Base):
        __slots__ = ()

    alive = _sample.live_bases()
    base = Owning()
    assert _sample.live_bases() == alive + 1
    assert base.thisown is True
    _sample.delete_Base(base)
    assert base.thisown is False
    assert _sample.live_bases() == alive


def test_ownership_can_be_given_away_and_taken_back():
    base = Base()
    base.thisown = False
    assert base.thisown is False and "borrowed" in repr(base)
    base.thisown = True
    assert base.thisown is True and "owned" in repr(base)
    _sample.delete_Base(base)


def test_handles_of_one_native_object_are_equal():
    base, other = Base(), Base()
    alias = Base.__new__(Base)
    alias.this = base.this
    assert base == alias and hash(base) == hash(alias)
    assert base != other and not base == other
    assert base != 3 and base != "x"
    for each in (base, other):
        _sample.delete_Base(each)


def test_an_object_whose_base_was_not_initialised_is_refused_not_read():
    class Forgetful(Base):
        def __init__(self):
            pass

    forgetful = Forgetful()
    assert message(forgetful.name).startswith("Base.name() was called on an object that holds no native one")
    with pytest.raises(ValueError, match="holds no native object"):
        forgetful.thisown
    assert "holds nothing" in repr(forgetful)
    assert forgetful == forgetful and forgetful != Forgetful()


def test_a_class_of_a_script_may_have_attributes_weak_references_and_cycles():
    class Named(Base):
        def __init__(self):
            super().__init__()
            self.myself = self

    named = Named()
    _sample.delete_Base(named)
    watcher = weakref.ref(named)
    del named
    gc.collect()
    assert watcher() is None


def test_proxy_classes_take_no_attributes_and_can_be_combined():
    class Other(Handle):
        __slots__ = ()

    class Combined(Other, Base):
        __slots__ = ()

    combined = Combined()
    assert combined.name() == Base().name()
    with pytest.raises(AttributeError):
        combined.anything = 1
    _sample.delete_Base(combined)


def test_functions_of_foreign_modules_are_refused():
    for foreign in (len, print, lambda: 0, 3):
        with pytest.raises(TypeError):
            method(foreign)


def test_describe_lists_every_function_with_its_forms():
    rows = {row["name"]: row for row in _hyx_proxy.describe(_sample)}
    functions = [name for name, value in vars(_sample).items() if inspect.isbuiltin(value)]
    assert sorted(rows) == sorted(functions)
    forms = rows["with_defaults"]["forms"]
    assert [(p["type"], p["default"]) for p in forms[0]["parameters"]] == [
        ("int", None),
        ("std::string const &", 'std::string("b")'),
        ("sample::Base const &", "sample::Base()"),
        ("bool", "true"),
    ]
    assert rows["Settings_size_get"]["role"] == "member-get"
    assert len(rows["which"]["forms"]) == 8
