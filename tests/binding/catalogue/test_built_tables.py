"""The type tables of the built modules hold what headers declare, and nothing else."""

import ctypes
import importlib
import json
import subprocess
import sysconfig

import hyxOSG  # noqa: F401  links all modules into one chain
import pytest
from subprocesses import BUILD, ROOT


class TypeInfo(ctypes.Structure):
    _fields_ = [("name", ctypes.c_char_p), ("readable", ctypes.c_char_p)]


class ModuleInfo(ctypes.Structure):
    pass


ModuleInfo._fields_ = [
    ("types", ctypes.POINTER(ctypes.POINTER(TypeInfo))),
    ("size", ctypes.c_size_t),
    ("next", ctypes.POINTER(ModuleInfo)),
]


def chain():
    """The tables of all modules, as their shared capsule leads to them."""
    get = ctypes.pythonapi.PyCapsule_Import
    get.restype, get.argtypes = ctypes.c_void_p, [ctypes.c_char_p, ctypes.c_int]
    importlib.import_module("swig_runtime_data4")
    head = ctypes.cast(get(b"swig_runtime_data4.type_pointer_capsule", 0), ctypes.POINTER(ModuleInfo))
    modules = [head.contents]
    while ctypes.addressof(modules[-1].next.contents) != ctypes.addressof(head.contents):
        modules.append(modules[-1].next.contents)
    return modules


def spellings():
    """Every readable name of every type that a module has, from a script's view: pointers."""
    found = set()
    for module in chain():
        for index in range(module.size):
            found.update(module.types[index].contents.readable.decode().split("|"))
    return sorted(name.strip() for name in found if "sample::" not in name)


@pytest.mark.xdist_group("heavy")  # the compiler takes 500 MB
def test_every_type_of_the_built_modules_compiles(tmp_path):
    described = json.loads((BUILD / "interface.json").read_text())["types"]
    headers = {d["header"] for d in described.values() if not d["header"].startswith("/")}
    headers |= {str(path.relative_to(ROOT)) for path in (ROOT / "platform").rglob("*.h")}
    names = spellings()
    assert len(names) > 200
    lines = [f"#include <{name}>" for name in (*sorted(headers), "memory", "mutex", "sstream", "stdexcept", "tuple")]
    lines += [f"using Type{number} = {name};" for number, name in enumerate(names)]
    source = tmp_path / "types.cpp"
    source.write_text("\n".join(lines) + "\n")
    command = ["g++", "-std=c++20", "-fsyntax-only", f"-I{ROOT}", f"-I{sysconfig.get_paths()['include']}", source]
    compiled = subprocess.run(command, capture_output=True, text=True)
    assert compiled.returncode == 0, compiled.stderr
