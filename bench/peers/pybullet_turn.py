"""PyBullet's turn, with its own rasterizer: bodies and meshes."""

import numpy
import pybullet
import scenes


class Stage:
    def __init__(self, shadows=False):
        pybullet.connect(pybullet.DIRECT)
        self.view = pybullet.computeViewMatrix(scenes.EYE, (0, 0, 0), (0, 0, 1))
        aspect = scenes.WIDTH / scenes.HEIGHT
        self.projection = pybullet.computeProjectionMatrixFOV(scenes.FIELD_OF_VIEW, aspect, 0.1, 100)
        self.shadows = int(shadows)

    def draw(self):
        picture = pybullet.getCameraImage(
            scenes.WIDTH,
            scenes.HEIGHT,
            self.view,
            self.projection,
            lightDirection=(-4, -8, 20),
            shadow=self.shadows,
            renderer=pybullet.ER_TINY_RENDERER,
        )
        return numpy.reshape(picture[2], (scenes.HEIGHT, scenes.WIDTH, 4)).astype(numpy.uint8)


def add(color, place=(0, 0, 0), mass=0.0, solid=False, **shape):
    looks = pybullet.createVisualShape(rgbaColor=[*color, 1], **shape)
    if "length" in shape:
        shape["height"] = shape.pop("length")
    solid = pybullet.createCollisionShape(**shape) if solid else -1
    return pybullet.createMultiBody(mass, solid, looks, place)


def shapes(shadows=False):
    stage = Stage(shadows)
    kinds = [
        {"shapeType": pybullet.GEOM_BOX, "halfExtents": [0.3] * 3},
        {"shapeType": pybullet.GEOM_SPHERE, "radius": 0.35},
        {"shapeType": pybullet.GEOM_CYLINDER, "radius": 0.3, "length": 0.7},
        {"shapeType": pybullet.GEOM_CAPSULE, "radius": 0.25, "length": 0.4},
    ]
    shown = [add(color, **kinds[i % 4]) for i, color in enumerate(scenes.colors(scenes.SHAPES))]
    if shadows:
        ground()

    def draw(frame):
        for one, place in zip(shown, scenes.shape_places(frame).tolist()):
            pybullet.resetBasePositionAndOrientation(one, place, (0, 0, 0, 1))
        return stage.draw()

    return draw


def ground():
    slab = {"shapeType": pybullet.GEOM_BOX, "halfExtents": [12, 12, 0.1]}
    add((0.6, 0.6, 0.6), (0, 0, -0.1), solid=True, **slab)


def boxes():
    stage = Stage()
    pybullet.setGravity(0, 0, -9.81)
    pybullet.setTimeStep(1 / 60)
    ground()
    box = {"shapeType": pybullet.GEOM_BOX, "halfExtents": [0.3] * 3}
    for place, color in zip(scenes.box_places().tolist(), scenes.colors(scenes.BOXES)):
        add(color, place, 1, solid=True, **box)

    def draw(frame):
        pybullet.stepSimulation()
        return stage.draw()

    return draw


if __name__ == "__main__":
    scenes.compete({"shapes": shapes, "shadows": lambda: shapes(shadows=True), "boxes": boxes, "first": shapes})
