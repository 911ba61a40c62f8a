"""Materials and render state."""

import hyx
import hyxOSG
import hyxRender

from gallery.stage import SAND, WHITE

BLUE = hyx.Vec4f(0.2, 0.3, 0.6, 1)


def shining(stage, shininess):
    stage.light.setSpecular(WHITE)
    visual = stage.ball(BLUE)
    hyxOSG.setSpecularColor(visual, WHITE)
    hyxOSG.setShininess(visual, shininess)


def see_through(stage):
    stage.box(hyx.Vec4f(0.8, 0.2, 0.2, 1))
    hyxOSG.setAlpha(stage.ball(), 0.4)


def forced_wire_frame(stage):
    """Also what is turned off below."""
    hyxOSG.setEnableWireFrameMode(stage.ball(), False)
    hyxOSG.forceWireFrameModeOn(stage.root)


TILES = {
    "diffuse": lambda stage: hyxOSG.setDiffuseColor(stage.ball(), hyx.Vec4f(0.9, 0.2, 0.2, 1)),
    "ambient": lambda stage: hyxOSG.setAmbientColor(stage.ball(), hyx.Vec4f(0.2, 0.9, 0.2, 1)),
    "specular": lambda stage: shining(stage, 8.0),
    "shininess": lambda stage: shining(stage, 90.0),
    "alpha": see_through,
    "outline": lambda stage: hyxOSG.setEnableOutline(stage.box(), True, hyxRender.Color(0.9, 0.1, 0.1, 1), 3.0),
    "wire frame": lambda stage: hyxOSG.setEnableWireFrameMode(stage.box(), True),
    "forced wire frame": forced_wire_frame,
    "light off": lambda stage: hyxOSG.setEnableLight(False, 0, stage.ball()),
    "smooth normals": lambda stage: hyxOSG.smoothNormals(stage.box(SAND), 3.1),
}
