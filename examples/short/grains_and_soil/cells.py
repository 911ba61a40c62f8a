"""Soil in cells of one size, as an array and as boxes: a heavy ball has rolled over it and pressed some of them."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import hyxTerrain

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
soil = hyxTerrain.Terrain(36, 18, 0.1, 0.6)
for number in range(36 * 18):
    soil.setHeight(number % 36, number // 36, 0.12 * math.cos(number % 36 / 5) - 0.02 * abs(number // 36 - 9))
sim.add(ground := hyxSDK.TerrainInstance(soil))
ground.setEnableCompaction(True)
sim.add(ball := hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.4))))
ball.setMass(2500)
ball.setPosition((0.3, 0.9, 0.55))
ball.setVelocity((1.8, 0, 0))
sim.stepTo(1.5)
cells = soil.cells()  # x, y, z, solidMass, fluidMass, compaction, material
mass = cells["solidMass"].sum() + cells["fluidMass"].sum()  # at rest, and on the move
print(len(cells), "cells hold", mass, "kg of", soil.getMass())
shown = hyxOSG.TerrainVoxelRenderer(ground, app.getSceneRoot())
shown.setRenderHeightField(False)
shown.setRenderVoxelCompaction(True)
shown.setRenderVoxelBoundingBox(True)
shown.setMaxVoxelValueColor((1, 0.75, 0.3, 1))
hyxOSG.createVisual(ball, app.getSceneRoot())
app.setCameraHome((2.2, -2.6, 2.6), (1.75, 0.7, -0.2))
app.takeScreenShot("cells.png")
