"""Text nodes: alignments, planes, backdrops, draw modes and scripts."""

import hyx
from hyxOSG import Text

INK = hyx.Vec4(0.8, 0, 0.5, 1)


def text(content, change):
    def make(stage):
        node = Text(content, hyx.Vec3(), INK)
        node.setCharacterSize(0.5)
        change(node)
        stage.root.addChild(node)

    return make


def readable(name):
    return name.replace("_", " ").lower()


def aligned(name):
    """The cross marks the position."""

    def change(node):
        node.setAlignment(getattr(Text, name))
        node.setDrawMode(Text.TEXT | Text.ALIGNMENT)

    return text("Hog\nHog", change)


def turned(name):
    """Seen from the side, so that each plane shows."""

    def make(stage):
        text("Hog", lambda node: (node.setAxisAlignment(getattr(Text, name)), node.setCharacterSize(0.8)))(stage)
        stage.look_from(hyx.Vec3(2, -2.4, 1.6))

    return make


def centered(change, content="Hog"):
    """Large, around the position."""

    def both(node):
        node.setCharacterSize(1.0)
        node.setAlignment(Text.CENTER_CENTER)
        change(node)

    return text(content, both)


def backdrop(name):
    return centered(lambda node: node.setBackdropType(getattr(Text, name)))


def drawn(mask):
    return centered(lambda node: node.setDrawMode(mask), "Jay")


ALIGNMENTS = [
    f"{side}_{height}"
    for height in ("TOP", "CENTER", "BOTTOM", "BASE_LINE", "BOTTOM_BASE_LINE")
    for side in ("LEFT", "CENTER", "RIGHT")
]
BACKDROPS = [
    f"DROP_SHADOW_{place}"
    for place in (
        "BOTTOM_RIGHT",
        "CENTER_RIGHT",
        "TOP_RIGHT",
        "BOTTOM_CENTER",
        "TOP_CENTER",
        "BOTTOM_LEFT",
        "CENTER_LEFT",
        "TOP_LEFT",
    )
] + ["OUTLINE", "NONE"]
PLANES = [
    "XY_PLANE",
    "REVERSED_XY_PLANE",
    "XZ_PLANE",
    "REVERSED_XZ_PLANE",
    "YZ_PLANE",
    "REVERSED_YZ_PLANE",
    "SCREEN",
    "USER_DEFINED_ROTATION",
]
MODES = {
    "text only": Text.TEXT,
    "bounding box": Text.TEXT | Text.BOUNDINGBOX,
    "filled box": Text.TEXT | Text.FILLEDBOUNDINGBOX,
    "box without text": Text.BOUNDINGBOX,
    "alignment cross": Text.TEXT | Text.ALIGNMENT,
    "everything": Text.TEXT | Text.BOUNDINGBOX | Text.FILLEDBOUNDINGBOX | Text.ALIGNMENT,
}

SCRIPTS = {"Arabic": "محمد", "Hindi": "हिन्दी", "Thai": "ที่นี่", "Chinese": "中国"}

TILES = {
    **{readable(name): aligned(name) for name in ALIGNMENTS},
    **{readable(name): turned(name) for name in PLANES},
    **{readable(name).removeprefix("drop "): backdrop(name) for name in BACKDROPS},
    **{label: drawn(mask) for label, mask in MODES.items()},
    "colour": centered(lambda node: node.setColor(hyx.Vec4f(0, 0.4, 0.8, 1))),
    "font face": centered(lambda node: node.setFont("DejaVuSerif")),
    "character size": centered(lambda node: node.setCharacterSize(0.5)),
    "position": centered(lambda node: node.setPosition(hyx.Vec3(-0.3, 0, 0.5))),
    "changed text": centered(lambda node: node.setText("new")),
    **{name: centered(lambda node: None, written) for name, written in SCRIPTS.items()},
}
