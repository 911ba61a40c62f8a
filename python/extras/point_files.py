"""Files of measured points: PLY, PCD, LAS and NPZ, each with all that is known of a point."""

from __future__ import annotations

import math
import struct

from .whole_files import whole_file

TYPE_CHECKING = False
if TYPE_CHECKING:
    import os
    from typing import Any, BinaryIO

# As modules/hyxSensor/lidar.cpp lays it out.
CLOUD = [
    *((name, "<f8") for name in ("x", "y", "z", "time")),
    ("intensity", "<f4"),
    ("distance", "<f4"),
    ("identity", "<u4"),
    ("ring", "<u2"),
    ("return", "u1"),
    ("returns", "u1"),
]
_PLY_TYPES = {"f4": "float", "f8": "double", "u1": "uchar", "u2": "uint16", "i1": "char", "i2": "short", "i4": "int"}
_LAS_TYPES = {"u1": 1, "i1": 2, "u2": 3, "i2": 4, "u4": 5, "i4": 6, "u8": 7, "i8": 8, "f4": 9, "f8": 10}
_LAS_POINT = [  # point record format 6 of LAS 1.4
    *((axis, "<i4") for axis in "XYZ"),
    ("intensity", "<u2"),
    *((name, "u1") for name in ("returns", "flags", "classification", "user_data")),
    ("scan_angle", "<i2"),
    ("source", "<u2"),
    ("time", "<f8"),
]
_LAS_HEADER, _LAS_RECORD, _LAS_EXTRA = 375, 54, 192  # bytes
_FINEST = 1e-6  # metres, in LAS files
_LONGEST_NAME = 31  # letters


def save_points(path: str | os.PathLike[str], points: Any, single: bool = False) -> None:
    """Writes a structured array with the fields x, y and z, such as `Lidar.cloud`, with all its fields.

    The ending chooses the format: `.ply` and `.pcd` (binary), `.las` (1.4, points of format 6; coordinates in steps of
    a micrometre or, where that does not reach, the next power of ten; intensities of 0 to 1 as 0 to 65535; fields
    that LAS has no place for as extra bytes), `.npz`. With `single` the coordinates have single precision, which some
    readers of PCD insist on. ValueError for other endings and fields that are no numbers; OSError as `open` raises it.
    """
    from pathlib import Path

    import numpy

    path, points = Path(path), numpy.asarray(points)
    if not points.dtype.names or not set("xyz") <= set(points.dtype.names):
        raise ValueError("points are a structured array with the fields x, y and z")
    write = {".ply": _write_ply, ".pcd": _write_pcd, ".las": _write_las, ".npz": _write_npz}.get(path.suffix.lower())
    if write is None:
        raise ValueError(f"points are written as .ply, .pcd, .las or .npz, not as {path.suffix!r}")
    if write is not _write_npz:
        _require_words(points.dtype.names)
    points = _packed(points.ravel(), single)
    with whole_file(path) as place, open(place, "wb") as file:
        write(file, points)


def _require_words(names: tuple[str, ...]) -> None:
    """Files of points keep names as words between spaces."""
    for name in names:
        if not (name.isascii() and name.isprintable() and " " not in name and 0 < len(name) <= _LONGEST_NAME):
            raise ValueError(f"{name!r} is no name of a field: use up to {_LONGEST_NAME} ASCII letters without spaces")


def _packed(points: Any, single: bool) -> Any:
    """Little-endian without gaps."""
    import numpy

    kinds = []
    for name in points.dtype.names:
        kind = points.dtype[name].newbyteorder("<")
        if kind.shape or kind.str[1:] not in _LAS_TYPES:
            raise ValueError(f"the field {name!r} is no number that files of points can hold")
        kinds.append((name, "<f4" if single and name in "xyz" else kind))
    packed = numpy.empty(len(points), kinds)
    for name in points.dtype.names:
        packed[name] = points[name]
    return packed


def _fields(points: Any) -> list[tuple[str, str]]:
    return [(name, points.dtype[name].str[1:]) for name in points.dtype.names]


def _write_ply(file: BinaryIO, points: Any) -> None:
    lines = ["ply", "format binary_little_endian 1.0", f"element vertex {len(points)}"]
    for name, kind in _fields(points):
        if kind == "u4":  # many readers know no whole numbers of 32 bits without a sign
            kind = "i4" if points[name].max(initial=0) < 2**31 else "none"
        if kind not in _PLY_TYPES:
            raise ValueError(f"the field {name!r} has numbers that PLY cannot hold: use 32 bits")
        lines.append(f"property {_PLY_TYPES[kind]} {name}")
    file.write("\n".join([*lines, "end_header", ""]).encode())
    file.write(points.tobytes())


def _write_pcd(file: BinaryIO, points: Any) -> None:
    fields = _fields(points)
    columns = {
        "VERSION": ["0.7"],
        "FIELDS": [name for name, _ in fields],
        "SIZE": [kind[1] for _, kind in fields],
        "TYPE": [kind[0].upper() for _, kind in fields],
        "COUNT": ["1"] * len(fields),
        "WIDTH": [str(len(points))],
        "HEIGHT": ["1"],
        "VIEWPOINT": "0 0 0 1 0 0 0".split(),
        "POINTS": [str(len(points))],
        "DATA": ["binary"],
    }
    file.write("".join(f"{key} {' '.join(words)}\n" for key, words in columns.items()).encode())
    file.write(points.tobytes())


def _write_npz(file: BinaryIO, points: Any) -> None:
    import numpy

    numpy.savez_compressed(file, points=points)


def _write_las(file: BinaryIO, points: Any) -> None:
    import numpy

    names = points.dtype.names
    extra = [(name, kind) for name, kind in _fields(points) if name not in ("return", "returns", "time", *"xyz")]
    records = numpy.zeros(len(points), [*_LAS_POINT, *(("extra " + name, "<" + kind) for name, kind in extra)])
    low, high, scale, offset = [], [], [], []
    for axis in "xyz":
        values = points[axis].astype(float)
        low.append(float(values.min(initial=math.inf)) if len(values) else 0.0)
        high.append(float(values.max(initial=-math.inf)) if len(values) else 0.0)
        if not math.isfinite(high[-1] - low[-1]):
            raise ValueError("coordinates of points must be finite")
        offset.append(float(round((low[-1] + high[-1]) / 2)))
        scale.append(max(_FINEST, 10.0 ** math.ceil(math.log10(max(high[-1] - low[-1], 1e-9) / 2**31))))
        records[axis.upper()] = numpy.rint((values - offset[-1]) / scale[-1])
    if "intensity" in names:
        records["intensity"] = numpy.rint(65535 * numpy.clip(numpy.nan_to_num(points["intensity"].astype(float)), 0, 1))
    first, number = (_return_numbers(points, name) for name in ("return", "returns"))
    records["returns"] = first | number << 4
    if "time" in names:
        records["time"] = points["time"]
    for name, _ in extra:
        records["extra " + name] = points[name]
    by_return = [int((first == i + 1).sum()) for i in range(15)]
    file.write(_las_header(records, len(extra), scale, offset, low, high, by_return))
    file.write(_las_extra_bytes(extra))
    file.write(records.tobytes())


def _return_numbers(points: Any, name: str) -> Any:
    """Of a pulse, from 1, which LAS keeps in four bits. ValueError for more."""
    import numpy

    if name not in points.dtype.names:
        return numpy.ones(len(points), "u1")
    if not ((points[name] >= 0) & (points[name] <= 15)).all():
        raise ValueError(f"the field {name!r} has numbers that LAS cannot hold: it has 15 returns")
    return points[name].astype("u1")


def _las_header(
    records: Any,
    extra: int,
    scale: list[float],
    offset: list[float],
    low: list[float],
    high: list[float],
    by_return: list[int],
) -> bytes:
    variable = _LAS_RECORD + _LAS_EXTRA * extra if extra else 0
    header = struct.pack("<4sHH16xBB32s32sHH", b"LASF", 0, 16, 1, 4, b"simulation", b"hyxOSG", 1, 1)
    header += struct.pack("<HII", _LAS_HEADER, _LAS_HEADER + variable, bool(extra))
    header += struct.pack("<BH24x", 6, records.dtype.itemsize)
    bounds = (value for pair in zip(high, low) for value in pair)
    header += struct.pack("<12d", *scale, *offset, *bounds)
    return header + struct.pack("<QQIQ15Q", 0, 0, 0, len(records), *by_return)


def _las_extra_bytes(extra: list[tuple[str, str]]) -> bytes:
    """The record that describes the extra bytes of each point."""
    if not extra:
        return b""
    record = struct.pack("<H16sHH32s", 0, b"LASF_Spec", 4, _LAS_EXTRA * len(extra), b"fields of the points")
    for name, kind in extra:
        own = "exact intensity" if name == "intensity" else name  # LAS has one of its own
        record += struct.pack("<2xBB32s4x120x32s", _LAS_TYPES[kind], 0, own.encode()[:31], b"")
    return record
