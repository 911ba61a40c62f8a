"""Films for publication: encoding in one call, title, clock and colour bar, and progress."""

from __future__ import annotations

import errno
import os
import threading
from contextlib import contextmanager

from .film_encoding import USUAL, USUAL_WITH_ALPHA, chosen_encoder

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator, Mapping
    from types import TracebackType
    from typing import Any

    import hyxOSG

    from .hints import Self
    from .scalar_colors import ColorScale

_LOOK_AGAIN = 0.1  # seconds


def _option_lines(options: Mapping[str, object]) -> str:
    if not hasattr(options, "items"):
        raise TypeError("options of encoders are a dictionary: {'tune': 'animation'}")
    words = [word for name, value in options.items() for word in (f"-{name.lstrip('-')}", str(value))]
    if any("\n" in word for word in words):
        raise ValueError("options of encoders have no line breaks")
    return "\n".join(words)


class Encoding:
    """What a capture of films has beyond its native operations."""

    __slots__ = ()

    def encode(
        self,
        codec: str | None = None,
        *,
        path: str | os.PathLike[str] | None = None,
        fps: float | None = None,
        quality: int | None = None,
        lossless: bool = False,
        bitrate: float | None = None,
        preset: str = "",
        pixel_format: str = "",
        alpha: bool = False,
        hardware: bool = False,
        options: Mapping[str, object] | None = None,
    ) -> str:
        """Chooses all about the next film in one call and returns the encoder. What is left out gives a film that plays
        in browsers and that keeps what is drawn.

        - `codec`: "h264", "h264rgb", "h265", "av1", "vp9", "mpeg4", "prores", "ffv1", "gif", "webp", "png", or the name
          of an encoder of ffmpeg; by default what suits the container.
        - `path`: of the file; its ending is the container.
        - `fps`: images and frames a second alike.
        - `quality`: 0 (best) to 51, 18 by default; or `lossless`; or `bitrate`, bits a second.
        - `preset`, `pixel_format`, `options`: as ffmpeg names them: "slow", "yuv444p", {"tune": "animation"}.
        - `alpha`: keeps what is transparent, of a render target with RGBA that is cleared to (0, 0, 0, 0): ".mov" is
          ProRes 4444 then, ".webm" VP9.
        - `hardware`: an encoder of the graphics processor where one works, else the usual one.
        """
        from pathlib import Path

        video: Any = self
        if path is not None:
            file = Path(path)
            if file.is_dir() or str(path).endswith(os.sep):
                place = file / f"film{file.suffix or '.mp4'}"
                raise IsADirectoryError(errno.EISDIR, f"is a folder: name a file in it, such as '{place}'", str(path))
            video.setFilename(str(file.with_suffix("")))
            video.setVideoPostFix(file.suffix or ".mp4")
        ending = video.getVideoPostFix().lower()
        if codec is None and alpha and ending not in USUAL_WITH_ALPHA:
            raise ValueError(f"films in {ending!r} keep no alpha: choose {', '.join(USUAL_WITH_ALPHA)}, or a codec")
        if codec is None:
            codec = (USUAL_WITH_ALPHA if alpha else USUAL).get(ending, "h264")
            if lossless and codec == "h264":
                codec = "h264rgb"
        if fps is not None:
            video.setFps(fps)
            video.setVideoFPS(fps)
        video.setVideoCRF(18 if quality is None else quality)
        video.setBitrate(0 if bitrate is None else bitrate)
        video.setEnableLossless(lossless)
        video.setPreset(preset)
        video.setPixelFormat(pixel_format)
        video.setEnableAlpha(alpha)
        video.setEncoderOptions(_option_lines(options or {}))
        encoder = chosen_encoder(codec, hardware)
        video.setEncoder(encoder)
        return encoder

    @contextmanager
    def progress(self, seconds: float | None = None, **options: Any) -> Iterator[Any]:
        """`with` it, a bar of tqdm shows the images taken, of so many seconds where told. `options` are tqdm's."""
        from pathlib import Path

        from tqdm.auto import tqdm  # type: ignore[import-untyped]

        video: Any = self
        total = None if seconds is None else round(seconds * video.getFps())
        over = threading.Event()
        with tqdm(**{"total": total, "unit": "images", "desc": Path(video.getFilename()).name, **options}) as bar:

            def follow() -> None:
                while not over.wait(_LOOK_AGAIN):
                    bar.update(video.getNumFrames() - bar.n)

            follower = threading.Thread(target=follow, daemon=True)
            follower.start()
            try:
                yield bar
            finally:
                over.set()
                follower.join()
                bar.update(video.getNumFrames() - bar.n)


class Film:
    """A film of an application's window while it lasts; see `ExampleApplication.film`."""

    def __init__(
        self,
        app: hyxOSG.ExampleApplication,
        size: tuple[int, int],
        encoding: Mapping[str, Any],
        title: str,
        clock: bool,
        color_bar: ColorScale | None,
        label: str,
    ) -> None:
        self.video: Any = app.getVideoServerCapture()
        self._size, self._encoding = size, encoding
        self._overlay = _Overlay(app, title, clock, color_bar, label)
        self._prepare()

    def _prepare(self) -> None:
        """The capture is the window's: each of its films says anew what it is."""
        if self.video.getCaptureStarted():
            raise RuntimeError("the window is being filmed already: end that film first")
        self.video.setImageResolution(*self._size)
        self.video.encode(**self._encoding)

    def progress(self, seconds: float | None = None, **options: Any) -> Any:
        """See `VideoFFMPEGPipeCapture.progress`."""
        return self.video.progress(seconds, **options)

    def __enter__(self) -> Self:
        self._prepare()
        try:
            self._overlay.show()
            self.video.startCapture()
        except BaseException:
            self._overlay.remove()
            raise
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        try:
            self.video.stopCapture()
        finally:
            self._overlay.remove()


class _Overlay:
    """Title, clock and colour bar on the head-up display."""

    def __init__(
        self, app: hyxOSG.ExampleApplication, title: str, clock: bool, color_bar: ColorScale | None, label: str
    ) -> None:
        self._app, self._title, self._has_clock, self._scale, self._label = app, title, clock, color_bar, label
        self._texts: list[Any] = []
        self._bar: Any = None
        self._clock: Any = None

    def show(self) -> None:
        import _osg  # type: ignore[import-not-found]
        import hyxOSG

        from .scalar_colors import ColorBar

        width, height = _osg.getPictureSize(self._app)
        letters = max(12.0, height / 24)
        if self._title:
            self._write(self._title, width / 2, height - 1.6 * letters, letters, hyxOSG.Text.CENTER_BOTTOM)
        if self._scale is not None:
            self._bar = ColorBar(self._app, self._scale, self._label)
        if self._has_clock:
            text = self._write("", 0.6 * letters, 0.6 * letters, 0.8 * letters, hyxOSG.Text.LEFT_BOTTOM)
            self._clock = _new_clock(self._app, text)

    def _write(self, words: str, x: float, y: float, letters: float, alignment: Any) -> Any:
        import hyx
        import hyxOSG

        text = hyxOSG.Text(words, hyx.Vec3(x, y, 1), hyx.Vec4(0.1, 0.1, 0.1, 1))
        text.setCharacterSize(letters)
        text.setAxisAlignment(hyxOSG.Text.XY_PLANE)
        text.setAlignment(alignment)
        hud: Any = self._app.getSceneDecorator().getHud()
        hud.addChild(text)
        self._texts.append(text)
        return text

    def remove(self) -> None:
        if not hasattr(self._app, "this"):  # closed, and the overlay with it
            return
        hud: Any = self._app.getSceneDecorator().getHud()
        for text in self._texts:
            hud.removeChild(text)
        self._texts.clear()
        if self._bar:
            self._bar.remove()
        if self._clock:
            self._app.removeListener(self._clock)
        self._bar = self._clock = None


def _new_clock(app: hyxOSG.ExampleApplication, text: Any) -> Any:
    import hyxOSG

    class Clock(hyxOSG.ExampleApplicationListener):
        def preFrame(self, application: Any) -> None:
            text.setText(f"{application.getSimulation().getTimeStamp():.2f} s")

    clock = Clock()
    app.addListener(clock)
    return clock
