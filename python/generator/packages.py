"""Puts the packages together: reads everything, orders classes and packages, writes the files."""

from __future__ import annotations

import shutil
import types
from pathlib import Path

from binding.catalogue.class_lists import read_lists
from binding.catalogue.declarations import read_descriptions, write_changed

from .documentation import Documentation, document
from .extras import check_files, read_extras
from .interface import Interface, Package, ProxyClass, read_interface
from .natives import Natives
from .package_text import package_text
from .python_objects import name_python_objects
from .python_types import TypeHints
from .signature import note_like_forms
from .stub_text import stub_text


def write_packages(
    modules: dict[str, types.ModuleType], source: Path, root: Path, described: Path, version: str
) -> None:
    description = read_descriptions([described])
    natives = Natives(read_lists([source / "binding" / "catalogue" / "lists"]), description)
    interface = read_interface(modules, natives)
    extras_folder = source / "python" / "extras"
    check_files(extras_folder, interface.packages)
    extras = {package.name: read_extras(extras_folder, package) for package in interface.packages.values()}
    for proxy in interface.classes.values():
        proxy.written_bases = extras[proxy.package].class_bases.get(proxy.name, [])
    documentation = Documentation(description, natives, interface)
    document(interface, documentation)
    hints = TypeHints(interface)
    hints.describe_lists()
    name_python_objects(interface)
    note_like_forms(interface, hints)
    order = package_order(interface)
    for position, package in enumerate(order):
        # The last package, the library itself, makes the whole family known.
        imports = [p.name for p in order[:position]] if package.name == "hyxOSG" else _imports(package)
        written = extras[package.name]
        classes = class_order(package)
        folder = root / package.name
        folder.mkdir(exist_ok=True)
        text = package_text(package, classes, imports, written, hints)
        write_changed(f'{text}__version__ = "{version}"\n', folder / "__init__.py")
        write_changed(stub_text(package, classes, written, hints, documentation), folder / "__init__.pyi")
        write_changed("", folder / "py.typed")
    shutil.copytree(
        extras_folder, root / "_hyx_extras", dirs_exist_ok=True, ignore=shutil.ignore_patterns("__pycache__")
    )
    write_changed("", root / "_hyx_extras" / "py.typed")
    write_changed((source / "python" / "support" / "_hyx_proxy.pyi").read_text(), root / "_hyx_proxy.pyi")
    for program in (source / "python" / "program").glob("*.py"):  # python -m hyxOSG
        write_changed(program.read_text(), root / "hyxOSG" / program.name)
    write_changed((source / "python" / "hyx_describe.py").read_text(), root / "hyx_describe.py")


def _imports(package: Package) -> list[str]:
    return sorted({base.package for proxy in package.classes for base in proxy.bases if base.package != package.name})


def package_order(interface: Interface) -> list[Package]:
    """The packages, each after those that its classes derive from."""
    done: list[Package] = []
    waiting = list(interface.packages.values())
    while waiting:
        ready = [p for p in waiting if all(interface.packages[name] in done for name in _imports(p))]
        if not ready:
            names = ", ".join(f"{p.name} (needs {', '.join(_imports(p))})" for p in waiting)
            raise SystemExit(f"packages whose classes derive from each other in a circle: {names}")
        done += ready
        waiting = [p for p in waiting if p not in ready]
    library = interface.packages["hyxOSG"]
    return [p for p in done if p is not library] + [library]


def class_order(package: Package) -> list[ProxyClass]:
    """The classes of a package, each after its bases."""
    order: list[ProxyClass] = []

    def add(proxy: ProxyClass) -> None:
        for base in proxy.bases:
            if base.package == package.name and base not in order:
                add(base)
        if proxy not in order:
            order.append(proxy)

    for proxy in package.classes:
        add(proxy)
    return order
