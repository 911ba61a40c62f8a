"""Colours for arrays of numbers, by the names of maps that plotting libraries have, and the bar that explains them."""

from __future__ import annotations

import math

from .applications import require_application

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Callable, Sequence
    from typing import Any

    from .hints import Rows, Self

_PRESETS = {
    "rainbow": "RAINBOW",
    "coolwarm": "COOLWARM",
    "viridis": "VIRIDIS",
    "inferno": "INFERNO",
    "plasma": "PLASMA",
    "gray": "GRAYSCALE",
    "bwr": "BLUE_WHITE_RED",
    "cividis": "CIVIDIS",
    "bone": "BONE",
    "copper": "COPPER",
    "afmhot": "AFMHOT",
}
_STEPS = 256
_UNKNOWN = (0.5, 0.5, 0.5, 1.0)  # of what is no number
_LETTER_WIDTH = 0.65  # of digits and most letters, as a share of their height
_TRIANGLES = 4  # of OpenGL's modes


class ColorScale:
    """A map over an interval of numbers: a name, or evenly spaced colours, rows of three or four numbers from 0 to 1.

    Maps are "rainbow", "coolwarm", "viridis", "inferno", "plasma", "gray", "bwr", "cividis", "bone",
    "copper", "afmhot"; where matplotlib is installed, all of its maps. With "_r" at its end a map is turned around.
    """

    def __init__(self, map: str | Rows = "viridis", low: float = 0.0, high: float = 1.0) -> None:
        if not -math.inf < low <= high < math.inf:
            raise ValueError(f"the interval of a scale goes upwards between finite ends, not from {low} to {high}")
        self.map, self.low, self.high = map, float(low), float(high)
        # The colours of other libraries' maps are those of steps, as there, for many are lists of unlike colours.
        self._stepped = isinstance(map, str) and _base(map) not in _PRESETS
        self._table = _table(map) if isinstance(map, str) else _rows(map)

    @classmethod
    def of(cls, source: Any) -> Self:
        """That of a `ScalarColorMap`, or of a renderer as it draws now: of a lidar, terrain, pressure or cable damage.

        A renderer whose colours tell no numbers is a `ValueError`.
        """
        native = _native_scale(source)
        if native is None:
            raise ValueError("the renderer colours nothing by a number: choose what, for example with setRenderHeights")
        colors = [(color.r, color.g, color.b, color.a) for color in native.getColors()]
        return cls(colors, native.getMinScalar(), native.getMaxScalar())

    def colors(self, values: Any) -> Any:
        """float32 of shape (n, 4), one colour for each value; beyond the ends those of the ends, grey for NaN."""
        import numpy

        values = numpy.asarray(values, dtype=float).ravel()
        known = numpy.isfinite(values) | numpy.isinf(values)
        part = (numpy.where(known, values, self.low) - self.low) / ((self.high - self.low) or 1.0)
        last = len(self._table) - 1
        place = numpy.clip(part, 0, 1) * last
        if self._stepped:
            place = numpy.minimum(numpy.floor(numpy.clip(part, 0, 1) * (last + 1)), last)
        under = place.astype(int)
        rest = (place - under)[:, None]
        mixed = self._table[under] * (1 - rest) + self._table[numpy.minimum(under + 1, last)] * rest
        return numpy.where(known[:, None], mixed, _UNKNOWN).astype(numpy.float32)

    def ticks(self, most: int = 6) -> list[float]:
        """Round numbers of the interval, `most` at most."""
        span = self.high - self.low
        if not span > 0 or not math.isfinite(span):
            return [self.low]
        size = 10.0 ** math.floor(math.log10(span / most))
        for step in (size * factor for factor in (1, 2, 2.5, 5, 10, 20, 50)):
            first, last = math.ceil(self.low / step - 1e-9), math.floor(self.high / step + 1e-9)
            if last - first < most:
                break
        return [number * step for number in range(first, last + 1)]

    def __repr__(self) -> str:
        name = repr(self.map) if isinstance(self.map, str) else f"{len(self._table)} colours"
        return f"hyxOSG.ColorScale({name}, {self.low:g}, {self.high:g})"


def _native_scale(source: Any) -> Any:
    import hyxOSG

    if isinstance(source, hyxOSG.ScalarColorMap):
        return source
    if not hasattr(source, "getColorScale"):
        raise TypeError(f"a scale is that of a ScalarColorMap or of a renderer, not of {source!r}")
    return source.getColorScale()


def _rows(colors: Any) -> Any:
    import numpy

    table = numpy.array(colors, dtype=float)
    if table.ndim != 2 or len(table) == 0 or table.shape[1] not in (3, 4):
        raise ValueError("the colours of a scale are rows of three or four numbers")
    return table if table.shape[1] == 4 else numpy.column_stack([table, numpy.ones(len(table))])


def _base(name: str) -> str:
    return name[:-2] if name.endswith("_r") else name


def _table(name: str) -> Any:
    import hyxOSG
    import numpy

    base = _base(name)
    if base in _PRESETS:
        preset = hyxOSG.ScalarColorMap(getattr(hyxOSG.ScalarColorMap, _PRESETS[base]), 0.0, 1.0)
        table = numpy.array([tuple(preset.getColor(i / (_STEPS - 1))) for i in range(_STEPS)])
    else:
        try:
            import matplotlib  # type: ignore[import-not-found]

            table = matplotlib.colormaps[base](numpy.arange(matplotlib.colormaps[base].N))
        except (ImportError, KeyError):
            raise ValueError(f"there is no colour map {name!r}: choose one of {', '.join(_PRESETS)}") from None
    return table[::-1].copy() if name.endswith("_r") else table


def colorBy(
    target: Any,
    values: Sequence[float] | Callable[[Any], Sequence[float]],
    map: str = "viridis",
    low: float | None = None,
    high: float | None = None,
    lit: bool = True,
) -> ColorScale:
    """Colours the corners of what is drawn by one number each, and returns the scale for a `ColorBar`.

    `target` is an `osg.Geometry`, or a node with meshes below: a visual, a loaded model. `values` has a number for
    each vertex, in the order of the vertices; for the visual of a mesh those of the mesh (`Trimesh.vertices`). Or it is
    a function of the vertices, an array of shape (n, 3). Without `low` and `high` the scale has the ends of the
    values. Colouring again changes the colours that are there. Without `lit` colours are shown as they are.
    """
    import numpy

    meshes = [target] if _is_geometry(target) else _own_meshes(target)
    if not meshes:
        raise ValueError("there is no mesh below the node")
    numbers = [_values_of(mesh.vertices, values, len(meshes)) for mesh in meshes]
    known = numpy.concatenate(numbers)
    known = known[numpy.isfinite(known)]
    ends = (known.min(), known.max()) if len(known) else (0.0, 1.0)
    scale = ColorScale(map, ends[0] if low is None else low, ends[1] if high is None else high)
    for mesh, own in zip(meshes, numbers):
        mesh.colors = scale.colors(own)
        _show_vertex_colors(mesh, lit)
    return scale


def _is_geometry(target: Any) -> bool:
    import osg

    return isinstance(target, osg.Geometry)


def _own_meshes(node: Any) -> list[Any]:
    """The meshes below a node. Those that other nodes show, too, are replaced by copies."""
    own = []
    group = node.asGroup()
    for i in range(group.getNumChildren() if group else 0):
        child = group.getChild(i)
        mesh = child.asGeometry()
        if mesh is None:
            own += _own_meshes(_unshared(group, child))
        elif len(mesh.elements):
            own.append(_unshared(group, mesh))
    return own


def _unshared(group: Any, child: Any) -> Any:
    import osg

    if child.getNumParents() < 2:
        return child
    copy: Any
    if child.asGeometry() is not None:
        copy = osg.Geometry()
        copy.vertices, copy.normals = child.vertices, child.normals
        copy.addElements(_TRIANGLES, child.elements)
    elif child.asGeode() is not None:
        copy = osg.Geode()
        for i in range(child.getNumChildren()):
            copy.addChild(child.getChild(i))
    else:
        return child
    if child.getStateSet():
        copy.setStateSet(child.getStateSet())
    group.replaceChild(child, copy)
    return copy


def _values_of(vertices: Any, values: Any, meshes: int) -> Any:
    import numpy

    numbers = numpy.asarray(values(vertices) if callable(values) else values, dtype=float).ravel()
    if len(numbers) < len(vertices) and len(numbers) > 0 and meshes == 1:
        # Drawn meshes have the vertices of sharp edges twice, after all others.
        places = {vertex.tobytes(): i for i, vertex in reversed(list(enumerate(vertices[: len(numbers)] + 0.0)))}
        twins = [places.get(vertex.tobytes(), -1) for vertex in vertices[len(numbers) :] + 0.0]
        if min(twins) >= 0:
            numbers = numpy.concatenate([numbers, numbers[twins]])
    if len(numbers) != len(vertices):
        raise ValueError(f"{len(numbers)} values for {len(vertices)} vertices")
    return numbers


def _show_vertex_colors(mesh: Any, lit: bool) -> None:
    import hyx
    import hyxOSG
    import osg

    state = mesh.getOrCreateStateSet()
    if not lit:
        state.setMode(0x0B50, osg.StateAttribute.OFF | osg.StateAttribute.PROTECTED)  # GL_LIGHTING
        return
    hyxOSG.setDiffuseColor(mesh, hyx.Vec4f(1, 1, 1, 1))  # as what scripts set: the nearest wins
    state.getMaterial().setVertexColors(True)


class ColorBar:
    """A scale with ticks on the right of the picture, until `remove`. `ColorBar.of` is that of a renderer.

    `label` stands above it. `place` and `size` are in pixels, from the lower left; without them the bar has three
    fifths of the height.
    """

    def __init__(
        self,
        app: Any,
        scale: ColorScale,
        label: str = "",
        place: tuple[float, float] | None = None,
        size: tuple[float, float] | None = None,
        color: tuple[float, float, float] = (0.1, 0.1, 0.1),
    ) -> None:
        import _osg  # type: ignore[import-not-found]
        import osg

        require_application(app)
        if not isinstance(scale, ColorScale):
            raise TypeError(f"a colour bar shows a ColorScale, such as hyxOSG.colorBy gives, not {scale!r}")
        width, height = _osg.getPictureSize(app)
        letters = max(10.0, height / 40)
        widest = max(map(len, _tick_texts(scale.ticks())))
        room = max(6.5, 2 + _LETTER_WIDTH * widest, 1 + _LETTER_WIDTH * len(label) / 2)  # in letters, to the right
        self._drawn = _DrawnBar(
            label, place or (width - room * letters, 0.2 * height), size or (letters, 0.6 * height), letters, color
        )
        self._hud = app.getSceneDecorator().getHud()
        self._node = osg.Group()
        self._node.addChild(self._drawn.node)
        self._drawn.show(scale)
        self._hud.addChild(self._node)

    @classmethod
    def of(cls, app: Any, renderer: Any, label: str = "", **options: Any) -> Self:
        """The bar of a lidar, terrain, pressure or cable damage renderer, or of a `ScalarColorMap` as it is now.

        It has the colours that are drawn, over the numbers that they stand for, and follows a renderer in every
        picture; it keeps the renderer. `options` are those of `ColorBar`.
        """
        bar = cls(app, ColorScale.of(renderer), label, **options)
        bar._node.setUpdateFunction(_follower(bar._drawn, renderer))
        return bar

    @property
    def scale(self) -> ColorScale:
        """What the bar shows; another one can be assigned, and stays."""
        return self._drawn.scale

    @scale.setter
    def scale(self, scale: ColorScale) -> None:
        self._node.setUpdateFunction(None)
        self._drawn.show(scale)

    def remove(self) -> None:
        """Takes the bar out of the picture."""
        self._node.setUpdateFunction(None)
        self._hud.removeChild(self._node)


def _follower(drawn: _DrawnBar, source: Any) -> Callable[[], None]:
    """Draws the scale of `source` whenever it is another one."""
    last = _native_scale(source)

    def follow() -> None:
        nonlocal last
        native = _native_scale(source)
        if native is None:
            drawn.clear()
        elif last is None or int(native.this) != int(last.this):
            drawn.show(ColorScale.of(native))
        last = native

    return follow


def _tick_texts(ticks: Sequence[float]) -> list[str]:
    """With as many digits as tell neighbours apart."""
    error = min((after - before for before, after in zip(ticks, ticks[1:])), default=math.inf) / 100
    for digits in range(6, 17):
        texts = [f"{tick:.{digits}g}" for tick in ticks]
        if all(abs(float(text) - tick) < error for text, tick in zip(texts, ticks)):
            break
    return texts


class _DrawnBar:
    """The nodes of a bar."""

    def __init__(
        self,
        label: str,
        place: tuple[float, float],
        size: tuple[float, float],
        letters: float,
        color: tuple[float, float, float],
    ) -> None:
        import osg

        self.node = osg.Group()
        self._label, self._place, self._size, self._letters, self._color = label, place, size, letters, color

    def clear(self) -> None:
        while self.node.getNumChildren():
            self.node.removeChild(self.node.getChild(0))

    def show(self, scale: ColorScale) -> None:
        if not isinstance(scale, ColorScale):
            raise TypeError(f"a colour bar shows a ColorScale, not {type(scale).__name__}")
        self.scale = scale
        self.clear()
        self.node.addChild(self._strip())
        (left, bottom), (wide, high) = self._place, self._size
        span = (scale.high - scale.low) or 1.0
        ticks = scale.ticks()
        for tick, text in zip(ticks, _tick_texts(ticks)):
            height = bottom + high * (tick - scale.low) / span
            self._write(text, left + wide + 0.5 * self._letters, height, False)
        if self._label:
            self._write(self._label, left + wide / 2, bottom + high + self._letters, True)

    def _strip(self) -> Any:
        import numpy
        import osg

        (left, bottom), (wide, high), scale = self._place, self._size, self.scale
        rows = numpy.linspace(0, 1, _STEPS + 1)
        strip = osg.Geometry()
        strip.vertices = [(left + wide * side, bottom + high * row, 0) for row in rows for side in (0, 1)]
        strip.colors = numpy.repeat(scale.colors(scale.low + (scale.high - scale.low) * rows), 2, axis=0)
        strip.addElements(5, numpy.arange(2 * len(rows)))  # GL_TRIANGLE_STRIP
        lines = osg.Geometry()
        span = (scale.high - scale.low) or 1.0
        heights = [bottom + high * (tick - scale.low) / span for tick in scale.ticks()]
        right = left + wide
        corners = [(left, bottom), (right, bottom), (right, bottom + high), (left, bottom + high), (left, bottom)]
        pairs = list(zip(corners, corners[1:])) + [((right, y), (right + self._letters / 3, y)) for y in heights]
        lines.vertices = [(x, y, 1) for pair in pairs for x, y in pair]
        lines.colors = [(*self._color, 1)]
        lines.addElements(1, numpy.arange(2 * len(pairs)))  # GL_LINES
        geode = osg.Geode()
        for mesh in (strip, lines):
            geode.addDrawable(mesh)
        geode.getOrCreateStateSet().setMode(0x0B50, osg.StateAttribute.OFF)  # GL_LIGHTING
        return geode

    def _write(self, text: str, x: float, y: float, centered: bool) -> None:
        import hyx
        import hyxOSG

        r, g, b = self._color
        words = hyxOSG.Text(text, hyx.Vec3(x, y, 1), hyx.Vec4(r, g, b, 1))
        words.setCharacterSize(self._letters)
        words.setAxisAlignment(hyxOSG.Text.XY_PLANE)
        words.setAlignment(hyxOSG.Text.CENTER_BOTTOM if centered else hyxOSG.Text.LEFT_CENTER)
        self.node.addChild(words)
