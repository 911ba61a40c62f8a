"""Three scenes in one application: the keys 1 to 3 choose one, Page Down and Page Up go through them, r builds it anew.

    02_scene_browser.py [--seconds S] [--output FOLDER]

Without a display each scene runs for some seconds and leaves a picture.
"""

import argparse
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG


def add(sim, root, shape, position, rgb, static=False):
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setPosition(hyx.Vec3(*position))
    if static:
        body.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(body)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, root), hyx.Vec4f(*rgb, 1))
    return body


def ground(sim, root):
    add(sim, root, hyxCollide.Box(6, 6, 0.25), (0, 0, -0.25), (0.6, 0.6, 0.56), static=True)


def tower(sim, app, root):
    """Boxes on top of each other, and a ball that is thrown at them."""
    ground(sim, root)
    for level in range(8):
        add(sim, root, hyxCollide.Box(0.4, 0.4, 0.2), (0, 0, 0.2 + 0.4 * level), (0.86, 0.32, 0.23))
    ball = add(sim, root, hyxCollide.Sphere(0.35), (-5, 0, 1.4), (0.27, 0.55, 0.62))
    ball.setVelocity(hyx.Vec3(12, 0, 3))


def dominoes(sim, app, root):
    """A row of slabs, the first of which gets a push."""
    ground(sim, root)
    slabs = [
        add(sim, root, hyxCollide.Box(0.06, 0.3, 0.6), (-4 + 0.55 * i, 0, 0.6), (0.95, 0.66, 0.22)) for i in range(15)
    ]
    slabs[0].setAngularVelocity(hyx.Vec3(0, 3, 0))


def rain(sim, app, root):
    """Balls of two sizes fall into a heap."""
    ground(sim, root)
    for i in range(60):
        radius = 0.15 if i % 2 else 0.25
        add(
            sim,
            root,
            hyxCollide.Sphere(radius),
            (0.4 * (i % 5) - 0.8, 0.4 * (i // 5 % 4) - 0.6, 1 + 0.3 * i),
            (0.36, 0.66, 0.42),
        )


SCENES = ("tower", "dominoes", "rain")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seconds", type=float, default=3.0)
    parser.add_argument("--output", type=Path, default=Path("."))
    options = parser.parse_args()

    app = hyxOSG.ExampleApplication()
    for key, name in zip("123", SCENES):
        app.addScene(__file__, name, ord(key))
    app.initViewer(800, 500)
    app.setWindowTitle("Scenes")
    app.setCameraHome(hyx.Vec3(5, -11, 5), hyx.Vec3(0, 0, 1))
    if not app.hasOffscreenWindow():
        app.run()
        return
    for name in SCENES:
        app.createNextScene()
        app.stopAfter(options.seconds)
        app.run()
        app.takeScreenShot(str(options.output / f"{name}.png"))
        print(f"{name}: {len(app.getSimulation().getRigidBodies())} bodies")


if __name__ == "__main__":
    main()
