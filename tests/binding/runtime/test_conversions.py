"""Conversion of plain values, to the stated limits."""

import math

import _sample
import pytest

INT, UINT, LONG, ULONG, FLOAT = 2**31, 2**32, 2**63, 2**64, 3.4028234663852886e38


@pytest.mark.parametrize(
    "function, accepted",
    [
        (_sample.take_int, [-INT, INT - 1, True]),
        (_sample.take_unsigned, [0, UINT - 1, False]),
        (_sample.take_long, [-LONG, LONG - 1]),
        (_sample.take_unsigned_long, [0, LONG, ULONG - 1]),
        (_sample.take_double, [1, -0.5, math.inf, 2**1000]),
        (_sample.take_float, [0.5, FLOAT, -FLOAT, math.inf, -math.inf, 3]),
        (_sample.take_bool, [True, False]),
        (_sample.take_string, ["", "a\0b", "å€"]),
        (_sample.take_hyx_string, ["", "a\0b", "å€"]),
        (_sample.take_text, ["text"]),
    ],
)
def test_values_pass_unchanged(function, accepted):
    for value in accepted:
        assert function(value) == value and type(function(value)) in (type(value), int, float)
    assert math.isnan(_sample.take_float(math.nan))


@pytest.mark.parametrize(
    "function, native, error, refused",
    [
        (_sample.take_int, "int", OverflowError, [INT, -INT - 1, 2**70]),
        (_sample.take_unsigned, "unsigned int", OverflowError, [-1, UINT, 2**70]),
        (_sample.take_long, "long", OverflowError, [LONG, -LONG - 1]),
        (_sample.take_unsigned_long, "unsigned long", OverflowError, [-1, ULONG]),
        (_sample.take_float, "float", OverflowError, [1e39, -3.5e38]),
        (_sample.take_int, "int", TypeError, [1.0, "1", None]),
        (_sample.take_unsigned, "unsigned int", TypeError, [1.0]),
        (_sample.take_double, "double", TypeError, ["1", None, 10**400]),
        (_sample.take_float, "float", TypeError, [10**400, "1"]),
        (_sample.take_bool, "bool", TypeError, [0, 1, None, "yes"]),
        (_sample.take_string, "std::string", TypeError, [3, b"bytes", "\ud800"]),
        (_sample.take_hyx_string, "hyx::String const &", TypeError, [3, b"bytes", "\ud800"]),
        (_sample.take_text, "char const *", TypeError, [3, "\ud800"]),
    ],
)
def test_everything_else_is_refused_with_the_arguments_message(function, native, error, refused):
    for value in refused:
        with pytest.raises(error) as caught:
            function(value)
        assert str(caught.value) == f"in method '{function.__name__}', argument 1 of type '{native}'"


def test_texts_and_zero_bytes():
    assert _sample.take_text("cut\0here") == "cut"
    assert _sample.string_size("a\0b") == 3
    assert _sample.take_text(None) == "null"
    assert _sample.give_text(True) is None
    assert _sample.give_text(False) == "text \udcff"


def test_none_for_a_string_reference_is_a_null_reference():
    for function, native in (
        (_sample.string_size, "std::string const &"),
        (_sample.take_hyx_string, "hyx::String const &"),
    ):
        with pytest.raises(TypeError) as caught:
            function(None)
        assert (
            str(caught.value)
            == f"invalid null reference in method '{function.__name__}', argument 1 of type '{native}'"
        )


@pytest.mark.parametrize(
    "code, error",
    [
        (-1, RuntimeError),
        (-2, IOError),
        (-3, RuntimeError),
        (-4, IndexError),
        (-5, TypeError),
        (-6, ZeroDivisionError),
        (-7, OverflowError),
        (-8, SyntaxError),
        (-9, ValueError),
        (-10, SystemError),
        (-11, AttributeError),
        (-12, MemoryError),
        (-13, TypeError),
        (-14, RuntimeError),
        (0, RuntimeError),
        (7, RuntimeError),
    ],
)
def test_status_codes_have_their_exceptions(code, error):
    assert _sample.error_type(code) is error


def test_unpacking_counts():
    assert _sample.unpack((1, 2), 0, 3) == 3
    assert _sample.unpack(5, 1, 1) == 2
    assert _sample.unpack(None, 0, 0) == 1
    for arguments, error, text in [
        (((1,), 2, 2), TypeError, "name expected 2 arguments, got 1"),
        (((1,), 2, 3), TypeError, "name expected at least 2 arguments, got 1"),
        (((1, 2, 3, 4), 2, 3), TypeError, "name expected at most 3 arguments, got 4"),
        ((None, 1, 2), TypeError, "name expected at least 1 arguments, got none"),
        ((5, 2, 3), SystemError, "UnpackTuple() argument list is not a tuple"),
    ]:
        with pytest.raises(error) as caught:
            _sample.unpack(*arguments)
        assert str(caught.value) == text


def test_an_overload_failure_extends_only_type_errors():
    for pending, expected in [
        (None, "no form"),
        (OverflowError, "no form"),
        (TypeError, "first\nAdditional information:\nno form"),
    ]:
        with pytest.raises(TypeError) as caught:
            _sample.overload_failure(pending, "first")
        assert str(caught.value) == expected
