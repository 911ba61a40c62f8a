"""Model files bring their shapes, not their light, and their pictures in the size that they have."""

import hyx
import hyxCollide
import hyxOSG
import picture_files
import pytest
from subprocesses import run_python

COLLADA = """<?xml version="1.0"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<library_lights><light id="lamp"><technique_common><point><color>0 1 0</color></point></technique_common></light>
</library_lights>
<library_geometries><geometry id="mesh"><mesh>
<source id="p"><float_array id="pa" count="9">0 0 0 1 0 0 0 1 0</float_array><technique_common>
<accessor source="#pa" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/>
<param name="Z" type="float"/>
</accessor></technique_common></source><vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles></mesh></geometry>
</library_geometries>
<library_visual_scenes><visual_scene id="scene"><node><translate>0 -6 0</translate><instance_light url="#lamp"/></node>
<node><instance_geometry url="#mesh"/></node></visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#scene"/></scene></COLLADA>
"""

NATIVE = """Group { name "root"
  StateSet { GL_LIGHT1 ON GL_LIGHT0 OFF }
  num_children 2
  LightSource { name "lamp" referenceFrame RELATIVE_TO_PARENTS
    Light { light_num 0 ambient 0 1 0 1 diffuse 0 1 0 1 position 0 -6 0 1 } }
  Group { name "part" StateSet { LightModel { ambientIntensity 0 1 0 1 twoSided TRUE } } } }
"""


@pytest.mark.parametrize("name, text", [("lit.dae", COLLADA), ("lit.osg", NATIVE)])
def test_lights_in_a_model_file_stay_out_of_the_scene(studio, tmp_path, name, text):
    ball = hyxCollide.Geometry(hyxCollide.Sphere(0.8))
    hyxOSG.createVisual(ball, studio.root)
    before = studio.picture()
    assert before.lit() > 1000
    (tmp_path / name).write_text(text)
    model = hyxOSG.readNodeFile(str(tmp_path / name), False)
    outer = hyxOSG.Transform()
    outer.setTranslate(hyx.Vec3(0, -20, 0))  # behind the camera: only its light could be seen
    outer.addChild(model)
    studio.root.addChild(outer)
    hyxOSG.createVisual(ball, model.asGroup())  # and what stands under the model is lit like everything else
    assert studio.picture().difference(before) == 0


DRAW = """
import hyx, hyxCollide, hyxOSG
app = hyxOSG.ExampleApplication()
app.init(None)
app.initViewer(64, 64, True)
root = app.getSceneRoot()
root.addChild(hyxOSG.readNodeFile({model!r}))
root.addChild(hyxOSG.readNodeFile({exchange!r}))
ball = hyxCollide.Geometry(hyxCollide.Sphere(0.5))
visual = hyxOSG.createVisual(ball, root)
hyxOSG.setTexture(visual, {picture!r})
app.getSceneDecorator().setLogoFile({picture!r})
app.setCameraHome(hyx.Vec3(0, -3, 0), hyx.Vec3())
app.takeScreenShot({shot!r})
"""


def test_textures_keep_the_size_of_their_pictures(tmp_path):
    """No driver that can be met today needs sizes that are powers of two, and scaling says so on the console."""
    picture = picture_files.one_colour(tmp_path / "odd.png", 1, 0, 0, size=37)
    corners = "v -1 1 -1\nv 1 1 -1\nv 0 1 1\nvt 0 0\nvt 1 0\nvt 0 1\n"
    (tmp_path / "m.obj").write_text(f"mtllib m.mtl\n{corners}usemtl red\nf 1/1 2/2 3/3\n")
    (tmp_path / "m.mtl").write_text("newmtl red\nmap_Kd odd.png\n")
    (tmp_path / "m.ac").write_text(
        'AC3Db\nMATERIAL "" rgb 1 1 1 amb 1 1 1 emis 0 0 0 spec 0 0 0 shi 1 trans 0\nOBJECT poly\n'
        'texture "odd.png"\nnumvert 3\n-1 1 -1\n1 1 -1\n0 1 1\nnumsurf 1\nSURF 0x20\nmat 0\nrefs 3\n'
        "0 0 0\n1 1 0\n2 0 1\nkids 0\n"
    )
    names = {
        "model": str(tmp_path / "m.obj"),
        "exchange": str(tmp_path / "m.ac"),
        "picture": picture,
        "shot": str(tmp_path / "shot.png"),
    }
    drawn = run_python(DRAW.format(**names))
    assert drawn.returncode == 0, drawn.stderr
    assert "Scaling" not in drawn.stdout + drawn.stderr
