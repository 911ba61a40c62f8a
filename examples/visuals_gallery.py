"""Contact sheets of every look: visuals, decoration and text, one labelled tile each.

    visuals_gallery.py [--output FOLDER] [--tiles] [SHEET ...]

What a tile asks for stands in examples/gallery/, a group of tiles a file.
"""

import argparse
import tempfile
from pathlib import Path

from gallery import SHEETS, tiles_of
from gallery.contact_sheet import contact_sheet
from gallery.stage import Stage


def draw_tiles(sheet):
    tiles = {}
    with tempfile.TemporaryDirectory() as folder:
        for label, fill in tiles_of(sheet).items():
            stage = Stage(Path(folder))
            fill(stage)
            stage.draw()  # the first frame also updates what follows the simulation
            tiles[label] = stage.draw()
    return tiles


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("sheets", nargs="*", metavar="SHEET", help=f"which of {', '.join(SHEETS)}; all by default")
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the pictures")
    parser.add_argument("--tiles", action="store_true", help="write each tile as a picture of its own, too")
    options = parser.parse_args()
    for sheet in options.sheets or SHEETS:
        tiles = draw_tiles(sheet)
        folder = options.output / sheet if options.tiles else options.output
        folder.mkdir(parents=True, exist_ok=True)
        picture = options.output / f"{sheet}_gallery.png"
        contact_sheet(tiles).save(picture)
        if options.tiles:
            for label, tile in tiles.items():
                tile.save(folder / f"{label}.png")
        print(f"{len(tiles)} tiles: {picture}")


if __name__ == "__main__":
    main()
