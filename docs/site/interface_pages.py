"""Writes a page for each package from its stub: every class, method, member and function with its types and text."""

from __future__ import annotations

import ast
import re
import textwrap
from collections.abc import Iterator
from pathlib import Path

SPECIAL = re.compile(r"([*|_])(?=\W|$)|(?<!\w)([*|])")


def write_pages(packages: Path, folder: Path) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    for stub in [*sorted(packages.glob("*/__init__.pyi")), packages / "hyxsweep" / "__init__.py"]:
        name = stub.parent.name
        module = ast.parse(stub.read_text())
        summary = ast.get_docstring(ast.parse((stub.parent / "__init__.py").read_text())) or ""
        lines = [name, "=" * len(name), "", f".. py:module:: {name}", "", _text(summary), ""]
        shown: set[str] = set()
        for statement in [*module.body, *_written_by_hand(module, stub.parent)]:
            lines += _directive(statement, "", shown)
        (folder / f"{name}.rst").write_text("\n".join(lines) + "\n")


def _written_by_hand(module: ast.Module, package: Path) -> Iterator[ast.stmt]:
    """What a package offers of its parts, or of others as `import x as x` says, where it is defined."""
    for statement in module.body:
        if not isinstance(statement, ast.ImportFrom) or not statement.module:
            continue
        own = statement.level == 1
        names = {alias.name for alias in statement.names if own or alias.name == alias.asname}
        if names:
            folder = package if own else package.parent
            source = folder / Path(*statement.module.split(".")).with_suffix(".py")
            if not source.exists():  # an extension module
                source = source.with_suffix(".pyi")
            yield from (found for found in ast.parse(source.read_text()).body if getattr(found, "name", "") in names)


def _is_public(statement: ast.stmt) -> bool:
    name = getattr(statement, "name", "")
    return not name.startswith("_") or name.startswith("__")


def _directive(statement: ast.stmt, indent: str, shown: set[str]) -> list[str]:
    if not _is_public(statement):
        return []
    if isinstance(statement, ast.ClassDef):
        return _class(statement, indent)
    if isinstance(statement, ast.FunctionDef):
        return _function(statement, indent, shown)
    if isinstance(statement, ast.AnnAssign):
        kind = "attribute" if indent else "data"
        target, annotation = ast.unparse(statement.target), ast.unparse(statement.annotation)
        return (
            [] if target in shown else ["", f"{indent}.. py:{kind}:: {target}", f"{indent}   :type: {annotation}", ""]
        )
    return []


def _class(statement: ast.ClassDef, indent: str) -> list[str]:
    bases = [ast.unparse(base) for base in statement.bases]
    lines = ["", f"{indent}.. py:class:: {statement.name}", ""]
    inner = indent + "   "
    derived = [base for base in bases if "." in base]
    if derived:
        lines += [f"{inner}Derives from {', '.join(f':py:class:`{base}`' for base in derived)}.", ""]
    lines += [textwrap.indent(_text(ast.get_docstring(statement) or ""), inner), ""]
    shown: set[str] = set()
    for member in statement.body:
        lines += _directive(member, inner, shown)
    return lines


def _function(statement: ast.FunctionDef, indent: str, shown: set[str]) -> list[str]:
    marks = {ast.unparse(mark) for mark in statement.decorator_list}
    if any(mark.endswith(".setter") for mark in marks):
        return []
    # A further form of an overloaded function has no target of its own.
    index = [f"{indent}   :no-index:"] if statement.name in shown else []
    shown.add(statement.name)
    text = textwrap.indent(_text(ast.get_docstring(statement) or ""), indent + "   ")
    if "property" in marks:
        kind = ast.unparse(statement.returns) if statement.returns else "Any"
        return ["", f"{indent}.. py:property:: {statement.name}", f"{indent}   :type: {kind}", *index, "", text, ""]
    result = f" -> {ast.unparse(statement.returns)}" if statement.returns else ""
    arguments = statement.args
    for listed in (arguments.posonlyargs, arguments.args):
        if indent and listed and listed[0].arg == "self":
            del listed[0]
    static = [f"{indent}   :staticmethod:"] if "staticmethod" in marks else []
    head = f"{statement.name}({ast.unparse(arguments).lstrip('/, ')}){result}"
    kind = "method" if indent else "function"
    return ["", f"{indent}.. py:{kind}:: {head}", *static, *index, "", text, ""]


def _text(text: str) -> str:
    """A docstring as reStructuredText: its lines as they are, what marks up there escaped."""
    # Lines are kept: lists of arguments and results are one a line. A literal ends with its line.
    text = re.sub(r"`[^`]*`", lambda found: re.sub(r" *\n *", "`\n`", found[0]), text)
    return "\n".join(f"| {_line(line.strip())}" if line.strip() else "" for line in text.splitlines())


def _line(line: str) -> str:
    parts = re.split(r"(`[^`]*`)", line)
    plain = [part if part.startswith("`") else part.replace("\\", "\\\\") for part in parts]
    return "".join(part if part.startswith("`") else SPECIAL.sub(r"\\\1\2", part) for part in plain)
