"""Short words for the scenes of the physics tests."""

import hyx
import hyxCollide
import hyxSDK

GRAVITY = hyxSDK.Simulation().getGravity().length()


def body(shape, position=(0, 0, 0), mass=None, control=hyx.RigidBody.DYNAMICS, name=""):
    made = hyx.RigidBody(hyxCollide.Geometry(shape), name)
    made.setMotionControl(control)
    made.setPosition(hyx.Vec3(position))
    if mass is not None:
        made.setMass(mass)
    return made


def bare_body(position=(0, 0, 0), mass=1, inertia=(0.01, 0.085, 0.085)):
    """A body without geometries; the inertia is that of a thin rod of 1 kg and 1 m along X."""
    made = hyx.RigidBody()
    made.setMass(float(mass))
    made.setInertia(hyx.Vec3(*inertia))
    made.setPosition(hyx.Vec3(position))
    return made


def box(half, position=(0, 0, 0), **options):
    return body(hyxCollide.Box(half, half, half), position, **options)


def ground():
    return body(hyxCollide.Plane(), control=hyx.RigidBody.STATIC, name="ground")


def simulation(*objects):
    made = hyxSDK.Simulation()
    for one in objects:
        made.add(one)
    return made


def run(simulation, seconds):
    simulation.stepTo(simulation.getTimeStamp() + seconds)
