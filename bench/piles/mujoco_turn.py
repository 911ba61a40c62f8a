"""MuJoCo's turn at the pile of boxes."""

import mujoco
import numpy
import pile

bodies = "".join(
    f'<body pos="{x} {y} {z}" quat="{qw} {qx} {qy} {qz}"><freejoint/>'
    f'<geom type="box" size="{pile.HALF} {pile.HALF} {pile.HALF}" density="{pile.DENSITY}"/></body>'
    for (x, y, z), (qx, qy, qz, qw) in pile.starts(pile.arguments()[0])
)
model = mujoco.MjModel.from_xml_string(
    f'<mujoco><option timestep="{pile.STEP}"/><size memory="1G"/>'
    f'<default><geom friction="{pile.FRICTION}"/></default>'
    f'<worldbody><geom type="plane" size="50 50 1"/>{bodies}</worldbody></mujoco>'
)
data = mujoco.MjData(model)


def look():
    poses = data.qpos.reshape(-1, 7)[:, [0, 1, 2, 4, 5, 6, 3]]
    speeds = numpy.linalg.norm(data.qvel.reshape(-1, 6)[:, :3], axis=1)
    return poses.tolist(), float(speeds.mean())


pile.turn(lambda: mujoco.mj_step(model, data), look)
