"""Each short example runs as it stands there, is short, and leaves a picture that shows something."""

import ast
import os
import subprocess
import sys

import numpy
import pytest
from PIL import Image
from subprocesses import BUILD, ROOT

FOLDER = ROOT / "examples" / "short"
SCRIPTS = sorted(FOLDER.rglob("*.py"))


def code_lines(script):
    text = script.read_text()
    after = ast.parse(text).body[0].end_lineno  # the docstring says what is seen
    return sum(1 for line in text.splitlines()[after:] if line.strip())


def test_they_are_many_and_short():
    assert len(SCRIPTS) >= 60
    assert {script.stem: code_lines(script) for script in SCRIPTS if code_lines(script) > 30} == {}
    assert len({script.stem for script in SCRIPTS}) == len(SCRIPTS)


def test_each_folder_is_told_of():
    told = (FOLDER / "README.md").read_text()
    assert [path.name for path in FOLDER.iterdir() if path.is_dir() and f"`{path.name}/`" not in told] == []


@pytest.mark.slow
@pytest.mark.parametrize("script", SCRIPTS, ids=lambda script: f"{script.parent.name}/{script.stem}")
def test_a_short_example_draws_its_picture(script, tmp_path):
    environment = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "HYX_DISPLAY": "offscreen"}
    command = [sys.executable, "-W", "error", script]
    done = subprocess.run(command, cwd=tmp_path, env=environment, capture_output=True, text=True, timeout=120)
    assert (done.returncode, done.stderr) == (0, ""), done.stderr
    picture = numpy.asarray(Image.open(tmp_path / f"{script.stem}.png").convert("RGB")).astype(int)
    assert picture.shape[1] >= 600 or picture.shape[1] == 320
    # More than a background, which is even from side to side.
    beside = numpy.abs(picture - numpy.median(picture, axis=1, keepdims=True)).max(axis=2)
    assert (beside > 20).mean() > 0.005
