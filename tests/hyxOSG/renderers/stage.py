"""A small off-screen stage for the tests of renderers, and pictures of it that can be asked for colours."""

import hyx
from off_screen import OffScreen

WIDTH, HEIGHT = 200, 150


class Picture:
    def __init__(self, path):
        kind, width, height, limit, rest = path.read_bytes().split(maxsplit=4)
        assert (kind, limit) == (b"P6", b"255")
        self.size = int(width), int(height)
        body = path.read_bytes()[-3 * self.size[0] * self.size[1] :]
        self.pixels = [tuple(body[i : i + 3]) for i in range(0, len(body), 3)]

    def count(self, color, tolerance=12):
        return sum(all(abs(a - b) <= tolerance for a, b in zip(pixel, color)) for pixel in self.pixels)

    def reddish(self):
        return sum(r > 60 and g < r / 3 and b < r / 3 for r, g, b in self.pixels)

    def rows_of(self, test):
        width = self.size[0]
        return [i // width for i, pixel in enumerate(self.pixels) if test(*pixel)]

    def columns_of(self, test):
        width = self.size[0]
        return [i % width for i, pixel in enumerate(self.pixels) if test(*pixel)]

    def differs(self, other):
        return sum(a != b for a, b in zip(self.pixels, other.pixels))


class Stage(OffScreen):
    """Looked at from `eye` towards `center`."""

    def __init__(self, folder, eye=(0, -8, 3), center=(0, 0, 0)):
        super().__init__(WIDTH, HEIGHT)
        self.folder = folder
        self.look_from(hyx.Vec3(*eye), hyx.Vec3(*center))
        self.shots = 0
        self.renderer = None  # what a test lets draw lives as long as somebody holds it

    def step(self, count=1):
        for _ in range(count):
            self.simulation.step()

    def shoot(self):
        self.shots += 1
        path = self.folder / f"shot{self.shots}.ppm"
        self.app.takeScreenShot(str(path))
        return Picture(path)
