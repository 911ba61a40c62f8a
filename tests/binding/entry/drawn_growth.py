"""Makes, draws and drops what lies on the graphics card as well, and watches the memory.

python drawn_growth.py COUNT SECONDS [KIND...] prints for each kind how much of it stays. The card of these machines is
the processor: its memory counts.
"""

import gc
import os
import pathlib
import sys
import tempfile

import hyx
import hyxCollide
import hyxOSG
import hyxSensor
import hyxTerrain
import hyxUtil
import hyxWire
import osg
import picture_files
from growth import make_many, resident
from off_screen import OffScreen

NOISE = 1_000_000  # bytes: the window's own caches; a texture or a mesh in each round is more


def body():
    return hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))


def sphere():
    return hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 0, 0, 1), 0.5)


def textured_sphere():
    group, image = osg.Group(), osg.Image(64, 64, False)
    group.addChild(sphere())
    hyxOSG.setTexture(group, hyxOSG.Texture2D(osg.Texture2D(image)))
    return group


def spline(root):
    curve = hyxUtil.CubicSpline()
    for place in range(4):
        curve.add(hyx.Vec3(place, place % 2, 0))
    return hyxOSG.SplineRenderer(curve, root)


def particles(root):
    system = hyx.ParticleSystem()
    system.createParticle(hyx.Vec3(0, 0, 0), hyx.Vec3())
    return hyxOSG.createVisual(system, root)


# What stands in the scene for a frame, below a root of its own.
SHOWN = {
    "sphere": lambda root: root.addChild(sphere()),
    "text": lambda root: root.addChild(hyxOSG.createText("text")),
    "axes": lambda root: root.addChild(hyxOSG.createAxes(1.0, 1.0)),
    "texture": lambda root: root.addChild(textured_sphere()),
    "visual": lambda root: hyxOSG.createVisual(body(), root),
    "particles": particles,
    "terrain": lambda root: hyxOSG.TerrainVoxelRenderer(hyxTerrain.Terrain(9, 9, 0.5, 1.0), root),
    "spline": spline,
    "wire": lambda root: hyxOSG.WireRenderer(hyxWire.Wire(0.08, 10), root),
    "lidar": lambda root: root.addChild(hyxOSG.LidarOutputRenderer(hyxSensor.Lidar())),
    "clip plane": lambda root: root.addChild(hyxOSG.ClipPlane(0.0, 0.0, 1.0, 0.0)),
}
TARGETS = {
    "image target": lambda: hyxOSG.RenderToImage(64, 48),
    "texture target": lambda: hyxOSG.RenderToTexture(64, 48),
}


def draw_shown(stage, make):
    root = osg.Group()
    stage.root.addChild(root)
    made = make(root)  # lives until the frame is drawn
    stage.app.step()
    stage.root.removeChild(root)
    stage.app.step()
    del made


def draw_target(stage, make):
    target = make()
    stage.app.addRenderTarget(target, stage.root)
    stage.app.step()
    stage.app.removeRenderTarget(target)
    stage.app.step()


def cases(stage, folder):
    for name, make in SHOWN.items():
        yield name, lambda make=make: draw_shown(stage, make)
    for name, make in TARGETS.items():
        yield name, lambda make=make: draw_target(stage, make)
    sky = picture_files.cube_map(folder)
    yield "sky box", lambda: draw_shown(stage, lambda root: root.addChild(hyxOSG.SkyBox("sky", sky, ".png")))


def grown(draw, count, seconds):
    """Bytes that stay, and after how many rounds."""
    gc.collect()
    before = resident()
    made = make_many(draw, (), count, seconds)
    gc.collect()
    return resident() - before, made


def main():
    count, seconds, wanted = int(sys.argv[1]), float(sys.argv[2]), sys.argv[3:]
    stage, watched = OffScreen(64, 48), 0
    with tempfile.TemporaryDirectory() as folder:
        for name, draw in cases(stage, pathlib.Path(folder)):
            if wanted and name not in wanted:
                continue
            make_many(draw, (), count, seconds / 3)
            growth, made = grown(draw, count, seconds)
            if growth > NOISE:  # once may be a pool's next piece
                growth, made = grown(draw, count, seconds)
            watched += 1
            print(f"{'GROWS' if growth > NOISE else 'KEEPS'} {name}: {growth / made:.0f} bytes each of {made}")
    print("WATCHED", watched)
    sys.stdout.flush()
    os._exit(0)


if __name__ == "__main__":
    main()
