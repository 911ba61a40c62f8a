"""SAPIEN's turn at the pile of boxes."""

import numpy
import pile
import sapien

scene = sapien.Scene([sapien.physx.PhysxCpuSystem()])
scene.set_timestep(pile.STEP)
material = sapien.physx.PhysxMaterial(pile.FRICTION, pile.FRICTION, 0.0)
scene.add_ground(0, render=False, material=material)
boxes = []
for place, (x, y, z, w) in pile.starts(pile.arguments()[0]):
    builder = scene.create_actor_builder()
    builder.add_box_collision(half_size=[pile.HALF] * 3, material=material, density=pile.DENSITY)
    builder.set_initial_pose(sapien.Pose(place, [w, x, y, z]))
    boxes.append(builder.build().find_component_by_type(sapien.physx.PhysxRigidDynamicComponent))


def look():
    rows = [[*box.pose.p.tolist(), *box.pose.q[[1, 2, 3, 0]].tolist()] for box in boxes]
    return rows, float(numpy.mean([numpy.linalg.norm(box.linear_velocity) for box in boxes]))


pile.turn(scene.step, look)
