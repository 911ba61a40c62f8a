"""What the stubs call the things that calls take beside the classes of the packages; nothing of it runs."""

from collections.abc import Iterable, Sequence
from typing import Any, Protocol, TypeAlias

import numpy
from hyxRender import Color
from numpy.typing import NDArray
from typing_extensions import Self as Self

class Array(Protocol):
    """An array of NumPy's, or of one of its kin."""

    @property
    def __array_interface__(self) -> Any: ...

class Pointer(Protocol):
    """A native object without a class in Python: its address, for calls that take one of its type."""

    def __int__(self) -> int: ...

Row: TypeAlias = Sequence[float] | Array | Color  # a vector, a colour, ...
Rows: TypeAlias = Iterable[Iterable[float]] | Array  # a row for each of many
Values: TypeAlias = Iterable[float] | Array  # a number for each of many
Doubles: TypeAlias = NDArray[numpy.float64]
Floats: TypeAlias = NDArray[numpy.float32]
Indices: TypeAlias = NDArray[numpy.uint32]
Bytes: TypeAlias = NDArray[numpy.uint8]
Table: TypeAlias = NDArray[numpy.void]  # a row of named fields each
