"""No function crashes, whatever it is called with; wrong arguments get their stated messages."""

import os
import pathlib
import subprocess
import sys

import pytest
from subprocesses import BUILD

AREAS = ["application", "visuals", "decoration", "nodes", "renderers", "legend", "iterators", "capture", "picking"]


@pytest.mark.parametrize("area", AREAS)
@pytest.mark.parametrize("how", ["fitting", "wrong"])
def test_functions_of(area, how):
    script = pathlib.Path(__file__).with_name("every_function.py")
    path = os.pathsep.join(str(BUILD / folder) for folder in ("test_modules", "python"))
    result = subprocess.run(
        [sys.executable, script, how, area],
        capture_output=True,
        text=True,
        timeout=300,
        env={**os.environ, "PYTHONPATH": path, "HYX_DISPLAY": "offscreen"},
    )
    lines = result.stdout.splitlines()
    assert lines and lines[-1] == "END", result.stdout[-2000:] + result.stderr[-4000:]
    assert [line for line in lines if line.startswith("SURPRISE")] == []
