"""Processes that are forked from one that has a window."""

import pytest
from subprocesses import run_python

STAGE = """
import os, sys, hyxOSG
app = hyxOSG.ExampleApplication()
app.init(None)
app.initSimulation()
app.initViewer(64, 48)
app.executeOneStepWithGraphics(__import__("hyx").HighAccuracyTimer())
"""

DRAWINGS = {
    "its window": "app.takeScreenShot('child.ppm')",
    "a window of its own": "o = hyxOSG.ExampleApplication(); o.init(None); o.initSimulation(); o.initViewer(64, 48)",
}


@pytest.mark.parametrize("drawing", DRAWINGS.values(), ids=DRAWINGS.keys())
def test_a_forked_child_is_told_that_it_cannot_draw(drawing):
    code = f"""{STAGE}
import multiprocessing, time
def draw(_):
    {drawing}
begun = time.monotonic()
with multiprocessing.get_context("fork").Pool(1) as pool:
    try:
        pool.map(draw, [1])
    except RuntimeError as error:
        assert "'spawn'" in str(error), error
        assert time.monotonic() - begun < 1
        print("told")
"""
    result = run_python(code)
    assert result.stdout.split() == ["told"], result.stderr


def test_a_child_that_ends_leaves_the_window_alone(tmp_path):
    picture = tmp_path / "after.ppm"
    code = f"""{STAGE}
child = os.fork()
if child == 0:
    app.postExecution()
    sys.exit(5)
assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 5
app.takeScreenShot({str(picture)!r})
"""
    result = run_python(code)
    assert result.returncode == 0 and picture.stat().st_size > 64 * 48 * 3, result.stderr
