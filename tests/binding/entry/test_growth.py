"""What scripts make and drop leaves no memory behind, whatever its class."""

import pathlib

import pytest
from subprocesses import ROOT, run_python, weighs_memory


@weighs_memory
@pytest.mark.parametrize(("program", "seconds", "kinds"), [("growth.py", 0.1, 150), ("drawn_growth.py", 0.3, 14)])
def test_nothing_grows(program, seconds, kinds):
    script = pathlib.Path(__file__).with_name(program)
    result = run_python(script, "10000", str(seconds), extra_path=str(ROOT / "tests"), HYX_DISPLAY="offscreen")
    lines = result.stdout.splitlines()
    assert result.returncode == 0 and lines, result.stdout[-2000:] + result.stderr[-4000:]
    assert [line for line in lines if line.startswith("GROWS")] == []
    assert int(lines[-1].removeprefix("WATCHED ")) >= kinds
