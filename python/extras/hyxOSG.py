"""What the visualization library's classes do beyond their native operations."""

from __future__ import annotations

from collections.abc import Iterator
from types import TracebackType
from typing import Any


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


class ExampleApplicationListener:
    def __disown__(self) -> None:
        """Lets the native listener keep this object alive."""
        import _hyxOSG

        _hyxOSG.disown_ExampleApplicationListener(self)


class GuiEventListener:
    def __disown__(self) -> None:
        """Lets the native listener keep this object alive."""
        import _hyxOSG

        _hyxOSG.disown_GuiEventListener(self)


class LidarOutputRendererColorFunctionCallback:
    def __disown__(self) -> None:
        """Lets the native callback keep this object alive; Python no longer deletes it."""
        import _hyxOSG

        self.this.disown()  # type: ignore[attr-defined]
        _hyxOSG.disown_LidarOutputRendererColorFunctionCallback(self)
