"""Scenes and motion as glTF, read again by another library."""

import json
import math

import gymnasium
import hyx
import hyxCollide
import hyxOSG
import numpy
import pytest
import trimesh

Y_UP = numpy.array([[1, 0, 0, 0], [0, 0, 1, 0], [0, -1, 0, 0], [0, 0, 0, 1]])


def body(app, name, shape, color, place=(0, 0, 0)):
    made = hyx.RigidBody(name)
    made.add(hyxCollide.Geometry(shape))
    made.setPosition(hyx.Vec3(*place))
    app.getSimulation().add(made)
    hyxOSG.createVisual(made, app.getSceneRoot())
    hyxOSG.setDiffuseColor(made, hyx.Vec4f(*color), app.getSceneRoot())
    return made


@pytest.fixture
def scene(app):
    """A red box and a blue ball."""
    app.initViewer(64, 48)
    body(app, "box", hyxCollide.Box(0.5, 1, 1.5), (1, 0, 0, 1))
    body(app, "ball", hyxCollide.Sphere(0.5), (0, 0.5, 1, 0.25), (4, 0, 10))
    return app


def screen_color(material):
    light = numpy.array(material.baseColorFactor, float) / 255
    return [*(c * 12.92 if c <= 0.0031308 else 1.055 * c ** (1 / 2.4) - 0.055 for c in light[:3]), light[3]]


def world_triangles(read):
    """All triangles, with Z up again."""
    return numpy.concatenate(
        [
            trimesh.transform_points(read.geometry[name].triangles.reshape(-1, 3), numpy.linalg.inv(Y_UP) @ matrix)
            for matrix, name in (read.graph[node] for node in read.graph.nodes_geometry)
        ]
    ).reshape(-1, 3, 3)


def matrix_of(body):
    given = body.getTransform()
    return numpy.array([[given.get(row, column) for row in range(4)] for column in range(4)])


@pytest.mark.parametrize("ending", ["glb", "gltf"])
def test_a_moment_has_the_triangles_and_colours_of_the_scene(scene, tmp_path, ending):
    path = tmp_path / f"moment.{ending}"
    hyxOSG.GltfRecording(scene).save(path)
    read = trimesh.load(path, force="scene", process=False)
    expected = numpy.array(hyxOSG.createTrimesh(scene.getSceneRoot()).vertices)
    found = world_triangles(read)
    assert found.reshape(-1, 3).min(0) == pytest.approx(expected.min(0), abs=1e-6)
    assert found.reshape(-1, 3).max(0) == pytest.approx(expected.max(0), abs=1e-6)
    volumes = {}
    for matrix, name in (read.graph[node] for node in read.graph.nodes_geometry):
        volume = read.geometry[name].volume * numpy.linalg.det(matrix)
        volumes[round(volume, 2)] = screen_color(read.geometry[name].visual.material)
    assert volumes.pop(6.0) == pytest.approx([1, 0, 0, 1], abs=0.01)
    ((volume, color),) = volumes.items()
    assert volume == pytest.approx(4 / 3 * math.pi / 8, rel=0.05) and color == pytest.approx(
        [0, 0.5, 1, 0.25], abs=0.01
    )


def pose_at(document, binary, name, time):
    """Translation and rotation of the first moving node of a name, by the file's animation; its parts may share it."""

    def floats(index):
        accessor = document["accessors"][index]
        view = document["bufferViews"][accessor["bufferView"]]
        width = {"SCALAR": 1, "VEC3": 3, "VEC4": 4}[accessor["type"]]
        return numpy.frombuffer(binary, "<f4", accessor["count"] * width, view["byteOffset"]).reshape(-1, width)

    (animation,) = document["animations"]
    pose = {}
    for channel in animation["channels"]:
        target = channel["target"]
        if document["nodes"][target["node"]].get("name") != name or target["path"] in pose:
            continue
        sampler = animation["samplers"][channel["sampler"]]
        times, values = floats(sampler["input"])[:, 0], floats(sampler["output"])
        pose[target["path"]] = [numpy.interp(time, times, values[:, i]) for i in range(values.shape[1])]
    return pose


def test_a_recording_moves_as_the_bodies_did(app, tmp_path):
    assets = f"{gymnasium.__path__[0]}/envs/mujoco/assets"
    app.initViewer(64, 48)
    result = app.loadTavLangFile(f"{assets}/half_cheetah.xml", app.getSceneRoot())
    recording, poses = hyxOSG.GltfRecording(app), []
    simulation = app.getSimulation()
    for _ in range(10):
        recording.capture()
        (foot,) = simulation.getRigidBody("bfoot").getGeometries()  # drawn under its own name, which is the same
        poses.append((simulation.getTimeStamp(), matrix_of(foot)))
        for _ in range(4):
            simulation.step()
    path = tmp_path / "run.glb"
    recording.save(path)
    whole = path.read_bytes()
    length = int.from_bytes(whole[12:16], "little")
    document, binary = json.loads(whole[20 : 20 + length]), whole[28 + length :]
    for time, matrix in poses:
        pose = pose_at(document, binary, "bfoot", time)
        assert pose["translation"] == pytest.approx(matrix[:3, 3], abs=1e-5)
        x, y, z, w = pose["rotation"]
        turned = trimesh.transformations.quaternion_matrix([w, x, y, z])[:3, :3]
        assert turned == pytest.approx(matrix[:3, :3], abs=1e-5)
    assert trimesh.load(path, force="scene").graph.nodes_geometry  # the first pose stands without the animation
    assert result.isSuccess()


def test_what_cannot_be_recorded_is_refused(scene, tmp_path):
    recording = hyxOSG.GltfRecording(scene)
    recording.capture()
    with pytest.raises(ValueError, match="not later"):
        recording.capture()
    with pytest.raises(ValueError, match="ending"):
        recording.save(tmp_path / "scene.obj")


def test_visuals_of_the_application_are_the_scene_too(app, tmp_path):
    app.getSimulation().add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 2, 3))))
    app.initViewer(64, 48)
    app.createVisual(app.getSimulation())
    hyxOSG.GltfRecording(app).save(tmp_path / "box.glb")
    assert trimesh.load(tmp_path / "box.glb").extents == pytest.approx([2, 6, 4])  # Y is up
