"""Tiles that show every look there is. A tile is a function that fills a stage; a sheet is some groups of tiles."""

from gallery import (
    backgrounds,
    cuts,
    drawn_shapes,
    lights,
    materials,
    motion,
    overlays,
    particles,
    shadows,
    shapes,
    texts,
    textures,
)

SHEETS = {
    "visuals": (shapes, materials, textures, drawn_shapes, particles, motion),
    "decoration": (backgrounds, lights, shadows, overlays, cuts),
    "text": (texts,),
}


def tiles_of(sheet):
    """The tiles of a sheet by their labels, in order."""
    return {label: fill for group in SHEETS[sheet] for label, fill in group.TILES.items()}
