"""The method table, the constants and the exports of _hyxOSG against the golden list beside this file."""

import csv
import pathlib
import subprocess
import types

import _hyx_proxy
import _hyxOSG
import pytest

CONVENTIONS = {"one": "one", "tuple": "tuple", "dispatch": "dispatch", "noargs": "noargs"}


def golden():
    with open(pathlib.Path(__file__).with_name("functions.tsv")) as file:
        return {row["name"]: row for row in csv.DictReader(file, delimiter="\t")}


def counts(function):
    """Numbers of Python arguments of all forms and their shortened variants, sorted."""
    found = []
    for form in function["forms"]:
        own = 0 if form["static"] or not form["class"] else 1
        if function["role"] in ("destructor", "disown", "member-get"):
            found.append(1)
            continue
        size = len(form["parameters"])
        required = sum(p["default"] is None for p in form["parameters"])
        found += [own + n for n in range(required, size + 1)]
    return sorted(found)


DESCRIBED = {function["name"]: function for function in _hyx_proxy.describe(_hyxOSG)}
GOLDEN = golden()


def test_every_function_exists_and_no_other():
    builtin = {name for name, value in vars(_hyxOSG).items() if isinstance(value, types.BuiltinFunctionType)}
    assert builtin == set(GOLDEN) == set(DESCRIBED)
    assert len(builtin) == 845


@pytest.mark.parametrize("area", sorted({row["area"] for row in GOLDEN.values()}))
def test_kinds_conventions_and_counts(area):
    wrong = []
    for name, row in GOLDEN.items():
        if row["area"] != area:
            continue
        function = DESCRIBED.get(name)
        if function is None:
            wrong.append((name, "missing"))
            continue
        if (function["role"], function["convention"]) != (row["kind"], row["convention"]):
            wrong.append((name, function["role"], function["convention"]))
        expected = sorted(int(n) for n in row["argument_counts"].split(",") if n)
        if function["forms"] and not name.startswith("new_") and counts(function) != expected:
            wrong.append((name, counts(function), expected))
    assert wrong == []


def test_functions_carry_no_documentation():
    assert [name for name in GOLDEN if getattr(_hyxOSG, name).__doc__] == []


def test_the_module_has_115_constants():
    constants = {name: value for name, value in vars(_hyxOSG).items() if type(value) is int}
    assert len(constants) == 115
    assert constants["SWIG_MODULE_hyxOSG"] == 1 and constants["RenderTarget_RGBA"] == 6408
    assert constants["Text_BASE_LINE"] == constants["Text_NONE"] == constants["Text_LEFT_BASE_LINE"] == 9
    assert constants["ForceArrowRenderer_DEFAULT"] == constants["ForceArrowRenderer_MOTOR1D"] == 1
    assert constants["ExampleApplication_RECIEVES_SHADOWS_MASK"] == 128


def test_constants_come_in_their_order():
    names = [
        name
        for name in vars(_hyxOSG)
        if name
        in (
            "SWIG_MODULE_hyxOSG",
            "VideoFFMPEGPipeCapture_OutputCodec_XVID",
            "cvar",
            "ParticleSystemDrawable_SPRITES",
            "ExampleApplication_NUM_SOLVERS",
        )
    ]
    assert names == [
        "SWIG_MODULE_hyxOSG",
        "VideoFFMPEGPipeCapture_OutputCodec_XVID",
        "cvar",
        "ParticleSystemDrawable_SPRITES",
        "ExampleApplication_NUM_SOLVERS",
    ]


def test_the_entry_point_is_the_only_export():
    symbols = subprocess.run(
        ["nm", "-D", "--defined-only", _hyxOSG.__file__], capture_output=True, text=True, check=True
    ).stdout
    assert [line.split()[-1] for line in symbols.splitlines()] == ["PyInit__hyxOSG"]
