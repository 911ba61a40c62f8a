"""Files that are there whole or not at all."""

from __future__ import annotations

import errno
import itertools
import os
from contextlib import contextmanager, suppress

TYPE_CHECKING = False  # for checkers only: importing `typing` would cost more than the whole package
if TYPE_CHECKING:
    from collections.abc import Iterator
    from pathlib import Path

_numbers = itertools.count(1)


@contextmanager
def whole_file(path: str | os.PathLike[str], lasting: bool = True) -> Iterator[Path]:
    """A place beside `path` to write to; it becomes `path` where the block ends without an error. A reader finds the
    whole file or the one before, also when this process dies or the disk is full, and where `lasting` when the machine
    does: waiting for the disk takes some milliseconds. OSError names `path`."""
    from pathlib import Path

    target = Path(path)
    if not target.name:
        raise FileNotFoundError(errno.ENOENT, os.strerror(errno.ENOENT), str(path))
    # A short name, so that it fits where the other does.
    place = target.with_name(f".hyx-{os.getpid()}-p{next(_numbers)}{target.suffix}")
    try:
        yield place
        if lasting:
            with open(place, "rb") as written:
                os.fsync(written.fileno())
        place.replace(target)
    except OSError as error:
        error.filename = str(target)
        raise
    finally:
        with suppress(OSError):  # nothing is there where nothing could be written
            place.unlink()
