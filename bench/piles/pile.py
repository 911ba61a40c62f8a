"""The pile of all contenders: where its boxes start, how long its steps take the processor, and how well they lie."""

import itertools
import json
import math
import random
import sys
import time

HALF = 0.1
DENSITY = 1000.0
FRICTION = 0.5
STEP = 1 / 60
SAMPLES = 10


def starts(count):
    """Places and rotations (x, y, z, w) of loose layers over each other, the same in each run."""
    chance = random.Random(5)
    side = max(3, round((count / 4) ** (1 / 3)))
    for i in range(count):
        column, layer = i % (side * side), i // (side * side)
        place = [(column % side - side / 2) * 0.28, (column // side - side / 2) * 0.28, 0.2 + layer * 0.28]
        place = [value + chance.uniform(-0.02, 0.02) for value in place]
        turn = chance.uniform(0, math.pi / 2)
        tilt = chance.uniform(-0.1, 0.1)
        yield place, (math.cos(turn / 2) * math.sin(tilt), 0.0, math.sin(turn / 2), math.cos(turn / 2) * math.cos(tilt))


def arguments():
    """The number of boxes and the seconds to simulate."""
    return int(sys.argv[1]), float(sys.argv[2])


def turn(step, look):
    """Runs one contender; `look` returns the rows (x, y, z, qx, qy, qz, qw) and the mean speed. Prints the outcome."""
    _, seconds = arguments()
    number = round(seconds / STEP)
    taken, samples, speeds = 0.0, [], []
    for part in range(SAMPLES):
        steps = number // SAMPLES
        start = time.process_time()
        for _ in range(steps):
            step()
        taken += time.process_time() - start
        rows, speed = look()
        if part >= SAMPLES // 2:
            samples.append(rows)
            speeds.append(speed)
    print(json.dumps({"rate": steps * SAMPLES / taken, "samples": samples, "speed": speeds[-1]}))


def deepest(rows):
    """Metres of the deepest overlap of two cubes, or of one with the ground."""
    import numpy

    rows = numpy.array(rows)
    places, (x, y, z, w) = rows[:, :3], rows[:, 3:].T
    axes = numpy.array(
        [
            [1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)],
            [2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)],
            [2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)],
        ]
    ).transpose(2, 0, 1)  # of box, axis, coordinate
    ground = HALF * numpy.abs(axes[:, :, 2]).sum(axis=1) - places[:, 2]
    ways = places[:, None] - places[None]
    first, second = numpy.nonzero(numpy.triu((ways**2).sum(axis=2) < 12 * HALF**2, 1))
    one, other, way = axes[first], axes[second], ways[first, second]
    directions = [one[:, i] for i in range(3)] + [other[:, i] for i in range(3)]
    directions += [numpy.cross(one[:, i], other[:, j]) for i, j in itertools.product(range(3), repeat=2)]
    overlap = numpy.full(len(first), numpy.inf)
    for direction in directions:
        size = numpy.linalg.norm(direction, axis=1)
        valid = size > 1e-3
        direction = direction / numpy.where(valid, size, 1)[:, None]
        reach = HALF * sum(numpy.abs((box[:, i] * direction).sum(axis=1)) for box in (one, other) for i in range(3))
        overlap = numpy.where(valid, numpy.minimum(overlap, reach - numpy.abs((way * direction).sum(axis=1))), overlap)
    return max(0.0, ground.max(), overlap.max(initial=0))
