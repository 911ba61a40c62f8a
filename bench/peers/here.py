"""This project's turn in its plain look before one colour, as the others; with `unsmoothed` edges are as they are."""

import sys

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
import osg
import scenes

LIGHTING = 0x0B50  # of OpenGL


def stage():
    app = hyxOSG.ExampleApplication(look="plain")
    app.init(None)
    simulation = hyxSDK.Simulation()
    app.initSimulation(simulation)
    if sys.argv[-1] == "unsmoothed":
        app.setNumSamples(0)
    app.initViewer(scenes.WIDTH, scenes.HEIGHT)
    app.getSceneDecorator().setBackgroundColor(hyx.Vec4f(0.55, 0.67, 0.8, 1))  # as Panda3D's
    return app, simulation


def look(app):
    app.setCameraHome(hyx.Vec3(*scenes.EYE), hyx.Vec3(0, 0, 0))


def show(app, simulation, body, color):
    simulation.add(body)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, app.getSceneRoot()), hyx.Vec4f(*color, 1))


def ground(app, simulation):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(12, 12, 0.1)))
    body.setPosition(hyx.Vec3(0, 0, -0.1))
    body.setMotionControl(hyx.RigidBody.STATIC)
    show(app, simulation, body, (0.6, 0.6, 0.6))
    return body


def shapes(shadows=False):
    app, simulation = stage()
    kinds = [
        lambda: hyxCollide.Box(0.3, 0.3, 0.3),
        lambda: hyxCollide.Sphere(0.35),
        lambda: hyxCollide.Cylinder(0.3, 0.7),
        lambda: hyxCollide.Capsule(0.25, 0.4),
    ]
    for index, color in enumerate(scenes.colors(scenes.SHAPES)):
        show(app, simulation, hyx.RigidBody(hyxCollide.Geometry(kinds[index % 4]())), color)
    moved = simulation.getRigidBodies()
    if shadows:
        ground(app, simulation)
        app.getSceneDecorator().setShadowMethod(hyxOSG.SceneDecorator.SHADOWMAP)
    app.getSceneDecorator().setEnableShadows(shadows)
    look(app)

    def draw(frame):
        simulation.setPositions(scenes.shape_places(frame), moved)
        return app.render()

    return draw


def boxes():
    app, simulation = stage()
    ground(app, simulation)
    for place, color in zip(scenes.box_places(), scenes.colors(scenes.BOXES)):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)))
        body.setPosition(hyx.Vec3(*place))
        show(app, simulation, body, color)
    app.getSceneDecorator().setEnableShadows(False)
    look(app)

    def draw(frame):
        simulation.step()
        return app.render()

    return draw


def mesh():
    app, simulation = stage()
    points, _, triangles = scenes.knobbly_ring()
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Trimesh(points, triangles)))
    body.setMotionControl(hyx.RigidBody.KINEMATICS)
    show(app, simulation, body, (0.8, 0.5, 0.2))
    app.getSceneDecorator().setEnableShadows(False)
    look(app)

    def draw(frame):
        body.setRotation(hyx.Quat(0, 0, numpy.sin(0.02 * frame), numpy.cos(0.02 * frame)))
        return app.render()

    return draw


def points():
    app, _ = stage()
    cloud = osg.Geometry()
    cloud.vertices = scenes.CLOUDS[0]
    cloud.colors = scenes.CLOUD_COLORS[0]
    cloud.addElements(0, numpy.arange(scenes.POINTS))
    geode = osg.Geode()
    geode.addDrawable(cloud)
    geode.getOrCreateStateSet().setMode(LIGHTING, 0)
    app.getSceneRoot().addChild(geode)
    look(app)

    def draw(frame):
        cloud.vertices = scenes.CLOUDS[frame % 8]
        cloud.colors = scenes.CLOUD_COLORS[frame % 2]
        return app.render()

    return draw


def first():
    return shapes()


if __name__ == "__main__":
    rows = (shapes, boxes, mesh, points, first)
    scenes.compete({"shadows": lambda: shapes(shadows=True), **{row.__name__: row for row in rows}})
