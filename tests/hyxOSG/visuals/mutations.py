"""Damaged files: good ones with bytes, words and lengths changed by a seeded generator.

`python mutations.py COUNT [KIND...]` tries COUNT files of each kind as an application would read them, and tells
of what should not be.
"""

import collections
import pathlib
import random
import sys
import tempfile
import time

GREAT = (0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF)
NUMBERS = (b"-1", b"0", b"99999999999", b"4294967295", b"1e999", b"nan", b"")


def mutate(good, seed):
    """One to eight changes of a file, which follow from the seed."""
    dice, data = random.Random(seed), bytearray(good)
    for _ in range(dice.randint(1, 8)):
        if not data:
            break
        place, change = dice.randrange(len(data)), dice.randrange(7)
        if change == 0:
            data[place] = dice.randrange(256)
        elif change == 1:
            width = dice.choice((1, 2, 4))
            data[place : place + width] = (dice.choice(GREAT) & (256**width - 1)).to_bytes(width, "little")
        elif change == 2:
            del data[place : place + dice.randint(1, 64)]
        elif change == 3:
            data[place:place] = data[place : place + dice.randint(1, 64)]
        elif change == 4:
            del data[place:]
        elif change == 5:
            data[place] ^= 1 << dice.randrange(8)
        else:
            words = bytes(data).split()
            data = bytearray(bytes(data).replace(dice.choice(words), dice.choice(NUMBERS), 1)) if words else data
    return bytes(data)


def good_files(folder):
    """A small file of each kind that can be written here, by extension."""
    import hyx
    import hyxOSG
    import osg
    import osgDB

    model = osg.Group()
    model.addChild(hyxOSG.createSphere(hyx.Vec3(0, 0, 0), hyx.Vec4(1, 0, 0, 1), 0.3))
    picture = osg.Image(17, 9)
    found = {}
    for kind in ("osg", "osgt", "osgb", "osgx", "ive", "obj", "stl", "3ds", "dae", "ply", "ac"):
        path = pathlib.Path(folder) / f"good.{kind}"
        if osgDB.writeNodeFile(model, str(path)) and path.exists():
            found[kind] = path.read_bytes()
    for kind in ("png", "bmp", "tga", "rgb", "tiff", "jpg", "ppm", "hdr"):
        path = pathlib.Path(folder) / f"good.{kind}"
        if osgDB.writeImageFile(picture, str(path)) and path.exists():
            found[kind] = path.read_bytes()
    return found


PICTURES = {"png", "bmp", "tga", "rgb", "tiff", "jpg", "ppm", "hdr"}
LONGEST = 10.0  # seconds for one small file: the limit of a trial, and what starting its process takes


def read(path):
    """What an application does with a file: reads it and walks over what came."""
    import hyxOSG
    import osgDB

    if path.suffix[1:] in PICTURES:
        return osgDB.readImageFile(str(path))
    node = hyxOSG.readNodeFile(str(path), False)
    if node:
        hyxOSG.smoothNormals(node, 0.5)
        hyxOSG.createTrimesh(node)
        node.getBound()
    return node


def main(count, kinds):
    tally, slow = collections.Counter(), []
    with tempfile.TemporaryDirectory() as folder:
        files = good_files(folder)
        for kind in kinds or files:
            for seed in range(count):
                path = pathlib.Path(folder) / f"bad.{kind}"
                path.write_bytes(mutate(files[kind], f"{kind}{seed}"))
                begun = time.monotonic()
                tally[kind, bool(read(path))] += 1
                if time.monotonic() - begun > LONGEST:
                    slow.append((kind, seed))
            print(kind, tally[kind, True], "read", tally[kind, False], "refused", flush=True)
    print("too slow:", slow)


if __name__ == "__main__":
    main(int(sys.argv[1]), sys.argv[2:])
