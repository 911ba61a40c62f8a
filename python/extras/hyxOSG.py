"""What the visualization library's classes do beyond their native operations."""

from __future__ import annotations

from .png import png_bytes

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from types import TracebackType
    from typing import Any

_DEPTH_COMPONENT, _RGB = 0x1902, 0x1907  # pixel formats of OpenGL


class ExampleApplication:
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

    def __enter__(self) -> Any:
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

        import _hyxOSG

        former = self.getRaiseScriptErrors()  # type: ignore[attr-defined]
        stream = sys.__stderr__
        unread = stream is None or not stream.isatty()
        self.setRaiseScriptErrors(unread if raise_errors is None else raise_errors)  # type: ignore[attr-defined]
        try:
            return _hyxOSG.ExampleApplication_run(self)
        finally:
            if hasattr(self, "this"):
                self.setRaiseScriptErrors(former)  # type: ignore[attr-defined]

    def init(self, parser: Any = None, withGraphics: bool = False) -> bool:
        """Follows the options of `parser` (`--help` lists them); None means none. With `withGraphics` simulation, window
        and scene are made at once instead of when they are needed. Returns False when the program has nothing left to
        do (`--help` was given). What is wrong with the program's own arguments ends it with a line that says so.
        """
        import sys

        import _hyxOSG

        try:
            return _hyxOSG.ExampleApplication_init(self, parser, withGraphics)
        except (RuntimeError, ValueError) as error:
            if parser is None or [str(word) for word in parser.getArguments()] != sys.argv[1:]:
                raise
            print(f"{sys.argv[0]}: {error}\n(--help lists the options)", file=sys.stderr)
            raise SystemExit(2) from error

    def _repr_png_(self) -> bytes | None:
        """The present picture, for notebooks; None before there is a window."""
        import os
        import tempfile

        if self.getViewer() is None:  # type: ignore[attr-defined]
            return None
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "picture.png")
            self.takeScreenShot(path)  # type: ignore[attr-defined]
            with open(path, "rb") as file:
                return file.read()


class SwigPyIterator:
    def __iter__(self) -> SwigPyIterator:
        return self


class LidarOutputRendererLegend:
    def __iter__(self) -> Iterator[Any]:
        """Gives copies of the points; `legend[i]` gives the point itself."""
        return self.iterator()  # type: ignore[attr-defined]

    def __repr__(self) -> str:
        return f"hyxOSG.LidarOutputRendererLegend([{', '.join(map(repr, self))}])"


class LidarOutputRendererLegendPoint:
    def __repr__(self) -> str:
        return f"hyxOSG.LidarOutputRendererLegendPoint({self.intensity:g}, {self.color!r})"  # type: ignore[attr-defined]


class ImageCaptureBase:
    def __enter__(self) -> Any:
        """`with` a capture: it runs inside the block, and its files are finished at the end."""
        self.startCapture()  # type: ignore[attr-defined]
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.stopCapture()  # type: ignore[attr-defined]


class RenderToImage:
    @property
    def pixels(self) -> Any:
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

        if not self.getImage() or not self.getImage().data():  # type: ignore[attr-defined]
            return None
        pixels = self.pixels[::-1]
        return png_bytes(pixels if pixels.dtype == numpy.uint8 else numpy.clip(255 * pixels, 0, 255))


class SimpleDepthBufferLidar:
    @property
    def points(self) -> Any:
        """The points of the last drawn frame as a NumPy array of its own: float32, shape (n, 3), metres."""
        import numpy

        return numpy.array(self.getScan(), dtype=numpy.float32).reshape(-1, 3)
