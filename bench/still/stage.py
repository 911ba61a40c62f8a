"""What every program draws: a tower, balls of three materials, a box of glass, a loaded model, a label."""

import math
import sys
from pathlib import Path

WIDTH, HEIGHT = 640, 480
EYE, TARGET, FIELD_OF_VIEW = (3.5, -7.0, 3.6), (0.0, 0.0, 0.9), 40.0  # metres, Z is up; degrees, of the height
TOWER = [
    ((0.0, 0.6, 0.25 + 0.5 * i), 0.25, color)
    for i, color in enumerate([(0.80, 0.25, 0.20), (0.90, 0.60, 0.20), (0.35, 0.60, 0.30), (0.25, 0.45, 0.75)])
]  # middles, half sides, colours
MATTE, PLASTIC, METAL = (-1.6, -0.4, 0.45), (-0.5, -1.2, 0.45), (0.7, -1.1, 0.45)  # middles of balls
RADIUS = 0.45
MATTE_COLOR, PLASTIC_COLOR, METAL_COLOR = (0.75, 0.70, 0.62), (0.70, 0.15, 0.15), (0.95, 0.77, 0.34)
GLASS, GLASS_HALF, GLASS_COLOR = (1.7, -0.2, 0.4), 0.4, (0.6, 0.8, 0.9, 0.35)
GROUND_HALF, GROUND_COLOR = 12.0, (0.62, 0.62, 0.62)
MODEL, MODEL_PLACE, MODEL_COLOR = "vase.obj", (-1.4, 1.1, 0.0), (0.45, 0.55, 0.70)
LABEL, LABEL_PLACE = "tower", (0.0, 0.6, 2.3)


def rings(rows, columns, radius, height, slope):
    """Vertices, normals and triangles of a turned surface: functions of 0 to 1 give radius, height, normal's rise."""
    points, normals, triangles = [], [], []
    for row in range(rows + 1):
        part = row / rows
        for column in range(columns):
            turn = 2 * math.pi * column / columns
            x, y = math.cos(turn), math.sin(turn)
            points.append((radius(part) * x, radius(part) * y, height(part)))
            rise = slope(part)
            size = math.hypot(1, rise)
            normals.append((x / size, y / size, rise / size))
    for row in range(rows):
        for column in range(columns):
            a, b = row * columns + column, row * columns + (column + 1) % columns
            triangles += [(a, b, b + columns), (a, b + columns, a + columns)]
    return points, normals, triangles


def ball_mesh(radius):
    angle = lambda part: math.pi * (part - 0.5) * 0.9999  # noqa: E731 - the poles keep a direction
    return rings(
        24,
        48,
        lambda part: radius * math.cos(angle(part)),
        lambda part: radius * math.sin(angle(part)),
        lambda part: math.tan(angle(part)),
    )


def vase_mesh():
    return rings(
        40,
        40,
        lambda part: 0.28 + 0.16 * math.sin(5.5 * part + 0.3),
        lambda part: 1.4 * part,
        lambda part: -0.16 * 5.5 / 1.4 * math.cos(5.5 * part + 0.3),
    )


def box_mesh(half):
    points, normals, triangles = [], [], []
    for axis in range(3):
        for way in (-1, 1):
            first = len(points)
            for u, v in ((-1, -1), (1, -1), (1, 1), (-1, 1)):
                place = [half * u, half * v]
                place.insert(axis, half * way)
                normal = [0, 0]
                normal.insert(axis, way)
                points.append(tuple(place))
                normals.append(tuple(normal))
            turned = way if axis != 1 else -way
            order = (0, 1, 2, 0, 2, 3) if turned > 0 else (0, 2, 1, 0, 3, 2)
            triangles += [tuple(first + i for i in order[:3]), tuple(first + i for i in order[3:])]
    return points, normals, triangles


def write_vase(path):
    """The vase as an OBJ file."""
    points, normals, triangles = vase_mesh()
    with open(path, "w") as file:
        for name, rows in (("v", points), ("vn", normals)):
            file.writelines(f"{name} {x:.5f} {y:.5f} {z:.5f}\n" for x, y, z in rows)
        file.writelines("f " + " ".join(f"{c + 1}//{c + 1}" for c in corners) + "\n" for corners in triangles)


def asked():
    """Where the picture goes, whether the best is asked for, and the model's file."""
    picture, effort = Path(sys.argv[1]), sys.argv[2]
    model = picture.with_name(MODEL)
    if not model.exists():
        write_vase(model)
    return str(picture), effort == "best", str(model)
