"""What the generator of the packages refuses, and what it writes for default values."""

import ast
import sys

import pytest
from subprocesses import BUILD, ROOT

sys.path[:0] = [str(ROOT), str(ROOT / "python")]

import hyxOSG  # noqa: F401
from generator.defaults import same
from generator.extras import check_files, read_extras
from generator.interface import PACKAGES, Package, ProxyClass


def test_an_extra_without_a_proxy_class_stops_the_build(tmp_path):
    package = Package("hyx", [ProxyClass("hyx", "Vec3", "hyx::Vec3", "_hyx")])
    (tmp_path / "hyx.py").write_text("from .parts import Base\n\n\nclass Vec3(Base): ...\n")
    assert read_extras(tmp_path, package).class_bases == {"Vec3": ["Base"]}
    (tmp_path / "hyx.py").write_text("class Vec3: ...\n\n\nclass Vec5: ...\n")
    with pytest.raises(SystemExit, match="hyx.py:4: hyx has no proxy class Vec5"):
        read_extras(tmp_path, package)


def test_a_file_of_extras_without_a_package_stops_the_build(tmp_path):
    (tmp_path / "hyx.py").write_text("from .parts import Base\n")
    (tmp_path / "parts.py").write_text("class Base: ...\n")
    check_files(tmp_path, PACKAGES)
    (tmp_path / "hyxosg.py").write_text("")
    with pytest.raises(SystemExit, match="there is no package hyxosg"):
        check_files(tmp_path, PACKAGES)


def defaults():
    """Every default value in the stubs: package, function and expression."""
    for name in PACKAGES:
        for node in ast.walk(ast.parse((BUILD / "python" / name / "__init__.pyi").read_text())):
            if isinstance(node, ast.FunctionDef):
                yield from ((name, node.name, default) for default in node.args.defaults)


def test_default_values_stand_in_the_stubs():
    found = list(defaults())
    assert len(found) > 150
    names = {name: sys.modules[name] for name in PACKAGES}
    for package, function, default in found:
        value = eval(ast.unparse(default), names)
        assert value is not ..., f"{package}.{function}"


@pytest.mark.parametrize(
    "default, declared, equal",
    [
        ("1.0", "1", True),
        ("0.2", "0.3", False),
        ("hyx.Vec3()", "...", True),
        ("osg.CopyOp(0)", "0", True),
        ("hyx.Vec3(0, 0, 1)", "hyx.Vec3()", False),
    ],
)
def test_a_default_of_a_row_is_the_declared_one(default, declared, equal):
    assert same(default, declared) == equal


def test_constants_have_the_values_of_their_enumerators():
    import json

    declarations = json.loads((BUILD / "interface.json").read_text())["declarations"]
    enumerators = {d["name"]: d["value"] for d in declarations if d["kind"] == "enumerator"}
    compared = 0
    for native, value in enumerators.items():
        package, _, name = native.replace("::", ".").partition(".")
        owner = sys.modules.get(package)
        for part in name.split(".")[:-1]:
            owner = getattr(owner, part, None)
        found = vars(owner).get(name.rpartition(".")[2]) if owner else None
        if found is not None:
            compared += 1
            assert found == value, native
    constants = sum(
        type(value) is int and not name.startswith("SWIG") for name, value in vars(sys.modules["_hyxOSG"]).items()
    )
    assert compared > constants
