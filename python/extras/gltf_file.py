"""Writes what a `GltfRecording` holds as a file: glTF 2.0, as text or binary."""

from __future__ import annotations

import base64
import json
import struct

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from pathlib import Path
    from typing import Any

    from .gltf import Place, Shape

_FLOAT, _UNSIGNED = 5126, 5125  # component types
_VERTICES, _ELEMENTS = 34962, 34963  # what a view of the buffer is for
_KINDS = {(): "SCALAR", (3,): "VEC3", (4,): "VEC4"}
_Y_UP = [-(0.5**0.5), 0.0, 0.0, 0.5**0.5]  # the format's scenes have Y up


def write(path: Path, root: Place) -> None:
    from .whole_files import whole_file

    with whole_file(path) as place:
        place.write_bytes(_content(root, path.suffix.lower() == ".gltf"))


def _content(root: Place, as_text: bool) -> bytes:
    writer = _Writer(root)
    document, binary = writer.document, bytes(writer.binary)
    if as_text:
        if binary:
            uri = "data:application/octet-stream;base64," + base64.b64encode(binary).decode()
            document["buffers"] = [{"byteLength": len(binary), "uri": uri}]
        return json.dumps(document).encode()
    if binary:
        document["buffers"] = [{"byteLength": len(binary)}]
    text = json.dumps(document).encode()
    text += b" " * (-len(text) % 4)
    chunks = struct.pack("<I4s", len(text), b"JSON") + text
    if binary:
        chunks += struct.pack("<I4s", len(binary), b"BIN\0") + binary
    return struct.pack("<4sII", b"glTF", 2, 12 + len(chunks)) + chunks


class _Writer:
    def __init__(self, root: Place) -> None:
        self.binary = bytearray()
        self.materials: dict[tuple[float, ...], int] = {}
        self.channels: list[dict[str, Any]] = []
        self.samplers: list[dict[str, Any]] = []
        self.document: dict[str, Any] = {"asset": {"version": "2.0", "generator": "hyxOSG"}, "scene": 0}
        top = self.node(root)
        if top is None:
            top = self.add("nodes", {"name": root.name})
        self.document["nodes"][top]["rotation"] = _Y_UP
        self.document["scenes"] = [{"nodes": [top]}]
        if self.channels:
            self.document["animations"] = [{"channels": self.channels, "samplers": self.samplers}]

    def add(self, kind: str, item: dict[str, Any]) -> int:
        items: list[Any] = self.document.setdefault(kind, [])
        items.append(item)
        return len(items) - 1

    def array(self, values: Any, target: int | None = None, bounds: bool = False) -> int:
        import numpy

        whole = values.dtype == numpy.uint32
        values = numpy.ascontiguousarray(values, "<u4" if whole else "<f4")
        view = {"buffer": 0, "byteOffset": len(self.binary), "byteLength": values.nbytes}
        if target:
            view["target"] = target
        self.binary += values.tobytes()
        accessor = {
            "bufferView": self.add("bufferViews", view),
            "componentType": _UNSIGNED if whole else _FLOAT,
            "count": len(values),
            "type": _KINDS[values.shape[1:]],
        }
        if bounds:
            accessor["min"] = numpy.atleast_1d(values.min(0)).tolist()
            accessor["max"] = numpy.atleast_1d(values.max(0)).tolist()
        return self.add("accessors", accessor)

    def node(self, place: Place) -> int | None:
        """A node and what is below it; None where nothing is seen."""
        below = [index for child in place.children.values() if (index := self.node(child)) is not None]
        shapes = [shape for shape in place.shapes.values() if shape is not None]
        if not below and not shapes:
            return None
        made: dict[str, Any] = {"name": place.name} if place.name else {}
        if below:
            made["children"] = below
        if shapes:
            made["mesh"] = self.add("meshes", {"primitives": [self.primitive(shape) for shape in shapes]})
        index = self.add("nodes", made)
        if place.matrices:
            self.move(place, made, index)
        return index

    def primitive(self, shape: Shape) -> dict[str, Any]:
        return {
            "attributes": {"POSITION": self.array(shape.vertices, _VERTICES, True)},
            "indices": self.array(shape.indices.ravel(), _ELEMENTS),
            "material": self.material(shape.color),
        }

    def material(self, color: tuple[float, ...]) -> int:
        if color not in self.materials:
            made: dict[str, Any] = {
                "pbrMetallicRoughness": {
                    "baseColorFactor": [*map(_linear, color[:3]), color[3]],
                    "metallicFactor": 0,
                    "roughnessFactor": 0.7,
                },
                "doubleSided": True,
            }
            if color[3] < 1:
                made["alphaMode"] = "BLEND"
            self.materials[color] = self.add("materials", made)
        return self.materials[color]

    def move(self, place: Place, made: dict[str, Any], index: int) -> None:
        """The first pose of a node, and its way from there where it moves."""
        import numpy

        parts = _parts(numpy.array(place.matrices))
        for name, values, rest in zip(("translation", "rotation", "scale"), parts, ((0,), (0, 0, 0, 1), (1,))):
            if not numpy.allclose(values[0], rest, atol=1e-12):
                made[name] = values[0].tolist()
            if numpy.ptp(values, 0).max() <= 1e-9:
                continue
            times = self.array(numpy.array(place.times, numpy.float32), bounds=True)
            output = self.array(values.astype(numpy.float32))
            self.samplers.append({"input": times, "output": output, "interpolation": "LINEAR"})
            self.channels.append({"sampler": len(self.samplers) - 1, "target": {"node": index, "path": name}})


def _linear(value: float) -> float:
    """Colours are as a screen shows them here, and as light adds up there."""
    return value / 12.92 if value <= 0.04045 else ((value + 0.055) / 1.055) ** 2.4


def _parts(matrices: Any) -> tuple[Any, Any, Any]:
    """Translations, rotations as x, y, z, w, and scales of matrices, (n, 4, 4); shear is lost."""
    import numpy

    scales = numpy.linalg.norm(matrices[:, :3, :3], axis=1)
    scales[scales == 0] = 1
    turns = matrices[:, :3, :3] / scales[:, None, :]
    mirrored = numpy.linalg.det(turns) < 0
    scales[mirrored, 0] *= -1
    turns[mirrored, :, 0] *= -1
    rotations = numpy.array([_quaternion(turn) for turn in turns])
    for before, after in zip(rotations, rotations[1:]):  # the same turn has two signs: keep the one nearby
        if before @ after < 0:
            after *= -1
    return matrices[:, :3, 3], rotations, scales


def _quaternion(turn: Any) -> Any:
    import numpy

    # The eigenvector of the greatest eigenvalue, which is right for every angle (I. Y. Bar-Itzhack, 2000).
    (a, b, c), (d, e, f), (g, h, i) = turn
    known = numpy.array(
        [
            [a - e - i, b + d, c + g, h - f],
            [b + d, e - a - i, f + h, c - g],
            [c + g, f + h, i - a - e, d - b],
            [h - f, c - g, d - b, a + e + i],
        ]
    )
    return numpy.linalg.eigh(known)[1][:, -1]
