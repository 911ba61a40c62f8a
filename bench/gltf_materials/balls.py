"""The balls and the skies that both programs draw."""

import math

SIZE = 128  # of a picture, pixels
DISTANCE, VIEW_ANGLE = 4.0, 35.0  # of the eye from the middle of a ball of radius 1; degrees
MATERIALS = {  # colour as a screen shows it, a metal's share, roughness
    "matt white": ((0.9, 0.9, 0.9), 0.0, 0.8),
    "red plastic": ((0.8, 0.1, 0.1), 0.0, 0.3),
    "gold": ((1.0, 0.77, 0.34), 1.0, 0.2),
    "rough silver": ((0.95, 0.95, 0.95), 1.0, 0.6),
    "half metal": ((0.1, 0.3, 0.6), 0.5, 0.5),
}
SKIES = {  # colours above and below the horizon
    "even": ((0.8, 0.8, 0.8), (0.8, 0.8, 0.8)),
    "day": ((0.55, 0.7, 0.9), (0.45, 0.4, 0.35)),
    "contrast": ((1.0, 1.0, 1.0), (0.2, 0.2, 0.2)),
}


def light(color):
    """Shares of light of a colour of sRGB."""
    return [((c + 0.055) / 1.055) ** 2.4 if c > 0.04045 else c / 12.92 for c in color]


def radius_in_picture():
    """Of a ball's outline, in pixels: a little more than what a circle through its middle would have."""
    return math.tan(math.asin(1 / DISTANCE)) / math.tan(math.radians(VIEW_ANGLE / 2)) * SIZE / 2


def picture(folder, program, sky, material):
    return folder / f"{program}-{sky}-{material.replace(' ', '_')}.png"
