"""This project's still: as it comes, or in its look for talks."""

import hyx
import hyxCollide
import hyxOSG
import osg
import stage

picture, best, model = stage.asked()
app = hyxOSG.ExampleApplication(look="talk" if best else None)
app.initViewer(stage.WIDTH, stage.HEIGHT)
root = app.getSceneRoot()


def body(shape, place, color):
    made = hyx.RigidBody(hyxCollide.Geometry(shape))
    made.setPosition(place)
    made.setMotionControl(hyx.RigidBody.STATIC)
    app.getSimulation().add(made)
    node = hyxOSG.createVisual(made, root)
    hyxOSG.setDiffuseColor(node, (*color[:3], 1))
    if len(color) == 4:
        hyxOSG.setAlpha(node, color[3])
    return node


body(hyxCollide.Plane(), (0, 0, 0), stage.GROUND_COLOR)
for place, half, color in stage.TOWER:
    body(hyxCollide.Box(half, half, half), place, color)
ball = hyxCollide.Sphere(stage.RADIUS)
body(ball, stage.MATTE, stage.MATTE_COLOR)
plastic = body(ball, stage.PLASTIC, stage.PLASTIC_COLOR)
metal = body(ball, stage.METAL, stage.METAL_COLOR)
for node, share, shininess in ((plastic, 0.5, 90), (metal, 0.9, 40)):
    hyxOSG.setSpecularColor(node, (share, share, share, 1))
    hyxOSG.setShininess(node, shininess)
body(hyxCollide.Box(*3 * [stage.GLASS_HALF]), stage.GLASS, stage.GLASS_COLOR)

vase = hyxOSG.readNodeFile(model)
hyxOSG.setDiffuseColor(vase, (*stage.MODEL_COLOR, 1))
placed = osg.MatrixTransform(osg.Matrixd.translate(*stage.MODEL_PLACE))
placed.addChild(vase)
root.addChild(placed)
root.addChild(hyxOSG.createText(stage.LABEL, stage.LABEL_PLACE))
lens = app.getViewer().getCamera()
lens.setProjectionMatrixAsPerspective(stage.FIELD_OF_VIEW, stage.WIDTH / stage.HEIGHT, 0.1, 100)
app.setCameraHome(stage.EYE, stage.TARGET)
app.takeScreenShot(picture)
