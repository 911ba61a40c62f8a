"""Smooth curves through points, drawn as tubes: cubic, and two of Hermite with other tensions."""

import hyxOSG
import hyxUtil

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
points = [(-2, 0, 0), (-1, 0, 1), (0, 0.5, -0.5), (1, 0, 1), (2, 0, 0)]
curves = (
    (hyxUtil.CubicSpline(), (0.85, 0.35, 0.25, 1)),
    (hyxUtil.HermiteSpline(0), (0.3, 0.55, 0.8, 1)),
    (hyxUtil.HermiteSpline(0.8), (0.4, 0.7, 0.4, 1)),
)
shown = []
for spline, color in curves:
    spline.setPoints(points)
    tube = hyxOSG.SplineRenderer(spline, app.getSceneRoot())
    tube.setRadius(0.05)  # metres
    tube.setNumSegmentsPerUnitLength(20)
    tube.setColor(color)
    tube.update()
    shown.append(tube)
    print(f"{spline.getLength():.2f} m, sharpest bend {max(spline.getCurvature(i / 100) for i in range(101)):.1f} /m")
for point in points:
    app.getSceneRoot().addChild(hyxOSG.createSphere(point, (0.2, 0.2, 0.25, 1), 0.1))
app.setCameraHome((0.5, -5, 1.5), (0, 0, 0.3))
app.takeScreenShot("spline.png")
