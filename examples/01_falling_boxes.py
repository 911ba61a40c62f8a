"""Two hundred bodies and a model loaded from a file fall onto the ground: a picture and a video of it.

    01_falling_boxes.py [MODEL] [--output FOLDER] [--seconds S]

Draws into a window where there is a display, off-screen where there is none.
"""

import argparse
import random
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import osg
from tqdm import tqdm

MODEL = Path("/usr/share/assimp/models/OBJ/WusonOBJ.obj")
PALETTE = [(0.86, 0.32, 0.23), (0.95, 0.66, 0.22), (0.27, 0.55, 0.62), (0.36, 0.66, 0.42), (0.55, 0.42, 0.66)]
WIDTH, HEIGHT = 960, 540


def colored(visual, rgb):
    """Gives a node one colour and lets it take part in the shadows."""
    hyxOSG.setDiffuseColor(visual, hyx.Vec4f(*rgb, 1))
    visual.setNodeMask(visual.getNodeMask() | hyxOSG.ExampleApplication.CASTS_SHADOWS_MASK)


def add_ground(sim, root):
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(12, 12, 0.5)))  # half extents, metres
    ground.setMotionControl(hyx.RigidBody.STATIC)
    ground.setPosition(hyx.Vec3(0, 0, -0.5))
    sim.add(ground)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(ground, root), hyx.Vec4f(0.62, 0.62, 0.58, 1))


def add_bodies(sim, root, count, numbers):
    """Boxes, spheres, cylinders and capsules above the ground, each at its own place."""
    for index in range(count):
        size = numbers.uniform(0.14, 0.3)
        shape = [
            lambda: hyxCollide.Box(size, size * 0.8, size * 0.6),
            lambda: hyxCollide.Sphere(size),
            lambda: hyxCollide.Cylinder(size, size * 1.6),  # radius and height
            lambda: hyxCollide.Capsule(size * 0.7, size * 1.4),
        ][index % 4]()
        body = hyx.RigidBody(hyxCollide.Geometry(shape))
        body.setPosition(hyx.Vec3(numbers.uniform(-2, 2), numbers.uniform(-2, 2), 1 + 0.06 * index))
        body.setRotation(hyx.Quat(numbers.uniform(0, 3), hyx.Vec3(1, numbers.random(), numbers.random())))
        sim.add(body)
        colored(hyxOSG.createVisual(body, root, 1.0), PALETTE[index % len(PALETTE)])


def add_model(sim, root, file, size=3.2):
    """A model file as a body: its triangles collide, its own materials are drawn."""
    node = hyxOSG.readNodeFile(str(file))
    if node is None:
        raise SystemExit(f"{file}: no model could be read from it")
    bound = node.getBound()
    scale = size / (2 * bound.radius())
    model = osg.MatrixTransform(osg.Matrix.translate(-bound.center()) * osg.Matrix.scale(scale, scale, scale))
    model.addChild(node)
    geometry = hyxCollide.Geometry(hyxOSG.createTrimesh(model))
    body = hyx.RigidBody(geometry)
    body.setMass(60)  # kilograms
    body.setPosition(hyx.Vec3(0.8, -1.2, 2))
    sim.add(body)
    visual = hyxOSG.GeometryNode(geometry)
    visual.setRenderChild(hyxOSG.GeometryNode.RENDER_DATA, model)
    visual.selectRenderChild(hyxOSG.GeometryNode.RENDER_DATA)
    root.addChild(visual)


def decorate(app):
    """Background, a light with shadows, text on the head-up display, and the camera."""
    decorator = app.getSceneDecorator()
    decorator.setBackgroundColor(hyx.Vec3(0.36, 0.52, 0.7), hyx.Vec3(0.86, 0.89, 0.92))
    light = decorator.getLightSource(hyxOSG.SceneDecorator.LIGHT0)
    light.setPosition(hyx.Vec4(-9, -6, 14, 1))
    light.setDiffuse(hyx.Vec4f(1, 1, 0.95, 1))
    light.setAmbient(hyx.Vec4f(0.15, 0.15, 0.17, 1))
    decorator.setEnableCalculateLightPositions(hyxOSG.SceneDecorator.LIGHT0, False)
    decorator.setEnableShadows(True)
    decorator.setFontSize(18)
    app.setCameraHome(hyx.Vec3(5, -7.5, 3.6), hyx.Vec3(0, 0, 0.7))


class Progress(hyxOSG.ExampleApplicationListener):
    """Is told of every frame: moves the progress bar and the clock on the screen."""

    def __init__(self, seconds):
        super().__init__()
        # Without a terminal there is no bar.
        self.bar = tqdm(total=seconds, disable=None, bar_format="{l_bar}{bar}| {n:.1f}/{total:.1f} s")

    def postFrame(self, app):
        time = app.getTimeStamp()
        app.getSceneDecorator().setText(0, f"{len(app.getSimulation().getRigidBodies())} bodies   {time:4.1f} s")
        self.bar.update(min(time, self.bar.total) - self.bar.n)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("model", nargs="?", type=Path, default=MODEL, help="a model file to drop into the scene")
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the picture and the video")
    parser.add_argument("--seconds", type=float, default=5.0, help="simulated time")
    parser.add_argument("--bodies", type=int, default=200, help="number of bodies")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(WIDTH, HEIGHT)
    root = app.getSceneRoot()
    add_ground(sim, root)
    add_model(sim, root, options.model)
    add_bodies(sim, root, options.bodies, random.Random(1))
    decorate(app)

    video = app.getVideoServerCapture()
    video.setFilename(str(options.output / "falling_boxes"))
    video.setSimulation(sim)  # a second of the video is a second of the simulation
    video.startCapture()
    progress = Progress(options.seconds)
    app.addListener(progress)
    app.stopAfter(options.seconds)
    app.run()
    progress.bar.close()
    video.stopCapture()
    picture = options.output / "falling_boxes.png"
    app.getSceneDecorator().setShadowCasterLimit(0)  # a still may take the time that shadows of so many bodies cost
    app.takeScreenShot(str(picture))
    print(f"picture: {picture}\nvideo:   {options.output / 'falling_boxes.mp4'}")


if __name__ == "__main__":
    main()
