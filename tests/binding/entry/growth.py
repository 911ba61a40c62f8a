"""Makes and drops objects of every class, and watches the memory: python growth.py COUNT SECONDS

Each class makes COUNT objects, or as many as it can in SECONDS. Prints a line per class that keeps some of its memory.
"""

import faulthandler
import gc
import importlib
import os
import sys
import time

faulthandler.enable()

PACKAGES = [
    *("hyx", "hyxCollide", "hyxSDK", "hyxRender", "hyxIO", "hyxUtil", "hyxNet", "hyxModel", "hyxSensor", "hyxTerrain"),
    *("hyxWire", "hyxCable", "hyxtavlang", "osg", "osgViewer", "osgGA", "osgText", "osgDB", "hyxOSG"),
]
for package in PACKAGES:  # whose classes end what is made
    importlib.import_module(package)

from every_function import DESCRIBED, Maker, Unavailable, takes_instance  # noqa: E402

PAGE = os.sysconf("SC_PAGE_SIZE")
NOISE = 400_000  # bytes: caches, and blocks that the allocator keeps


TERRAIN = "hyxTerrain.Terrain(9, 9, 0.5, 1.0)"
HEIGHTS = "hyxCollide.HeightField(5, 5, 1.0, 1.0)"
BOX = "hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 1)))"
# What needs more than arguments of the right types, and what must end with more than itself.
SPECIAL = [
    TERRAIN,
    HEIGHTS,
    BOX,
    "hyxCollide.Trimesh([(0, 0, 0), (1, 0, 0), (0, 1, 0)], [0, 1, 2])",
    f"hyxSDK.TerrainInstance({TERRAIN})",
    f"hyxOSG.TerrainVoxelRenderer({TERRAIN}, osg.Group())",
    f"hyxModel.PressureField({BOX}, 0.5)",
    f"hyxModel.HeightFieldDeformer(hyxCollide.Geometry({HEIGHTS}))",
    f"hyxTerrain.DigTool({BOX}, hyx.Vec3(0, 0, 0), hyx.Vec3(1, 0, 0), hyx.Vec3(0, 0, 1))",
    "hyxSDK.EventListener()",
    "hyxOSG.createSphere(hyx.Vec3(), hyx.Vec4(1, 1, 1, 1), 0.5)",
    f"hyxOSG.createVisual({BOX}, osg.Group())",
    f"hyxSDK.Simulation().add({BOX})",
    "hyxOSG.LidarOutputRendererLegend(3).begin()",
    "osg.Group().getOrCreateStateSet()",
]


def resident():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * PAGE


def growth_of(new, arguments, count, seconds):
    """By how many bytes the process grows, and how many objects that took."""
    make_many(new, arguments, count, seconds / 3)  # fills the caches
    gc.collect()
    before = resident()
    made = make_many(new, arguments, count, seconds)
    gc.collect()
    return resident() - before, made


def make_many(new, arguments, count, seconds):
    end = time.monotonic() + seconds
    for made in range(count):
        new(*arguments)
        if time.monotonic() > end:
            return made + 1
    return count


def proxy_class(module, name):
    """The class of that name in the package that is made from the module."""
    for package in PACKAGES:
        made = getattr(sys.modules[package], name, None)
        if made is not None and getattr(made, "__init__", None) is not None and is_from(made, module):
            return made
    return None


def is_from(made, module):
    new = getattr(made.__init__, "__wrapped_function__", None)
    return new is not None and new.__self__ is module


def fitting_arguments(module, function, maker):
    """Arguments that make an object, or None."""
    for form in sorted(function["forms"], key=lambda form: len(form["parameters"])):
        required = [parameter for parameter in form["parameters"] if parameter["default"] is None]
        try:
            arguments = maker.arguments({**form, "parameters": required}, constructing=True)
            instance = [None] if takes_instance(function, form) else []
            getattr(module, function["name"])(*instance, *arguments)
        except (Unavailable, Exception):  # noqa: B014, BLE001 - another form may do
            continue
        return arguments
    return None


def constructions(maker):
    """name, what to call, its arguments"""
    for text in SPECIAL:
        yield text, eval(f"lambda: {text}", {package: sys.modules[package] for package in PACKAGES}), ()
    for name, functions in DESCRIBED.items():
        module = importlib.import_module(name)
        for function in functions:
            if function["role"] != "constructor":
                continue
            arguments = fitting_arguments(module, function, maker)
            new = proxy_class(module, function["name"].removeprefix("new_"))
            if arguments is not None and new is not None:
                yield f"{name}.{function['name']}", new, arguments


def main():
    count, seconds = int(sys.argv[1]), float(sys.argv[2])
    watched = 0
    for name, new, arguments in constructions(Maker()):
        growth, made = growth_of(new, arguments, count, seconds)
        watched += 1
        if growth > NOISE:
            print(f"GROWS {name}: {growth / made:.0f} bytes each of {made}")
    print("WATCHED", watched)
    sys.stdout.flush()
    os._exit(0)


if __name__ == "__main__":
    main()
