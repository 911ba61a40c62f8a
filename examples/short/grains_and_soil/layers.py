"""Sand over clay, cut open: each column of soil is a stack of voxels."""

import math

import hyxOSG
import hyxRender
import hyxSDK
import hyxTerrain

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
soil = hyxTerrain.Terrain(60, 40, 0.1, 0.8)
clay = hyxTerrain.SoilMaterial()
clay.density, clay.reposeAngle = 1900, 0.9  # kg/m3, radians
kind = soil.addMaterial(clay)
for x in range(60):
    for y in range(40):
        soil.setHeight(x, y, 0.35 + 0.3 * math.sin(x / 9) * math.cos(y / 8))
        if 20 < x < 45:
            soil.setColumnMaterial(x, y, kind, 0.4)
ground = hyxSDK.TerrainInstance(soil)
app.getSimulation().add(ground)
shown = hyxOSG.TerrainVoxelRenderer(ground, app.getSceneRoot())
shown.setTerrainMaterialsColors([hyxRender.Color(0.85, 0.7, 0.45), hyxRender.Color(0.55, 0.3, 0.2)])
shown.setRenderTerrainMaterials(True)
print([(voxel.material, round(voxel.thickness, 2)) for voxel in soil.getVoxels(30, 20)][:3])
app.setCameraHome((3, -3.5, 4), (3, 2, 0))
app.takeScreenShot("layers.png")
