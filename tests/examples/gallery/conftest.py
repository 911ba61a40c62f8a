"""The pictures of the gallery, drawn once for all tests of this folder."""

import os
import subprocess
import sys
from pathlib import Path

import pytest

EXAMPLES = Path(__file__).resolve().parents[3] / "examples"
sys.path.insert(0, str(EXAMPLES))

from tile import Tile  # noqa: E402


@pytest.fixture(scope="session")
def drawn(tmp_path_factory):
    """All tiles as the script draws them: by sheet, by label."""
    folder = tmp_path_factory.mktemp("gallery")
    command = [sys.executable, str(EXAMPLES / "visuals_gallery.py"), "--tiles", "--output", str(folder)]
    variables = {**os.environ, "PYTHONPATH": os.pathsep.join(sys.path), "HYX_DISPLAY": "offscreen"}
    done = subprocess.run(command, capture_output=True, text=True, timeout=300, env=variables)
    assert done.returncode == 0, done.stderr
    return folder, {
        sheet.name: {file.stem: Tile(file) for file in sheet.iterdir()} for sheet in folder.iterdir() if sheet.is_dir()
    }
