"""What every tile starts from: an empty scene of its own, lit from the upper left front, and a camera before it."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
from PIL import Image

WIDTH, HEIGHT = 160, 120
TILT = hyx.Quat(0.6, hyx.Vec3(1, 0.3, 0.5))
SAND = hyx.Vec4f(0.85, 0.6, 0.35, 1)
GREY = hyx.Vec4f(0.6, 0.6, 0.6, 1)
WHITE = hyx.Vec4f(1, 1, 1, 1)
Decorator = hyxOSG.SceneDecorator
CASTS_SHADOWS = hyxOSG.ExampleApplication.CASTS_SHADOWS_MASK


class Stage:
    def __init__(self, folder):
        self.folder = folder
        self.app = hyxOSG.ExampleApplication(look="plain")
        self.app.init(None)
        self.simulation = hyxSDK.Simulation()
        self.app.initSimulation(self.simulation)
        self.app.setNumSamples(0)  # the tiles are compared pixel by pixel
        self.app.initViewer(WIDTH, HEIGHT, True)
        self.app.initScene()
        self.root = self.app.getSceneRoot()
        self.decorator = self.app.getSceneDecorator()
        self.decorator.setBackgroundColor(hyx.Vec3(0.82, 0.85, 0.88))
        self.light = self.decorator.getLightSource(Decorator.LIGHT0)
        self.light.setPosition(hyx.Vec4(-4, -7, 5, 1))
        self.decorator.setEnableCalculateLightPositions(Decorator.LIGHT0, False)
        self.kept = []  # geometries and the like, which their visuals show but do not hold
        self.look_from(hyx.Vec3(0, -3.0, 0))

    def look_from(self, eye, center=None):
        self.app.setCameraHome(eye, center or hyx.Vec3(), hyx.Vec3(0, 0, 1))

    def shape(self, shape, color=SAND, turn=TILT, detail=1.5):
        """The visual of a shape in the middle."""
        geometry = hyxCollide.Geometry(shape)
        geometry.setLocalTransform(hyx.AffineMatrix4x4(turn, hyx.Vec3()))
        self.kept.append(geometry)
        return paint(hyxOSG.createVisual(geometry, self.root, detail), color)

    def ball(self, color=SAND):
        return self.shape(hyxCollide.Sphere(0.75), color)

    def box(self, color=SAND):
        return self.shape(hyxCollide.Box(0.55, 0.55, 0.55), color)

    def body(self, shape, position, color, moves=False):
        """A body of the simulation; its visual is returned, too."""
        body = hyx.RigidBody(hyxCollide.Geometry(shape))
        body.setMotionControl(hyx.RigidBody.DYNAMICS if moves else hyx.RigidBody.STATIC)
        body.setPosition(hyx.Vec3(*position))
        self.simulation.add(body)
        return body, paint(hyxOSG.createVisual(body, self.root), color)

    def furnished(self):
        """A box and a ball over a ground which casts no shadow, seen from above; returns the ground's visual."""
        _, ground = self.body(
            hyxCollide.HeightField(61, 61, 6.0, 6.0), (0, 0, 0), GREY
        )  # light is computed at its points
        ground.setNodeMask(0xFFFFFFFF & ~CASTS_SHADOWS)
        self.body(hyxCollide.Box(0.4, 0.4, 0.4), (-0.6, 0, 0.8), SAND)
        self.body(hyxCollide.Sphere(0.4), (0.8, 0.4, 0.8), hyx.Vec4f(0.4, 0.5, 0.85, 1))
        self.look_from(hyx.Vec3(0, -3.6, 3.0), hyx.Vec3(0, 0, 0.3))
        return ground

    def image(self, name, color_at, width=64, height=64):
        """An image file; `color_at(x, y)` gives red, green, blue from 0 to 1, with y upwards."""
        image = Image.new("RGB", (width, height))
        for x in range(width):
            for y in range(height):
                image.putpixel((x, height - 1 - y), tuple(round(255 * part) for part in color_at(x, y)))
        file = str(self.folder / f"{name}.png")
        image.save(file)
        return file

    def step(self, count):
        """Steps the simulation, drawing after each, so that what grows with the frames does."""
        for _ in range(count):
            self.simulation.step()
            self.draw()

    def draw(self):
        """The tile as an image."""
        file = str(self.folder / "tile.png")
        self.app.takeScreenShot(file)
        with Image.open(file) as image:
            return image.convert("RGB")


def paint(visual, color):
    hyxOSG.setDiffuseColor(visual, color)
    hyxOSG.setAmbientColor(visual, color)
    return visual


def checks(x, y):
    """A coloured checker board, for textures."""
    return (0.9, 0.3, 0.2) if (x // 8 + y // 8) % 2 else (1, 0.95, 0.85)
