"""The operations that programs may call: every flat function of the family with the types of its parameters."""

from __future__ import annotations

import importlib
import inspect
import re
from dataclasses import dataclass

import _hyx_proxy
from _hyx_proxy import Handle

PACKAGES = [
    "hyx",
    "hyxCollide",
    "hyxSDK",
    "hyxRender",
    "hyxIO",
    "hyxUtil",
    "hyxNet",
    "hyxModel",
    "hyxSensor",
    "hyxTerrain",
]
PACKAGES += ["hyxWire", "hyxCable", "hyxtavlang", "osg", "osgViewer", "osgGA", "osgText", "osgDB", "hyxOSG"]
FAMILY = ["_hyx", "_hyxCollide", "_hyxSDK", "_hyxModel", "_osg", "_hyxOSG"]

# They wait for a user, a time or a peer, open a port, or drop a reference that others have taken.
NOT_CALLED = re.compile(
    r"run|\w*(Server|Remote|Rpc)\w*|wait\w*|stepTo|sleep\w*|signal|_swigregister|unreference|attachRequestedVideoCapture"
)
SPELLINGS = {
    "osg::Vec2": "osg::Vec2f",
    "osg::Vec3": "osg::Vec3f",
    "osg::Vec4": "osg::Vec4f",
    "osg::Matrix": "osg::Matrixd",
}
WHOLE = {"int", "unsigned int", "unsigned", "long", "unsigned long", "size_t", "ptrdiff_t", "hyx::UInt", "hyx::Index"}
REAL = {"float", "double", "hyx::Real", "hyx::TimeStamp"}
TEXT = {"std::string", "hyx::String", "hyx::Name", "char"}


def plain(native: str) -> str:
    """A parameter's or result's class, number or text."""
    name = re.sub(r"\bconst\b|[*&]", "", native)
    name = re.sub(r"\s+", " ", name).strip()
    name = re.sub(r"std::vector<\s*hyxOSG::LidarOutputRendererLegendPoint.*", "legend", name)
    return SPELLINGS.get(name, name)


@dataclass(frozen=True)
class Operation:
    """One form of a flat function."""

    module: str
    name: str
    role: str
    parameters: tuple[str, ...]  # self first
    result: str
    proxy: str = ""  # the same of the proxies: an expression that its arguments are put into; empty where there is none


def proxy_expressions() -> dict[tuple[str, str], str]:
    """By module and flat name, how the proxies write a call; `{}` stands for the arguments."""
    found = {}
    for package in PACKAGES:
        owners = {package: importlib.import_module(package)}
        classes = {n: v for n, v in vars(owners[package]).items() if isinstance(v, type) and issubclass(v, Handle)}
        owners |= {f"{package}.{name}": value for name, value in classes.items()}
        for owner, value in owners.items():
            for name, operation in vars(value).items():
                flat = getattr(operation, "__wrapped_function__", None)
                if isinstance(operation, _hyx_proxy.constructor):
                    found[flat.__module__, flat.__name__] = f"{owner}({{}})"
                elif isinstance(operation, _hyx_proxy.member):
                    module, prefix = native_module(value), f"{owner.rpartition('.')[2]}_{name}"
                    found[module, f"{prefix}_get"] = f"{owner}.{name}.__get__({{}})"
                    found[module, f"{prefix}_set"] = f"{owner}.{name}.__set__({{}})"
                elif inspect.isbuiltin(flat) and owner.rpartition(".")[2].isidentifier():
                    found[flat.__module__, flat.__name__] = f"{owner}.{name}({{}})"
    return found


def base_classes() -> dict[str, list[str]]:
    """By native class, those whose objects its objects may stand for, itself included."""
    bases = {}
    for package in map(importlib.import_module, PACKAGES):
        for kind in vars(package).values():
            if isinstance(kind, type) and issubclass(kind, Handle):
                known = [base for base in kind.__mro__ if issubclass(base, Handle) and base.__module__ in PACKAGES]
                bases[f"{kind.__module__}::{kind.__name__}"] = [f"{b.__module__}::{b.__name__}" for b in known]
    return bases


def native_module(kind: type) -> str:
    flat = [getattr(v, "__wrapped_function__", None) for v in vars(kind).values()]
    return next((f.__module__ for f in flat if f is not None), "")


def self_of(function: dict, form: dict) -> list[str]:
    if function["role"] == "constructor" and takes_object(form):
        return ["PyObject *"]
    return [] if form["static"] or not form["class"] else [form["class"]]


def takes_object(form: dict) -> bool:
    """Whether a constructor's first argument is the Python object that a director forwards to."""
    return form["class"].split("::")[-1] in {
        "EventListener",
        "GuiEventListener",
        "ExampleApplicationListener",
        "LidarOutputRendererColorFunctionCallback",
    }


def operations() -> list[Operation]:
    found = []
    proxies = proxy_expressions()
    for module in FAMILY:
        for function in _hyx_proxy.describe(importlib.import_module(module)):
            if NOT_CALLED.fullmatch(function["name"].rpartition("_")[2]):
                continue
            for form in function["forms"]:
                native = [p["type"] for p in form["parameters"]]
                parameters = tuple(plain(name) for name in [*self_of(function, form), *native])
                result = plain(form["result"]["type"])
                found.append(
                    Operation(
                        module,
                        function["name"],
                        function["role"],
                        parameters,
                        result,
                        proxies.get((module, function["name"]), ""),
                    )
                )
    return found
