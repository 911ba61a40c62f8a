"""Models that a package brings. Not imported: that would load 200 MB of libraries."""

import importlib.util
import pathlib

import pytest

_FOUND = importlib.util.find_spec("pydrake")
SHARE = pathlib.Path(_FOUND.origin).parent / "share" / "drake" if _FOUND else pathlib.Path("not installed")
needs_models = pytest.mark.skipif(not _FOUND, reason="tools/requirements-models.txt is not installed")
