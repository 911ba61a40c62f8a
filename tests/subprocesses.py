"""Where the built modules are, and how to run Python code in a fresh interpreter that sees them."""

import os
import pathlib
import shutil
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get("HYX_BUILD", ROOT / "build"))
SANITIZED = "ASAN_OPTIONS" in os.environ
weighs_memory = pytest.mark.skipif(SANITIZED, reason="the sanitizers keep freed memory")


def plain_environment() -> dict[str, str]:
    """For programs of others, which the sanitizers' libraries must not be loaded into."""
    return {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}


def bare_environment() -> dict[str, str]:
    """What a script finds that knows nothing of the tests."""
    kept = {name: value for name, value in os.environ.items() if name in ("LD_PRELOAD", "ASAN_OPTIONS")}
    return {**kept, "PYTHONPATH": str(BUILD / "python"), "PATH": "/usr/bin:/bin"}


def encoders() -> list[int]:
    """The encoders that this process runs."""
    command = ["pgrep", "-P", str(os.getpid()), "ffmpeg"]
    found = subprocess.run(command, capture_output=True, text=True, env=plain_environment())
    return [int(line) for line in found.stdout.split()]


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
