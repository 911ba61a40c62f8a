"""Signatures and docstrings of operations."""

from __future__ import annotations

import textwrap

from .interface import Form, Interface, Operation
from .python_types import TypeHints


def note_like_forms(interface: Interface, hints: TypeHints) -> None:
    """Shows one of the forms that only C++ can tell apart: for constant objects and others."""
    for package in interface.packages.values():
        methods = [operation for proxy in package.classes for operation in proxy.methods.values()]
        for operation in [*methods, *package.functions.values()]:
            forms = {call_text("", form, hints): form for form in reversed(operation.forms)}
            operation.shown = list(forms.values())[::-1]


def text_signature(operation: Operation, bound: bool) -> str:
    """What `inspect.signature` reads: exact for one form, `*args` and `**keywords` for several."""
    names = ["$self"] if bound else []
    if len(operation.shown) != 1:
        return f"({', '.join([*(['$self', '/'] if bound else []), '*args', '**keywords'])})"
    form = operation.shown[0]
    names += [p.name if p.default is None else f"{p.name}={_simple(p.default)}" for p in form.parameters]
    return f"({', '.join(names)})"


def parameter_lists(operation: Operation) -> str:
    """The names of all forms' arguments, with their defaults, as the support module takes them: a tuple of texts."""
    lists = [
        ", ".join(p.name if p.default is None else f"{p.name}={p.default}" for p in form.parameters)
        for form in operation.forms
    ]
    return repr(tuple(lists)) if lists else "None"


def _simple(default: str) -> str:
    """A default as `inspect` can read it: literals and names."""
    return "..." if "(" in default and not default.startswith('"') else default


def call_text(name: str, form: Form, hints: TypeHints, result: str | None = None) -> str:
    """A form as Python would write it, for the head of a docstring."""
    parameters = []
    for parameter in form.parameters:
        text = f"{parameter.name}: {hints.parameter(parameter.type)}"
        parameters.append(text if parameter.default is None else f"{text} = {parameter.default}")
    result = hints.result_of(form) if result is None else result
    return f"{name}({', '.join(parameters)})" + (f" -> {result}" if result else "")


def docstring(operation: Operation, hints: TypeHints, name: str | None = None, result: str | None = None) -> str:
    """Each form and its text; a text that several forms share stands once, after the last of them."""
    paragraphs: list[str] = []
    for index, form in enumerate(operation.shown):
        paragraphs.append(call_text(name or operation.name, form, hints, result))
        following = operation.shown[index + 1] if index + 1 < len(operation.shown) else None
        if form.doc and (following is None or following.doc != form.doc):
            paragraphs[-1] += "\n" + textwrap.indent(form.doc, "    ") + "\n"
    return "\n".join(paragraphs).strip()
