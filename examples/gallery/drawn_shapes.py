"""Shapes that are drawn and nothing else: lines, grids, axes, balls and letters."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import osg

from gallery.stage import TILT

BLUE = hyx.Vec4(0.1, 0.3, 0.9, 1)
CORNER = hyx.Vec3(0.7, 0.7, 0.7)


def spiral():
    return hyx.Vec3Vector([hyx.Vec3(0.05 * i * math.cos(i / 2), 0, 0.05 * i * math.sin(i / 2)) for i in range(17)])


def filled_grid():
    board = osg.Geode()
    board.addDrawable(hyxOSG.createGrid(7, 7, osg.Vec3(-0.7, 0, -0.7), osg.Vec3(1.4, 0, 0), osg.Vec3(0, 0, 1.4), True))
    return board


def space_grid():
    return hyxOSG.create3DGrid(
        3, 3, 3, hyx.Vec3() - CORNER, hyx.Vec3(1.4, 0, 0), hyx.Vec3(0, 1.4, 0), hyx.Vec3(0, 0, 1.4), 1.5
    )


def labelled(stage):
    stage.shape(hyxCollide.Box(0.7, 0.1, 0.6), turn=hyx.Quat())
    geometry = stage.kept[-1]
    for height, text in ((0.1, "first"), (-0.3, "second"), (0.7, "removed")):
        hyxOSG.addText(geometry, stage.root, text, hyx.Vec3(0, -0.2, height), hyx.Vec4f(0.1, 0.1, 0.4, 1), 0.3)
    hyxOSG.removeText(geometry, stage.root, 2)


def joint_axes(stage):
    body, _ = stage.body(hyxCollide.Box(0.5, 0.5, 0.1), (0, 0, -0.4), hyx.Vec4f(0.7, 0.7, 0.7, 1))
    hinge = hyx.Hinge(hyx.Vec3(0, 0, -0.2), hyx.Vec3(0, 0, 1), body)
    stage.simulation.add(hinge)
    hyxOSG.createAxes(hinge, stage.root, 1.5, 0.8)
    stage.look_from(hyx.Vec3(1.2, -2.6, 1.6))


def shown(make):
    """Draws the node that `make` gives."""
    return lambda stage: stage.root.addChild(make())


TILES = {
    "line": shown(lambda: hyxOSG.createLine(hyx.Vec3(-0.8, 0, -0.8), hyx.Vec3(0.8, 0, 0.8), BLUE, 4.0)),
    "polyline": shown(lambda: hyxOSG.createPolyline(spiral(), BLUE, 4.0)),
    "cube lines": shown(lambda: hyxOSG.createCubeLines(hyx.Vec3() - CORNER, CORNER, hyxRender.Color("darkblue"), 2.0)),
    "drawn sphere": shown(lambda: hyxOSG.createSphere(hyx.Vec3(0.3, 0, 0.2), BLUE, 0.5)),
    "drawn cylinder": shown(lambda: hyxOSG.createCylinder(hyx.AffineMatrix4x4(TILT, hyx.Vec3()), BLUE, 0.4, 1.4)),
    "grid": lambda stage: hyxOSG.createGrid(
        7, 7, hyx.Vec3(-0.7, 0, -0.7), hyx.Vec3(1.4, 0, 0), hyx.Vec3(0, 0, 1.4), stage.root
    ),
    "filled grid": shown(filled_grid),
    "3D grid": shown(space_grid),
    "axes": lambda stage: hyxOSG.createAxes(hyx.AffineMatrix4x4(TILT, hyx.Vec3(-0.3, 0, -0.3)), stage.root, 2.0, 1.0),
    "axes of a joint": joint_axes,
    "text": shown(lambda: hyxOSG.createText("Åα", hyx.Vec3(0, 0, -0.4), hyx.Vec4f(0.7, 0.1, 0.1, 1), 0.9)),
    "text on a geometry": labelled,
}
