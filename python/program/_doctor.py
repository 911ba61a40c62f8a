"""What of the library works on this machine, and what to install for the rest."""

from __future__ import annotations

import importlib.util
import os
import shutil
import subprocess
import sys
import time
from collections.abc import Callable

from _hyx_extras.film_encoding import program, works

DRAW = """
import hyx, hyxOSG, sys
app = hyxOSG.ExampleApplication()
app.init(None)
app.initViewer(64, 48)
app.step()
print("window" if not app.hasOffscreenWindow() else "off-screen")
"""

WRITE = """
import os, tempfile, hyx, hyxOSG
file = os.path.join(tempfile.mkdtemp(), "text.png")
def picture():
    app.takeScreenShot(file)
    with open(file, "rb") as drawn:
        return drawn.read()
app = hyxOSG.ExampleApplication()
app.init(None)
app.initViewer(128, 64)
app.step()
before = picture()
text = hyxOSG.Text("Text", hyx.Vec3(10, 10, 1), hyx.Vec4(1, 0, 0, 1))
text.setCharacterSize(40)
text.setAxisAlignment(hyxOSG.Text.XY_PLANE)
app.getSceneDecorator().getHud().addChild(text)
app.step()
after = picture()
os.remove(file)
os.rmdir(os.path.dirname(file))
if after == before:
    raise SystemExit("no letter is drawn")
"""


def draws(kind: str, script: str = DRAW) -> tuple[bool, str]:
    """Draws in a process of its own, so that a broken driver ends only that."""
    start = time.monotonic()
    done = subprocess.run(
        [sys.executable, "-c", script],
        env={**os.environ, "HYX_DISPLAY": kind},
        capture_output=True,
        text=True,
        timeout=60,
    )
    reason = done.stderr.strip().splitlines()[-1:] or ["the process ended"]
    return (
        done.returncode == 0,
        f"{time.monotonic() - start:.1f} s to the first frame" if not done.returncode else reason[0],
    )


def display() -> tuple[bool, str]:
    if not os.environ.get("DISPLAY"):
        return False, "DISPLAY is not set: everything is drawn off-screen, and --rpc-port shows it in a browser"
    return draws("window")


def films() -> tuple[bool, str]:
    found = shutil.which(program())
    if not found:
        return False, "ffmpeg is not found"
    return (True, found) if works("libx264") else (False, f"{found} has no encoder for H.264")


def text() -> tuple[bool, str]:
    drawn, detail = draws("offscreen", WRITE)
    return drawn, "" if drawn else detail


def module(name: str) -> Callable[[], tuple[bool, str]]:
    return lambda: (importlib.util.find_spec(name) is not None, "")


CHECKS = (
    ("drawing off-screen", lambda: draws("offscreen"), "apt-get install libegl1 libgl1-mesa-dri"),
    ("a window", display, "a display, and apt-get install libgl1-mesa-dri"),
    ("films", films, "apt-get install ffmpeg, or pip install imageio-ffmpeg"),
    ("text", text, "apt-get install fontconfig fonts-dejavu-core"),
    ("arrays", module("numpy"), "pip install numpy"),
    ("live windows in notebooks", module("jupyter_rfb"), "pip install jupyter_rfb"),
    ("journals in Python", module("h5py"), "pip install h5py"),
)


def doctor() -> int:
    """Prints a line for each thing; 1 when nothing can be drawn."""
    working = {}
    for name, check, remedy in CHECKS:
        try:
            working[name], detail = check()
        except (OSError, subprocess.SubprocessError) as error:
            working[name], detail = False, str(error)
        mark = "works  " if working[name] else "missing"
        print(f"{mark}  {name}{': ' + detail if detail else ''}{'' if working[name] else f'  ({remedy})'}")
    return 0 if working["drawing off-screen"] else 1
