"""Files that are there whole or not at all."""

from __future__ import annotations

import os
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path


@contextmanager
def whole_file(path: Path) -> Iterator[Path]:
    """A place beside `path` to write to; it becomes `path` where the block ends without an error. A reader finds the
    whole file or the one before, also when this process dies or the disk is full."""
    other = path.with_name(f".{os.getpid()}.{path.name}")
    try:
        yield other
        other.replace(path)
    finally:
        other.unlink(missing_ok=True)
