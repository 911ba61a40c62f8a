"""The text of a package's `__init__.py`."""

from __future__ import annotations

import textwrap

from .extras import Extras
from .interface import DEFAULT_PACKAGES, Operation, Package, ProxyClass, constant_owners
from .python_types import TypeHints
from .signature import docstring, parameter_lists, text_signature

SUMMARIES = {
    "hyx": "Rigid-body dynamics: values, bodies, constraints, particles. SI units, Z up.",
    "hyxCollide": "Collision geometries and shapes.",
    "hyxSDK": "Simulations, assemblies and the listeners of their steps.",
    "hyxRender": "Colours.",
    "hyxIO": "Command lines and files.",
    "hyxUtil": "Splines and other tools.",
    "hyxNet": "Co-simulation with other processes.",
    "hyxModel": "Models of fracture and deformation.",
    "hyxSensor": "Sensors.",
    "hyxTerrain": "Deformable terrain.",
    "hyxWire": "Wires.",
    "hyxCable": "Cables and their damage.",
    "hyxtavlang": "Models described as text.",
    "osg": "The nodes of the scene graph.",
    "osgViewer": "The viewer of the scene graph.",
    "osgGA": "The scene graph's events and camera manipulators.",
    "osgText": "The scene graph's text.",
    "osgDB": "The scene graph's files.",
    "hyxOSG": "The visualization library: windows, visuals, decoration, capture and input for simulations.",
}


def package_text(
    package: Package, order: list[ProxyClass], imports: list[str], extras: Extras, hints: TypeHints
) -> str:
    modules = sorted(
        {c.module for c in order}
        | {m.module for c in order for m in c.methods.values()}
        | {f.module for f in package.functions.values()}
        | {m.module for c in order for m in c.methods.values()}
        | {module for module, _ in package.constants.values()}
    )
    lines = [f'"""{SUMMARIES[package.name]}"""', ""]
    if package.enumerations or any(proxy.enumerations for proxy in order):
        lines.append("from enum import IntEnum")
    if order or package.functions:
        lines.append("from _hyx_proxy import Handle, constructor, function, member, method, release")
    lines += [f"import {module}" for module in modules]
    lines += [f"import {name}" for name in imports]
    if extras.present:
        lines.append(f"from _hyx_extras import {package.name} as _extras")
    for proxy in order:
        lines += ["", "", *_class_lines(proxy, extras, hints)]
    lines += ["", ""]
    lines += [f"{name} = _extras.{name}" for name in extras.offered]
    lines += [f"{alias} = {target.removeprefix(package.name + '.')}" for alias, target in package.aliases.items()]
    for operation in package.functions.values():
        lines += _function_lines(operation, hints)
    if package.functions:
        names = ", ".join(package.functions)
        lines += [f"for _function in ({names},):", "    _function.__set_name__(__name__, _function.__name__)"]
    values = {name: value for name, (_, value) in package.constants.items()}
    lines += enumeration_lines(package.enumerations, values)
    owners = constant_owners(package)
    lines += [
        f"{name} = {owners.get(name, value)}"
        for name, value in values.items()
        if not _is_listed(package.enumerations, name)
    ]
    if DEFAULT_PACKAGES.get(f"_{package.name}") and package.name == "hyxOSG":
        lines.append("cvar = _hyxOSG.cvar")
    return "\n".join(lines) + "\n"


def _class_lines(proxy: ProxyClass, extras: Extras, hints: TypeHints) -> list[str]:
    bases = [f"_extras.{base}" for base in extras.class_bases.get(proxy.name, ())]
    bases += [base.name if base.package == proxy.package else base.qualified for base in proxy.bases] or ["Handle"]
    body = [_literal(proxy.doc or f"The native class {proxy.native}.", 4), "    __slots__ = ()"]
    body += ["    " + line if line else "" for line in enumeration_lines(proxy.enumerations, proxy.constants)]
    body += [
        f"    {name} = {value}" for name, value in proxy.constants.items() if not _is_listed(proxy.enumerations, name)
    ]
    body += _machinery_lines(proxy, hints)
    for name, member in proxy.members.items():
        setter = member.setter.flat if member.setter else "None"
        doc = _literal(member.doc, 0) if member.doc else "None"
        of_class = ", True" if member.of_class else ""
        body.append(f"    {name} = member({member.getter.flat}, {setter}, {doc}{of_class})")
    own = extras.class_attributes.get(proxy.name, {})
    if "__init__" in own and "constructor" in proxy.machinery:
        body.append("    _native___init__ = __init__")
    for name, operation in proxy.methods.items():
        # What is written by hand in its place calls it.
        if name in own:
            name = f"_native_{name}"
        kind = "function" if operation.static else "method"
        text = _literal(docstring(operation, hints), 0)
        signature = text_signature(operation, not operation.static)
        body.append(f"    {name} = {kind}({operation.flat}, {signature!r}, {text}, {parameter_lists(operation)})")
    body += [f"    {name} = _extras.{proxy.name}.{name}" for name in extras.class_attributes.get(proxy.name, ())]
    register = proxy.machinery["swigregister"].flat
    return [f"class {proxy.name}({', '.join(bases)}):", *body, "", "", f"{register}({proxy.name})"]


def enumeration_lines(enumerations: dict[str, list[str]], values: dict[str, int]) -> list[str]:
    """The enumerations of a class or package, and their constants under the names that they have outside."""
    lines = []
    for name, constants in enumerations.items():
        lines += [f"class {name}(IntEnum):", *(f"    {constant} = {values[constant]}" for constant in constants), ""]
        lines += [f"{constant} = {name}.{constant}" for constant in constants]
    return lines


def _is_listed(enumerations: dict[str, list[str]], constant: str) -> bool:
    return any(constant in listed for listed in enumerations.values())


def _machinery_lines(proxy: ProxyClass, hints: TypeHints) -> list[str]:
    lines = []
    made, attached = proxy.machinery.get("constructor"), proxy.machinery.get("swiginit")
    destructor, disown = proxy.machinery.get("destructor"), proxy.machinery.get("disown")
    if made and attached:
        text = _literal(docstring(made, hints, proxy.name, ""), 0)
        options = ", with_director=True" if disown else ""
        signature = text_signature(made, True)
        lists = parameter_lists(made)
        lines.append(
            f"    __init__ = constructor({made.flat}, {attached.flat}, {signature!r}, {text}, {lists}{options})"
        )
    if destructor:
        lines.append(f"    __swig_destroy__ = {destructor.flat}")
    elif proxy.module == "_hyxOSG" and not disown:
        # What a base class would do must not run.
        lines.append("    __swig_destroy__ = release")
    return lines


def _function_lines(operation: Operation, hints: TypeHints) -> list[str]:
    text = _literal(docstring(operation, hints), 0)
    signature, lists = text_signature(operation, False), parameter_lists(operation)
    return [f"{operation.name} = function({operation.flat}, {signature!r}, {text}, {lists})"]


def _literal(text: str, indent: int) -> str:
    """`text` as a docstring that a reader of the generated file can read."""
    text = text.strip()
    if '"""' in text or "\\" in text or text.endswith('"'):
        return " " * indent + repr(text)
    return textwrap.indent(f'"""{text}"""', " " * indent) if indent else f'"""{text}"""'
