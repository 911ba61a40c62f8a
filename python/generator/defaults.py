"""Default values of native parameters as Python would write them."""

from __future__ import annotations

import re

from binding.catalogue.class_lists import plain_name
from binding.catalogue.declarations import Description

from .interface import Interface, ProxyClass
from .python_types import FLOATS, INTEGERS, STRINGS

LITERALS = {"true": "True", "false": "False", "nullptr": "None", "NULL": "None"}
NUMBER = re.compile(r"([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)[fFuUlL]*")
STRING = re.compile(r'"[^"\\]*"')
CAST = re.compile(r"static_cast<.*>\((.*)\)")
CALL = re.compile(r"([\w:]+(?:<.*>)?)\s*(?:\((.*)\)|\{(.*)\})")


class Defaults:
    def __init__(self, interface: Interface, description: Description) -> None:
        self.interface = interface
        self.description = description

    def text(self, native: str, scope: str) -> str:
        """What the expression `native` means inside a class or namespace; `...` for what Python cannot say."""
        text = native.strip()
        if text in LITERALS:
            return LITERALS[text]
        if STRING.fullmatch(text):
            return text
        if number := NUMBER.fullmatch(text):
            return number.group(1)
        if cast := CAST.fullmatch(text):
            return self.text(cast.group(1), scope)
        if call := CALL.fullmatch(text):
            return self._call(call.group(1), split(call.group(2) or call.group(3) or ""), scope)
        return self._enumerator(text, scope)

    def _call(self, name: str, arguments: list[str], scope: str) -> str:
        given = [self.text(argument, scope) for argument in arguments]
        if "..." in given:
            return "..."
        if name in INTEGERS | FLOATS and len(given) < 2:
            return given[0] if given else "0"
        if name in STRINGS or f"{scope.split('::')[0]}::{name}" in STRINGS:
            return given[0] if given else '""'
        if name.startswith("std::vector<") and not given:
            return "()"
        listed = ", ".join(given)
        if proxy := self._class(name, scope):
            return f"{proxy.qualified}({listed})"
        owner, _, method = name.rpartition("::")
        proxy = self._class(owner, scope)
        return f"{proxy.qualified}.{method}({listed})" if proxy and method in proxy.methods else "..."

    def _class(self, name: str, scope: str) -> ProxyClass | None:
        """What `name` means inside `scope`."""
        found = self.interface.classes.get(plain_name(f"{scope}::{name}".removeprefix("::")))
        return found if found or not scope else self._class(name, scope.rpartition("::")[0])

    def _enumerator(self, written: str, scope: str) -> str:
        """By name where Python has it, else by value."""
        found = self.description.enumerator(written, scope)
        if not found:
            return "..."
        owner, _, name = found.name.rpartition("::")
        proxy = self.interface.classes.get(plain_name(owner))
        if proxy and name in proxy.constants:
            return f"{proxy.qualified}.{name}"
        package = self.interface.packages.get(owner)
        return f"{package.name}.{name}" if package and name in package.constants else str(found.value)


def same(default: str, declared: str) -> bool:
    """Whether two defaults are one value, as far as their texts tell; a declared one may be converted implicitly."""
    if NUMBER.fullmatch(default) and NUMBER.fullmatch(declared):
        return float(default) == float(declared)
    return default == declared or "..." in (default, declared) or default.endswith(f"({declared})")


def split(text: str) -> list[str]:
    """The parts between commas that are in no bracket and no string."""
    parts = [""]
    depth = 0
    for token in re.findall(r'"(?:\\.|[^"])*"|.', text):
        depth += (token in "([{<") - (token in ")]}>")
        if token == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += token
    return [part.strip() for part in parts if part.strip()]
