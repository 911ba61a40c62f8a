"""Where soil was pressed: compaction after a heavy ball has rolled over it."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import hyxTerrain

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
soil = hyxTerrain.Terrain(70, 40, 0.06, 0.5)
ground = hyxSDK.TerrainInstance(soil)
ground.setEnableCompaction(True)
sim.add(ground)
ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.3)))
ball.setMass(600)
ball.setPosition((0.4, 1.2, 0.32))
ball.setVelocity((1.6, 0, 0))
ball.setAngularVelocity((0, 5.3, 0))
sim.add(ball)
sim.stepTo(1.7)
shown = hyxOSG.TerrainVoxelRenderer(ground, app.getSceneRoot())
shown.setRenderCompaction(True)
hyxOSG.createVisual(ball, app.getSceneRoot(), 2)
print(max(soil.getSurfaceCompaction(x, 20) for x in range(70)))
app.setCameraHome((2.1, -2.2, 2.6), (2.1, 1.1, 0))
app.takeScreenShot("compaction.png")
