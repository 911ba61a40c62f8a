"""Pictures of high range as OpenEXR files."""

from __future__ import annotations

import errno
import os

from .whole_files import whole_file

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any


def write_exr(path: str | os.PathLike[str], layers: dict[str, Any], header: dict[str, Any]) -> None:
    """Writes layers of (height, width): float32 and uint32 as they are; "RGB", (height, width, 3) of uint8 in sRGB, in
    linear light as the format has it. Matrices in the header are (3, 3) or (4, 4)."""
    import numpy

    try:
        import OpenEXR  # type: ignore[import-not-found]
    except ImportError as error:
        raise ImportError("EXR files need the package OpenEXR: pip install OpenEXR") from error
    if not layers:
        raise ValueError("the frame has no channels to write")
    layers = {name: numpy.ascontiguousarray(values) for name, values in layers.items()}
    if "RGB" in layers:
        if layers["RGB"].dtype != numpy.uint8:
            raise ValueError("the colours of a frame are uint8")
        layers["RGB"] = _linear(layers["RGB"]).astype(numpy.float16)
    kind = {"compression": OpenEXR.ZIP_COMPRESSION, "type": OpenEXR.scanlineimage}
    with whole_file(path) as place:
        try:
            OpenEXR.File({**kind, **header}, layers).write(str(place))
        except RuntimeError as error:
            raise _as_file_error(error) from error


def _linear(colors: Any) -> Any:
    """sRGB of 8 bits as light from 0 to 1 (IEC 61966-2-1)."""
    import numpy

    levels = numpy.arange(256) / 255
    return numpy.where(levels <= 0.04045, levels / 12.92, ((levels + 0.055) / 1.055) ** 2.4)[colors]


def _as_file_error(error: RuntimeError) -> OSError:
    """The library tells the system's reason in words only."""
    numbers = (number for number in errno.errorcode if os.strerror(number) in str(error))
    number = next(numbers, errno.EIO)
    return OSError(number, os.strerror(number))
