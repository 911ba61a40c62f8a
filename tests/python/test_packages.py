"""The generated packages offer everything that the extension modules have, under the right names."""

import importlib
import importlib.util
import inspect
import os
import subprocess
import sys

import _hyx_proxy
import hyxOSG
import pytest
from _hyx_proxy import Handle
from subprocesses import BUILD, run_python

MODULES = [
    name
    for name in ("_hyx", "_hyxCollide", "_hyxSDK", "_hyxModel", "_osg", "_hyxOSG")
    if importlib.util.find_spec(name)
]
PACKAGES = sorted(name for name in sys.modules if name in vars(hyxOSG) and name.startswith(("hyx", "osg"))) + ["hyxOSG"]
DESCRIBED = {name: _hyx_proxy.describe(importlib.import_module(name)) for name in MODULES}
MACHINERY = {"swigregister", "swiginit", "destructor", "disown", "static-set"}


def proxy_classes():
    for name in PACKAGES:
        for value in vars(sys.modules[name]).values():
            if isinstance(value, type) and issubclass(value, Handle) and value.__module__ == name:
                yield value


CLASSES = list(dict.fromkeys(proxy_classes()))


def operations(owner):
    return [
        v
        for v in vars(owner).values()
        if isinstance(v, (_hyx_proxy.method, _hyx_proxy.function, _hyx_proxy.constructor))
    ]


def test_importing_the_library_makes_the_family_known():
    assert {"hyx", "hyxCollide", "hyxSDK", "osg", "hyxOSG"} <= set(PACKAGES)
    registered = sum(row["role"] == "swigregister" for rows in DESCRIBED.values() for row in rows)
    assert len(CLASSES) == registered


@pytest.mark.parametrize("module", MODULES)
def test_every_function_is_reached_through_a_proxy(module):
    owners = [*CLASSES, *map(sys.modules.get, PACKAGES)]
    found = [getattr(op, "__wrapped_function__", None) for owner in owners for op in vars(owner).values()]
    reached = {function for function in found if inspect.isbuiltin(function)}
    names = {
        function.__name__
        for function in reached
        if function.__module__ == module or function.__self__.__name__ == module
    }
    wanted = {row["name"] for row in DESCRIBED[module] if row["role"] not in MACHINERY}
    accessors = {row["name"] for row in DESCRIBED[module] if row["role"] in ("member-get", "member-set", "static-get")}
    assert wanted - accessors - names == set()


@pytest.mark.parametrize("module", MODULES)
def test_every_member_is_an_attribute_of_its_class(module):
    members = {
        f"{c.__name__}_{name}"
        for c in CLASSES
        for name, value in vars(c).items()
        if isinstance(value, _hyx_proxy.member)
    }
    wanted = {
        row["name"].removesuffix("_get") for row in DESCRIBED[module] if row["role"] in ("member-get", "static-get")
    }
    assert wanted - members == set()


def test_python_inherits_as_the_native_classes_do():
    import hyx
    import hyxSDK
    import osg

    assert issubclass(hyxOSG.SceneDecorator, osg.Group) and issubclass(osg.Group, osg.Node)
    assert issubclass(hyxOSG.GeometryNode, osg.MatrixTransform)
    assert issubclass(hyxOSG.SimpleDepthBufferLidar, hyxOSG.RenderTarget)
    assert issubclass(hyx.RigidBody, hyx.Object)
    assert issubclass(hyxOSG.GuiEventListener, hyxSDK.GuiEventListener)


def test_constants_are_in_their_class_and_in_the_package():
    assert hyxOSG.Text.XY_PLANE == hyxOSG.Text_XY_PLANE == 0
    assert hyxOSG.RenderTarget.RGBA == 6408
    assert hyxOSG.SPHEREMAP_TEXTURE == 6
    flat = {n: v for n, v in vars(sys.modules["_hyxOSG"]).items() if type(v) is int and not n.startswith("SWIG")}
    assert len(flat) == 114 and {n: getattr(hyxOSG, n) for n in flat} == flat


def test_every_operation_has_a_signature_and_most_a_text():
    found = [op for owner in [*CLASSES, hyxOSG] for op in operations(owner) if not op.__name__.startswith("_native_")]
    for operation in found:
        inspect.signature(operation)
        assert operation.__doc__.startswith(
            operation.__name__ if operation.__name__ != "__init__" else ("", operation.__qualname__.split(".")[0])
        )
    own = [op for owner in [*(c for c in CLASSES if c.__module__ == "hyxOSG"), hyxOSG] for op in operations(owner)]
    assert sum("\n" in op.__doc__ for op in own) > 0.8 * len(own)


def test_names_of_parameters_come_from_the_declarations():
    assert str(inspect.signature(hyxOSG.SceneDecorator.setShadowMethod)) == "(self, /, method)"
    assert "hyx.Vec3" in hyxOSG.createSphere.__doc__ and "radius" in hyxOSG.createSphere.__doc__


def test_values_given_to_python_can_be_deleted():
    """A class whose objects are handed out as owned copies needs a destroy function, or each one leaks."""
    classes = {c.__qualname__: c for c in CLASSES}
    leaking = set()
    for rows in DESCRIBED.values():
        for row in rows:
            for form in row["forms"]:
                name = form["result"]["type"].split("::")[-1].strip(" *&")
                if form["result"]["owned"] and row["role"] == "function" and name in classes:
                    if not hasattr(classes[name], "__swig_destroy__"):
                        leaking.add(name)
    assert leaking == set()


@pytest.mark.xdist_group("heavy")
def test_the_stubs_are_sound_and_know_the_interface(tmp_path):
    script = tmp_path / "script.py"
    script.write_text(
        "import hyx, hyxOSG, numpy\n"
        "app = hyxOSG.ExampleApplication()\n"
        "reveal_type(app.getCamera())\n"
        "reveal_type(hyxOSG.CameraData)\n"
        "app.setTimeStep('soon')\n"
        "hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4f(), 1.0)\n"
        "hyxOSG.createSphere(center=(0, 0, 1), color=numpy.ones(4), radius=1.0)\n"
        "hyxOSG.SceneDecorator.setShadowMethod\n"
    )
    command = [
        sys.executable,
        "-m",
        "mypy",
        "--no-error-summary",
        "--hide-error-context",
        *(argument for name in PACKAGES for argument in ("-p", name)),
    ]
    environment = {
        "MYPYPATH": str(BUILD / "python"),
        "PATH": "/usr/bin:/bin",
        "MYPY_CACHE_DIR": str(BUILD / "mypy"),
    }
    packages = subprocess.run(command, capture_output=True, text=True, env=environment, cwd=tmp_path)
    assert (packages.stdout, packages.stderr, packages.returncode) == ("", "", 0)
    checked = subprocess.run([*command[:5], str(script)], capture_output=True, text=True, env=environment, cwd=tmp_path)
    assert checked.stderr == ""
    plain = checked.stdout.replace("hyxOSG.", "").replace("hyx.", "")
    assert "Camera" in plain and "None" in plain.splitlines()[0]
    assert 'has incompatible type "str"; expected "float"' in plain
    assert 'has incompatible type "Vec4f"; expected "Vec4 | Sequence[float] | Array | Color"' in plain
    assert plain.count("error:") == 2


def test_what_is_not_optional_is_never_none():
    """Of new objects, on which nothing has been set."""
    import ast

    checked = 0
    for name in PACKAGES:
        stub = ast.parse((BUILD / "python" / name / "__init__.pyi").read_text())
        for made in [node for node in stub.body if isinstance(node, ast.ClassDef)]:
            kind = getattr(sys.modules[name], made.name)
            try:
                fresh = kind()
            except TypeError:
                continue
            for method in [node for node in made.body if isinstance(node, ast.FunctionDef)]:
                result = method.returns and ast.unparse(method.returns)
                if len(method.args.args) == 1 and result and "." in result and "None" not in result:
                    checked += 1
                    try:
                        assert getattr(fresh, method.name)() is not None, f"{made.name}.{method.name}"
                    except (AttributeError, RuntimeError, TypeError, ValueError, IndexError):
                        continue
    assert checked > 100


def test_describe_prints_all_modules_as_json():
    import json

    printed = subprocess.run(
        [sys.executable, "-m", "hyx_describe"],
        capture_output=True,
        text=True,
        check=True,
        env=os.environ | {"PYTHONPATH": str(BUILD / "python")},
    ).stdout
    described = json.loads(printed)
    assert len(described["_hyxOSG"]) == 845
    assert {row["name"] for row in described["_hyxOSG"]} == {row["name"] for row in DESCRIBED["_hyxOSG"]}


def test_an_import_leaves_out_what_only_writing_files_and_films_needs():
    slow = {"dataclasses", "inspect", "pathlib", "subprocess", "typing", "numpy"}
    code = f"import sys; before = set(sys.modules); import hyxOSG; print(*({slow!r} & (set(sys.modules) - before)))"
    done = run_python(code)
    assert (done.stdout.split(), done.returncode) == ([], 0)
