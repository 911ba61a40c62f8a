"""Where the built modules are, and what every test may assume: the import root and the test modules are on the path."""
import os
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get("HYX_BUILD", ROOT / "build"))

for folder in (BUILD / "test_modules", BUILD / "python"):
    sys.path.insert(0, str(folder))
