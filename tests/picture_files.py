"""Small picture files made by tests."""

import osg
import osgDB


def write(path, colour_at, size=32):
    """A square picture; `colour_at(x, y)` gives red, green, blue from 0 to 1 with y upwards."""
    image = osg.Image(size, size)
    data = bytearray()
    for y in range(size):
        for x in range(size):
            data += bytes(round(255 * part) for part in colour_at(x, y))
    image.setData(bytes(data))
    assert osgDB.writeImageFile(image, str(path))
    return str(path)


def one_colour(path, red, green, blue, size=32):
    return write(path, lambda x, y: (red, green, blue), size)


def stripes(path):
    return write(path, lambda x, y: (1, 1, 1) if x // 4 % 2 else (0, 0, 0))


CUBE_SIDES = {
    "posx": (1, 0, 0),
    "negx": (0, 1, 1),
    "posy": (0, 0, 1),
    "negy": (1, 1, 0),
    "posz": (0, 1, 0),
    "negz": (1, 0, 1),
}


def cube_map(folder, prefix="sky_", size=8):
    for side, colour in CUBE_SIDES.items():
        one_colour(folder / f"{prefix}{side}.png", *colour, size=size)
    return str(folder / prefix)
