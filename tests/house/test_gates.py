"""The gates of the source tree hold, and each notices a planted fault."""

import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def gate(name, tree=ROOT):
    """What the gate complains of, a line each."""
    result = subprocess.run([sys.executable, ROOT / "tools/gates" / name, tree], capture_output=True, text=True)
    found = result.stdout.strip().splitlines()
    assert result.stderr == "" and result.returncode == (1 if found else 0)
    return found


def plant(tree, files):
    for name, text in files.items():
        (tree / name).parent.mkdir(parents=True, exist_ok=True)
        (tree / name).write_text(text)


@pytest.mark.parametrize("name", ["includes.py", "constants.py"])
def test_the_tree_passes(name):
    assert gate(name) == []


def include(*headers):
    return "".join(f'#include "{header}"\n' for header in headers)


WRONG_INCLUDES = {
    "platform may not see the implementation": (
        {"platform/a/x.h": include("reference/a/x.h")},
        ["platform/a/x.h:1: platform must not include reference/a/x.h"],
    ),
    "platform serves any host": (
        {"platform/a/x.h": "#pragma once\n#include <Python.h>\n"},
        ["platform/a/x.h:2: platform serves any host, so it must not include Python.h"],
    ),
    "modules see only what is declared": (
        {"modules/a/x.cpp": include("platform/a/x.h", "reference/a/x.h")},
        ["modules/a/x.cpp:2: modules must not include reference/a/x.h"],
    ),
    "lower rooms of the binding do not see higher ones": (
        {"binding/runtime/x.cpp": include("binding/vocabulary/rows.h")},
        ["binding/runtime/x.cpp:1: binding/runtime must not include binding/vocabulary/rows.h"],
    ),
    "neighbours are named in full": (
        {"reference/a/x.cpp": include("x.h"), "reference/a/x.h": ""},
        ["reference/a/x.cpp:1: name x.h from the root of the repository"],
    ),
    "folders may not lean on each other in a ring": (
        {
            "reference/a/x.cpp": include("reference/b/x.h"),
            "reference/b/x.h": include("reference/c/d/x.h"),
            "reference/c/d/x.h": include("reference/a/x.h", "reference/c/d/y.h"),
        },
        [
            "reference has a cycle of folders: reference/a -> reference/b -> reference/c/d -> reference/a",
            "  reference/a/x.cpp:1 includes reference/b",
            "  reference/b/x.h:1 includes reference/c/d",
            "  reference/c/d/x.h:1 includes reference/a",
        ],
    ),
}


@pytest.mark.parametrize("files, complaints", WRONG_INCLUDES.values(), ids=WRONG_INCLUDES)
def test_a_wrong_include_is_noticed(tmp_path, files, complaints):
    plant(tmp_path, files)
    assert gate("includes.py", tmp_path) == complaints


SECOND_DEFINITIONS = {
    "of a name": ("constexpr double wheelZoom = -0.1;", "constexpr float wheelZoom = -0.2f;", "the constant wheelZoom"),
    "of a name in a header": (
        "inline constexpr int most{10};",
        "char const* const most = names[3];",
        "the constant most",
    ),
    "of a number": ("constexpr Real g = 9.80665;", "  static constexpr double pull{-9.80665e0};", "the value 9.80665"),
    "of a number in hexadecimal": ("constexpr int a = 16'384;", "constexpr unsigned b = 0x4000u;", "the value 16384.0"),
    "of a text": (
        'constexpr char a[] = "mark: mark";',
        'char const* const b = "mark: mark";',
        'the value "mark: mark"',
    ),
}


@pytest.mark.parametrize("first, second, what", SECOND_DEFINITIONS.values(), ids=SECOND_DEFINITIONS)
def test_a_second_definition_is_noticed(tmp_path, first, second, what):
    plant(tmp_path, {"platform/a.h": f"\n{first}\n", "reference/b.cpp": f"{second}\n"})
    (found,) = gate("constants.py", tmp_path)
    assert found.startswith(f"{what} is defined in 2 files: platform/a.h:2") and "reference/b.cpp:1" in found


def test_round_numbers_and_locals_may_agree(tmp_path):
    plant(
        tmp_path,
        {
            "reference/a.cpp": "constexpr int a = 4096;\nvoid f() {\n    double const far = 1000.5;\n}\n",
            "reference/b.cpp": "constexpr int b = 4096;\nconstexpr int c = 100000;\n    double const far = 1000.5;\n",
            "binding/c.h": "constexpr auto d = 1e5;\nconstexpr int rows[] = {1};\n",
            "binding/d.h": "constexpr int rows[] = {1};\n",
        },
    )
    assert gate("constants.py", tmp_path) == []
