"""Random lives of texts end in order."""

import pathlib
import sys

import pytest
from subprocesses import run_python

PROGRAM = pathlib.Path(__file__).with_name("random_texts.py")


@pytest.mark.parametrize("seed", [22, 27, 29, 39])  # with letters that run away from the eye
def test_texts_of_all_kinds_come_change_and_go(seed):
    result = run_python(str(PROGRAM), str(seed), extra_path=" ".join(sys.path))
    assert (result.returncode, result.stdout, result.stderr) == (0, "lived\n", "")
