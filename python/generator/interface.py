"""What the extension modules offer, sorted into packages, classes and operations."""

from __future__ import annotations

import types
from dataclasses import dataclass, field

import _hyx_proxy

from binding.catalogue.class_lists import plain_name

from .natives import Natives

# The package of what lies in no namespace that is a package: containers of std, the iterators.
DEFAULT_PACKAGES = {
    "_hyx": "hyx",
    "_hyxCollide": "hyxCollide",
    "_hyxSDK": "hyxSDK",
    "_hyxModel": "hyxModel",
    "_osg": "osg",
    "_hyxOSG": "hyxOSG",
}
MODULES = tuple(DEFAULT_PACKAGES)
PACKAGES = (
    *("hyx", "hyxCollide", "hyxSDK", "hyxRender", "hyxIO", "hyxUtil", "hyxNet", "hyxModel", "hyxSensor"),
    *("hyxTerrain", "hyxWire", "hyxCable", "hyxtavlang", "osg", "osgViewer", "osgGA", "osgText", "osgDB", "hyxOSG"),
)
# Kinds of functions that make a proxy class work but are no operations of it.
MACHINERY = ("constructor", "destructor", "swigregister", "swiginit", "disown")
ACCESSORS = ("member-get", "member-set", "static-get", "static-set")


@dataclass
class Parameter:
    type: str
    name: str = ""
    default: str | None = None


@dataclass
class Form:
    native: str  # the qualified name of the native function
    parameters: list[Parameter]  # without the object
    result: str
    doc: str = ""
    never_none: bool = False  # as a pointer its result is never null


@dataclass
class Operation:
    module: str
    flat_name: str
    name: str
    static: bool
    forms: list[Form]
    shown: list[Form] = field(default_factory=list)  # those that Python can tell apart

    def __post_init__(self) -> None:
        self.shown = self.shown or list(self.forms)

    @property
    def flat(self) -> str:
        return f"{self.module}.{self.flat_name}"


@dataclass
class Member:
    name: str
    type: str
    getter: Operation
    setter: Operation | None = None
    of_class: bool = False
    doc: str = ""


@dataclass
class ProxyClass:
    package: str
    name: str
    native: str
    module: str
    doc: str = ""
    bases: list[ProxyClass] = field(default_factory=list)
    machinery: dict[str, Operation] = field(default_factory=dict)  # by kind
    methods: dict[str, Operation] = field(default_factory=dict)
    members: dict[str, Member] = field(default_factory=dict)
    constants: dict[str, int] = field(default_factory=dict)
    enumerations: dict[str, list[str]] = field(
        default_factory=dict
    )  # by name: constants, each in one of them or in none
    substitute: str = ""  # a type hint for what calls take for it
    element: str = ""  # of a list: the type hint of what may be given as an element
    item: str = ""  # and of what it gives
    written_bases: list[str] = field(default_factory=list)  # by hand

    @property
    def qualified(self) -> str:
        return f"{self.package}.{self.name}"


@dataclass
class Package:
    name: str
    classes: list[ProxyClass] = field(default_factory=list)
    functions: dict[str, Operation] = field(default_factory=dict)
    constants: dict[str, tuple[str, int]] = field(default_factory=dict)  # name: (module, value)
    aliases: dict[str, str] = field(default_factory=dict)  # further names of its classes
    enumerations: dict[str, list[str]] = field(default_factory=dict)  # as a class's


@dataclass
class Interface:
    packages: dict[str, Package]
    classes: dict[str, ProxyClass]  # by every native spelling, plain
    enumerations: dict[str, str] = field(default_factory=dict)  # by native name: as scripts write them


def read_interface(modules: dict[str, types.ModuleType], natives: Natives) -> Interface:
    interface = Interface({name: Package(name) for name in PACKAGES}, {})
    rows = {name: _hyx_proxy.describe(module) for name, module in modules.items()}
    for module, functions in rows.items():
        _add_classes(interface, module, functions)
    for module, functions in rows.items():
        _add_operations(interface, module, functions)
        _add_constants(interface, module, modules[module])
    _add_spellings(interface, natives)
    _add_bases(interface, natives)
    return interface


def _package_of(native: str, module: str) -> str:
    namespace = native.split("::")[0].split("<")[0].strip()
    return namespace if namespace in PACKAGES else DEFAULT_PACKAGES[module]


def _add_classes(interface: Interface, module: str, functions: list[dict]) -> None:
    """A class is what has a registration function; its Python name stands before `_swigregister`."""
    for row in functions:
        if row["role"] != "swigregister":
            continue
        native = row["class"]
        package = interface.packages[_package_of(native, module)]
        proxy = ProxyClass(package.name, row["name"].removesuffix("_swigregister"), native, module)
        package.classes.append(proxy)
        interface.classes[plain_name(native)] = proxy


def _form(form: dict) -> Form:
    native = f"{form['class']}::{form['method']}" if form["class"] else form["method"]
    parameters = [Parameter(p["type"], default=p["default"]) for p in form["parameters"]]
    return Form(native, parameters, form["result"]["type"])


def _operation(module: str, row: dict, name: str) -> Operation:
    return Operation(module, row["name"], name, row["static"], [_form(form) for form in row["forms"]])


def _owner(interface: Interface, module: str, row: dict) -> ProxyClass | None:
    """The class that a row belongs to: the one it names if that has a proxy in the module, or the row bears its name;
    else by its prefix. A module may add methods to the classes of another one."""
    if row["role"] == "function" and not row["class"]:
        return None
    if row["class"]:
        proxy = interface.classes.get(plain_name(row["class"]))
        adds = proxy and row["role"] not in MACHINERY and row["name"].startswith(proxy.name + "_")
        if proxy and (proxy.module == module or adds):
            return proxy
    name = row["name"].removeprefix("new_").removeprefix("delete_").removeprefix("disown_")
    owners = [
        c
        for p in interface.packages.values()
        for c in p.classes
        if c.module == module and (name == c.name or name.startswith(c.name + "_"))
    ]
    return max(owners, key=lambda proxy: len(proxy.name), default=None)


def _add_operations(interface: Interface, module: str, functions: list[dict]) -> None:
    for row in functions:
        proxy = _owner(interface, module, row)
        if row["role"] in MACHINERY:
            if proxy:
                proxy.machinery[row["role"]] = _operation(module, row, row["name"])
        elif row["role"] in ACCESSORS:
            if proxy:
                _add_accessor(proxy, module, row)
        elif proxy and row["name"].startswith(proxy.name + "_"):
            name = row["name"].removeprefix(proxy.name + "_")
            proxy.methods[name] = _operation(module, row, name)
        else:
            operation = _operation(module, row, row["name"])
            for package in {_package_of(operation.forms[0].native, module), DEFAULT_PACKAGES[module]}:
                interface.packages[package].functions[row["name"]] = operation


def _add_accessor(proxy: ProxyClass, module: str, row: dict) -> None:
    operation = _operation(module, row, row["name"])
    name = row["name"].removeprefix(proxy.name + "_").removesuffix("_get").removesuffix("_set")
    if row["role"].endswith("-get"):
        of_class = row["role"].startswith("static")
        result = operation.forms[0].result if operation.forms else "void *"
        proxy.members[name] = Member(name, result, operation, of_class=of_class)
    elif name in proxy.members:
        proxy.members[name].setter = operation


def _add_constants(interface: Interface, module: str, loaded: types.ModuleType) -> None:
    classes = [proxy for package in interface.packages.values() for proxy in package.classes if proxy.module == module]
    classes.sort(key=lambda proxy: len(proxy.name), reverse=True)
    for name, value in vars(loaded).items():
        if type(value) is not int or name.startswith(("__", "SWIG_")):
            continue
        proxy = next((c for c in classes if name.startswith(c.name + "_")), None)
        if proxy:
            proxy.constants[name.removeprefix(proxy.name + "_")] = value
        package = proxy.package if proxy else DEFAULT_PACKAGES[module]
        interface.packages[package].constants[name] = (module, value)


def constant_owners(package: Package) -> dict[str, str]:
    """The constants of a package that are those of a class, too: how its own code writes them."""
    return {f"{c.name}_{name}": f"{c.name}.{name}" for c in package.classes for name in c.constants}


def _add_spellings(interface: Interface, natives: Natives) -> None:
    for proxy in list(interface.classes.values()):
        for spelling in natives.spellings(proxy.native):
            interface.classes.setdefault(plain_name(spelling), proxy)
            namespace, _, name = spelling.rpartition("::")
            package = interface.packages.get(namespace)
            if package and name.isidentifier() and name not in {c.name for c in package.classes}:
                package.aliases[name] = proxy.qualified


def _add_bases(interface: Interface, natives: Natives) -> None:
    for proxy in {id(p): p for p in interface.classes.values()}.values():
        bases = _nearest(interface, natives, proxy.native)
        further = {plain_name(name) for base in bases for name in natives.lineage(base.native)[1:]}
        proxy.bases = [base for base in bases if plain_name(base.native) not in further]


def _nearest(interface: Interface, natives: Natives, native: str) -> list[ProxyClass]:
    """The nearest native bases that have proxies, in order."""
    found: list[ProxyClass] = []
    for base in natives.bases(native):
        proxy = interface.classes.get(plain_name(base))
        for candidate in [proxy] if proxy else _nearest(interface, natives, base):
            if candidate not in found:
                found.append(candidate)
    return found
