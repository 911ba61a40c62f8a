"""The text of a package's stub: types for checkers and editors."""

from __future__ import annotations

import ast
import re
import textwrap

from .documentation import Documentation
from .extras import Extras
from .interface import MODULES, PACKAGES, Form, Member, Operation, Package, ProxyClass, constant_owners
from .package_text import enumeration_lines
from .python_types import ROW, TypeHints
from .signature import docstring

# What native classes may do and Python's typing rules refuse: overrides with other parameters, overloads
# that a number could match twice, operators of one side only.
# Of _hyx_extras.hints.
HINTS = ("Array", "Pointer", "Row", "Rows", "Values", "Doubles", "Floats", "Indices", "Bytes", "Table", "Self")
HEAD = '# mypy: disable-error-code="override, misc, overload-overlap, overload-cannot-match, assignment"'


def stub_text(package: Package, order: list[ProxyClass], extras: Extras, hints: TypeHints, texts: Documentation) -> str:
    values = {name: value for name, (_, value) in package.constants.items()}
    body: list[str] = ["", *enumeration_lines(package.enumerations, values)]
    for proxy in order:
        body += ["", *_class_lines(proxy, extras, hints, texts)]
    body += [f"{alias} = {target.removeprefix(package.name + '.')}" for alias, target in package.aliases.items()]
    for operation in package.functions.values():
        body += _operation_lines(operation, hints, bound=False)
    owners = constant_owners(package)
    listed = {name for names in package.enumerations.values() for name in names}
    body += [f"{name} = {owners[name]}" if name in owners else f"{name}: int" for name in values if name not in listed]
    body.append("__version__: str")
    if package.name == "hyxOSG":
        body.append("cvar: Any")
    text = "\n".join(body).replace(f"| {ROW}", "| Row")
    head = [
        HEAD,
        "import builtins",
        "from collections.abc import Callable, Iterable, Iterator, Mapping, Sequence",
        "from enum import IntEnum",
        "from typing import Any, ClassVar, overload",
        "",
    ]
    head += [ast.unparse(_exported(statement, extras)) for statement in extras.imports if _wanted(statement)]
    used = [name for name in HINTS if re.search(rf"\b{name}\b", text)]
    head += [f"from _hyx_extras.hints import {', '.join(used)}"] if used else []
    head += ["from _hyx_proxy import Handle"]
    head += [f"import {name}" for name in PACKAGES if f"{name}." in text]
    return "\n".join(head) + "\n" + text + "\n"


def _exported(statement: ast.stmt, extras: Extras) -> ast.stmt:
    """The import, with `as` for the names that the package offers: stubs keep others to themselves."""
    names = getattr(statement, "names", [])
    for alias in names:
        if alias.name in extras.offered:
            alias.asname = alias.name
    return statement


def _wanted(statement: ast.stmt) -> bool:
    names = {alias.name.split(".")[0] for alias in getattr(statement, "names", ())}
    module = getattr(statement, "module", None)
    return not names & {*PACKAGES, *MODULES} and module not in (
        *("__future__", "typing", "collections.abc", "_hyx_extras.hints"),
    )


def _class_lines(proxy: ProxyClass, extras: Extras, hints: TypeHints, texts: Documentation) -> list[str]:
    bases = extras.class_bases.get(proxy.name, []) + ([base.qualified for base in proxy.bases] or ["Handle"])
    lines = [f"class {proxy.name}({', '.join(bases)}):"]
    if proxy.doc:
        lines.append(_text(proxy.doc, 4))
    own = extras.class_attributes.get(proxy.name, {})
    lines += ["    " + line if line else "" for line in enumeration_lines(proxy.enumerations, proxy.constants)]
    listed = {name for names in proxy.enumerations.values() for name in names}
    for name in proxy.constants:
        if name not in listed:
            lines.append(f"    {name}: int")
            text = texts.enumerator_text(proxy.native, name)
            lines += [_text(text, 4)] if text else []
    made = proxy.machinery.get("constructor")
    if made and "swiginit" in proxy.machinery and "__init__" not in own:
        forms = [Form(f.native, f.parameters, "void", f.doc) for f in made.forms]
        lines += _operation_lines(Operation(made.module, made.flat_name, "__init__", False, forms), hints, True)
    for member in proxy.members.values():
        lines += _member_lines(member, hints)
    for name, operation in proxy.methods.items():
        if name not in own and name.isidentifier():
            overridden = "disown" in proxy.machinery
            lines += _operation_lines(operation, hints, bound=not operation.static, positional=overridden)
    if proxy.item and "__iter__" not in own:
        lines.append(f"    def __iter__(self) -> Iterator[{proxy.item}]: ...")
    for statements in own.values():
        for statement in statements:
            lines += _extra_lines(statement, 4)
    hidden = {"str", "int", "float", "bool", "object", "slice", "tuple"} & {*proxy.methods, *proxy.members}
    lines = [_unhidden(line, hidden) if line.lstrip().startswith("def ") else line for line in lines]
    return lines if len(lines) > 1 else [lines[0] + " ..."]


def _unhidden(line: str, hidden: set[str]) -> str:
    """A method's head with the types spelled out that the class hides behind members of the same names."""
    for name in hidden:
        line = re.sub(rf"(?<=[:>|\[] ){name}\b|(?<=\[){name}\b", f"builtins.{name}", line)
    return line


def _member_lines(member: Member, hints: TypeHints) -> list[str]:
    kind = hints.result(member.type)
    lines = ["    @property", f"    def {member.name}(self) -> {kind}:"]
    lines += [_text(member.doc, 8) if member.doc else "        ..."]
    if member.setter:
        parameters = member.setter.forms[0].parameters if member.setter.forms else []
        given = hints.parameter(parameters[-1].type) if parameters else kind
        lines += [f"    @{member.name}.setter", f"    def {member.name}(self, value: {given}) -> None: ..."]
    return lines


def _operation_lines(operation: Operation, hints: TypeHints, bound: bool, positional: bool = False) -> list[str]:
    indent = 4 if bound or operation.static else 0
    blanks = " " * indent
    lines = []
    several = len(operation.shown) > 1
    for form in operation.shown:
        lines += [f"{blanks}@overload"] if several else []
        lines += [f"{blanks}@staticmethod"] if operation.static and indent else []
        parameters = [*(["self"] if bound else []), *_parameters(form, hints)]
        # Python's own protocols, and what scripts override with names of their own, have no keywords for checkers.
        closed = form.parameters and (positional or (operation.name.endswith("__") and operation.name != "__init__"))
        names = ", ".join([*parameters, *(["/"] if closed else [])])
        head = f"{blanks}def {operation.name}({names}) -> {hints.result_of(form)}:"
        text = form.doc if several else docstring(operation, hints) if form.doc else ""
        lines += [head, _text(form.doc, indent + 4)] if text and form.doc else [f"{head} ..."]
    return lines


def _parameters(form: Form, hints: TypeHints) -> list[str]:
    listed = []
    for parameter in form.parameters:
        text = f"{parameter.name}: {hints.parameter(parameter.type)}"
        listed.append(text if parameter.default is None else f"{text} = {parameter.default}")
    return listed


def _extra_lines(statement: ast.stmt, indent: int) -> list[str]:
    """A hand-written function or assignment with its body left out."""
    blanks = " " * indent
    if isinstance(statement, ast.FunctionDef):
        result = f" -> {ast.unparse(statement.returns)}" if statement.returns else ""
        lines = [f"{blanks}@{ast.unparse(decorator)}" for decorator in statement.decorator_list]
        text = ast.get_docstring(statement)
        head = f"{blanks}def {statement.name}({ast.unparse(statement.args)}){result}:"
        return [*lines, head, _text(text, indent + 4)] if text else [*lines, f"{head} ..."]
    if isinstance(statement, ast.Assign) and ast.unparse(statement) == "__hash__ = None":
        return [f"{blanks}__hash__: ClassVar[None]"]
    if isinstance(statement, ast.AnnAssign):
        return [f"{blanks}{ast.unparse(statement.target)}: {ast.unparse(statement.annotation)}"]
    if isinstance(statement, ast.Assign) and isinstance(statement.targets[0], ast.Name):
        value = ast.unparse(statement.value)
        return [
            f"{blanks}{statement.targets[0].id} = {value}"
            if value.isidentifier() and value != "None"
            else f"{blanks}{statement.targets[0].id}: Any"
        ]
    return []


def _text(text: str, indent: int) -> str:
    escaped = text.replace("\\", "\\\\").replace('"""', "'''")
    if escaped.endswith('"'):
        escaped += " "
    return textwrap.indent(f'"""{escaped}"""', " " * indent)
