"""Panda3D's turn: with OpenGL, or with `tiny` as last argument with its own rasterizer."""

import sys

import numpy
import panda3d.core as p3
import scenes

# The generator of shaders needs Cg, which drivers of today refuse, and would leave the shadows out without a word.
VERTEX = """#version 120
uniform mat4 p3d_ModelViewMatrix, p3d_ModelViewProjectionMatrix;
uniform mat3 p3d_NormalMatrix;
uniform struct { vec4 color, position; sampler2DShadow shadowMap; mat4 shadowViewMatrix; } p3d_LightSource[1];
attribute vec4 p3d_Vertex, p3d_Color;
attribute vec3 p3d_Normal;
varying vec4 color, in_map;
varying vec3 normal;

void main() {
    vec4 eye = p3d_ModelViewMatrix * p3d_Vertex;
    in_map = p3d_LightSource[0].shadowViewMatrix * eye;
    normal = p3d_NormalMatrix * p3d_Normal;
    color = p3d_Color;
    gl_Position = p3d_ModelViewProjectionMatrix * p3d_Vertex;
}
"""
FRAGMENT = """#version 120
uniform struct { vec4 ambient; } p3d_LightModel;
uniform struct { vec4 color, position; sampler2DShadow shadowMap; mat4 shadowViewMatrix; } p3d_LightSource[1];
varying vec4 color, in_map;
varying vec3 normal;

void main() {
    float slope = max(dot(normalize(normal), normalize(p3d_LightSource[0].position.xyz)), 0.0);
    float open = shadow2D(p3d_LightSource[0].shadowMap, in_map.xyz / in_map.w - vec3(0.0, 0.0, 0.002)).r;
    gl_FragColor = color * vec4(p3d_LightModel.ambient.rgb + p3d_LightSource[0].color.rgb * slope * open, 1.0);
}
"""


class Stage:
    def __init__(self, display="p3headlessgl"):
        p3.loadPrcFileData("", f"load-display {display}\naudio-library-name null\nsync-video 0\nnotify-level error")
        self.engine = p3.GraphicsEngine.getGlobalPtr()
        pipe = p3.GraphicsPipeSelection.getGlobalPtr().makeDefaultPipe()
        size = p3.WindowProperties.size(scenes.WIDTH, scenes.HEIGHT)
        properties = p3.FrameBufferProperties(p3.FrameBufferProperties.getDefault())
        self.output = self.engine.makeOutput(pipe, "out", 0, properties, size, p3.GraphicsPipe.BFRefuseWindow)
        self.picture = p3.Texture()
        self.output.addRenderTexture(self.picture, p3.GraphicsOutput.RTMCopyRam)
        self.output.setClearColor((0.55, 0.67, 0.8, 1))
        self.root = p3.NodePath("root")
        camera = self.root.attachNewNode(p3.Camera("camera", p3.PerspectiveLens()))
        camera.node().getLens().setFov(p3.LVecBase2(0, 0))
        camera.node().getLens().setAspectRatio(scenes.WIDTH / scenes.HEIGHT)
        camera.node().getLens().setMinFov(scenes.FIELD_OF_VIEW)
        camera.setPos(*scenes.EYE)
        camera.lookAt(0, 0, 0)
        self.output.makeDisplayRegion().setCamera(camera)

    def light(self, shadows=False):
        sun = self.root.attachNewNode(p3.DirectionalLight("sun"))
        sun.setPos(-4, -8, 20)
        sun.lookAt(0, 0, 0)
        sun.node().setColor((0.8, 0.8, 0.8, 1))
        ambient = self.root.attachNewNode(p3.AmbientLight("ambient"))
        ambient.node().setColor((0.3, 0.3, 0.3, 1))
        if shadows:
            sun.node().setShadowCaster(True, 1024, 1024)
            sun.node().getLens().setFilmSize(30, 30)
            sun.node().getLens().setNearFar(1, 60)
            self.root.setShader(p3.Shader.make(p3.Shader.SL_GLSL, VERTEX, FRAGMENT))
        self.root.setLight(sun)
        self.root.setLight(ambient)

    def draw(self):
        self.engine.renderFrame()
        rows = numpy.frombuffer(self.picture.getRamImageAs("RGB"), numpy.uint8)
        return rows.reshape(scenes.HEIGHT, scenes.WIDTH, 3)[::-1]


def node(mesh):
    points, normals, triangles = mesh
    data = p3.GeomVertexData("mesh", p3.GeomVertexFormat.getV3n3(), p3.Geom.UHStatic)
    data.uncleanSetNumRows(len(points))
    memoryview(data.modifyArray(0)).cast("B").cast("f")[:] = memoryview(numpy.hstack([points, normals]).ravel())
    primitive = p3.GeomTriangles(p3.Geom.UHStatic)
    primitive.setIndexType(p3.Geom.NTUint32)
    indices = primitive.modifyVertices()
    indices.uncleanSetNumRows(triangles.size)
    memoryview(indices).cast("B").cast("I")[:] = memoryview(triangles.ravel())
    geometry = p3.Geom(data)
    geometry.addPrimitive(primitive)
    result = p3.GeomNode("mesh")
    result.addGeom(geometry)
    return p3.NodePath(result)


def add(stage, mesh, color):
    shown = mesh.copyTo(stage.root)
    shown.setColor(*color, 1)
    return shown


def shapes(display, shadows=False):
    stage = Stage(display)
    meshes = [node(mesh) for mesh in scenes.shape_meshes()]
    shown = [add(stage, meshes[i % 4], color) for i, color in enumerate(scenes.colors(scenes.SHAPES))]
    if shadows:
        ground(stage)
    stage.light(shadows)

    def draw(frame):
        for one, place in zip(shown, scenes.shape_places(frame).tolist()):
            one.setPos(*place)
        return stage.draw()

    return draw


def ground(stage):
    shown = add(stage, node(scenes.box(1.0)), (0.6, 0.6, 0.6))
    shown.setScale(12, 12, 0.1)
    shown.setZ(-0.1)
    return shown


def boxes(display):
    from panda3d.bullet import BulletBoxShape, BulletRigidBodyNode, BulletWorld

    stage, world = Stage(display), BulletWorld()
    world.setGravity((0, 0, -9.81))
    ground(stage)
    floor = BulletRigidBodyNode("ground")
    floor.addShape(BulletBoxShape((12, 12, 0.1)), p3.TransformState.makePos((0, 0, -0.1)))
    world.attach(floor)
    mesh = node(scenes.box(0.3))
    for place, color in zip(scenes.box_places().tolist(), scenes.colors(scenes.BOXES)):
        body = BulletRigidBodyNode("box")
        body.setMass(1)
        body.addShape(BulletBoxShape((0.3, 0.3, 0.3)))
        world.attach(body)
        carried = stage.root.attachNewNode(body)
        carried.setPos(*place)
        mesh.copyTo(carried).setColor(*color, 1)
    stage.light()

    def draw(frame):
        world.doPhysics(1 / 60, 1, 1 / 60)
        return stage.draw()

    return draw


def mesh(display):
    stage = Stage(display)
    shown = add(stage, node(scenes.knobbly_ring()), (0.8, 0.5, 0.2))
    stage.light()

    def draw(frame):
        shown.setH(numpy.degrees(0.04 * frame))
        return stage.draw()

    return draw


def points(display):
    stage = Stage(display)
    data = p3.GeomVertexData("points", p3.GeomVertexFormat.getV3c4(), p3.Geom.UHStream)
    data.uncleanSetNumRows(scenes.POINTS)
    primitive = p3.GeomPoints(p3.Geom.UHStatic)
    primitive.addNextVertices(scenes.POINTS)
    geometry = p3.Geom(data)
    geometry.addPrimitive(primitive)
    cloud = p3.GeomNode("points")
    cloud.addGeom(geometry)
    cloud.setBounds(p3.OmniBoundingVolume())
    stage.root.attachNewNode(cloud)
    rows = numpy.zeros(scenes.POINTS, [("place", "f4", 3), ("color", "u1", 4)])

    def draw(frame):
        rows["place"], rows["color"] = scenes.CLOUDS[frame % 8], scenes.CLOUD_COLORS[frame % 2]
        memoryview(cloud.modifyGeom(0).modifyVertexData().modifyArray(0)).cast("B")[:] = rows.tobytes()
        return stage.draw()

    return draw


def compete(display, rows):
    turns = {row.__name__: row for row in rows}
    if "shapes" in turns:
        turns["shadows"] = lambda display: shapes(display, shadows=True)
        turns["first"] = turns["shapes"]
    scenes.compete({name: lambda turn=turn: turn(display) for name, turn in turns.items()})


if __name__ == "__main__":
    tiny = "tiny" in sys.argv[4:]
    if tiny and sys.argv[1] in ("shadows", "points"):
        scenes.compete({})
    else:
        compete("p3tinydisplay" if tiny else "p3headlessgl", (shapes, boxes, mesh, points))
