"""Who holds an object that Python constructed: counted for every class, while its proxy is there and afterwards."""

import gc
import os

import _hyx
import _hyxOSG
import _osg
import _probe
import hyx
import hyxCable
import hyxCollide
import hyxModel
import hyxOSG
import hyxRender
import hyxSensor
import hyxTerrain
import hyxUtil
import hyxWire
import osg
import osgViewer
import picture_files
import pytest
from subprocesses import weighs_memory


def node_count(node):
    return _osg.Referenced_referenceCount(node)


def object_count(thing):
    return _hyx.Referenced_getReferenceCount(thing)


def sky_box(folder):
    return hyxOSG.SkyBox("sky", picture_files.cube_map(folder), ".png")


def height_field(folder):
    ground = hyxCollide.Geometry(hyxCollide.HeightField(4, 4, 1.0, 1.0))
    return hyxOSG.DeformableHeightFieldRenderer(hyxModel.HeightFieldDeformer(ground), osg.Group())


def mesh_updater(folder):
    corners = hyx.Vec3Vector([hyx.Vec3(0, 0, 0), hyx.Vec3(1, 0, 0), hyx.Vec3(0, 1, 0)])
    return hyxOSG.DeformableMeshUpdater(hyxCollide.Trimesh(corners, [0, 1, 2]), osg.Group())


def color_map(folder):
    return hyxOSG.ScalarColorMap(
        hyxRender.ColorVector([hyxRender.Color(0, 0, 0, 1), hyxRender.Color(1, 1, 1, 1)]), 0.0, 1.0
    )


# Scene-graph nodes: one reference, dropped with the proxy.
NODES = {
    "GeometryNode": lambda folder: hyxOSG.GeometryNode(),
    "Transform": lambda folder: hyxOSG.Transform(),
    "Text": lambda folder: hyxOSG.Text(),
    "SkyBox": sky_box,
    "ClipPlane": lambda folder: hyxOSG.ClipPlane(0.0, 0.0, 1.0, 0.0),
    "LidarOutputRenderer": lambda folder: hyxOSG.LidarOutputRenderer(hyxSensor.Lidar()),
}

# The library's counted objects: one reference, never dropped.
OBJECTS = {
    "ExampleApplication": lambda folder: hyxOSG.ExampleApplication(),
    "PickHandler": lambda folder: hyxOSG.PickHandler(osgViewer.Viewer()),
    "ImageCapture": lambda folder: hyxOSG.ImageCapture(),
    "RenderTarget": lambda folder: hyxOSG.RenderTarget(8, 8),
    "RenderToImage": lambda folder: hyxOSG.RenderToImage(8, 8),
    "RenderToTexture": lambda folder: hyxOSG.RenderToTexture(8, 8),
    "SimpleDepthBufferLidar": lambda folder: hyxOSG.SimpleDepthBufferLidar(8, 8),
    "VideoFFMPEGPipeCapture": lambda folder: hyxOSG.VideoFFMPEGPipeCapture(64, 48, 30.0),
    "Texture2D": lambda folder: hyxOSG.Texture2D(None),
    "TerrainVoxelRenderer": lambda folder: hyxOSG.TerrainVoxelRenderer(hyxTerrain.Terrain(4, 4, 1.0, 1.0), osg.Group()),
    "ScalarColorMap": color_map,
    "ForceArrowRenderer": lambda folder: hyxOSG.ForceArrowRenderer(),
    "SplineRenderer": lambda folder: hyxOSG.SplineRenderer(hyxUtil.Spline(), osg.Group()),
    "SplineRendererOld": lambda folder: hyxOSG.SplineRendererOld(hyxUtil.Spline(), osg.Group()),
    "WireRendererOld": lambda folder: hyxOSG.WireRendererOld(hyxWire.Wire(0.08, 10), osg.Group()),
    "WireRenderer": lambda folder: hyxOSG.WireRenderer(hyxWire.Wire(0.08, 10), osg.Group()),
    "CableDamageRenderer": lambda folder: hyxOSG.CableDamageRenderer(
        hyxCable.CableDamage(hyxCable.Cable(0.01, 20)), 0.1, osg.Group()
    ),
    "PressureFieldRenderer": lambda folder: hyxOSG.PressureFieldRenderer(osg.Group()),
    "DeformableMeshUpdater": mesh_updater,
    "DeformableHeightFieldRenderer": height_field,
}

# No reference taken; those without a destructor function stay.
UNCOUNTED = {
    "ParticleSystemDrawable": lambda folder: hyxOSG.ParticleSystemDrawable(None),
    "SplineShader": lambda folder: hyxOSG.SplineShader(),
}

VIEWER = osgViewer.Viewer()

# Deleted with the proxy, as the memory shows: how many, and how one is made.
RECORDS = {
    "SceneDescription": (2000, lambda: setattr(hyxOSG.SceneDescription(), "fileName", "x" * 20000)),
    "CameraData": (100_000, lambda: hyxOSG.CameraData(VIEWER)),
    "LidarOutputRendererLegendPoint": (200_000, hyxOSG.LidarOutputRendererLegendPoint),
    "LidarOutputRendererLegend": (1000, lambda: hyxOSG.LidarOutputRendererLegend(1000)),
    "EmbeddedGLWindow": (3000, hyxOSG.EmbeddedGLWindow),
}


@pytest.mark.parametrize("name", NODES)
@pytest.mark.parametrize("ending", ["deleted", "collected"])
def test_nodes_hold_one_reference_as_long_as_their_proxy(tmp_path, name, ending):
    node = NODES[name](tmp_path)
    assert node_count(node) == 1
    holder = osg.Group()
    holder.addChild(node)
    assert node_count(node) == 2
    seen = _probe.borrow_node(node)
    if ending == "deleted":
        getattr(_hyxOSG, f"delete_{name}")(node)
    else:
        del node
        gc.collect()
    assert node_count(seen) == 1 and holder.getNumChildren() == 1


def test_a_decorator_ends_with_its_proxy_unless_that_is_disowned():
    decorator = hyxOSG.SceneDecorator(64, 48)
    assert node_count(decorator) == 1 and not hasattr(_hyxOSG, "delete_SceneDecorator")
    decorator.this.disown()
    seen = _probe.borrow_node(decorator)
    del decorator
    gc.collect()
    assert node_count(seen) == 1 and seen.className() == "SceneDecorator"


@pytest.mark.parametrize("ending", ["deleted", "collected"])
def test_a_light_handle_ends_with_its_last_reference(ending):
    light = osg.LightSource()
    before = node_count(light)
    handle = hyxOSG.LightSource(light)
    assert node_count(handle) == 1 and node_count(light) == before + 1
    if ending == "deleted":
        _hyxOSG.delete_LightSource(handle)
    else:
        del handle
        gc.collect()
    assert node_count(light) == before, "the handle is gone"


@pytest.mark.parametrize("name", OBJECTS)
def test_library_objects_end_with_their_proxy_though_nothing_deletes_them(tmp_path, name):
    made = OBJECTS[name](tmp_path)
    assert not hasattr(_hyxOSG, f"delete_{name}")
    assert object_count(made) == 1 and made.thisown
    made.this.disown()
    seen = _probe.borrow(made)
    del made  # disowned: the constructor's reference stays
    gc.collect()
    assert object_count(seen) == 1
    seen.this.acquire()


@pytest.mark.parametrize("name", UNCOUNTED)
def test_other_scene_objects_are_counted_by_their_proxy_alone(tmp_path, name):
    made = UNCOUNTED[name](tmp_path)
    assert node_count(made) == 1
    assert not hasattr(_hyxOSG, f"delete_{name}")
    holder = osg.Geode() if name == "ParticleSystemDrawable" else osg.Group()
    holder.addChild(made)
    assert node_count(made) == 2


def resident_mebibytes():
    with open("/proc/self/statm") as memory:
        return int(memory.read().split()[1]) * os.sysconf("SC_PAGE_SIZE") / 2**20


@weighs_memory
@pytest.mark.parametrize("name", RECORDS)
def test_records_are_deleted_with_their_proxies(name):
    count, make = RECORDS[name]
    for _ in range(count // 10):
        make()
    before = resident_mebibytes()
    for _ in range(count):
        make()
    assert resident_mebibytes() - before < 2


def test_every_constructor_is_covered():
    listeners = {
        "ExampleApplicationListener",
        "GuiEventListener",
        "LidarOutputRendererColorFunctionCallback",
    }  # with their directors
    covered = {*NODES, *OBJECTS, *UNCOUNTED, *RECORDS, "SceneDecorator", "LightSource", *listeners}
    assert covered == {name[4:] for name in dir(_hyxOSG) if name.startswith("new_")}
