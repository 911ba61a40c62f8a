"""A box as a mesh."""

CUBE_TRIANGLES = [
    (0, 2, 1),
    (1, 2, 3),
    (4, 5, 6),
    (5, 7, 6),
    (0, 1, 4),
    (1, 5, 4),
    (2, 6, 3),
    (3, 6, 7),
    (0, 4, 2),
    (2, 4, 6),
    (1, 3, 5),
    (3, 7, 5),
]


def box_corners(x, y, z):
    """Of the box with these half sizes, as CUBE_TRIANGLES numbers them."""
    return [(a * x, b * y, c * z) for c in (-1, 1) for b in (-1, 1) for a in (-1, 1)]
