"""Visuals of the collision shapes, and of what is made of them."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxSDK

from gallery.stage import SAND, paint

UPRIGHT = hyx.Quat(0.5, hyx.Vec3(1, 0, 0))  # the top leans to the camera


def tetrahedron():
    corners = [(-0.8, -0.8, -0.5), (0.8, -0.8, -0.5), (0, 0.9, -0.5), (0, 0, 1)]
    return hyxCollide.Trimesh(hyx.Vec3Vector([hyx.Vec3(*c) for c in corners]), [0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3])


def waves():
    count = 25
    field = hyxCollide.HeightField(count, count, 1.8, 1.8)
    for i in range(count):
        for j in range(count):
            field.setHeight(i, j, 0.15 * math.sin(i / 2) * math.cos(j / 2))
    return field


def dumbbell():
    shape = hyxCollide.Compound()
    shape.add(hyxCollide.Sphere(0.35), hyx.AffineMatrix4x4(hyx.Vec3(0, 0.6, 0)))
    shape.add(hyxCollide.Cylinder(0.12, 1.2))
    shape.add(hyxCollide.Sphere(0.35), hyx.AffineMatrix4x4(hyx.Vec3(0, -0.6, 0)))
    return shape


def plane(stage):
    """Its corners are far away, so a near light would leave it dark."""
    stage.light.setPosition(hyx.Vec4(-0.4, -0.6, 1, 0))
    stage.shape(hyxCollide.Plane(hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, -0.5)), turn=hyx.Quat())


def sensor(stage):
    geometry = hyxCollide.Geometry(hyxCollide.Sphere(0.7))
    geometry.setSensor(True)
    stage.kept.append(geometry)
    paint(hyxOSG.createVisual(geometry, stage.root, 1.0, True), hyx.Vec4f(0.3, 0.7, 0.4, 1))


def two_boxes(stage, x):
    """An assembly of two boxes, one on the other."""
    made = hyxSDK.Assembly()
    for height, half in ((-0.35, 0.5), (0.45, 0.3)):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(half, half, half)))
        body.setPosition(hyx.Vec3(x, 0, height))
        made.add(body)
    stage.simulation.add(made)
    return made


def assembly(stage):
    paint(hyxOSG.createVisual(two_boxes(stage, -0.4), stage.root), SAND)


def cached_assembly(stage):
    """Assemblies of the same bodies share their meshes and state."""
    cache = hyxOSG.RigidBodyRenderCache()
    for x in (-0.7, 0.7):
        paint(hyxOSG.createVisualTemplateCaching(two_boxes(stage, x), stage.root, cache), SAND)


def simulation(stage):
    for x in (-0.9, 0, 0.9):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.35)))
        body.setPosition(hyx.Vec3(x, 0, 0.4 - abs(x)))
        stage.simulation.add(body)
    paint(hyxOSG.createVisual(stage.simulation, stage.root), SAND)


def observer_frame(stage):
    body, _ = stage.body(hyxCollide.Box(0.4, 0.4, 0.1), (0, 0, -0.4), SAND)
    frame = hyx.ObserverFrame(body)
    stage.simulation.add(frame)
    hyxOSG.createVisual(frame, stage.root, 1.2)
    stage.look_from(hyx.Vec3(1.2, -2.6, 1.0))


TILES = {
    "box": lambda stage: stage.shape(hyxCollide.Box(0.55, 0.55, 0.55)),
    "sphere": lambda stage: stage.shape(hyxCollide.Sphere(0.75)),
    "cylinder": lambda stage: stage.shape(
        hyxCollide.Cylinder(0.5, 1.2), turn=UPRIGHT * hyx.Quat(1.57, hyx.Vec3(1, 0, 0))
    ),
    "capsule": lambda stage: stage.shape(hyxCollide.Capsule(0.35, 0.8)),
    "cone": lambda stage: stage.shape(hyxCollide.Cone(0.6, 1.2), turn=hyx.Quat(1.2, hyx.Vec3(1, 0, 0))),
    "plane": plane,
    "mesh": lambda stage: stage.shape(tetrahedron(), turn=hyx.Quat(0.4, hyx.Vec3(0, 0, 1))),
    "height field": lambda stage: stage.shape(waves(), turn=UPRIGHT),
    "compound": lambda stage: stage.shape(dumbbell(), turn=hyx.Quat(1.2, hyx.Vec3(0.2, 0.3, 1))),
    "coarse detail": lambda stage: stage.shape(hyxCollide.Sphere(0.75), detail=0.1),
    "sensor": sensor,
    "body": lambda stage: stage.body(hyxCollide.Cylinder(0.3, 1.2), (0.4, 0, 0.2), SAND),
    "assembly": assembly,
    "cached assemblies": cached_assembly,
    "simulation": simulation,
    "observer frame": observer_frame,
}
