"""An application's window in a notebook: a widget that shows it live and takes the mouse and the keys."""

from __future__ import annotations

import functools

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

    import hyxOSG

    from .hints import Bytes

FRAME_RATE = 30  # pictures a second, at most: what the browser does not keep up with is left out
_BUTTONS = {1: 1, 2: 3, 3: 2}  # the widget's left, right and middle as the window's
_MODIFIERS = {"Shift": 1, "Control": 4, "Alt": 16, "Meta": 64}
_SCROLL_UP, _SCROLL_DOWN = 3, 4
_KEYS = {
    "Escape": 0xFF1B,
    "ArrowLeft": 0xFF51,
    "ArrowRight": 0xFF53,
    "PageUp": 0xFF55,
    "PageDown": 0xFF56,
    "Shift": 0xFFE1,
    "Control": 0xFFE3,
    "Alt": 0xFFE9,
    **{f"F{number}": 0xFFBD + number for number in range(1, 13)},
}


def _follow(application: hyxOSG.ExampleApplication, kind: str, event: dict[str, Any], scale: float) -> None:
    """Puts an event of the widget, in pixels of the page, into the window's own queue."""
    queue = application.getCamera().getGraphicsWindow().getEventQueue()  # type: ignore[union-attr]
    if queue is None:
        return
    queue.setModKeyMask(sum(_MODIFIERS.get(name, 0) for name in event.get("modifiers", ())))
    place = scale * event.get("x", 0), scale * event.get("y", 0)
    if kind == "pointer_move":
        queue.mouseMotion(*place)
    elif kind in ("pointer_down", "pointer_up") and event.get("button") in _BUTTONS:
        press = queue.mouseButtonPress if kind == "pointer_down" else queue.mouseButtonRelease
        press(*place, _BUTTONS[event["button"]])
    elif kind == "wheel":
        queue.mouseScroll(_SCROLL_UP if event["dy"] < 0 else _SCROLL_DOWN)
    elif kind in ("key_down", "key_up"):
        name = event["key"]
        if key := _KEYS.get(name) or (ord(name) if len(name) == 1 else 0):
            (queue.keyPress if kind == "key_down" else queue.keyRelease)(key)


@functools.cache
def _view_class() -> type[Any]:
    """Made when it is first needed: the widget's package is optional."""
    try:
        from jupyter_rfb import RemoteFrameBuffer  # type: ignore
    except ImportError as error:
        raise ImportError("a live view needs the package jupyter_rfb: pip install jupyter_rfb") from error

    class LiveView(RemoteFrameBuffer):  # type: ignore[misc]
        """Steps and draws an application while it is seen, `close` ends that. The application lives on."""

        def __init__(self, application: hyxOSG.ExampleApplication) -> None:
            super().__init__()
            self._application: hyxOSG.ExampleApplication | None = application
            self._shown: Bytes | None = None
            self._scale = 1.0
            if application.getViewer() is None:
                application.initGraphics()
            if not application.getRealTimeSync():
                application.setRealTimeSync(True)
            height, width = application.render().shape[:2]
            self.css_width, self.css_height = f"{width}px", f"{height}px"
            self.request_draw()

        def get_frame(self) -> Bytes | None:
            """A turn of the loop; None where the picture is as it was. What goes wrong ends the live view."""
            import numpy

            application = self._application
            if application is None or not hasattr(application, "this") or application.done():
                return None
            application.step()
            picture = application.pixels
            same = self._shown is not None and numpy.array_equal(picture, self._shown)
            self._shown = picture
            import asyncio  # of the notebook, which has loaded it

            asyncio.get_running_loop().call_later(1 / FRAME_RATE, self.request_draw)
            return None if same else picture

        def handle_event(self, event: dict[str, Any]) -> None:
            kind = event["type"]
            if kind == "close":
                self._application = None
            elif self._application is None or not hasattr(self._application, "this"):
                return
            elif kind == "resize":
                self._resize(self._application, event)
            else:
                _follow(self._application, kind, event, self._scale)

        def _resize(self, application: hyxOSG.ExampleApplication, event: dict[str, Any]) -> None:
            width, height = (max(1, round(event[side])) for side in ("width", "height"))
            picture = application.pixels
            if (height, width) != picture.shape[:2]:
                application.setWindowRectangle(0, 0, width, height)
                picture = application.render()
            self._scale = picture.shape[1] / width  # 1, where the window may be resized

    return LiveView


def live_view(application: hyxOSG.ExampleApplication) -> Any:
    """The application's live view: see `ExampleApplication.liveView`."""
    return _view_class()(application)
