"""Where the graphics driver cannot make the chosen shadows, the nearest that it can are drawn, with one warning."""

import json
import pathlib

import pytest
from hyxOSG import SceneDecorator
from subprocesses import run_python

DRAW = """
import sys
sys.path[:0] = {folders!r}
import json, numpy
import hyxOSG
from decorated_stage import CASTS, the_only_stage
stage = the_only_stage()
stage.reset()
stage.visuals["ground"].setNodeMask(0xFFFFFFFF & ~CASTS)
decorator = stage.decorator
def loss(method):
    decorator.setEnableShadows(False)
    plain = stage.picture()
    decorator.setShadowMethod(method)
    decorator.setEnableShadows(True)
    for _ in range(3):
        picture = stage.picture()
    assert decorator.getShadowMethod() == method
    return (plain - picture).sum(axis=2).tolist()
print(json.dumps([loss(method) for method in {methods}]))
"""
TESTS = pathlib.Path(__file__).resolve().parents[2]
OLD = "2.1"
NO_MAPS, NO_VOLUMES = "-GL_ARB_framebuffer_object -GL_EXT_framebuffer_object", "-GL_ARB_depth_clamp"


def losses(methods, without=""):
    """What the shadows of each method take from the picture, and the warnings."""
    driver = {"MESA_GL_VERSION_OVERRIDE": OLD, "MESA_EXTENSION_OVERRIDE": without} if without else {}
    code = DRAW.format(folders=[str(TESTS), str(TESTS / "hyxOSG" / "decoration")], methods=list(map(int, methods)))
    done = run_python(code, **driver)
    assert done.returncode == 0, done.stderr
    warnings = [line for line in (done.stdout + done.stderr).splitlines() if "cannot do shadow method" in line]
    return json.loads([line for line in done.stdout.splitlines() if line.startswith("[[")][0]), warnings


@pytest.fixture(scope="module")
def usual():
    maps, volumes = losses([SceneDecorator.SHADOWMAP, SceneDecorator.SHADOWVOLUME])[0]
    return {"maps": maps, "volumes": volumes}


def test_volumes_are_replaced_by_hard_maps(usual):
    drawn, warnings = losses([SceneDecorator.SHADOWVOLUME], NO_VOLUMES)
    assert drawn == [usual["maps"]] and usual["maps"] != usual["volumes"]
    assert len(warnings) == 1 and "method 2; method 1 stands in" in warnings[0]


def test_maps_are_replaced_by_volumes(usual):
    drawn, warnings = losses([SceneDecorator.SOFT_SHADOWMAP, SceneDecorator.SHADOWTEXTURE], NO_MAPS)
    assert drawn == [usual["volumes"]] * 2
    assert len(warnings) == 2, "one for each method"


def test_without_either_there_are_no_shadows():
    drawn, warnings = losses([SceneDecorator.SOFT_SHADOWMAP, SceneDecorator.SOFT_SHADOWMAP], f"{NO_MAPS} {NO_VOLUMES}")
    assert not any(any(row) for row in drawn[0])
    assert len(warnings) == 1 and "there are no shadows" in warnings[0]


def test_a_usual_driver_does_them_all():
    assert losses([0, 1, 2, 3, 4, 5])[1] == []
