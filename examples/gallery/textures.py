"""Texture modes, scales, and what surfaces mirror."""

import math

import hyx
import hyxOSG
import osg

from gallery.stage import GREY, WHITE, checks

SKY = {
    "posx": (1, 0, 0),
    "negx": (0, 1, 1),
    "posy": (0.4, 0.6, 1),
    "negy": (0.4, 0.3, 0.2),
    "posz": (0, 0.7, 0),
    "negz": (1, 0, 1),
}


def stripes(x, y):
    return (1, 1, 1) if x // 8 % 2 else (0, 0, 0)


def noise(x, y):
    return x * 7 % 5 / 4, y * 3 % 4 / 3, 0


def bumps(x, y):
    dx, dy = (x % 16 - 8) / 8, (y % 16 - 8) / 8
    flat = dx * dx + dy * dy > 0.8
    nx, ny = (0, 0) if flat else (dx, dy)
    return 0.5 + 0.5 * nx, 0.5 + 0.5 * ny, 0.5 + 0.5 * math.sqrt(1 - nx * nx - ny * ny)


def hills(x, y):
    return (0.5 + 0.5 * math.sin(x / 4) * math.sin(y / 4),) * 3


def halves(x, y):
    return (0.9, 0.8, 0.2) if y < 32 else (0.2, 0.4, 0.9)


def textured(stage, visual, color_at, mode=hyxOSG.DIFFUSE_TEXTURE, repeat=True, *scales):
    hyxOSG.setTexture(visual, stage.image(f"texture{mode}", color_at), repeat, mode, *scales)
    return visual


def shadowed(stage):
    """Close to, to be compared with the jittered one."""
    stage.look_from(hyx.Vec3(0, -1.5, 0))
    return textured(stage, stage.box(GREY), stripes, hyxOSG.SHADOW_TEXTURE)


def jittered(stage):
    """The edges move by at most a hundredth of the texture."""
    textured(stage, shadowed(stage), noise, hyxOSG.SHADOW_JITTER_TEXTURE)


def specular(stage):
    stage.light.setSpecular(WHITE)
    visual = stage.ball(GREY)
    hyxOSG.setSpecularColor(visual, WHITE)
    hyxOSG.setShininess(visual, 5.0)
    textured(stage, visual, stripes, hyxOSG.SPECULARMAP_TEXTURE)


def surroundings(stage):
    """The files of a cube map; returns what their names begin with."""
    for side, color in SKY.items():
        stage.image(
            f"sky_{side}", lambda x, y, c=color: tuple(part * (1 if (x // 8 + y // 8) % 2 else 0.7) for part in c)
        )
    return str(stage.folder / "sky_")


def mirror(stage, coefficient):
    visual = stage.ball()
    hyxOSG.setCubeMapTexture(visual, surroundings(stage))
    hyxOSG.setEnvMapReflectionCoefficient(visual, coefficient)


def sky_sphere(stage):
    images = osg.ImageVector()
    hyxOSG.loadCubeMapImages(surroundings(stage), ".png", images)
    stage.root.addChild(hyxOSG.createSkySphere("sky", images, 50.0, 1.0))
    stage.ball()
    stage.look_from(hyx.Vec3(2.5, -2.5, -1))


TILES = {
    "diffuse map": lambda stage: textured(stage, stage.box(WHITE), checks),
    "scaled 2 by half": lambda stage: textured(stage, stage.box(WHITE), checks, hyxOSG.DIFFUSE_TEXTURE, True, 2.0, 0.5),
    "edge drawn out": lambda stage: textured(stage, stage.box(WHITE), checks, hyxOSG.DIFFUSE_TEXTURE, False, 2.0, 2.0),
    "shadow map": shadowed,
    "shadow jitter": jittered,
    "normal map": lambda stage: textured(stage, stage.box(GREY), bumps, hyxOSG.NORMALMAP_TEXTURE),
    "height map": lambda stage: textured(stage, stage.box(GREY), hills, hyxOSG.HEIGHTMAP_TEXTURE),
    "specular map": specular,
    "sphere map": lambda stage: textured(stage, stage.ball(GREY), halves, hyxOSG.SPHEREMAP_TEXTURE),
    "mirror": lambda stage: mirror(stage, 1.0),
    "half a mirror": lambda stage: mirror(stage, 0.5),
    "sky sphere": sky_sphere,
}
