"""What rows say only as `PyObject *`: the types that Python sees, and the names of the arguments.

Every such row must stand here; the build ends at one that is missing or not there any more.
"""

from __future__ import annotations

import re

from .interface import Form, Interface, Operation, ProxyClass
from .python_types import PYTHON

# Results, by package, class and name. Arrays of numbers have memory of their own; Doubles and their like are in
# python/extras/hints.pyi.
RESULTS = {
    "hyx.AffineMatrix4x4.__getitem__": "tuple[float, float, float, float]",
    "hyx.Component.getObjects": "list[hyx.Object]",
    "hyx.Journal.getJointPositions": "dict[str, float]",
    "hyx.ParticleSystem.getColors": "Floats",
    "hyx.ParticleSystem.getContacts": "list[hyx.ParticleContact]",
    "hyx.ParticleSystem.getParticle": "hyx.Particle | None",
    "hyx.ParticleSystem.getParticles": "list[hyx.Particle]",
    "hyx.ParticleSystem.getPositions": "Doubles",
    "hyx.ParticleSystem.getVelocities": "Doubles",
    "hyx.RigidBody.getGeometries": "list[hyxCollide.Geometry]",
    "hyx.RigidBodyEmitter.getBodies": "list[hyx.RigidBody]",
    "hyx.StringTable.keys": "list[int]",
    "hyxCable.Cable.getPoints": "list[hyx.Vec3]",
    "hyxCollide.Compound.getShape": "hyxCollide.Shape | None",
    "hyxCollide.Geometry.getShape": "hyxCollide.Shape | None",
    "hyxCollide.HeightField.getHeightArray": "Doubles",
    "hyxCollide.HeightField.getHeights": "list[float]",
    "hyxCollide.LocalGeometryContact.points": "list[hyxCollide.ContactPoint]",
    "hyxCollide.RayHit.getGeometry": "hyxCollide.Geometry | None",
    "hyxCollide.Space.castRayAll": "list[hyxCollide.RayHit]",
    "hyxCollide.Space.findGeometries": "list[hyxCollide.Geometry]",
    "hyxCollide.Space.getGeometries": "list[hyxCollide.Geometry]",
    "hyxCollide.Space.getGeometryContacts": "list[hyxCollide.LocalGeometryContact]",
    "hyxCollide.Trimesh.getIndexArray": "Indices",
    "hyxCollide.Trimesh.getIndices": "list[int]",
    "hyxCollide.Trimesh.getVertexArray": "Doubles",
    "hyxCollide.Trimesh.getVertices": "list[hyx.Vec3]",
    "hyxIO.ArgumentParser.getArguments": "list[str]",
    "hyxIO.ArgumentParser.getPositional": "list[str]",
    "hyxIO.ArgumentParser.getSize": "tuple[int, int]",
    "hyxModel.FractureGenerator.fracture": "list[hyx.RigidBody]",
    "hyxModel.FractureGenerator.getFragments": "list[hyx.RigidBody]",
    "hyxModel.PressureField.getTriangles": "list[hyxModel.TriangleData]",
    "hyxOSG.SwigPyIterator.__next__": "hyxOSG.LidarOutputRendererLegendPoint",
    "hyxOSG.SwigPyIterator.next": "hyxOSG.LidarOutputRendererLegendPoint",
    "hyxOSG.SwigPyIterator.previous": "hyxOSG.LidarOutputRendererLegendPoint",
    "hyxOSG.SwigPyIterator.value": "hyxOSG.LidarOutputRendererLegendPoint",
    "hyxOSG.VideoFFMPEGPipeCapture.OutputCodecStrings": "hyx.StringTable",
    "hyxOSG.createVisualWithGeometryConnection": "osg.GeometryConnection",
    "hyxSDK.Assembly.getAssemblies": "list[hyxSDK.Assembly]",
    "hyxSDK.Assembly.getConstraint": "hyx.Constraint | None",
    "hyxSDK.Assembly.getConstraints": "list[hyx.Constraint]",
    "hyxSDK.Assembly.getGeometries": "list[hyxCollide.Geometry]",
    "hyxSDK.Assembly.getRigidBodies": "list[hyx.RigidBody]",
    "hyxSDK.PickResult.getContacts": "list[hyxCollide.LocalGeometryContact]",
    "hyxSDK.ScriptManager.getErrors": "list[tuple[str, str, str]]",
    "hyxSDK.Simulation.getAngularVelocities": "Doubles",
    "hyxSDK.Simulation.getAssemblies": "list[hyxSDK.Assembly]",
    "hyxSDK.Simulation.getConstraint": "hyx.Constraint | None",
    "hyxSDK.Simulation.getConstraints": "list[hyx.Constraint]",
    "hyxSDK.Simulation.getContactArrays": "dict[str, Doubles]",
    "hyxSDK.Simulation.getEventListeners": "list[hyxSDK.EventListener]",
    "hyxSDK.Simulation.getForces": "Doubles",
    "hyxSDK.Simulation.getFrames": "list[hyx.Frame]",
    "hyxSDK.Simulation.getJointPositions": "Doubles",
    "hyxSDK.Simulation.getJointSpeeds": "Doubles",
    "hyxSDK.Simulation.getMaterials": "list[hyx.Material]",
    "hyxSDK.Simulation.getPoses": "Doubles",
    "hyxSDK.Simulation.getPositions": "Doubles",
    "hyxSDK.Simulation.getProcesses": "list[hyx.Process]",
    "hyxSDK.Simulation.getRigidBodies": "list[hyx.RigidBody]",
    "hyxSDK.Simulation.getRotations": "Doubles",
    "hyxSDK.Simulation.getStatistics": "dict[str, float]",
    "hyxSDK.Simulation.getTorques": "Doubles",
    "hyxSDK.Simulation.getVelocities": "Doubles",
    "hyxSDK.Simulation.saveState": "bytes",
    "hyxSensor.Lidar.getCloud": "Bytes",
    "hyxSensor.Lidar.getDistances": "Floats",
    "hyxSensor.Lidar.getHits": "list[hyxSensor.LidarHit]",
    "hyxSensor.Lidar.getIntensities": "Floats",
    "hyxSensor.Lidar.getPoints": "Floats",
    "hyxSensor.Lidar.getRingCounts": "list[int]",
    "hyxSensor.Lidar.getRingElevations": "list[float]",
    "hyxSensor.Lidar.getRings": "Indices",
    "hyxTerrain.Terrain.getCells": "Doubles",
    "hyxTerrain.Terrain.getHeights": "Floats",
    "hyxTerrain.Terrain.getTools": "list[hyx.RigidBody]",
    "hyxTerrain.Terrain.getVoxels": "list[hyxTerrain.Voxel]",
    "hyxWire.Wire.getPoints": "list[hyx.Vec3]",
    "hyxWire.Wire.getTensions": "list[float]",
    "hyxtavlang.ModelNode.getProperties": "dict[str, bool | float | str | tuple[float, ...]]",
    "osg.Geometry.getColorArray": "Floats | Bytes",
    "osg.Geometry.getElements": "Indices",
    "osg.Geometry.getNormalArray": "Floats",
    "osg.Geometry.getTexCoordArray": "Floats",
    "osg.Geometry.getVertexArray": "Floats",
    "osg.GeometryConnection.getPlaces": "list[int]",
    "osg.Image.getData": "bytes",
}

# Arguments in the order of a row's `PyObject *`: names and types. Rows are NumPy arrays, or sequences of sequences.
_VALUES = {"values": "Rows"}
_EACH_BODY = {"values": "Rows", "bodies": "Iterable[hyx.RigidBody] | None"}
_EACH_JOINT = {"values": "Values", "joints": "Iterable[hyx.Constraint] | None"}
_BODIES = {"bodies": "Iterable[hyx.RigidBody] | None"}
_JOINTS = {"joints": "Iterable[hyx.Constraint] | None"}
_PICTURE = "bytearray | memoryview | Array"
ARGUMENTS: dict[str, dict[str, str]] = {
    "hyx.Callback.__init__": {"function": "Callable[[], object]"},
    "hyx.Notify.setSink": {"sink": "Callable[[int, str], object] | None"},
    "hyx.ParticleSystem.setColors": {"colors": "Rows"},
    "hyx.ParticleSystem.setPositions": {"positions": "Rows"},
    "hyx.ParticleSystem.setVelocities": {"velocities": "Rows"},
    "hyxCollide.HeightField.__init__": {"heights": "Values"},
    "hyxCollide.HeightField.setHeights": {"heights": "Values"},
    "hyxCollide.Trimesh.__init__": {"vertices": "Rows", "indices": "Values | Rows"},
    "hyxCollide.Trimesh.updateVertices": {"vertices": "Rows"},
    "hyxIO.ArgumentParser.__init__": {"arguments": "Iterable[str]"},
    "hyxIO.ArgumentParser.parse": {"arguments": "Iterable[str]"},
    "hyxOSG.AutoStepEvent.add": {"callback": "Callable[[bool], object]"},
    "hyxSDK.Simulation.addForces": _EACH_BODY,
    "hyxSDK.Simulation.addTorques": _EACH_BODY,
    "hyxSDK.Simulation.getAngularVelocities": _BODIES,
    "hyxSDK.Simulation.getForces": _BODIES,
    "hyxSDK.Simulation.getJointPositions": _JOINTS,
    "hyxSDK.Simulation.getJointSpeeds": _JOINTS,
    "hyxSDK.Simulation.getPositions": _BODIES,
    "hyxSDK.Simulation.getRotations": _BODIES,
    "hyxSDK.Simulation.getTorques": _BODIES,
    "hyxSDK.Simulation.getVelocities": _BODIES,
    "hyxSDK.Simulation.restoreState": {"state": "bytes"},
    "hyxSDK.Simulation.setAngularVelocities": _EACH_BODY,
    "hyxSDK.Simulation.setLockPositions": _EACH_JOINT,
    "hyxSDK.Simulation.setMotorSpeeds": _EACH_JOINT,
    "hyxSDK.Simulation.setPositions": _EACH_BODY,
    "hyxSDK.Simulation.setRotations": _EACH_BODY,
    "hyxSDK.Simulation.setVelocities": _EACH_BODY,
    "hyxSensor.Lidar.setRingElevations": {"elevations": "Values"},
    "hyxSensor.Lidar.setHits": {"points": "Rows", "intensities": "Values"},
    "hyxTerrain.Terrain.setHeights": {"heights": "Values | Rows"},
    "hyxtavlang.JointArray.setEfforts": {"efforts": "Values"},
    "hyxtavlang.JointArray.setPositions": {"positions": "Values"},
    "hyxtavlang.JointArray.setTargets": {"targets": "Values"},
    "hyxtavlang.JointArray.setVelocities": {"velocities": "Values"},
    "osg.Geometry.addElements": {"indices": "Values | Rows"},
    "osg.Geometry.setColorArray": {"colors": "Rows"},
    "osg.Geometry.setNormalArray": {"normals": "Rows"},
    "osg.Geometry.setTexCoordArray": {"coordinates": "Rows"},
    "osg.Geometry.setVertexArray": {"vertices": "Rows"},
    "osg.Image.setData": {"data": "bytes | bytearray | memoryview | Array"},
    "osg.Node.setUpdateFunction": {"function": "Callable[[], object] | None"},
    "osg.readPicture": {"out": _PICTURE},
    "osg.readTruth": {name: f"{_PICTURE} | None" for name in ("depth", "normals", "flow", "identity", "places")},
}
OBJECT = re.compile(r"\b(PyObject|_object)\s*\*")


def name_python_objects(interface: Interface) -> None:
    used: set[str] = set()
    missing: set[str] = set()
    for package in interface.packages.values():
        for proxy in package.classes:
            made = proxy.machinery.get("constructor")
            for name, operation in [*proxy.methods.items(), *([("__init__", made)] if made else [])]:
                _name_operation(f"{proxy.qualified}.{name}", operation, proxy, used, missing)
            for name, member in proxy.members.items():
                if kind := RESULTS.get(f"{proxy.qualified}.{name}"):
                    used.add(f"{proxy.qualified}.{name} (result)")
                    member.type = PYTHON + kind
        for name, operation in package.functions.items():
            _name_operation(
                f"{'osg' if package.name == 'osgViewer' else package.name}.{name}", operation, None, used, missing
            )
    unused = ({f"{key} (result)" for key in RESULTS} | {f"{key} (arguments)" for key in ARGUMENTS}) - used
    if missing or unused:
        raise SystemExit(
            f"python/generator/python_objects.py: tell the Python types of {', '.join(sorted(missing)) or 'no more'}; "
            f"take out {', '.join(sorted(unused)) or 'nothing'}"
        )


def _name_operation(
    key: str, operation: Operation, proxy: ProxyClass | None, used: set[str], missing: set[str]
) -> None:
    name = key.rpartition(".")[2]
    for form in operation.forms:
        if OBJECT.search(form.result) or key in RESULTS:
            result = RESULTS.get(key) or _result_by_rule(name)
            (used if result else missing).add(f"{key} (result)")
            form.result = PYTHON + (result or "Any")
        places = [place for place, parameter in enumerate(form.parameters) if OBJECT.search(parameter.type)]
        if places:
            arguments = ARGUMENTS.get(key) or _arguments_by_rule(name, form, proxy)
            (used if arguments else missing).add(f"{key} (arguments)")
            for place, (argument, kind) in zip(places, (arguments or {}).items()):
                form.parameters[place].name = argument
                form.parameters[place].type = PYTHON + kind


def _result_by_rule(name: str) -> str:
    return {"__buffer__": "memoryview[float]", "__getitem__": "tuple[float, ...]"}.get(name, "")


def _arguments_by_rule(name: str, form: Form, proxy: ProxyClass | None) -> dict[str, str]:
    """Lists take whatever gives their elements, values as many numbers as they have."""
    if not proxy or name not in ("__init__", "__setitem__", "extend"):
        return {}
    if proxy.element:
        return {"values": f"Iterable[{proxy.element}]"}
    if name == "__init__" and len(form.parameters) == 1:
        return {"numbers": "Iterable[Row]" if "Matrix" in proxy.name else "Row"}
    return {}
