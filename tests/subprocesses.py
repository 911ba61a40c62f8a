"""Where the built modules are, and how to run Python code in a fresh interpreter that sees them."""

import os
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get("HYX_BUILD", ROOT / "build"))


def run_python(
    *arguments: str, on_display: bool = False, extra_path: str = "", **environment: str
) -> subprocess.CompletedProcess:
    """Runs code, when it is the only argument, or a program with arguments; `on_display` on a display of its own."""
    path = os.pathsep.join([str(BUILD / "test_modules"), str(BUILD / "python"), *extra_path.split()])
    variables = {**os.environ, "PYTHONPATH": path, **environment}
    command = [sys.executable, *(("-c", *arguments) if len(arguments) == 1 else arguments)]
    if on_display:
        command = ["xvfb-run", "-a", "-s", "-screen 0 800x600x24", *command]
        variables["HYX_DISPLAY"] = "window"
    return subprocess.run(command, capture_output=True, text=True, timeout=120, env=variables)


has_display = bool(shutil.which("xvfb-run") and shutil.which("xdotool"))
