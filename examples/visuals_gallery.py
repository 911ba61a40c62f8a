"""A contact sheet of visuals, materials, textures and particles: one labelled tile each.

    visuals_gallery.py [--output FOLDER]

The tiles stand in a plane of the scene, so the sheet is one picture of it.
"""

import argparse
import math
import tempfile
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import hyxSDK
import osg
import osgDB

COLUMNS = 8
SPACING = 2.4
TILT = hyx.Quat(0.6, hyx.Vec3(1, 0.3, 0.5))
PARTICLES = hyxOSG.ParticleSystemDrawable
WHITE = hyx.Vec4f(1, 1, 1, 1)


class Sheet:
    """The tiles' places, and what has to be kept alive for them."""

    def __init__(self, root, folder):
        self.root, self.folder = root, folder
        self.labels = []
        self.kept = []

    def next_place(self, label):
        index = len(self.labels)
        self.labels.append(label)
        place = self.place(index)
        text = hyxOSG.createText(label, place + hyx.Vec3(0, -0.9, -1.15), hyx.Vec4f(0.1, 0.1, 0.1, 1), 0.24)
        self.root.addChild(text)
        return place

    @staticmethod
    def place(index):
        return hyx.Vec3(index % COLUMNS * SPACING, 0, -(index // COLUMNS) * SPACING)

    def shape(self, label, shape, color=hyx.Vec4f(0.85, 0.6, 0.35, 1)):
        """The visual of a shape in the next tile."""
        geometry = hyxCollide.Geometry(shape)
        geometry.setLocalTransform(hyx.AffineMatrix4x4(TILT, self.next_place(label)))
        self.kept.append(geometry)
        visual = hyxOSG.createVisual(geometry, self.root, 1.5)
        hyxOSG.setDiffuseColor(visual, color)
        hyxOSG.setAmbientColor(visual, color)
        return visual

    def picture(self, name, color_at, size=64):
        """A small picture file; `color_at(x, y)` gives red, green, blue from 0 to 1."""
        image = osg.Image(size, size)
        pixels = [round(255 * part) for y in range(size) for x in range(size) for part in color_at(x, y)]
        image.setData(bytes(pixels))
        file = str(self.folder / f"{name}.png")
        osgDB.writeImageFile(image, file)
        return file


def box():
    return hyxCollide.Box(0.6, 0.6, 0.6)


def ball():
    return hyxCollide.Sphere(0.75)


def tetrahedron():
    corners = [(-0.7, -0.7, -0.5), (0.7, -0.7, -0.5), (0, 0.8, -0.5), (0, 0, 0.9)]
    return hyxCollide.Trimesh(hyx.Vec3Vector([hyx.Vec3(*c) for c in corners]), [0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3])


def waves():
    count = 25
    field = hyxCollide.HeightField(count, count, 1.7, 1.7)
    for i in range(count):
        for j in range(count):
            field.setHeight(i, j, 0.15 * math.sin(i / 2) * math.cos(j / 2))
    return field


def dumbbell():
    shape = hyxCollide.Compound()
    shape.add(hyxCollide.Sphere(0.35), hyx.AffineMatrix4x4(hyx.Vec3(0, 0.55, 0)))
    shape.add(hyxCollide.Cylinder(0.12, 1.0))
    shape.add(hyxCollide.Sphere(0.35), hyx.AffineMatrix4x4(hyx.Vec3(0, -0.55, 0)))
    return shape


def add_shapes(sheet):
    shapes = {"box": box(), "sphere": ball(), "cylinder": hyxCollide.Cylinder(0.5, 1.1), "capsule": hyxCollide.Capsule(0.4, 0.7),
              "cone": hyxCollide.Cone(0.6, 1.2), "mesh": tetrahedron(), "height field": waves(), "compound": dumbbell()}
    for label, shape in shapes.items():
        sheet.shape(label, shape)


def add_materials(sheet):
    hyxOSG.setDiffuseColor(sheet.shape("diffuse", ball()), hyx.Vec4f(0.9, 0.2, 0.2, 1))
    hyxOSG.setAmbientColor(sheet.shape("ambient", ball()), hyx.Vec4f(0.2, 0.9, 0.2, 1))
    for label, shininess in (("specular", 8.0), ("shininess", 90.0)):
        visual = sheet.shape(label, ball(), hyx.Vec4f(0.2, 0.3, 0.6, 1))
        hyxOSG.setSpecularColor(visual, WHITE)
        hyxOSG.setShininess(visual, shininess)
    hyxOSG.setAlpha(sheet.shape("alpha", ball()), 0.35)
    hyxOSG.setEnableOutline(sheet.shape("outline", box()), True, hyxRender.Color(0.9, 0.1, 0.1, 1), 3.0)
    hyxOSG.setEnableWireFrameMode(sheet.shape("wire frame", ball()), True)
    hyxOSG.setEnableLight(False, 0, sheet.shape("light off", ball()))


def bump(x, y):
    dx, dy = (x % 16 - 8) / 8, (y % 16 - 8) / 8
    flat = dx * dx + dy * dy > 0.8
    nx, ny = (0, 0) if flat else (dx, dy)
    return 0.5 + 0.5 * nx, 0.5 + 0.5 * ny, 0.5 + 0.5 * math.sqrt(1 - nx * nx - ny * ny)


def add_textures(sheet):
    def stripes(x, y):
        return (1, 1, 1) if x // 8 % 2 else (0, 0, 0)

    pictures = {
        "diffuse map": (hyxOSG.DIFFUSE_TEXTURE, lambda x, y: (0.9, 0.3, 0.2) if (x // 8 + y // 8) % 2 else (1, 0.95, 0.85)),
        "shadow map": (hyxOSG.SHADOW_TEXTURE, stripes),
        "normal map": (hyxOSG.NORMALMAP_TEXTURE, bump),
        "height map": (hyxOSG.HEIGHTMAP_TEXTURE, lambda x, y: (0.5 + 0.5 * math.sin(x / 4) * math.sin(y / 4),) * 3),
        "specular map": (hyxOSG.SPECULARMAP_TEXTURE, stripes),
        "sphere map": (hyxOSG.SPHEREMAP_TEXTURE, lambda x, y: (0.9, 0.8, 0.2) if y < 32 else (0.2, 0.4, 0.9)),
    }
    for label, (mode, color_at) in pictures.items():
        visual = sheet.shape(label, ball() if "sp" in label else box(), hyx.Vec4f(0.6, 0.6, 0.6, 1))
        if mode == hyxOSG.SPECULARMAP_TEXTURE:
            hyxOSG.setSpecularColor(visual, WHITE)
            hyxOSG.setShininess(visual, 5.0)
        hyxOSG.setTexture(visual, sheet.picture(label, color_at), True, mode)
    for side, color in {"posx": (1, 0, 0), "negx": (0, 1, 1), "posy": (0.4, 0.6, 1), "negy": (0.4, 0.3, 0.2), "posz": (0, 0.7, 0),
                        "negz": (1, 0, 1)}.items():
        sheet.picture(f"sky_{side}", lambda x, y, c=color: tuple(part * (1 if (x // 8 + y // 8) % 2 else 0.7) for part in c))
    mirror = sheet.shape("mirror", ball())
    hyxOSG.setCubeMapTexture(mirror, str(sheet.folder / "sky_"))
    hyxOSG.setEnvMapReflectionCoefficient(mirror, 0.9)
    crease = sheet.shape("smooth normals", box())
    hyxOSG.smoothNormals(crease, 3.1)


def add_lines(sheet):
    half, side = hyx.Vec3(0.7, 0, 0.7), 1.4
    blue = hyx.Vec4(0.1, 0.3, 0.9, 1)
    place = sheet.next_place("line")
    sheet.root.addChild(hyxOSG.createLine(place - half, place + half, blue, 4.0))
    place = sheet.next_place("polyline")
    turns = [place + hyx.Vec3(0.05 * i * math.cos(i / 2), 0, 0.05 * i * math.sin(i / 2)) for i in range(16)]
    sheet.root.addChild(hyxOSG.createPolyline(hyx.Vec3Vector(turns), blue, 4.0))
    place = sheet.next_place("cube lines")
    corner = hyx.Vec3(0.6, 0.6, 0.6)
    sheet.root.addChild(hyxOSG.createCubeLines(place - corner, place + corner, hyxRender.Color("darkblue"), 2.0))
    place = sheet.next_place("grid")
    hyxOSG.createGrid(7, 7, place - half, hyx.Vec3(side, 0, 0), hyx.Vec3(0, 0, side), sheet.root)
    place = sheet.next_place("filled grid")
    board = osg.Geode()
    corner = place - half
    board.addDrawable(hyxOSG.createGrid(7, 7, osg.Vec3(*corner), osg.Vec3(side, 0, 0), osg.Vec3(0, 0, side), True))
    sheet.root.addChild(board)
    place = sheet.next_place("3D grid")
    sheet.root.addChild(hyxOSG.create3DGrid(3, 3, 3, place - hyx.Vec3(0.6, 0.6, 0.6), hyx.Vec3(1.2, 0, 0), hyx.Vec3(0, 1.2, 0),
                                            hyx.Vec3(0, 0, 1.2), 1.5))
    hyxOSG.createAxes(hyx.AffineMatrix4x4(TILT, sheet.next_place("axes")), sheet.root, 2.0, 1.0)
    sheet.root.addChild(hyxOSG.createText("Åα", sheet.next_place("text") - hyx.Vec3(0, 0, 0.4), hyx.Vec4f(0.7, 0.1, 0.1, 1), 0.9))


def add_particles(sheet):
    renderings = {"points": PARTICLES.SPRITES, "quads": PARTICLES.QUAD_SPRITES, "meshes": PARTICLES.TRIANGLES}
    shadings = {"": PARTICLES.SIMPLE_SPRITES, " turning": PARTICLES.ROTATION_SPRITES, " soft": PARTICLES.ALPHA_SPRITES}
    for rendering_name, rendering in renderings.items():
        for shading_name, shading in shadings.items():
            if rendering_name == "meshes" and shading_name == " soft":
                continue  # the sheet has eight places a row
            place = sheet.next_place(rendering_name + shading_name)
            system = hyx.ParticleSystem()
            system.setParticleRadius(0.45)
            for offset in ((0, 0, 0), (0.5, -0.2, 0.2), (-0.4, 0.1, 0.4)):
                system.createParticle(place + hyx.Vec3(*offset), hyx.Vec3())
            hyxOSG.createVisual(system, sheet.root, rendering, shading)


def make_sheet(app, folder):
    sheet = Sheet(app.getSceneRoot(), folder)
    for add in (add_shapes, add_materials, add_textures, add_lines, add_particles):
        add(sheet)
    decorator = app.getSceneDecorator()
    decorator.setBackgroundColor(hyx.Vec3(0.82, 0.85, 0.88))
    decorator.setEnableLogo(False)
    light = decorator.getLightSource(hyxOSG.SceneDecorator.LIGHT0)
    decorator.setEnableCalculateLightPositions(hyxOSG.SceneDecorator.LIGHT0, False)
    light.setPosition(hyx.Vec4(0, -40, 25, 1))
    light.setSpecular(WHITE)
    rows = math.ceil(len(sheet.labels) / COLUMNS)
    center = hyx.Vec3((COLUMNS - 1) / 2 * SPACING, 0, -(rows - 1) / 2 * SPACING - 0.1)
    app.getCamera().setProjectionMatrixAsPerspective(20.0, COLUMNS / rows, 1.0, 500.0)
    distance = (rows * SPACING / 2 + 0.3) / math.tan(math.radians(10))
    app.setCameraHome(center - hyx.Vec3(0, distance, 0), center, hyx.Vec3(0, 0, 1))
    return sheet


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the picture")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)
    app = hyxOSG.ExampleApplication()
    app.init(None)
    app.initSimulation(hyxSDK.Simulation())
    app.initViewer(1280, 800)
    app.initScene()
    with tempfile.TemporaryDirectory() as folder:
        sheet = make_sheet(app, Path(folder))
        picture = options.output / "visuals_gallery.png"
        app.takeScreenShot(str(picture))
        app.takeScreenShot(str(picture))
    print(f"{len(sheet.labels)} tiles: {picture}")


if __name__ == "__main__":
    main()
