"""Ways out of the program for what is drawn: numbered files, a video, an array, and the points of a depth lidar.

    05_pictures_out.py [--output FOLDER] [--seconds S]

A robot's view is drawn off-screen beside the main one; files, video and lidar follow the simulated time, so that their
number does not depend on how fast the machine draws.
"""

import argparse
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
from PIL import Image
from tqdm import tqdm

WIDTH, HEIGHT = 480, 320


def add_body(sim, root, shape, position, color, static=False):
    body = hyx.RigidBody(hyxCollide.Geometry(shape))
    body.setPosition(hyx.Vec3(*position))
    if static:
        body.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(body)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, root), hyx.Vec4f(*color, 1))


def build(sim, root):
    add_body(sim, root, hyxCollide.Box(8, 8, 0.5), (0, 0, -0.5), (0.6, 0.6, 0.57), static=True)
    for number in range(20):
        x, y = number % 5 - 2, number // 5 - 1.5
        shape = hyxCollide.Sphere(0.35) if number % 2 else hyxCollide.Box(0.3, 0.3, 0.3)
        add_body(
            sim, root, shape, (x, y, 1 + 0.3 * number), (0.2 + 0.15 * (number % 5), 0.45, 0.9 - 0.2 * (number // 5))
        )


def place(target, opening):
    """Where the robot stands, and what its lens sees."""
    target.setViewMatrixAsLookAt(hyx.Vec3(-5, -1, 2.5), hyx.Vec3(0, 0, 0.5), hyx.Vec3(0, 0, 1))
    target.setProjectionMatrixAsPerspective(opening, target.getSize()[0] / target.getSize()[1], 0.2, 40.0)


class Progress(hyxOSG.ExampleApplicationListener):
    """Shows how far a capture is."""

    def __init__(self, capture, expected):
        super().__init__()
        self.capture = capture
        self.bar = tqdm(total=expected, unit="frame")

    def postFrame(self, app):
        self.bar.update(self.capture.getImageNum() - self.bar.n)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the pictures and the video")
    parser.add_argument("--seconds", type=float, default=2.0, help="simulated time")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(WIDTH, HEIGHT)
    build(sim, app.getSceneRoot())
    app.setCameraHome(hyx.Vec3(5, -7, 4), hyx.Vec3(0, 0, 0.5))

    eye = hyxOSG.RenderToImage(WIDTH, HEIGHT, hyxOSG.RenderTarget.COLOR_BUFFER, 4, hyxOSG.RenderTarget.RGB)
    lidar = hyxOSG.SimpleDepthBufferLidar(120, 80)
    for target in (eye, lidar):
        place(target, 60.0)
    app.addRenderTarget(eye)  # with light and background
    app.addRenderTarget(lidar, app.getSceneRoot())  # what has a shape

    images = app.getImageCapture()  # of the main view, five for each simulated second
    images.setFps(5)
    images.setDirectoryPath(str(options.output))
    images.setPrefix("main_")
    video = hyxOSG.VideoFFMPEGPipeCapture(WIDTH, HEIGHT, 30.0, sim)  # of the robot's view
    video.setFilename(str(options.output / "robot"))
    eye.setImageCapture(video)

    progress = Progress(video, round(video.getFps() * options.seconds))
    app.addListener(progress)
    with images, video:
        app.stopAfter(options.seconds)
        app.run()
    progress.bar.close()
    print(f"{images.getImageNum()} pictures of the main view, {video.getImageNum()} frames of the robot's")

    Image.fromarray(numpy.ascontiguousarray(eye.pixels[::-1])).save(options.output / "robot.png")
    points = lidar.points
    above = points[points[:, 2] > 0.05]
    print(f"the lidar sees {len(points)} points, {len(above)} of them on bodies")


if __name__ == "__main__":
    main()
