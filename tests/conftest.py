"""Import root and test modules on the path for every test; applications off-screen, and their pictures."""

import ctypes
import os
import re
import signal
import sys

import pytest
from subprocesses import BUILD

for folder in (BUILD / "test_modules", BUILD / "python"):
    sys.path.insert(0, str(folder))
os.environ.setdefault("HYX_DISPLAY", "offscreen")
os.environ.setdefault("HYX_LOOK", "plain")
signal.signal(signal.SIGINT, signal.default_int_handler)  # a shell's background jobs start with Ctrl-C ignored

import hyx
import hyxOSG
from application_stage import read_picture

# What takes modules that are built for the tests, the build's description of the interface, or stubs outside of an
# environment: an installed wheel is tested without it, see tools/wheel/test_installed.
BUILT = re.compile(r"^(import|from) (_sample|_probe|plain_sibling)\b|interface\.json|MYPYPATH", re.MULTILINE)
INSTALLED = not (BUILD / "test_modules").is_dir()


def pytest_ignore_collect(collection_path):
    """Leaves out what needs more than the packages where these are all that there is."""
    if INSTALLED and collection_path.suffix == ".py" and collection_path.name.startswith("test_"):
        if collection_path.parent.name == "house" or BUILT.search(collection_path.read_text()):
            return True
    return None


def pytest_collection_modifyitems(items):
    """What one worker has to run by itself comes first, so that none works alone at the end."""
    items.sort(key=lambda item: item.get_closest_marker("xdist_group") is None)


@pytest.fixture(autouse=True, scope="module")
def give_back_memory():
    """The allocator keeps what large pictures took, in each of the workers that run side by side."""
    yield
    ctypes.CDLL(None).malloc_trim(0)


@pytest.fixture
def app():
    """An application with a simulation of its own, which ends with its window after the test."""
    with hyxOSG.ExampleApplication() as made:
        made.init(None)
        made.initSimulation()
        yield made
        made.postExecution()


@pytest.fixture
def window(app):
    """The same with a small window and the camera in front of the origin."""
    app.initViewer(160, 120)
    app.setCameraHome(hyx.Vec3(0, -10, 0), hyx.Vec3(0, 0, 0))
    return app


@pytest.fixture
def shoot(tmp_path):
    """Takes the application's picture."""
    count = 0

    def take(application):
        nonlocal count
        count += 1
        path = tmp_path / f"shot{count}.ppm"
        application.takeScreenShot(str(path))
        return read_picture(path)

    return take
