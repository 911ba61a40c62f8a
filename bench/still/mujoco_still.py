"""MuJoCo's still: its default, or with large shadow maps, eight samples, a reflecting ground and a sky."""

import os

os.environ.setdefault("MUJOCO_GL", "egl")

import mujoco  # noqa: E402 - it reads the variable when it is imported
import numpy  # noqa: E402
import stage  # noqa: E402
from PIL import Image  # noqa: E402

picture, best, model = stage.asked()


def numbers(values):
    return " ".join(map(str, values))


def geom(kind, size, place, color, more=""):
    rgba = numbers((*color, 1)[:4])
    return f'<geom type="{kind}" size="{numbers(size)}" pos="{numbers(place)}" rgba="{rgba}" {more}/>'


back = numpy.subtract(stage.EYE, stage.TARGET)
right = numpy.cross((0, 0, 1), back)
quality = '<quality shadowsize="4096" offsamples="8"/>' if best else ""
sky = '<texture type="skybox" builtin="gradient" rgb1="0.6 0.7 0.85" rgb2="0.9 0.92 0.95" width="256" height="256"/>'
ball = (stage.RADIUS,)
geoms = [geom("plane", (stage.GROUND_HALF, stage.GROUND_HALF, 1), (0, 0, 0), stage.GROUND_COLOR)]
geoms += [geom("box", [half] * 3, place, color) for place, half, color in stage.TOWER]
geoms += [
    geom("sphere", ball, stage.MATTE, stage.MATTE_COLOR, 'material="matte"'),
    geom("sphere", ball, stage.PLASTIC, stage.PLASTIC_COLOR, 'material="plastic"'),
    geom("sphere", ball, stage.METAL, stage.METAL_COLOR, 'material="metal"'),
    geom("box", [stage.GLASS_HALF] * 3, stage.GLASS, stage.GLASS_COLOR),
    f'<geom type="mesh" mesh="vase" pos="{numbers(stage.MODEL_PLACE)}" rgba="{numbers(stage.MODEL_COLOR)} 1"/>',
]
text = f"""<mujoco><visual><global offwidth="{stage.WIDTH}" offheight="{stage.HEIGHT}" fovy="{stage.FIELD_OF_VIEW}"/>
  {quality}</visual>
  <asset>{sky if best else ""}<mesh name="vase" file="{model}" inertia="shell"/>
    <material name="matte" specular="0"/><material name="plastic" specular="0.5" shininess="0.7"/>
    <material name="metal" specular="0.9" shininess="0.3"/></asset>
  <worldbody><light directional="true" pos="-4 -8 20" dir="4 8 -20"/>
    <camera name="eye" pos="{numbers(stage.EYE)}" xyaxes="{numbers((*right, *numpy.cross(back, right)))}"/>
    {"".join(geoms)}</worldbody></mujoco>"""
world = mujoco.MjModel.from_xml_string(text)
data = mujoco.MjData(world)
mujoco.mj_forward(world, data)
renderer = mujoco.Renderer(world, stage.HEIGHT, stage.WIDTH)
renderer.update_scene(data, "eye")
scene = renderer.scene
mujoco.mjv_initGeom(
    scene.geoms[scene.ngeom],
    mujoco.mjtGeom.mjGEOM_LABEL,
    numpy.full(3, 0.1),
    numpy.array(stage.LABEL_PLACE),
    numpy.eye(3).ravel(),
    numpy.ones(4, numpy.float32),
)
scene.geoms[scene.ngeom].label = stage.LABEL
scene.ngeom += 1
Image.fromarray(renderer.render()).save(picture)
