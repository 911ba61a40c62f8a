"""Soil coloured by its height, and the bar of the renderer, which follows while a heap slides."""

import hyxOSG
import hyxTerrain

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
terrain = hyxTerrain.Terrain(60, 60, 0.1, 1)
for x in range(26, 35):
    for y in range(26, 35):
        terrain.addMass(x, y, 30)
shown = hyxOSG.TerrainVoxelRenderer(terrain, app.getSceneRoot())
shown.setRenderHeights(True)
bar = hyxOSG.ColorBar.of(app, shown, "height, m")
app.setCameraHome((3, -4, 5), (3, 2.8, 0))
app.takeScreenShot("steep.png")
before = bar.scale
for _ in range(60):
    terrain.step(1 / 60)
app.takeScreenShot("bar_of_terrain.png")
print(f"highest {before.high:.2f} m, then {bar.scale.high:.2f} m")
