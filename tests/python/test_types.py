"""The stubs agree with what runs, type everything that examples do, and complete what is in lists."""

import ast
import os
import re
import subprocess
import sys
from typing import NamedTuple

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
import pytest
from subprocesses import BUILD, ROOT

sys.path[:0] = [str(ROOT), str(ROOT / "python")]

from generator.interface import PACKAGES

# What stubtest says of differences that are meant, and why.
MEANT = {
    r"__swig_destroy__ is not present in stub": "the runtime's own, for native code",
    r"is inconsistent, stub is a staticmethod but runtime is not": "descriptors of the support module are faster",
    r'positional or keyword \(remove "/"\)': "what scripts override may name its parameters as it likes",
    r"has a default value of Ellipsis": "inspect can only show literals",
    r"^hyxOSG\.(_doctor|_journal_page|__main__)\.": "programs, which nobody imports",
}


def mypy(module, *arguments, cwd):
    environment = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "MYPYPATH": str(BUILD / "python")}
    environment["MYPY_CACHE_DIR"] = str(BUILD / "mypy-strict")  # options shape what is kept
    command = [sys.executable, "-m", module, *map(str, arguments)]
    return subprocess.run(command, capture_output=True, text=True, env=environment, cwd=cwd)


MEMORY = pytest.mark.xdist_group("heavy")  # one at a time: each takes 400 MB


@MEMORY
def test_the_stubs_are_what_runs(tmp_path):
    found = mypy("mypy.stubtest", "--concise", *PACKAGES, cwd=tmp_path)
    differences = [line for line in found.stdout.splitlines() if not any(re.search(text, line) for text in MEANT)]
    assert not differences and not found.stderr
    unused = [text for text in MEANT if not re.search(text, found.stdout, re.MULTILINE)]
    assert set(unused) <= {r"^hyxOSG\.(_doctor|_journal_page|__main__)\."}


EXPRESSIONS = {
    "sim.getRigidBodies()[0]": "hyx.RigidBody",
    "sim.getConstraints()[0]": "hyx.Constraint",
    "sim.getSpace().castRayAll((0, 0, 1), (0, 0, -1))[0].getGeometry()": "hyxCollide.Geometry | None",
    "sim.getSpace().getGeometryContacts()[0].points()[0]": "hyxCollide.ContactPoint",
    "[part for body in sim.getRigidBodies() for part in body.getGeometries()]": "list[hyxCollide.Geometry]",
    "next(iter(hyx.Vec3Vector()))": "hyx.Vec3",
    "hyxOSG.ExampleApplication().getSimulation()": "hyxSDK.Simulation",
    "osg.Vec3d(1, 2, 3).x": "float",
    "[constraint.getName() for constraint in sim.getConstraints()]": "list[str]",
    "sim.getAssemblies()[0].getRigidBodies()[0]": "hyx.RigidBody",
    "sim.getMaterials()[0]": "hyx.Material",
    "sim.getRigidBodies()[0].getGeometries()[0].getShape()": "hyxCollide.Shape | None",
    "hyxOSG.createVisual(hyx.RigidBody(), osg.Group())": "osg.Group | None",
    "hyxOSG.ExampleApplication().getCameraData()": "hyxOSG.CameraData",
    "hyx.Quat() * (2 * hyx.Vec3(1, 2, 3))": "hyx.Vec3",
    "hyx.Vec3(1, 2, 3)[0]": "float",
    "[tuple(vertex) for vertex in hyxCollide.Trimesh([(0, 0, 0)], [0, 0, 0]).getVertices()]": "list[tuple[float, ...]]",
    "hyxSensor.Lidar().cloud.shape": "tuple[int, ...]",
    "sim.positions.shape": "tuple[int, ...]",
    "hyx.Hinge((0, 0, 0), (0, 0, 1), None).getMotor1D()": "hyx.Motor1D",
}


@MEMORY
@pytest.mark.parametrize("expression, kind", EXPRESSIONS.items())
def test_expressions_have_types(expression, kind, strictly_checked):
    assert strictly_checked.types[expression] == kind


@MEMORY
def test_typed_examples_are_strictly_right(strictly_checked):
    assert strictly_checked.errors == []


class Checked(NamedTuple):
    errors: list[str]
    types: dict[str, str]  # of expressions


@pytest.fixture(scope="module")
def strictly_checked(tmp_path_factory):
    """What is found in the typed examples and in a script of all expressions, in one run: it reads much."""
    examples = sorted((ROOT / "examples" / "tasks").glob("*.py"))
    assert len(examples) >= 7
    folder = tmp_path_factory.mktemp("types")
    script = folder / "script.py"
    head = "import hyx, hyxCollide, hyxOSG, hyxSDK, hyxSensor, osg\nsim = hyxSDK.Simulation()\n"
    script.write_text(head + "".join(f"reveal_type({expression})\n" for expression in EXPRESSIONS))
    options = ["--strict", "--follow-imports=silent", "--ignore-missing-imports", "--allow-subclassing-any"]
    sources = [script, *examples, ROOT / "python" / "hyxsweep"]
    found = mypy("mypy", *options, *sources, cwd=folder).stdout
    types = dict(re.findall(r'script\.py:(\d+): note: Revealed type is "(.*)"', found))
    plain = {
        expression: types[str(line)].replace("builtins.", "").replace("Union[", "").replace("?", "")
        for line, expression in enumerate(EXPRESSIONS, 3)
        if str(line) in types
    }
    return Checked([line for line in found.splitlines() if ": error: " in line], plain)


def scene():
    """One object of each of the classes that have typed results, after something has happened."""
    sim = hyxSDK.Simulation()
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(3, 3, 0.1)))
    ground.setMotionControl(hyx.RigidBody.STATIC)
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
    box.setPosition((0, 0, 0.59))
    hung = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.2)))
    hung.setPosition((2, 0, 3))
    hinge = hyx.Hinge((2, 0, 4), (0, 1, 0), hung)
    for item in (ground, box, hung, hinge):
        sim.add(item)
    sim.stepTo(0.2)
    contact = sim.getSpace().getGeometryContacts()[0]
    mesh = hyxCollide.Trimesh([(0, 0, 0), (1, 0, 0), (0, 1, 0)], [0, 1, 2])
    field = hyxCollide.HeightField(2, 2, 1, 1, [0, 0, 0, 1])
    hit = sim.getSpace().castRayAll((0, 0, 5), (0, 0, -5))[0]
    return [sim, sim.getSpace(), box, box.getGeometries()[0], contact, mesh, field, hit, hyx.StringTable()]


TOLD = re.compile(r"(list|dict|tuple|Doubles|Floats|Indices|bytes)(?:\[(.+)\])?")
PLAIN = {"list": list, "dict": dict, "tuple": tuple, "bytes": bytes}
NUMBERS = {"Doubles": "float64", "Floats": "float32", "Indices": "uint32"}


def test_results_are_of_the_types_of_the_stubs():
    stubs = {name: ast.parse((BUILD / "python" / name / "__init__.pyi").read_text()) for name in PACKAGES}
    checked, elements = 0, 0
    for thing in scene():
        kind = type(thing)
        classes = {node.name: node for node in stubs[kind.__module__].body if isinstance(node, ast.ClassDef)}
        for method in classes[kind.__name__].body:
            if not isinstance(method, ast.FunctionDef) or method.decorator_list:
                continue
            told = method.returns and TOLD.fullmatch(ast.unparse(method.returns))
            if not told or len(method.args.args) - len(method.args.defaults) > 1:
                continue
            result = getattr(thing, method.name)()
            found = str(result.dtype) if isinstance(result, numpy.ndarray) else type(result)
            assert found == (NUMBERS | PLAIN)[told[1]], f"{kind.__name__}.{method.name}"
            checked += 1
            if told[1] == "list" and result:
                wanted = eval(told[2], {name: sys.modules[name] for name in PACKAGES})
                assert all(isinstance(item, wanted) for item in result), f"{kind.__name__}.{method.name}"
                elements += 1
    assert checked >= 30 and elements >= 8
