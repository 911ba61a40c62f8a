"""Ten thousand calls of every kind leave no reference, no native object and no memory behind."""

import sys

import hyx
import hyxOSG
import hyxSDK
import pytest
from overrides import BOOL, RAISING, VIRTUAL, good_answer, native
from subprocesses import weighs_memory
from test_listener_life import resident_pages

ROUNDS = 10_000


# Without a file, whose lines the printed tracebacks would be looked up in every time.
fail = eval("lambda self, *arguments: {}['on purpose']")


def derive(base, names, method):
    return type("Derived", (base,), {name: method(name) for name in names})


def correct(name):
    return lambda self, *arguments: good_answer(name)


def calling_its_base(name):
    def method(self, *arguments):
        return getattr(super(type(self), self), name)(*arguments)

    return method


DERIVED = {
    "none": lambda base: derive(base, (), correct),
    "one": lambda base: derive(base, list(VIRTUAL[base])[-1:], correct),
    "all": lambda base: derive(base, VIRTUAL[base], correct),
    "all, which call their base": lambda base: derive(base, VIRTUAL[base], calling_its_base),
    "raising": lambda base: derive(base, VIRTUAL[base], lambda name: fail),
    "wrong results": lambda base: derive(base, VIRTUAL[base], lambda name: lambda self, *arguments: (1, 2)),
}


def expected_error(kind, name):
    if kind == "raising" and name in (*RAISING, "getLidarPointColor"):
        return KeyError
    if kind == "wrong results" and name in (*BOOL, "getLidarPointColor"):
        return TypeError
    return None


def call(alias, name, arguments, error):
    try:
        result = getattr(alias, name)(*arguments)
    except Exception as raised:
        assert type(raised) is error
    else:
        assert error is None and (type(result) is bool or name not in BOOL)


@weighs_memory
@pytest.mark.parametrize("base", VIRTUAL)
@pytest.mark.parametrize("kind", DERIVED)
def test_ten_thousand_rounds_leave_nothing_behind(base, kind, capfd):
    cls = DERIVED[kind](base)
    listener, thing = cls(), hyx.RigidBody("thing")
    alias = native(listener)
    methods = {
        name: [thing if value is None and base is hyxOSG.GuiEventListener else value for value in arguments]
        for name, arguments in VIRTUAL[base].items()
    }
    methods.pop("setContext", None)  # holds the listener
    plan = [(name, arguments, expected_error(kind, name)) for name, arguments in methods.items()]

    def rounds(count):
        """Whole turns through the methods: some undo what others do."""
        for _ in range(count // len(plan) + 1):
            for each in plan:
                call(alias, *each)

    def counts():
        natives = [each.getReferenceCount() for each in (listener, thing) if hasattr(each, "getReferenceCount")]
        return [sys.getrefcount(each) for each in (listener, alias, thing, cls)] + natives

    rounds(2_000)
    before, pages = counts(), resident_pages()
    rounds(ROUNDS)
    assert counts() == before
    assert resident_pages() - pages < 100
    hyxSDK.ScriptManager.instance().clearErrors()
