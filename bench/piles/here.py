"""The turn of this library at the pile of boxes."""

import hyx
import hyxCollide
import hyxSDK
import pile

simulation = hyxSDK.Simulation()
simulation.setTimeStep(pile.STEP)
material = hyx.Material()
material.setFriction(pile.FRICTION)
material.setDensity(pile.DENSITY)
ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()))
ground.setMotionControl(hyx.RigidBody.STATIC)
ground.getGeometries()[0].setMaterial(material)
simulation.add(ground)
boxes = []
for place, rotation in pile.starts(pile.arguments()[0]):
    geometry = hyxCollide.Geometry(hyxCollide.Box(pile.HALF, pile.HALF, pile.HALF))
    geometry.setMaterial(material)
    box = hyx.RigidBody(geometry)
    box.updateMassProperties()
    box.setPosition(hyx.Vec3(*place))
    box.setRotation(hyx.Quat(*rotation))
    simulation.add(box)
    boxes.append(box)


def look():
    rows = [[*box.getPosition(), *box.getRotation()] for box in boxes]
    return rows, sum(box.getVelocity().length() for box in boxes) / len(boxes)


pile.turn(simulation.step, look)
