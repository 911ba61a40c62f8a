"""Every snippet of the documents runs as it stands there."""

import json
import re
import subprocess
import sys
import textwrap

import pytest
from subprocesses import ROOT, bare_environment

# Prints no code of users: these pages are for those who work on the project.
INNER = {"one_call.md"}
# What a page's snippets take for granted, as a reader of the page would have it.
SCENE = """
import os, hyx, hyxCollide, hyxIO, hyxOSG, hyxSDK, hyxtavlang, osg
app = hyxOSG.ExampleApplication()
app.init(None)
sim = simulation = hyxSDK.Simulation()
app.initSimulation(sim)
box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
box.setName("box")
sim.add(box)
app.initViewer(320, 240)
app.createVisual(sim)
app.setCameraHome(hyx.Vec3(4, -6, 3), hyx.Vec3(0, 0, 0))
app.stopAfter(0.2)
"""
ROBOT = """<robot name="leg"><link name="thigh"/><link name="shank"/>
<joint name="knee" type="revolute"><parent link="thigh"/><child link="shank"/><axis xyz="0 1 0"/>
<limit lower="0" upper="2" effort="10" velocity="1"/></joint></robot>"""
HUMANOID = """<mujoco><worldbody><body name="torso"><freejoint/><geom size="0.2"/><body name="arm" pos="0.3 0 0">
<joint name="shoulder" axis="0 1 0"/><geom size="0.1"/></body></body></worldbody></mujoco>"""
YARD = """<sdf version="1.9"><world name="yard"><model name="rover"><static>true</static><link name="base">
<sensor name="eye" type="camera"><camera><image><width>64</width><height>48</height></image></camera></sensor>
<sensor name="scan" type="gpu_lidar"><lidar><scan><horizontal><samples>9</samples><min_angle>-1</min_angle>
<max_angle>1</max_angle></horizontal></scan><range><min>0.1</min><max>9</max></range></lidar></sensor>
<sensor name="motion" type="imu"/></link></model></world></sdf>"""
GATE = """{"bodies": [{"name": "arm", "geometries": [{"shape": "sphere", "radius": 0.2, "position": [1, 0, 0]}]}],
 "constraints": [{"name": "gate", "type": "hinge", "body1": "arm"}]}"""
FILES = {"robot.urdf": ROBOT, "humanoid.xml": HUMANOID, "yard.sdf": YARD}
PRELUDES = {
    "pictures_out.md": SCENE
    + "points = osg.Geometry()\npositions, forces, thrusters = [[0, 0, 1]], [[0, 0, 9]], [box]\nn = 1\n"
    + "target = hyxOSG.RenderToImage(320, 240)\napp.addRenderTarget(target)\nwidth = height = x = y = button = i = 0\n",
    "listeners.md": SCENE
    + "body = box\ntimer = hyx.HighAccuracyTimer()\nself = hyxOSG.GuiEventListener()\nsim.add(self)\nx, y = 160, 120\n",
    "robots.md": SCENE + "".join(f"open({name!r}, 'w').write({text!r})\n" for name, text in FILES.items()),
    "scene_files.md": SCENE + f"open('yard.json', 'w').write({GATE!r})\n",
    "remote.md": SCENE + "import sys\n",
    "journals.md": SCENE + "import h5py\nplot = lambda *columns: None\n",
}


def blocks(text):
    """The snippets of a page: fenced with their language, or indented."""
    fenced = re.findall(r"^```(\w*)\n(.*?)^```", text, flags=re.MULTILINE | re.DOTALL)
    rest = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
    found = re.findall(r"(?:^\n)((?: {4}[^\n]*\n|\n(?= {4}))+)", rest, flags=re.MULTILINE)
    indented = [textwrap.dedent(block).strip("\n") + "\n" for block in found]
    return [
        *fenced,
        *(
            ("json" if block.startswith("{") else "sh" if block.startswith(("./", "python -m ")) else "python", block)
            for block in indented
        ),
    ]


PAGES = sorted(page for page in [ROOT / "README.md", *(ROOT / "docs").glob("*.md")] if page.name not in INNER)


@pytest.mark.parametrize("page", PAGES, ids=lambda page: page.stem)
def test_the_snippets_of_a_page_run_one_after_the_other(page, tmp_path):
    found = blocks(page.read_text())
    for kind, block in found:
        if kind == "json":
            json.loads(block)
    programs = [block for kind, block in found if kind == "python"]
    if not programs:
        pytest.skip("no code")
    script = tmp_path / "page.py"
    script.write_text(PRELUDES.get(page.name, "") + "\n".join(programs))
    environment = {**bare_environment(), "HYX_DISPLAY": "offscreen"}
    done = subprocess.run(
        [sys.executable, script], cwd=tmp_path, env=environment, capture_output=True, text=True, timeout=120
    )
    assert done.returncode == 0, done.stderr
