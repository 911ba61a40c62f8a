"""What is written by hand for a package: python/extras/<package>.py.

A class there is named like a proxy class, and lends it its attributes and its bases. What stands in `__all__` is
offered by the package as it is. The files become the package `_hyx_extras`; names are taken over one by one in the
generated text, so that a reader sees where each comes from.
"""

from __future__ import annotations

import ast
from collections.abc import Iterable
from dataclasses import dataclass, field
from pathlib import Path

from .interface import Package


@dataclass
class Extras:
    present: bool = False
    class_bases: dict[str, list[str]] = field(default_factory=dict)
    class_attributes: dict[str, dict[str, list[ast.stmt]]] = field(default_factory=dict)
    imports: list[ast.stmt] = field(default_factory=list)
    offered: list[str] = field(default_factory=list)


def read_extras(folder: Path, package: Package) -> Extras:
    path = folder / f"{package.name}.py"
    if not path.exists():
        return Extras()
    extras = Extras(present=True)
    proxies = {proxy.name for proxy in package.classes}
    for statement in _statements(ast.parse(path.read_text()).body):
        if isinstance(statement, ast.ClassDef) and statement.name in proxies:
            attributes = extras.class_attributes[statement.name] = {}
            for name, item in _attributes(statement):
                attributes.setdefault(name, []).append(item)  # a property and its setter
            extras.class_bases[statement.name] = [ast.unparse(base) for base in statement.bases]
        elif isinstance(statement, (ast.ClassDef, ast.FunctionDef)) and not statement.name.startswith("_"):
            raise SystemExit(f"{path}:{statement.lineno}: {package.name} has no proxy class {statement.name}")
        elif isinstance(statement, ast.Assign) and ast.unparse(statement.targets[0]) == "__all__":
            extras.offered = ast.literal_eval(statement.value)
        elif isinstance(statement, (ast.Import, ast.ImportFrom)):
            if isinstance(statement, ast.ImportFrom) and statement.level == 1:
                statement.module, statement.level = f"_hyx_extras.{statement.module}", 0
            extras.imports.append(statement)
    return extras


def check_files(folder: Path, packages: Iterable[str]) -> None:
    """Refuses a file of no package that none of the others imports."""
    texts = {path.stem: path.read_text() for path in folder.glob("*.py")}
    for name in texts.keys() - {"__init__", *packages}:
        if not any(f"from .{name} import" in text for text in texts.values()):
            raise SystemExit(f"{folder / name}.py: there is no package {name}")


def _statements(body: list[ast.stmt]):
    """The statements of a file, those in `if TYPE_CHECKING` too."""
    for statement in body:
        if isinstance(statement, ast.If):
            yield from _statements(statement.body)
        else:
            yield statement


def _attributes(statement: ast.ClassDef):
    for item in statement.body:
        if isinstance(item, ast.FunctionDef):
            yield item.name, item
        elif isinstance(item, ast.Assign) and isinstance(item.targets[0], ast.Name):
            yield item.targets[0].id, item
        elif isinstance(item, ast.AnnAssign) and isinstance(item.target, ast.Name):
            yield item.target.id, item
