"""Serves a scene to a browser: prints the address of a page that shows it live and steers it.

08_remote_control.py [--rpc-port PORT] [--stop-after S] [more options: --help]
"""

import random
import sys

import hyx
import hyxCollide
import hyxIO
import hyxOSG

PALETTE = [(0.86, 0.32, 0.23), (0.95, 0.66, 0.22), (0.27, 0.55, 0.62), (0.36, 0.66, 0.42)]


def add(sim, root, shape, position, rgb):
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setPosition(hyx.Vec3(*position))
    sim.add(body)
    visual = hyxOSG.createVisual(body, root)
    hyxOSG.setDiffuseColor(visual, hyx.Vec4f(*rgb, 1))
    visual.setNodeMask(visual.getNodeMask() | hyxOSG.ExampleApplication.CASTS_SHADOWS_MASK)
    return body


def tower(sim, app, root):
    """Rings of bricks."""
    add(sim, root, hyxCollide.Box(6, 6, 0.25), (0, 0, -0.25), (0.6, 0.6, 0.56)).setMotionControl(hyx.RigidBody.STATIC)
    for level in range(9):
        for turn in range(8):
            heading = hyx.Quat(0.7853981634 * (turn + level % 2 / 2), hyx.Vec3(0, 0, 1))
            place = heading * hyx.Vec3(1.5, 0, 0.2 + 0.4 * level)
            brick = add(sim, root, hyxCollide.Box(0.2, 0.5, 0.2), place, PALETTE[level % 4])
            brick.setRotation(heading)


def heap(sim, app, root):
    """Balls that fall in a heap."""
    add(sim, root, hyxCollide.Box(6, 6, 0.25), (0, 0, -0.25), (0.6, 0.6, 0.56)).setMotionControl(hyx.RigidBody.STATIC)
    numbers = random.Random(1)
    for index in range(60):
        place = (numbers.uniform(-1, 1), numbers.uniform(-1, 1), 1 + 0.3 * index)
        add(sim, root, hyxCollide.Sphere(numbers.uniform(0.15, 0.35)), place, PALETTE[index % 4])


def main():
    options = hyxIO.ArgumentParser(sys.argv[1:] if "--rpc-port" in sys.argv else ["--rpc-port", "8765", *sys.argv[1:]])
    app = hyxOSG.ExampleApplication()
    if not app.init(options):
        return
    app.addScene(__file__, "tower")
    app.addScene(__file__, "heap")
    app.initViewer(800, 600)
    decorator = app.getSceneDecorator()
    decorator.setEnableShadows(True)
    decorator.getLightSource(hyxOSG.SceneDecorator.LIGHT0).setAmbient(hyx.Vec4f(0.4, 0.4, 0.43, 1))
    app.setCameraHome(hyx.Vec3(5, -8, 5), hyx.Vec3(0, 0, 1.4))
    app.setTargetFPS(30)
    app.setRealTimeSync(True)
    app.run()


if __name__ == "__main__":
    main()
