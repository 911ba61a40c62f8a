"""Colours that are no numbers are refused where they are set, not met again in a frame."""

import hyx
import hyxOSG
import hyxSDK
import hyxTerrain
import hyxUtil
import osg
import pytest

ORIGIN, AHEAD = hyx.Vec3(), hyx.Vec3(1, 0, 0)
BACKGROUND = hyxOSG.SceneDecorator.setBackgroundColor
TAKERS = {
    "line": (hyx.Vec4, lambda things, color: hyxOSG.createLine(ORIGIN, AHEAD, color, 1)),
    "trajectory": (hyx.Vec4f, lambda t, color: hyxOSG.createFrameTrajectoryDrawable(t["sim"], t["root"], 3, color)),
    "label": (hyx.Vec4f, lambda things, color: hyxOSG.createText("a", ORIGIN, color, 1)),
    "text": (hyx.Vec4, lambda things, color: hyxOSG.Text("a", ORIGIN, color)),
    "changed text": (hyx.Vec4f, lambda things, color: hyxOSG.Text("a").setColor(color)),
    "row of text": (hyx.Vec4f, lambda things, color: things["decorator"].setText(0, "a", color)),
    "background": (hyx.Vec4f, lambda things, color: BACKGROUND(things["decorator"], color)),
    "opaque background": (hyx.Vec3, lambda things, color: BACKGROUND(things["decorator"], color, ORIGIN)),
    "spline": (hyx.Vec4f, lambda things, color: things["spline"].setColor(color)),
    "terrain": (hyx.Vec4f, lambda things, color: things["terrain"].setColor(color)),
    "fullest voxel": (hyx.Vec4f, lambda things, color: things["terrain"].setMaxVoxelValueColor(color)),
    "velocities": (hyx.Vec4, lambda things, color: things["terrain"].setVelocityFieldLineColor(color)),
}
for part in ("Ambient", "Diffuse", "Specular"):
    TAKERS[part] = (hyx.Vec4f, lambda things, color, part=part: getattr(things["light"], f"set{part}")(color))


@pytest.fixture(scope="module")
def things():
    root, sim, spline = osg.Group(), hyxSDK.Simulation(), hyxUtil.CubicSpline()
    for x in range(4):
        spline.add(hyx.Vec3(x, 0, 1))
    ground = hyxSDK.TerrainInstance(hyxTerrain.Terrain(9, 9, 0.5, 1.0))
    sim.add(ground)
    made = {"root": root, "sim": sim, "decorator": hyxOSG.SceneDecorator(160, 120), "kept": (spline, ground)}
    made["light"] = made["decorator"].getLightSource(hyxOSG.SceneDecorator.LIGHT0)
    made["spline"] = hyxOSG.SplineRenderer(spline, root)
    made["terrain"] = hyxOSG.TerrainVoxelRenderer(ground, root)
    return made


@pytest.mark.parametrize("wrong", [float("nan"), float("inf"), -float("inf")])
@pytest.mark.parametrize("taker", TAKERS)
def test_colors_that_are_no_numbers_are_refused(things, taker, wrong):
    kind, give = TAKERS[taker]
    size = 3 if kind is hyx.Vec3 else 4
    give(things, kind(*[0.5] * size))
    for place in range(size):
        parts = [0.5] * size
        parts[place] = wrong
        with pytest.raises(RuntimeError, match="parts of a colour must be finite"):
            give(things, kind(*parts))
