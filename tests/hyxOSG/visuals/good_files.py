"""A small good file of every kind that is read here, from which damaged ones are made."""

import pathlib
import shutil

import h5py
import numpy

FONT = pathlib.Path("/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Oblique.ttf")
SAMPLES = pathlib.Path("/usr/share/assimp/models")  # of the Debian package assimp-testmodels
WRITTEN = ("osg", "osgt", "osgb", "osgx", "ive", "stl", "3ds", "ac")
# What the writers above do not make.
SAMPLED = {
    "3mf": "3MF/box.3mf",
    "amf": "AMF/test1.amf",
    "ase": "ASE/ThreeCubesGreen.ASE",
    "dae": "Collada/cameras.dae",
    "dxf": "DXF/lineTest.dxf",
    "fbx": "FBX/boxWithCompressedCTypeArray.FBX",
    "glb": "glTF2/BoxBadNormals-glTF-Binary/BoxBadNormals.glb",
    "gltf": "glTF2/BoxTextured-glTF-Embedded/BoxTextured.gltf",
    "hmp": "HMP/terrain.hmp",
    "lwo": "LWS/simple_cube.lwo",
    "lws": "LWS/move_x_oldformat_56.lws",
    "lxo": "LWO/LXOB_Modo/sphereWithVertMap.lxo",
    "obj": "OBJ/multiple_spaces.obj",
    "off": "OFF/Cube.off",
    "ply": "PLY/cube.ply",
    "ms3d": "MS3D/twospheres.ms3d",
    "nff": "NFF/NFF/tetrahedron.nff",
    "ogex": "OpenGEX/Example.ogex",
    "sib": "SIB/heffalump.sib",
    "smd": "SMD/triangle.smd",
    "x": "X/test_cube_compressed.x",
    "x3d": "X3D/HelloX3dTrademark.x3d",
    "xgl": "XGL/sample_official.xgl",
    "zgl": "XGL/cubes_with_alpha.zgl",
}
PICTURES = ("png", "bmp", "tga", "rgb", "tiff", "jpg", "ppm", "dds", "gif")
JOURNALS = ("plain.h5", "packed.h5", "other.h5", "log")
SCENES = ("json", "urdf", "state")

SCENE = """{"gravity": [0, 0, -9.81], "materials": [{"name": "steel"}], "bodies": [
 {"name": "a", "material": "steel", "geometries": [{"shape": "box", "halfExtents": [1, 1, 0.1]}]},
 {"name": "b", "position": [0, 0, 2], "geometries": [{"shape": "sphere", "radius": 0.5}]}]}"""
ROBOT = """<robot name="r"><link name="base"><visual><geometry><box size="1 1 1"/></geometry></visual></link>
<link name="arm"><inertial><mass value="1"/><inertia ixx="1" ixy="0" ixz="0" iyy="1" iyz="0" izz="1"/></inertial>
<collision><geometry><cylinder radius="0.1" length="1"/></geometry></collision></link>
<joint name="j" type="revolute"><parent link="base"/><child link="arm"/><axis xyz="0 0 1"/>
<limit lower="-1" upper="1" effort="10" velocity="1"/></joint></robot>"""


def written_files(folder):
    """Models and pictures, as the writers here make them."""
    import hyx
    import hyxOSG
    import osg
    import osgDB

    model = osg.Group()
    model.addChild(hyxOSG.createSphere(hyx.Vec3(0, 0, 0), hyx.Vec4(1, 0, 0, 1), 0.3))
    picture = osg.Image(17, 9)
    for kind in WRITTEN:
        osgDB.writeNodeFile(model, str(folder / f"good.{kind}"))
    for kind in PICTURES:
        if kind != "gif":
            osgDB.writeImageFile(picture, str(folder / f"good.{kind}"))
    from PIL import Image

    Image.fromarray(numpy.arange(153, dtype=numpy.uint8).reshape(9, 17)).save(folder / "good.gif")


def recorded_files(folder):
    """Journals in both forms, one of another program, the log of one that is being recorded, and a saved state."""
    import hyx
    import hyxCollide
    import hyxOSG

    app = hyxOSG.ExampleApplication()
    app.init(None)
    app.initSimulation()
    simulation = app.getSimulation()
    for number in range(3):
        simulation.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), f"ball {number}"))
    for form, name in enumerate(("plain.h5", "packed.h5")):
        app.setJournalRecordPath(str(folder / f"good.{name}"))
        app.setJournalFormat(form)
        app.initRecordJournal()
        for _ in range(20):
            app.step()
        shutil.copy(folder / f"good.{name}.log", folder / "good.log")
        app.setEnableJournalRecord(False)
    simulation.save(str(folder / "good.state"))
    with (
        h5py.File(folder / "good.plain.h5") as ours,
        h5py.File(folder / "good.other.h5", "w", libver="earliest") as file,
    ):
        for name in ours:
            ours.copy(name, file)


def good_files(folder):
    """The content of a good file, by its kind."""
    folder = pathlib.Path(folder)
    written_files(folder)
    recorded_files(folder)
    for kind, place in SAMPLED.items():
        if (SAMPLES / place).exists():
            shutil.copy(SAMPLES / place, folder / f"good.{kind}")
    (folder / "good.json").write_text(SCENE)
    (folder / "good.urdf").write_text(ROBOT)
    shutil.copy(FONT, folder / "good.ttf")
    kinds = (*WRITTEN, *SAMPLED, *PICTURES, *JOURNALS, *SCENES, "ttf")
    return {kind: path.read_bytes() for kind in kinds if (path := folder / f"good.{kind}").exists()}
