"""A small off-screen application whose pictures tests look at, and a scene of flat colours against black."""

import pathlib
import tempfile

import hyx
import osgDB
from off_screen import OffScreen

SIZE = 128


class Picture:
    """The pixels of one frame; x to the right, y up."""

    def __init__(self, file):
        image = osgDB.readImageFile(str(file))
        self.width, self.height = image.s(), image.t()
        self.channels = len(image.getData()) // (self.width * self.height)
        self.data = image.getData()

    def pixel(self, x, y):
        start = (y * self.width + x) * self.channels
        return tuple(self.data[start : start + 3])

    def center(self):
        return self.pixel(self.width // 2, self.height // 2)

    def pixels(self):
        step = self.channels
        return [tuple(self.data[i : i + 3]) for i in range(0, len(self.data), step)]

    def count(self, wanted):
        return sum(1 for pixel in self.pixels() if wanted(*pixel))

    def lit(self):
        """The number of pixels that are not background."""
        return self.count(lambda r, g, b: max(r, g, b) > 12)

    def difference(self, other):
        """The number of pixels that clearly differ."""
        return sum(1 for a, b in zip(self.pixels(), other.pixels()) if max(abs(p - q) for p, q in zip(a, b)) > 24)


class Studio(OffScreen):
    def __init__(self):
        super().__init__(SIZE, SIZE)
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.look_from(hyx.Vec3(0, -4, 0))

    def picture(self):
        file = self.folder / "picture.png"
        self.app.takeScreenShot(str(file))  # the first frame after a change also updates transforms
        self.app.takeScreenShot(str(file))
        return Picture(file)

    def clear(self):
        while self.root.getNumChildren():
            self.root.removeChild(self.root.getChild(0))
        self.simulation.cleanup()
        self.look_from(hyx.Vec3(0, -4, 0))


def red(r, g, b):
    return r > 60 and g < r / 3 and b < r / 3


def green(r, g, b):
    return g > 60 and r < g / 3 and b < g / 3


def blue(r, g, b):
    return b > 60 and r < b / 3 and g < b / 3
