"""A drawing to scale: an orthographic camera, a hundred pixels for each metre."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(320, 200)
sim = app.getSimulation()
for x, shape in ((-2, hyxCollide.Box(0.5, 0.5, 0.5)), (0, hyxCollide.Sphere(0.75)), (2, hyxCollide.Capsule(0.4, 1))):
    geometry = hyxCollide.Geometry(shape)
    geometry.setLocalPosition((x, 0.6 * x, 0))
    sim.add(geometry)
app.createVisual(sim, 3)
hyxOSG.createGrid(6, 4, hyx.Vec3(-3, 2, -2), hyx.Vec3(6, 0, 0), hyx.Vec3(0, 0, 4), app.getSceneRoot())
sheet = hyxOSG.RenderToImage(600, 400, hyxOSG.RenderTarget.COLOR_BUFFER, 4, hyxOSG.RenderTarget.RGB)
sheet.setViewMatrixAsLookAt((0, -10, 0), (0, 0, 0), (0, 0, 1))
sheet.setProjectionMatrixAsOrtho(-3, 3, -2, 2, 0.1, 30)
app.addRenderTarget(sheet)
app.render()
sheet.saveImage("orthographic.png")
