"""Every test may assume that the import root and the test modules are on the path."""
import sys

from subprocesses import BUILD

for folder in (BUILD / "test_modules", BUILD / "python"):
    sys.path.insert(0, str(folder))
