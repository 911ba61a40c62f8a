"""What every wrapped function does: conventions, messages, ownership, exceptions, choice among forms."""

import ctypes

import _sample
import pytest
from subprocesses import run_python


def message(function, *arguments, error=TypeError):
    with pytest.raises(error) as caught:
        function(*arguments)
    return str(caught.value)


def test_fixed_counts_have_no_qualifier():
    assert message(_sample.nine, *range(8)) == "nine expected 9 arguments, got 8"
    assert message(_sample.nine, *range(10)) == "nine expected 9 arguments, got 10"
    assert _sample.nine(*range(9)) == "nine"
    assert "takes exactly one argument (2 given)" in message(_sample.Base_name, 1, 2)
    assert "takes no arguments (1 given)" in message(_sample.live_bases, 1)


def test_messages_name_self_and_arguments():
    base = _sample.new_Base()
    assert message(_sample.Base_name, 3) == "in method 'Base_name', argument 1 of type 'sample::Base const *'"
    assert message(_sample.Base_self, "x") == "in method 'Base_self', argument 1 of type 'sample::Base *'"
    assert (
        message(_sample.Base_greeting, base, 3) == "in method 'Base_greeting', argument 2 of type 'std::string const &'"
    )
    assert (
        message(_sample.delete_Base, _sample.new_Unrelated())
        == "in method 'delete_Base', argument 1 of type 'sample::Base *'"
    )
    assert message(_sample.nine, *range(8), 1.0) == "in method 'nine', argument 9 of type 'int'"


def test_null_is_refused_for_self_and_references_only():
    assert (
        message(_sample.Base_name, None)
        == "invalid null reference in method 'Base_name', argument 1 of type 'sample::Base const *'"
    )
    assert (
        message(_sample.base_value, None)
        == "invalid null reference in method 'base_value', argument 1 of type 'sample::Base const &'"
    )
    assert _sample.other_value(None) == -1
    assert _sample.delete_Base(None) is None


def test_members():
    settings = _sample.new_Settings()
    _sample.Settings_size_set(settings, 4)
    _sample.Settings_title_set(settings, "new")
    assert (_sample.Settings_size_get(settings), _sample.Settings_title_get(settings)) == (4.0, "new")
    copy, view = _sample.Settings_origin_get(settings), _sample.Settings_origin_borrow(settings)
    assert copy != view and int(view.this if hasattr(view, "this") else view) == int(
        _sample.wrap_address(int_of(view), "")
    )
    assert message(_sample.Settings_origin_set, settings, None) == (
        "invalid null reference in method 'Settings_origin_set', argument 2 of type 'sample::Base const &'"
    )
    assert "Settings_size_set', argument 2 of type 'double'" in message(_sample.Settings_size_set, settings, "x")


def int_of(view):
    return int(getattr(view, "this", view))


def test_counted_classes_are_counted_not_deleted():
    counted = _sample.new_Counted()
    assert _sample.Counted_references(counted) == 1 and _sample.live_counted() == 1
    _sample.Counted_reference(counted)
    _sample.delete_Counted(counted)
    assert _sample.live_counted() == 1 and _sample.Counted_references(counted) == 1
    _sample.Counted_unreference(counted)
    assert _sample.live_counted() == 0


def test_native_exceptions_become_python_errors():
    assert message(_sample.throw_standard, "out of paint", error=RuntimeError) == "out of paint"
    assert message(_sample.throw_other, error=RuntimeError) == "Unknown exception"
    assert message(_sample.throw_out_of_range, error=RuntimeError) == "beyond"
    assert message(_sample.throw_from_container, error=IndexError) == "beyond"


def test_texts_of_native_exceptions_may_be_no_utf8():
    bytes_ = ctypes.create_string_buffer(b"caf\xe9 \xff")
    text = _sample.wrap_address(ctypes.addressof(bytes_), "char *")
    assert message(_sample.throw_standard, text, error=RuntimeError) == "caf\udce9 \udcff"


def test_listener_style_functions_notify_and_return_nothing():
    result = run_python("""
import _sample
try:
    _sample.Caller_listen("lost the scent")
except SystemError as error:
    print("without setting" in str(error))
""")
    assert result.stdout == "True\n"
    for part in ("_wrap_Caller_listen", "42", "sample/interface", "lost the scent"):
        assert part in result.stderr


@pytest.mark.parametrize(
    "arguments, chosen",
    [
        ((True,), "bool"),
        ((1,), "int"),
        ((2**40,), "double"),
        ((1.0,), "double"),
        (("x",), "string"),
        ((_sample.new_Derived(),), "Derived"),
        ((_sample.new_Both(),), "Base"),
        ((None,), "Derived"),
        ((1, 2.0), "int, float"),
        ((1, 2), "int, float"),
        ((1, _sample.new_Both()), "unsigned, Base"),
    ],
)
def test_the_first_fitting_form_in_trial_order_is_called(arguments, chosen):
    if chosen == "Derived" and arguments == (None,):
        chosen = "string"  # None is a null char pointer, and strings come before classes
        assert "argument 1 of type 'std::string const &'" in message(_sample.which, *arguments)
        return
    assert _sample.which(*arguments) == chosen


PROTOTYPES = """Wrong number or type of arguments for overloaded function 'which'.
  Possible C/C++ prototypes are:
    sample::which(sample::Base *)
    sample::which(sample::Derived *)
    sample::which(std::string const &)
    sample::which(double)
    sample::which(int)
    sample::which(bool)
    sample::which(int,float)
    sample::which(unsigned int,sample::Base const &)
"""


@pytest.mark.parametrize("arguments", [(), (object(),), (-1, _sample.new_Base()), (1, "x"), ("\ud800",)])
def test_no_fitting_form_lists_all_prototypes(arguments):
    assert message(_sample.which, *arguments) == PROTOTYPES


def test_too_many_arguments_to_a_dispatcher():
    assert message(_sample.which, 1, 2, 3) == "which expected at most 2 arguments, got 3"


def test_a_chosen_form_reports_its_own_null_reference():
    assert (
        message(_sample.which, 1, None)
        == "invalid null reference in method 'which', argument 2 of type 'sample::Base const &'"
    )


def test_defaults_make_shorter_forms():
    assert _sample.with_defaults(5) == "5b1yes"
    assert _sample.with_defaults(5, "c", _sample.new_Base(), False) == "5c1no"
    assert message(_sample.with_defaults, "x") == (
        "Wrong number or type of arguments for overloaded function 'with_defaults'.\n  Possible C/C++ prototypes are:\n"
        "    sample::with_defaults(int,std::string const &,sample::Base const &,bool)\n"
        "    sample::with_defaults(int,std::string const &,sample::Base const &)\n"
        "    sample::with_defaults(int,std::string const &)\n"
        "    sample::with_defaults(int)\n"
    )


def test_binary_operators_leave_foreign_operands_to_python():
    assert _sample.add("x", "y") is NotImplemented
    assert _sample.add(1, 2.0) == "int, float"
