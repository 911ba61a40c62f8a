"""Puts labelled tiles together to one picture."""

import math

from PIL import Image, ImageDraw, ImageFont

COLUMNS = 8
LABEL_HEIGHT, GAP = 18, 4
PAPER, INK = (250, 250, 250), (30, 30, 30)


def contact_sheet(tiles):
    """One picture of all tiles, a dictionary of images by their labels, row by row."""
    width, height = next(iter(tiles.values())).size
    step_x, step_y = width + GAP, height + LABEL_HEIGHT + GAP
    rows = math.ceil(len(tiles) / COLUMNS)
    sheet = Image.new("RGB", (COLUMNS * step_x + GAP, rows * step_y + GAP), PAPER)
    draw = ImageDraw.Draw(sheet)
    font = ImageFont.load_default(12)
    for index, (label, tile) in enumerate(tiles.items()):
        left, top = GAP + index % COLUMNS * step_x, GAP + index // COLUMNS * step_y
        sheet.paste(tile, (left, top))
        draw.text((left + width / 2, top + height + LABEL_HEIGHT / 2), label, INK, font, anchor="mm")
    return sheet
