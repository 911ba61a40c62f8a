"""A screen in the scene that shows what another camera sees."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(4):
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.35)))
    ball.setPosition((0.8 * number - 2.4, -0.6, 0.35))
    sim.add(ball)
screen = hyxCollide.Geometry(hyxCollide.Box(1.2, 0.05, 0.75))
screen.setLocalPosition((0.6, 1.2, 1))
sim.add(screen)
app.createVisual(sim, 2)
for number, ball in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(ball, (0.9, 0.8 - 0.2 * number, 0.3, 1), app.getRoot())
eye = hyxOSG.RenderToTexture(512, 320)
eye.setViewMatrixAsLookAt((-1.2, -0.6, 4), (-1.2, -0.6, 0), (0, 1, 0))
app.addRenderTarget(eye)
node = hyxOSG.findGeometryNode(screen, app.getRoot())
hyxOSG.setTexture(node, eye.getTexture(), True, hyxOSG.DIFFUSE_TEXTURE)
app.setCameraHome((0, -5, 2.2), (-0.3, 0, 0.7))
app.render()
app.takeScreenShot("render_to_texture.png")
