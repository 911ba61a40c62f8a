"""What scripts make and drop leaves no memory behind, whatever its class."""

import pathlib

from subprocesses import run_python


def test_no_class_grows():
    script = pathlib.Path(__file__).with_name("growth.py")
    result = run_python(script, "10000", "0.1", HYX_DISPLAY="offscreen")
    lines = result.stdout.splitlines()
    assert result.returncode == 0 and lines, result.stdout[-2000:] + result.stderr[-4000:]
    assert [line for line in lines if line.startswith("GROWS")] == []
    assert int(lines[-1].removeprefix("WATCHED ")) > 150
