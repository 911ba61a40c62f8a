"""Where the built modules are, and how to run Python code in a fresh interpreter that sees them."""
import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get("HYX_BUILD", ROOT / "build"))


def run_python(code: str, **environment: str) -> subprocess.CompletedProcess:
    path = os.pathsep.join(str(BUILD / folder) for folder in ("test_modules", "python"))
    variables = {**os.environ, "PYTHONPATH": path, **environment}
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=120, env=variables)
