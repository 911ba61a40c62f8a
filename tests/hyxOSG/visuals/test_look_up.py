"""Which plugins are loaded, and which files a model may name."""

import shutil
import subprocess
import sys

import pytest
from subprocesses import BUILD, SANITIZED, run_python

PLUGINS = "osgPlugins-3.6.5"  # the folder's name in the library that is installed
TELLTALE = """
#include <stdio.h>
__attribute__((constructor)) static void run(void) { fclose(fopen("ran", "w")); }
"""


@pytest.fixture
def planted(tmp_path):
    """A working folder with plugins that leave a file when they are loaded."""
    (tmp_path / PLUGINS).mkdir()
    source = tmp_path / "telltale.c"
    source.write_text(TELLTALE)
    built = tmp_path / "telltale.so"
    subprocess.run(["cc", "-shared", "-fPIC", "-o", built, source], check=True)
    for kind in ("png", "jpeg", "bmp", "obj", "stl", "osg", "freetype", "unheard"):
        shutil.copy(built, tmp_path / PLUGINS / f"osgdb_{kind}.so")
        shutil.copy(built, tmp_path / f"osgdb_{kind}.so")
    return tmp_path


USES = """
import os, sys
os.chdir(sys.argv[1])
import hyx, hyxOSG, osgDB
app = hyxOSG.ExampleApplication()
app.init(None)
app.initSimulation()
app.initViewer(64, 48)
app.takeScreenShot("shot.png")
assert osgDB.readImageFile("shot.png")
for name in ("a.jpg", "a.bmp", "a.stl", "a.osg", "a.unheard"):
    open(name, "w").write("nothing")
    osgDB.readNodeFile(name)
    osgDB.readImageFile(name)
    hyxOSG.readNodeFile(name)
hyxOSG.createText("text", hyx.Vec3()) if hasattr(hyxOSG, "createText") else None
"""


def test_no_code_of_the_working_folder_runs(planted):
    script = planted / "uses.py"
    script.write_text(USES)
    result = run_python(str(script), str(planted), OSG_LIBRARY_PATH=".:relative")
    assert result.returncode == 0, result.stderr
    assert not (planted / "ran").exists()


OBJ = """mtllib {material}
v 0 0 0
v 1 0 0
v 0 1 0
vt 0 0
usemtl stone
f 1/1 2/1 3/1
"""
PROXY = """ProxyNode {{
  FileNameList {{
    {name}
  }}
  num_children 0
}}
"""
NAMING = {
    "a material": ("obj", lambda name: OBJ.format(material=name)),
    "another model": ("osg", lambda name: PROXY.format(name=name)),
}


@pytest.mark.skipif(SANITIZED or not shutil.which("strace"), reason="needs strace, alone, to see what is opened")
@pytest.mark.parametrize("extension, write", NAMING.values(), ids=NAMING.keys())
@pytest.mark.parametrize("way", ["../secret.{0}", "{1}/secret.{0}", "link.{0}"])
def test_a_model_opens_only_files_below_its_own_folder(tmp_path, extension, write, way):
    outside = {"obj": "mtl", "osg": "osg"}[extension]
    secret = tmp_path / f"secret.{outside}"
    secret.write_text("newmtl stone\n" if outside == "mtl" else "Group {}\n")
    folder = tmp_path / "model"
    folder.mkdir()
    (folder / f"link.{outside}").symlink_to(secret)
    model = folder / f"model.{extension}"
    model.write_text(write(way.format(outside, tmp_path)))
    log = tmp_path / "log"
    script = tmp_path / "read.py"
    script.write_text(
        "import sys, hyxOSG, osgDB\nfor read in (hyxOSG.readNodeFile, osgDB.readNodeFile): read(sys.argv[1])\n"
    )
    command = ["strace", "-f", "-e", "trace=open,openat", "-o", log, sys.executable, script, model]
    environment = {"PYTHONPATH": str(BUILD / "python"), "PATH": "/usr/bin:/bin"}
    subprocess.run(command, env=environment, check=True, capture_output=True, timeout=60)
    opened = [line for line in log.read_text().splitlines() if " = -1 " not in line]
    assert any(str(model) in line for line in opened)
    assert not [line for line in opened if "secret" in line or "link." in line]
