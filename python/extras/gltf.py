"""Scenes and their motion for other programs, as glTF 2.0."""

from __future__ import annotations

from .applications import require_application

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    import os
    from typing import Any


class Shape:
    """Triangles of one colour."""

    def __init__(self, vertices: Any, indices: Any, color: tuple[float, ...]) -> None:
        self.vertices = vertices
        self.indices = indices
        self.color = color


class Place:
    """A node of the scene, its parts, and where it was at each moment."""

    def __init__(self, name: str, node: Any) -> None:
        self.name = name
        self.node = node  # held, so that no other takes its address
        self.children: dict[int, Place] = {}
        self.shapes: dict[int, Shape | None] = {}
        self.drawn: list[Any] = []
        self.times: list[float] = []
        self.matrices: list[Any] = []

    def add_shape(self, drawable: Any, color: tuple[float, ...] | None) -> None:
        import hyxCollide
        import hyxOSG
        import numpy

        if int(drawable.this) in self.shapes:
            return
        self.drawn.append(drawable)
        mesh = hyxOSG.createTrimesh(drawable)
        if mesh is None:
            self.shapes[int(drawable.this)] = None
            return
        holder = hyxCollide.Geometry(mesh)  # ends with the mesh
        self.shapes[int(drawable.this)] = Shape(
            numpy.array(mesh.vertices, numpy.float32), numpy.array(mesh.triangles, numpy.uint32), color or (1, 1, 1, 1)
        )
        del holder


class GltfRecording:
    """What is seen below a node of the scene, at one moment or in motion.

        recording = hyxOSG.GltfRecording(app)
        for _ in range(100):
            app.getSimulation().step()
            recording.capture()
        recording.save("motion.glb")

    Shapes stay as they were when they were first captured, with their materials' colours and without pictures on them;
    only transforms move. `root` is the whole scene, the application's own visuals too, unless given. Lines, points and
    what is hidden are left out; what is below a `PositionAttitudeTransform` stays where it is.
    """

    def __init__(self, application: Any, root: Any = None) -> None:
        require_application(application)
        self._application = application
        scene = [application.getSceneRoot(), application.getSceneHyxOSGRoot()]
        self._shown = scene if root is None else [root]
        self._root = Place("scene", self._shown)
        self._times: list[float] = []

    def capture(self) -> None:
        """Adds the present moment, which must be later than the last one."""
        import _osg  # type: ignore[import-not-found]

        time = self._application.getSimulation().getTimeStamp()
        if self._times and time <= self._times[-1]:
            raise ValueError(f"the moment {time} s is not later than the last one, {self._times[-1]} s")
        _osg.drawRenderTargets(self._application)  # takes the visuals to their bodies
        self._times.append(time)
        for node in self._shown:
            self._visit(self._root, node, None, time)

    def _visit(self, place: Place, node: Any, color: Any, time: float) -> None:
        import osg

        state = node.getStateSet()
        if state is not None and (material := state.getMaterial()) is not None:
            color = tuple(material.getDiffuse())
        group = node.asGroup()
        if group is None:
            place.add_shape(node, color)
            return
        for index in range(group.getNumChildren()):
            child = group.getChild(index)
            if not child.getNodeMask():
                continue
            if isinstance(child, osg.PositionAttitudeTransform):  # does not tell where it is
                place.add_shape(child, color)
                continue
            matrix = _transform(child)
            below = place
            if matrix is not None:
                below = place.children.setdefault(int(child.this), Place(child.getName(), child))
                below.times.append(time)
                below.matrices.append(matrix)
            self._visit(below, child, color, time)

    def save(self, path: str | os.PathLike[str]) -> None:
        """Writes a file with the ending .glb or .gltf; the present moment, if none was captured."""
        from pathlib import Path

        from .gltf_file import write

        if Path(path).suffix.lower() not in (".glb", ".gltf"):
            raise ValueError(f"{str(path)!r} has neither the ending .glb nor .gltf")
        if not self._times:
            self.capture()
        write(Path(path), self._root)


def _transform(node: Any) -> Any:
    """The matrix of a node, as it acts on columns; None for one that moves nothing."""
    import numpy

    moving = node.asMatrixTransform()
    if moving is None:
        return None
    given = moving.getMatrix()
    return numpy.array([[given.get(row, column) for row in range(4)] for column in range(4)])
