"""The set-up scripts choose an interpreter that can build extension modules."""

import os
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def find_python(**variables):
    environment = {k: v for k, v in os.environ.items() if k != "PYTHON"} | variables
    return subprocess.run([ROOT / "tools" / "find_python"], capture_output=True, text=True, env=environment)


def test_the_chosen_interpreter_is_new_enough_and_has_headers():
    chosen = find_python()
    assert chosen.returncode == 0, chosen.stderr
    check = """import os, sys, sysconfig
print(sys.version_info >= (3, 10), os.path.exists(sysconfig.get_path('include') + '/Python.h'))"""
    assert subprocess.run([chosen.stdout.strip(), "-c", check], capture_output=True, text=True).stdout == "True True\n"


def test_the_variable_decides():
    assert Path(find_python(PYTHON=sys.executable).stdout.strip()) == Path(sys.executable)


def test_an_unusable_interpreter_is_refused_with_the_reason():
    for value, reason in (("/no/such/python", "is no program"), ("/bin/true", "no development files")):
        refused = find_python(PYTHON=value)
        assert refused.returncode == 1 and reason in refused.stderr and refused.stdout == ""


def test_every_package_is_listed_once():
    for file in ("packages.txt", "tools/requirements.txt"):
        lines = [line.split("#")[0].strip() for line in (ROOT / file).read_text().splitlines()]
        names = [line.split("==")[0] for line in lines if line]
        assert len(names) == len(set(names))
