"""The gates pass on this tree, and each stops what it is for."""

import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
VENV = pathlib.Path(sys.executable).parent
LONG = "\n".join(f"x{number} = {number}" for number in range(401))
LONG_BODY = "\n".join("    step();" for _ in range(60))

# Gate, file of a small tree, its text, and what the gate must say of it.
FAULTS = [
    ("heads", "reference/a.cpp", "#include <vector>\n", "a.cpp:1: starts with no sentence"),
    ("heads", "platform/a.h", "/// Documents what follows, not the file.\nclass A;\n", "a.h:1: starts with"),
    ("heads", "tools/a.py", "import os\n", "a.py:1: starts with no sentence"),
    ("heads", "tools/CMakeLists.txt", "project(a)\n", "CMakeLists.txt:1: starts with"),
    ("heads", "tools/run", "#!/bin/sh\nexit 0\n", "run:1: starts with"),
    ("lengths", "tests/a.py", LONG, "a.py:400: 401 lines"),
    ("lengths", "reference/a.cpp", f"void far() {{\n{LONG_BODY}\n}}\n", "a.cpp:1: far has 62 lines"),
    ("lengths", "tests/a.py", f"def far():\n{LONG_BODY}\n".replace(";", ""), "a.py:1: far has 61 lines"),
    ("names", "reference/a.cpp", "int two_words;\n", "a.cpp:1: no variable is called two_words"),
    ("names", "reference/a.cpp", "void two_words(int x) {}\n", "a.cpp:1: no function is called two_words"),
    ("names", "reference/a.cpp", "void f(int two_words) {}\n", "a.cpp:1: no variable is called two_words"),
    ("names", "platform/a.h", "class A {\n    int count;\n};\n", "a.h:2: a private field starts with m_, unlike count"),
    ("names", "platform/a.h", "class A {\n    struct Impl;\n};\n", "a.h:2: hidden state is called Implementation"),
    (
        "names",
        "platform/a.h",
        "class A {\n    std::unique_ptr<Implementation> m_hidden;\n};\n",
        "a.h:2: the hidden state is held by m_implementation, not m_hidden",
    ),
    ("names", "reference/a.cpp", "struct two_words {};\n", "a.cpp:1: no type is called two_words"),
    ("names", "binding/a.cpp", "int twoWords;\n", "a.cpp:1: no variable is called twoWords"),
    ("names", "tests/a.cpp", "void twoWords() {}\n", "a.cpp:1: no function is called twoWords"),
    ("names", "binding/a.h", "#define twoWords 2\n", "a.h:1: no macro is called twoWords"),
    ("names", "binding/a.h", "enum class A { twoWords };\n", "a.h:1: no enumerator is called twoWords"),
]


def run_gate(gate, root):
    command = [sys.executable, ROOT / "tools/gates" / f"{gate}.py", root]
    return subprocess.run(command, capture_output=True, text=True)


@pytest.mark.parametrize("gate", ["heads", "lengths", "names"])
def test_this_tree_passes(gate):
    done = run_gate(gate, ROOT)
    assert (done.stdout, done.stderr, done.returncode) == ("", "", 0)


@pytest.mark.parametrize("gate, name, text, complaint", FAULTS)
def test_a_gate_stops_what_it_is_for(tmp_path, gate, name, text, complaint):
    file = tmp_path / name
    file.parent.mkdir()
    file.write_text(text)
    done = run_gate(gate, tmp_path)
    assert done.returncode == 1 and complaint in done.stdout, done.stderr
    assert done.stdout.startswith(f"{name}:")


def test_names_that_the_interface_fixes_are_let_pass(tmp_path):
    for name, text in (
        ("platform/a.h", "class A {\npublic:\n    int OddName() const;\n    void twoWords();\n};\n"),
        ("modules/a.cpp", "FUNCTION(A_OddName, METHOD(A, OddName, () const))"),
        ("binding/a.cpp", "void SWIG_Python_Start();\nstruct B : A {\n    void twoWords() override;\n};\n"),
    ):
        (tmp_path / name).parent.mkdir()
        (tmp_path / name).write_text(text)
    done = run_gate("names", tmp_path)
    assert (done.stdout, done.stderr, done.returncode) == ("", "", 0)


def test_the_sources_are_in_the_one_format():
    done = subprocess.run([ROOT / "tools/format", "--check"], capture_output=True, text=True)
    assert done.returncode == 0, done.stdout + done.stderr


def test_the_format_stops_another_one(tmp_path):
    (tmp_path / ".clang-format").write_text((ROOT / ".clang-format").read_text())
    native, script = tmp_path / "a.cpp", tmp_path / "a.py"
    native.write_text("int * x ;\n")
    script.write_text("x = {  'a':1 }\n")
    assert subprocess.run([VENV / "clang-format", "--dry-run", "--Werror", native], capture_output=True).returncode
    assert subprocess.run([VENV / "ruff", "format", "--check", script], capture_output=True).returncode


def test_python_is_free_of_what_the_linter_finds(tmp_path):
    command = [VENV / "ruff", "check", "--quiet", "--config", ROOT / "pyproject.toml"]
    done = subprocess.run([*command, ROOT], capture_output=True, text=True)
    assert done.returncode == 0, done.stdout
    fault = tmp_path / "a.py"
    fault.write_text("import os\n")
    assert "F401" in subprocess.run([*command, fault], capture_output=True, text=True).stdout
