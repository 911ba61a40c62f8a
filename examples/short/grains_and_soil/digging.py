"""A blade digs a trench through soil, which gives way and heaps up at its sides."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import hyxTerrain

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
soil = hyxTerrain.Terrain(80, 60, 0.08, 0.6)  # columns, metres a column and metres of depth
ground = hyxSDK.TerrainInstance(soil)
sim.add(ground)
blade = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.04, 0.7, 0.35)))
blade.setMotionControl(hyx.RigidBody.KINEMATICS)
blade.setPosition((1, 2.4, 0.15))
blade.setVelocity((1.2, 0, 0))
sim.add(blade)
tool = hyxTerrain.DigTool(blade, (0, -0.7, -0.35), (0, 0.7, -0.35), (-0.1, 0, 0.35))
soil.addTool(tool)
sim.stepTo(2.5)
print(f"{tool.getDugMass():.0f} kg dug, {tool.getSoilForce().length() / 1000:.1f} kN")
shown = hyxOSG.TerrainVoxelRenderer(ground, app.getSceneRoot())
shown.setColor((0.6, 0.45, 0.3, 1))
hyxOSG.setDiffuseColor(hyxOSG.createVisual(blade, app.getSceneRoot()), (0.9, 0.65, 0.1, 1))
app.setCameraHome((2.5, -3.2, 3.6), (2.8, 2.2, 0))
app.takeScreenShot("digging.png")
