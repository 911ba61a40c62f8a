"""PyBullet's turn at the pile of boxes."""

import math

import pile
import pybullet

pybullet.connect(pybullet.DIRECT)
pybullet.setGravity(0, 0, -9.81)
pybullet.setTimeStep(pile.STEP)
plane = pybullet.createMultiBody(0, pybullet.createCollisionShape(pybullet.GEOM_PLANE))
pybullet.changeDynamics(plane, -1, lateralFriction=pile.FRICTION)
shape = pybullet.createCollisionShape(pybullet.GEOM_BOX, halfExtents=[pile.HALF] * 3)
boxes = []
for place, rotation in pile.starts(pile.arguments()[0]):
    boxes.append(pybullet.createMultiBody(pile.DENSITY * (2 * pile.HALF) ** 3, shape, -1, place, rotation))
    # Bullet multiplies the coefficients of two bodies.
    pybullet.changeDynamics(boxes[-1], -1, lateralFriction=math.sqrt(pile.FRICTION))
pybullet.changeDynamics(plane, -1, lateralFriction=math.sqrt(pile.FRICTION))


def look():
    rows = [[*place, *rotation] for place, rotation in map(pybullet.getBasePositionAndOrientation, boxes)]
    return rows, sum(math.dist(pybullet.getBaseVelocity(box)[0], (0, 0, 0)) for box in boxes) / len(boxes)


pile.turn(pybullet.stepSimulation, look)
