"""PyBullet's still by its own rasterizer: its default, or with a light of its own and drawn at twice the size."""

import numpy
import pybullet
import stage
from PIL import Image

picture, best, model = stage.asked()
pybullet.connect(pybullet.DIRECT)


def body(place, color, kind, **form):
    shape = pybullet.createVisualShape(kind, rgbaColor=(*color, 1)[:4], **form)
    pybullet.createMultiBody(baseVisualShapeIndex=shape, basePosition=place)


half = stage.GROUND_HALF
body((0, 0, -0.05), stage.GROUND_COLOR, pybullet.GEOM_BOX, halfExtents=(half, half, 0.05))
for place, half, color in stage.TOWER:
    body(place, color, pybullet.GEOM_BOX, halfExtents=[half] * 3)
for place, color, shine in (
    (stage.MATTE, stage.MATTE_COLOR, 0),
    (stage.PLASTIC, stage.PLASTIC_COLOR, 0.5),
    (stage.METAL, stage.METAL_COLOR, 0.9),
):
    body(place, color, pybullet.GEOM_SPHERE, radius=stage.RADIUS, specularColor=[shine] * 3)
body(stage.GLASS, stage.GLASS_COLOR, pybullet.GEOM_BOX, halfExtents=[stage.GLASS_HALF] * 3)
body(stage.MODEL_PLACE, stage.MODEL_COLOR, pybullet.GEOM_MESH, fileName=model)
scale = 2 if best else 1
lens = pybullet.computeProjectionMatrixFOV(stage.FIELD_OF_VIEW, stage.WIDTH / stage.HEIGHT, 0.1, 60)
view = pybullet.computeViewMatrix(stage.EYE, stage.TARGET, (0, 0, 1))
light = {"lightDirection": (-4, -8, 20), "lightAmbientCoeff": 0.5, "shadow": 1} if best else {}
size = (stage.WIDTH * scale, stage.HEIGHT * scale)
pixels = pybullet.getCameraImage(*size, view, lens, renderer=pybullet.ER_TINY_RENDERER, **light)[2]
image = Image.fromarray(numpy.reshape(pixels, (size[1], size[0], 4)).astype(numpy.uint8)[..., :3])
image.resize((stage.WIDTH, stage.HEIGHT), Image.Resampling.LANCZOS).save(picture)
