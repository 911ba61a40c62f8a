"""Panda3D's still: its default, or with smooth edges, a second light and a sky colour."""

import panda3d.core as p3
import stage

picture, best, model = stage.asked()
p3.loadPrcFileData(
    "", "load-display p3headlessgl\naudio-library-name null\nnotify-level error\nframebuffer-multisample 1"
)
engine = p3.GraphicsEngine.getGlobalPtr()
pipe = p3.GraphicsPipeSelection.getGlobalPtr().makeDefaultPipe()
wanted = p3.FrameBufferProperties(p3.FrameBufferProperties.getDefault())
wanted.setMultisamples(4 if best else 0)
size = p3.WindowProperties.size(stage.WIDTH, stage.HEIGHT)
output = engine.makeOutput(pipe, "out", 0, wanted, size, p3.GraphicsPipe.BFRefuseWindow)
pixels = p3.Texture()
output.addRenderTexture(pixels, p3.GraphicsOutput.RTMCopyRam)
output.setClearColor((0.6, 0.7, 0.85, 1) if best else (0.41, 0.41, 0.41, 1))
root = p3.NodePath("root")
camera = root.attachNewNode(p3.Camera("camera", p3.PerspectiveLens()))
camera.node().getLens().setAspectRatio(stage.WIDTH / stage.HEIGHT)
camera.node().getLens().setMinFov(stage.FIELD_OF_VIEW)
camera.setPos(*stage.EYE)
camera.lookAt(*stage.TARGET)
output.makeDisplayRegion().setCamera(camera)
for color, place in [((0.8, 0.8, 0.8, 1), (-4, -8, 20))] + ([((0.25, 0.25, 0.3, 1), (8, -4, 6))] if best else []):
    lamp = root.attachNewNode(p3.DirectionalLight("lamp"))
    lamp.setPos(*place)
    lamp.lookAt(0, 0, 0)
    lamp.node().setColor(color)
    root.setLight(lamp)
ambient = root.attachNewNode(p3.AmbientLight("ambient"))
ambient.node().setColor((0.3, 0.3, 0.3, 1))
root.setLight(ambient)
root.setAntialias(p3.AntialiasAttrib.MMultisample)


def add(points, normals, triangles, place, color, shine=0.0, power=40.0):
    data = p3.GeomVertexData("mesh", p3.GeomVertexFormat.getV3n3(), p3.Geom.UHStatic)
    vertex, normal = p3.GeomVertexWriter(data, "vertex"), p3.GeomVertexWriter(data, "normal")
    for point, way in zip(points, normals):
        vertex.addData3(*map(float, point))
        normal.addData3(*map(float, way))
    faces = p3.GeomTriangles(p3.Geom.UHStatic)
    for corners in triangles:
        faces.addVertices(*map(int, corners))
    geom = p3.Geom(data)
    geom.addPrimitive(faces)
    node = p3.GeomNode("mesh")
    node.addGeom(geom)
    path = root.attachNewNode(node)
    path.setPos(*place)
    material = p3.Material()
    material.setAmbient((*color, 1)[:4])
    material.setDiffuse((*color, 1)[:4])
    material.setSpecular((shine, shine, shine, 1))
    material.setShininess(power)
    path.setMaterial(material)
    if len(color) == 4:
        path.setTransparency(p3.TransparencyAttrib.MAlpha)
        path.setTwoSided(False)


for place, half, color in stage.TOWER:
    add(*stage.box_mesh(half), place, color)
flat = [(x, y, 0) for x in (-1, 1) for y in (-1, 1)]
ground = [(x * stage.GROUND_HALF, y * stage.GROUND_HALF, 0) for x, y, _ in flat]
add(ground, [(0, 0, 1)] * 4, [(0, 2, 1), (1, 2, 3)], (0, 0, 0), stage.GROUND_COLOR)
for place, color, shine in (
    (stage.MATTE, stage.MATTE_COLOR, 0),
    (stage.PLASTIC, stage.PLASTIC_COLOR, 0.5),
    (stage.METAL, stage.METAL_COLOR, 0.9),
):
    add(*stage.ball_mesh(stage.RADIUS), place, color, shine)
add(*stage.vase_mesh(), stage.MODEL_PLACE, stage.MODEL_COLOR)
add(*stage.box_mesh(stage.GLASS_HALF), stage.GLASS, stage.GLASS_COLOR)
text = p3.TextNode("label")
text.setText(stage.LABEL)
text.setAlign(p3.TextNode.ACenter)
label = root.attachNewNode(text)
label.setScale(0.25)
label.setPos(*stage.LABEL_PLACE)
label.setBillboardPointEye()
label.setLightOff()
engine.renderFrame()
engine.renderFrame()
pixels.write(p3.Filename.fromOsSpecific(picture))
