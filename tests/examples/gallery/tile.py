"""The picture of one tile, and what can be asked of it. x to the right and y downwards, in pixels."""

import numpy
from PIL import Image

PAPER = (209, 217, 224)
MIDDLE_X, MIDDLE_Y = 80, 60


class Tile:
    def __init__(self, file):
        self.pixels = numpy.asarray(Image.open(file).convert("RGB")).astype(int)
        self.red, self.green, self.blue = numpy.moveaxis(self.pixels, 2, 0)
        self.light = self.pixels.sum(axis=2) / 3
        self.shown = ~self.near(PAPER, 12)

    def near(self, color, tolerance=24):
        """Where the picture has a colour of 0 to 255."""
        return numpy.abs(self.pixels - numpy.array(color)).max(axis=2) <= tolerance

    def colored(self, name):
        """Where one component stands out: "red", "green" or "blue"."""
        own = getattr(self, name)
        others = numpy.max([getattr(self, other) for other in ("red", "green", "blue") if other != name], axis=0)
        return own > 1.4 * others + 10

    def differs(self, other, threshold=12):
        return numpy.abs(self.pixels - other.pixels).max(axis=2) > threshold

    def corners(self):
        """Upper left, upper right, lower left, lower right."""
        return [tuple(self.pixels[y, x]) for y in (1, -2) for x in (1, -2)]

    def flat_shades(self, least=120):
        """How many single colours cover at least so many of the shown pixels."""
        _, counts = numpy.unique(self.pixels[self.shown], axis=0, return_counts=True)
        return int((counts >= least).sum())

    def shades(self):
        """How many colours the shown pixels have."""
        return len(numpy.unique(self.pixels[self.shown], axis=0))


def frame(mask):
    """Left, right, upper and lower end of what is set."""
    rows, columns = numpy.nonzero(mask)
    assert len(rows), "nothing is there"
    return columns.min(), columns.max(), rows.min(), rows.max()


def middle(mask):
    rows, columns = numpy.nonzero(mask)
    assert len(rows), "nothing is there"
    return columns.mean(), rows.mean()


def fullness(mask):
    """How much of the box around it a shape fills: 0.785 for a circle."""
    left, right, upper, lower = frame(mask)
    return mask.sum() / ((right - left + 1) * (lower - upper + 1))


def is_round(mask):
    left, right, upper, lower = frame(mask)
    return abs((right - left) - (lower - upper)) <= 4 and abs(fullness(mask) - 0.785) < 0.03


def width_at(mask, part):
    """How wide a shape is at a part of its height, 0 at its upper end."""
    _, _, upper, lower = frame(mask)
    return int(mask[round(upper + part * (lower - upper))].sum())


def length_to_width(mask):
    """How many times a shape is longer than wide, whichever way it lies."""
    small, large = numpy.linalg.eigvalsh(numpy.cov(numpy.nonzero(mask)))
    return (large / small) ** 0.5


def runs(line):
    """How many stretches of a line of flags are set."""
    return int(line[0]) + int((line[1:] & ~line[:-1]).sum())


def turns(line):
    """How often a line of flags changes."""
    return int((line[1:] != line[:-1]).sum())
