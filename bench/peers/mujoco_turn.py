"""MuJoCo's turn: bodies, meshes and shadows; it draws no clouds of points."""

import os

os.environ.setdefault("MUJOCO_GL", "egl")

import mujoco  # noqa: E402 - it reads the variable when it is imported
import numpy  # noqa: E402
import scenes  # noqa: E402

KINDS = [
    'type="box" size="0.3 0.3 0.3"',
    'type="sphere" size="0.35"',
    'type="cylinder" size="0.3 0.35"',
    'type="capsule" size="0.25 0.2"',
]


def world(bodies, shadows=False, assets=""):
    direction = numpy.array(scenes.EYE) / numpy.linalg.norm(scenes.EYE)
    right = numpy.array([1.0, 0, 0])
    axes = " ".join(map(str, [*right, *numpy.cross(direction, right)]))
    return f"""<mujoco><option timestep="{1 / 60}"/>
      <visual><global offwidth="{scenes.WIDTH}" offheight="{scenes.HEIGHT}" fovy="{scenes.FIELD_OF_VIEW}"/>
        <quality shadowsize="{1024 if shadows else 0}" offsamples="0" numslices="{scenes.SEGMENTS}"
          numstacks="{scenes.SEGMENTS // 2}"/></visual>
      <asset>{assets}</asset>
      <worldbody><light directional="true" castshadow="{str(shadows).lower()}" pos="-4 -8 20" dir="4 8 -20"/>
        <camera name="eye" pos="{" ".join(map(str, scenes.EYE))}" xyaxes="{axes}"/>{bodies}</worldbody></mujoco>"""


class Stage:
    def __init__(self, text):
        self.model = mujoco.MjModel.from_xml_string(text)
        self.data = mujoco.MjData(self.model)
        mujoco.mj_forward(self.model, self.data)
        self.renderer = mujoco.Renderer(self.model, scenes.HEIGHT, scenes.WIDTH)

    def draw(self):
        self.renderer.update_scene(self.data, "eye")
        return self.renderer.render()


def rgba(color):
    return 'rgba="{} {} {} 1"'.format(*color)


def ground():
    return '<geom type="box" size="12 12 0.1" pos="0 0 -0.1" rgba="0.6 0.6 0.6 1"/>'


def shapes(shadows=False):
    colors = scenes.colors(scenes.SHAPES)
    bodies = "".join(
        f'<body mocap="true"><geom {KINDS[i % 4]} {rgba(color)} contype="0"/></body>' for i, color in enumerate(colors)
    )
    stage = Stage(world(bodies + (ground() if shadows else ""), shadows))

    def draw(frame):
        stage.data.mocap_pos[:] = scenes.shape_places(frame)
        mujoco.mj_kinematics(stage.model, stage.data)
        return stage.draw()

    return draw


def boxes():
    bodies = "".join(
        '<body pos="{} {} {}"><freejoint/>'.format(*place) + f"<geom {KINDS[0]} {rgba(color)}/></body>"
        for place, color in zip(scenes.box_places(), scenes.colors(scenes.BOXES))
    )
    stage = Stage(world(ground() + bodies))

    def draw(frame):
        mujoco.mj_step(stage.model, stage.data)
        return stage.draw()

    return draw


def mesh():
    points, _, triangles = scenes.knobbly_ring()
    numbers = [" ".join(map(str, part.ravel())) for part in (points, triangles)]
    asset = f'<mesh name="ring" vertex="{numbers[0]}" face="{numbers[1]}"/>'
    body = '<body mocap="true"><geom type="mesh" mesh="ring" rgba="0.8 0.5 0.2 1" contype="0"/></body>'
    stage = Stage(world(body, assets=asset))

    def draw(frame):
        stage.data.mocap_quat[0] = [numpy.cos(0.02 * frame), 0, 0, numpy.sin(0.02 * frame)]
        mujoco.mj_kinematics(stage.model, stage.data)
        return stage.draw()

    return draw


if __name__ == "__main__":
    turns = {"shapes": shapes, "shadows": lambda: shapes(shadows=True), "boxes": boxes, "mesh": mesh, "first": shapes}
    scenes.compete(turns)
