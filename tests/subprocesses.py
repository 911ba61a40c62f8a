"""Runs Python code in a fresh interpreter that sees the built modules."""
import os
import subprocess
import sys

from conftest import BUILD


def run_python(code: str, **environment: str) -> subprocess.CompletedProcess:
    path = os.pathsep.join(str(BUILD / folder) for folder in ("test_modules", "python"))
    variables = {**os.environ, "PYTHONPATH": path, **environment}
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=120, env=variables)
