"""Many pictures in one."""

from __future__ import annotations

import math
import os
from collections.abc import Mapping
from pathlib import Path

from _hyx_extras.whole_files import whole_file

WIDTH = 240  # pixels of a tile
MARGIN = 6
CAPTION = 18


def contact_sheet(
    pictures: Mapping[str, str | os.PathLike[str]], file: str | os.PathLike[str], columns: int = 0
) -> Path:
    """Writes `pictures` (by caption) as tiles into `file`; `columns` 0 chooses about as many as rows. Needs Pillow."""
    from PIL import Image, ImageDraw

    if not pictures:
        raise ValueError("a contact sheet needs pictures: run the sweep with pictures=True")
    columns = columns or math.ceil(math.sqrt(len(pictures)))
    rows = math.ceil(len(pictures) / columns)
    tiles = []
    for caption, picture in pictures.items():
        with Image.open(picture) as image:
            tile = image.convert("RGB")
        tiles.append((caption, tile.resize((WIDTH, max(1, round(tile.height * WIDTH / tile.width))))))
    height = max(tile.height for _, tile in tiles) + CAPTION
    sheet = Image.new("RGB", (columns * (WIDTH + MARGIN) + MARGIN, rows * (height + MARGIN) + MARGIN), "white")
    pen = ImageDraw.Draw(sheet)
    for place, (caption, tile) in enumerate(tiles):
        x = MARGIN + place % columns * (WIDTH + MARGIN)
        y = MARGIN + place // columns * (height + MARGIN)
        sheet.paste(tile, (x, y))
        pen.text((x, y + tile.height + 2), caption[:40], fill="black")
    with whole_file(file) as other:
        sheet.save(other)
    return Path(file)
