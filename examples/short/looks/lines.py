"""Lines, grids, boxes and axes, drawn and nothing else."""

import math

import hyx
import hyxOSG
import hyxRender

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
root = app.getSceneRoot()
hyxOSG.createGrid(10, 10, hyx.Vec3(-2, -2, 0), hyx.Vec3(4, 0, 0), hyx.Vec3(0, 4, 0), root)
spiral = [(math.cos(i / 8) * i / 100, math.sin(i / 8) * i / 100, i / 80) for i in range(120)]
root.addChild(hyxOSG.createPolyline(spiral, (0.8, 0.2, 0.15, 1), 4))
root.addChild(hyxOSG.createCubeLines((-1.2, -1.2, 0), (1.2, 1.2, 1.5), hyxRender.Color("darkblue"), 2))
root.addChild(hyxOSG.createLine((-1.2, -1.2, 0), (1.2, 1.2, 1.5), (0.1, 0.5, 0.3, 1), 3))
hyxOSG.createAxes(hyx.AffineMatrix4x4(), root, 1.5, 0.8)
app.setCameraHome((2, -4.5, 2.6), (0, 0, 0.5))
app.takeScreenShot("lines.png")
