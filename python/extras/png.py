"""Pictures as the bytes of PNG files."""

from __future__ import annotations

import struct
import zlib

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any

_COLOR_TYPES = {1: 0, 3: 2, 4: 6}  # by the number of channels


def png_bytes(pixels: Any) -> bytes:
    """`pixels` is uint8 of shape (height, width, channels) or (height, width), row 0 the upper one."""
    import numpy

    rows = numpy.ascontiguousarray(pixels, dtype=numpy.uint8)
    rows = rows.reshape(rows.shape[0], rows.shape[1], -1)
    height, width, channels = rows.shape
    lines = numpy.zeros((height, 1 + width * channels), numpy.uint8)  # each line begins with its filter, none
    lines[:, 1:] = rows.reshape(height, -1)

    def chunk(kind: bytes, data: bytes) -> bytes:
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    head = struct.pack(">IIBBBBB", width, height, 8, _COLOR_TYPES[channels], 0, 0, 0)
    body = zlib.compress(lines.tobytes(), 6)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", body) + chunk(b"IEND", b"")
