"""What the visualization library's classes do beyond their native operations."""

from __future__ import annotations

import _hyxOSG

from .applications import require_application
from .films import Encoding, Film
from .gltf import GltfRecording
from .lists import Items
from .live_view import live_view
from .png import png_bytes
from .records import Record
from .scalar_colors import ColorBar, ColorScale, colorBy
from .sensor_camera import SensorCamera, read_cameras
from .sensor_frames import SensorFrame
from .sensor_noise import SensorNoise
from .spinning_lidar import SpinningDepthLidar

__all__ = [
    "ColorBar",
    "ColorScale",
    "Film",
    "GltfRecording",
    "SensorCamera",
    "SensorFrame",
    "SensorNoise",
    "SpinningDepthLidar",
    "colorBy",
    "read_cameras",
]

TYPE_CHECKING = False
if TYPE_CHECKING:
    import os
    from collections.abc import Iterator
    from types import TracebackType
    from typing import Any

    import hyxIO
    import hyxOSG
    import hyxSDK
    import hyxtavlang
    import osg

    from .hints import Bytes, Floats, Self

_DEPTH_COMPONENT, _RGB = 0x1902, 0x1907  # pixel formats of OpenGL
_LOOKS = ("default", "plain", "talk", "paper")


class ExampleApplication:
    def __init__(self, simulation: hyxSDK.Simulation | None = None, look: str | None = None) -> None:
        """An application around `simulation`, or one that makes its own when it is first needed. `look` is what
        `setLook` takes; left out, it is what the environment variable HYX_LOOK says, or "default".
        """
        import os

        self._native___init__(simulation)  # type: ignore[attr-defined]
        self.setLook(os.environ.get("HYX_LOOK", "default") if look is None else look)

    def setLook(self, look: str) -> None:
        """Chooses how pictures look without further tuning. What a script sets later stands.

        - "default": light at each pixel, ambient light from sky and ground, and soft shadows; where no graphics
          processor draws, these end when more than 64 meshes throw them.
        - "plain": the defaults of all operations.
        - "talk": for slides. Light at each pixel, shadows, a fill light, ambient light from sky and ground, darker
          where bodies touch, no logo.
        - "paper": for print. As "talk", before white and as smooth as the driver can; the samples hold for the next
          window.
        """
        import hyx

        if look not in _LOOKS:
            raise ValueError(f"there is no look {look!r}: choose {', '.join(map(repr, _LOOKS[:-1]))} or {_LOOKS[-1]!r}")
        lit, tuned, paper = look != "plain", look in ("talk", "paper"), look == "paper"
        decorator = self.getSceneDecorator()  # type: ignore[attr-defined]
        decorator.setEnableShaderState(lit)
        decorator.setEnableShadows(lit)
        decorator.setShadowMethod(decorator.SOFT_SHADOWMAP)
        decorator.setShadowMapSize(2048 if paper else 1024)
        decorator.setShadowCasterLimit(64 if look == "default" else 0)
        decorator.setEnableSkyLight(lit)
        decorator.setEnableContactShade(tuned)
        decorator.setEnableLights(decorator.LIGHT0 | decorator.LIGHT1 if tuned else decorator.LIGHT0)
        decorator.setEnableLogo(not tuned)
        upper, lower = ((1, 1, 1), (1, 1, 1)) if paper else ((0.55, 0.66, 0.80), (0.87, 0.89, 0.92))
        decorator.setBackgroundColor(hyx.Vec3(*upper), hyx.Vec3(*lower))
        self.setNumSamples(8 if paper else 4)  # type: ignore[attr-defined]

    def close(self) -> None:
        """Finishes captures and journal and lets go of everything: window, context and memory end, unless something
        else still holds the application. It cannot be used any more then; closing it again does nothing. A script
        that opens one application after another closes each, or uses `with`.
        """
        import _hyx_proxy

        if not hasattr(self, "this"):
            return
        try:
            self.postExecution()  # type: ignore[attr-defined]
        finally:
            _hyx_proxy.let_go(self)  # type: ignore[arg-type]

    def render(self, out: Bytes | None = None) -> Bytes:
        """Draws the present state, without a step, and gives the picture as a NumPy array: uint8 of shape
        (height, width, 3), rows from the top. An array given as `out`, of this kind and size, is filled and returned.
        """
        return _picture(self, out, True)

    @property
    def pixels(self) -> Bytes:
        """The picture of the last frame, as `render` gives it, without drawing it again: a new array."""
        return _picture(self, None, False)

    def __enter__(self) -> Self:
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()

    def run(self, raise_errors: bool | None = None) -> int:
        """Runs the loop until it is stopped, the window is closed or the time is over. Returns the exit code.

        What a listener or a callback raises is printed, once with its traceback and then counted, and the loop goes
        on. With `raise_errors` the first such error is raised when the loop has ended. Left out, that is so where
        nobody reads along: when the standard error stream is no terminal.
        """
        import sys

        former = self.getRaiseScriptErrors()  # type: ignore[attr-defined]
        stream = sys.__stderr__
        unread = stream is None or not stream.isatty()
        self.setRaiseScriptErrors(unread if raise_errors is None else raise_errors)  # type: ignore[attr-defined]
        try:
            return self._native_run()  # type: ignore[attr-defined]
        finally:
            if hasattr(self, "this"):
                self.setRaiseScriptErrors(former)  # type: ignore[attr-defined]

    def init(self, parser: hyxIO.ArgumentParser | None = None, withGraphics: bool = False) -> bool:
        """Follows the options of `parser` (`--help` lists them); None means none. With `withGraphics` simulation,
        window and scene are made at once instead of when they are needed. Returns False when the program has nothing
        left to do (`--help` was given). What is wrong with the program's own arguments ends it with a line.
        """
        import sys

        try:
            return self._native_init(parser, withGraphics)  # type: ignore[attr-defined]
        except (OSError, RuntimeError, ValueError) as error:
            if parser is None or [str(word) for word in parser.getArguments()] != sys.argv[1:]:
                raise
            print(f"{sys.argv[0]}: {error}\n(--help lists the options)", file=sys.stderr)
            raise SystemExit(2) from error

    def loadTavLangFile(
        self, path: str | os.PathLike[str], root: osg.Group | None, params: hyxtavlang.OptParams | None = None
    ) -> hyxtavlang.LoadResult:
        """Loads a robot description (URDF), a model in MJCF, a model or world in SDF, or a scene of JSON into the
        simulation, with visuals under `root` (None for none). What is wrong with it is listed in the result; then the
        simulation is as before. FileNotFoundError where there is no such file.
        """
        import errno
        import os

        params = () if params is None else (params,)
        result = self._native_loadTavLangFile(path, root, *params)  # type: ignore[attr-defined]
        if not result.isSuccess() and not os.path.isfile(path):
            number = errno.EISDIR if os.path.isdir(path) else errno.ENOENT
            raise OSError(number, os.strerror(number), os.fspath(path))
        return result

    def film(
        self,
        path: str | os.PathLike[str],
        codec: str | None = None,
        *,
        title: str = "",
        clock: bool = False,
        color_bar: ColorScale | None = None,
        label: str = "",
        size: tuple[int, int] | None = None,
        **encoding: Any,
    ) -> Film:
        """A film of the window, recorded as long as `with` lasts; overlays are shown as long.

            with app.film("drop.mp4", title="Drop test", clock=True) as film, film.progress(seconds=5):
                app.stopAfter(5)
                app.run()

        `title` stands above the picture, the simulated time below, `color_bar` with its `label` at the right. `size` in
        pixels, that of the window by default. What else there is to choose: see `VideoFFMPEGPipeCapture.encode`.
        """
        import _osg

        require_application(self)
        size = size or _osg.getPictureSize(self)
        encoding |= {"codec": codec, "path": path}
        return Film(self, size, encoding, title, clock, color_bar, label)  # type: ignore[arg-type]

    def liveView(self) -> Any:
        """A widget for notebooks that shows the window live and takes the mouse and the keys as it does: as the value
        of a cell it runs the loop, in real time, while it is seen, until its `close()`. Needs the package jupyter_rfb.
        """
        return live_view(self)  # type: ignore[arg-type]

    def _repr_png_(self) -> bytes | None:
        """The present picture, for notebooks; None before there is a window."""
        if self.getViewer() is None:  # type: ignore[attr-defined]
            return None
        return png_bytes(self.render())


def _picture(application: Any, out: Bytes | None, fresh: bool) -> Bytes:
    import _osg
    import numpy

    require_application(application)
    size = _osg.getPictureSize(application)
    shape = (size[1], size[0], 3)
    if out is None:
        out = numpy.empty(shape, numpy.uint8)
    elif getattr(out, "shape", None) != shape or out.dtype != numpy.uint8:
        raise ValueError(f"the picture needs an array of uint8 of shape {shape}")
    _osg.readPicture(application, out, fresh)
    return out


class SwigPyIterator:
    def __iter__(self) -> SwigPyIterator:
        return self


class CameraData(Record):
    _blank = (None,)


class LidarOutputRendererLegend(Items):
    def __iter__(self) -> Iterator[hyxOSG.LidarOutputRendererLegendPoint]:
        """Gives copies of the points; `legend[i]` gives the point itself."""
        return self.iterator()  # type: ignore[attr-defined]

    def insert(self, place: Any, *values: Any) -> Any:
        """As a list's with an index; with an iterator, that of the native list."""
        if isinstance(place, int) and len(values) == 1:
            self[place:place] = values
            return None
        return _hyxOSG.LidarOutputRendererLegend_insert(self, place, *values)

    insert.__wrapped_function__ = _hyxOSG.LidarOutputRendererLegend_insert  # type: ignore[attr-defined]

    def pop(self, index: int = -1) -> hyxOSG.LidarOutputRendererLegendPoint:
        """Takes out a point, the last one by default."""
        if index == -1:
            return _hyxOSG.LidarOutputRendererLegend_pop(self)
        point = self[index].__copy__()
        del self[index]
        return point

    pop.__wrapped_function__ = _hyxOSG.LidarOutputRendererLegend_pop  # type: ignore[attr-defined]

    def __eq__(self, other: object) -> bool:
        return list(self) == list(other) if isinstance(other, type(self)) else NotImplemented

    __hash__ = None  # type: ignore[assignment]

    def __deepcopy__(self, memo: dict[int, Any]) -> Self:
        return self.__copy__()

    def __reduce__(self) -> tuple[type, tuple[Any, ...]]:
        return type(self), (list(self),)

    def __repr__(self) -> str:
        return f"hyxOSG.LidarOutputRendererLegend([{', '.join(map(repr, self))}])"


class LidarOutputRendererLegendPoint(Record):
    def __repr__(self) -> str:
        return f"hyxOSG.LidarOutputRendererLegendPoint({self.intensity:g}, {self.color!r})"  # type: ignore[attr-defined]


class ImageCaptureBase:
    def __enter__(self) -> Self:
        """`with` a capture: it runs inside the block, and its files are finished at the end."""
        self.startCapture()  # type: ignore[attr-defined]
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.stopCapture()  # type: ignore[attr-defined]


class VideoFFMPEGPipeCapture(Encoding):
    pass


class RenderToImage:
    @property
    def pixels(self) -> Bytes | Floats:
        """The image as a NumPy array over its own memory, no copy: each drawn frame shows in it.

        Colour is uint8 of shape (height, width, channels), depth float32 of shape (height, width) from 0 at the near to
        1 at the far plane. Row 0 is the lowest: `pixels[::-1]` is the way files have it. Ask anew after a change of
        the size.
        """
        import ctypes

        import numpy

        image = self.getImage()  # type: ignore[attr-defined]
        height, width, pixel_format = image.t(), image.s(), image.getPixelFormat()
        if pixel_format == _DEPTH_COMPONENT:
            shape, kind = (height, width), numpy.float32
        else:
            shape, kind = (height, width, 3 if pixel_format == _RGB else 4), numpy.uint8
        size = int(numpy.prod(shape)) * numpy.dtype(kind).itemsize
        memory = (ctypes.c_ubyte * size).from_address(int(self.getImageData()))  # type: ignore[attr-defined]
        memory.target = self  # type: ignore[attr-defined]  # whose memory it is
        return numpy.frombuffer(memory, kind).reshape(shape)

    def _repr_png_(self) -> bytes | None:
        """The image as last drawn, for notebooks; depth as grey, far is light. None before it was drawn."""
        import numpy

        if not self.getImageData():  # type: ignore[attr-defined]
            return None
        pixels = self.pixels[::-1]
        return png_bytes(pixels if pixels.dtype == numpy.uint8 else numpy.clip(255 * pixels, 0, 255))


class SimpleDepthBufferLidar:
    @property
    def points(self) -> Floats:
        """The points of the last drawn frame as a NumPy array of its own: float32, shape (n, 3), metres."""
        import numpy

        return numpy.array(memoryview(self.getScan()), dtype=numpy.float32).reshape(-1, 3)
