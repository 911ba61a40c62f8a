"""What every contender draws, in numbers: places, meshes and points; Z is up, lengths are metres."""

import json
import sys
import time

import numpy

WIDTH, HEIGHT = 640, 480
EYE, FIELD_OF_VIEW = (0.0, -16.0, 11.0), 45.0  # looking at the origin; degrees, of the height
SEGMENTS = 24
SHAPES, BOXES, POINTS = 200, 100, 100_000


def colors(count):
    return numpy.random.default_rng(7).uniform(0.2, 0.95, (count, 3))


def shape_places(frame):
    index = numpy.arange(SHAPES)
    return numpy.column_stack([index % 20 - 9.5, index // 20 - 4.5, 0.6 + 0.5 * numpy.sin(0.1 * frame + index)])


def box_places():
    index = numpy.arange(BOXES)
    return numpy.column_stack([index % 5 - 2.0, index // 5 % 4 - 1.5, 0.6 + 0.8 * (index // 20)]) * [1.02, 1.02, 1]


def surface(columns, rows, place, closed_rows=False):
    """Vertices, normals and triangles of a closed surface, given as a function of two angles in full turns."""
    u, v = numpy.meshgrid(numpy.linspace(0, 1, columns + 1), numpy.linspace(0, 1, rows + 1))
    u, v = u.ravel() % 1, v.ravel() % 1 if closed_rows else v.ravel()  # seams meet exactly
    points, normals = place(u, v)
    corner = (numpy.arange(rows)[:, None] * (columns + 1) + numpy.arange(columns)).ravel()
    right, up = corner + 1, corner + columns + 1
    triangles = numpy.concatenate([numpy.column_stack([corner, right, up]), numpy.column_stack([right, up + 1, up])])
    return points.astype(numpy.float32), normals.astype(numpy.float32), triangles.astype(numpy.uint32)


def ball(radius, stretch=0.0):
    """A sphere, or a capsule along Z with a straight part of twice `stretch`."""

    def place(u, v):
        turn, rise = 2 * numpy.pi * u, numpy.pi * (v - 0.5)
        out = numpy.column_stack(
            [numpy.cos(rise) * numpy.cos(turn), numpy.cos(rise) * numpy.sin(turn), numpy.sin(rise)]
        )
        return radius * out + numpy.sign(out[:, 2:]) * [0, 0, stretch], out

    return surface(SEGMENTS, SEGMENTS // 2, place)


def cylinder(radius, half_height):
    turns = 2 * numpy.pi * numpy.arange(SEGMENTS + 1) / SEGMENTS
    ring = numpy.column_stack([numpy.cos(turns), numpy.sin(turns), 0 * turns])
    points, normals, triangles = [], [], []
    for lower, upper, normal in ((-1, 1, None), (1, 1, 1), (-1, -1, -1)):
        first = sum(map(len, points))
        low = ring * radius + [0, 0, lower * half_height]
        high = (ring * radius if normal is None else 0 * ring) + [0, 0, upper * half_height]
        points += [low, high]
        normals += [ring if normal is None else 0 * ring + [0, 0, normal]] * 2
        at, turned = first + numpy.arange(SEGMENTS), normal == -1
        corners = [(at, at + 1, at + SEGMENTS + 2), (at, at + SEGMENTS + 2, at + SEGMENTS + 1)]
        triangles += [numpy.column_stack(corner[::-1] if turned else corner) for corner in corners]
    return tuple(numpy.concatenate(part).astype(kind) for part, kind in zip((points, normals, triangles), "ffI"))


def box(half):
    points, normals, triangles = [], [], []
    for axis in range(3):
        for side in (-1, 1):
            u, v = numpy.eye(3)[(axis + 1) % 3], numpy.eye(3)[(axis + 2) % 3]
            normal = side * numpy.eye(3)[axis]
            first = 4 * len(points)
            points.append(half * (normal + numpy.array([-u - v, u - v, u + v, v - u])))
            normals.append(numpy.tile(normal, (4, 1)))
            faces = numpy.array([[0, 1, 2], [0, 2, 3]])
            triangles.append(first + (faces if side > 0 else faces[:, ::-1]))
    return tuple(numpy.concatenate(part).astype(kind) for part, kind in zip((points, normals, triangles), "ffI"))


def shape_meshes():
    return [box(0.3), ball(0.35), cylinder(0.3, 0.35), ball(0.25, 0.2)]


def knobbly_ring():
    """59,712 triangles."""

    def place(u, v):
        turn, around = 2 * numpy.pi * u, 2 * numpy.pi * v
        thick = 1.2 + 0.15 * numpy.sin(9 * turn) * numpy.sin(5 * around)
        middle = numpy.column_stack([numpy.cos(turn), numpy.sin(turn), 0 * turn])
        out = middle * numpy.cos(around)[:, None] + [[0, 0, 1]] * numpy.sin(around)[:, None]
        return 3 * middle + thick[:, None] * out, out

    return surface(311, 96, place, closed_rows=True)


def cloud(frame):
    rng = numpy.random.default_rng(5)
    start = rng.normal(size=(POINTS, 3)).astype(numpy.float32) * 2
    turn = 0.02 * frame
    turned = numpy.array([[numpy.cos(turn), numpy.sin(turn), 0], [-numpy.sin(turn), numpy.cos(turn), 0], [0, 0, 1]])
    return start @ turned.astype(numpy.float32)


CLOUDS = [cloud(frame) for frame in range(8)] if "points" in sys.argv else []
CLOUD_COLORS = numpy.random.default_rng(6).integers(60, 255, (2, POINTS, 4), dtype=numpy.uint8) | numpy.array(
    [0, 0, 0, 255], numpy.uint8
)


def compete(rows):
    """`contender.py ROW SECONDS PICTURE`: prints frames a second as JSON, and saves the last frame."""
    from PIL import Image

    row, seconds, picture = sys.argv[1], float(sys.argv[2]), sys.argv[3]
    if row not in rows:
        print(json.dumps(None))
        return
    draw = rows[row]()
    if seconds == 0:
        Image.fromarray(numpy.ascontiguousarray(draw(0)[:, :, :3])).save(picture)
        print(json.dumps({}))
        return
    for frame in range(3):
        draw(frame)
    start, processor, frames = time.perf_counter(), time.process_time(), 0
    while time.perf_counter() - start < seconds:
        pixels = draw(frames)
        frames += 1
    rate = frames / (time.perf_counter() - start)
    Image.fromarray(numpy.ascontiguousarray(pixels[:, :, :3])).save(picture)
    print(json.dumps({"rate": rate, "processor": (time.process_time() - processor) / frames}))
