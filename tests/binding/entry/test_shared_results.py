"""Whichever package comes first, results give back what they took, and shared ones keep their objects."""

import pathlib

import pytest
from subprocesses import run_python

PACKAGES = [
    *("hyx", "hyxCollide", "hyxSDK", "hyxRender", "hyxIO", "hyxUtil", "hyxNet", "hyxModel", "hyxSensor", "hyxTerrain"),
    *("hyxWire", "hyxCable", "hyxtavlang", "osg", "osgViewer", "osgGA", "osgText", "osgDB", "hyxOSG"),
]
# Some of those that must hand out an owner, lest the walk reaches nothing.
SHARED = {"Group_getChild", "Node_getStateSet", "ImageVector___getitem__", "Viewer_getCamera", "Lidar_getFrame"}


@pytest.mark.parametrize("first", PACKAGES)
def test_getters_keep_the_hold_on_the_type_table_balanced(first):
    script = pathlib.Path(__file__).with_name("shared_results.py")
    result = run_python(script, first, *PACKAGES, HYX_DISPLAY="offscreen")
    lines = result.stdout.splitlines()
    assert lines and lines[-1] == "END", result.stdout[-2000:] + result.stderr[-4000:]
    assert [line for line in lines if line.startswith("SURPRISE")] == []
    assert set(lines[-2].split()) >= SHARED
