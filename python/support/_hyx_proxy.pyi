"""What proxy classes are made of."""

from types import ModuleType
from typing import Any

class ArgumentError(ValueError, RuntimeError):
    """A value that the native side refuses: a ValueError, and a RuntimeError as the flat functions raise it."""

class PlaceError(IndexError, RuntimeError):
    """A place where the native side has nothing: an IndexError, and a RuntimeError as the flat functions raise it."""

class Handle:
    """The base of every proxy class: holds one native object."""

    this: Any
    thisown: bool

class Buffer(Handle):
    """The base of the proxy classes whose objects are arrays of numbers."""

class method:
    def __init__(
        self,
        function: Any,
        signature: str | None = None,
        doc: str | None = None,
        parameters: tuple[str, ...] | None = None,
    ) -> None: ...

class function:
    def __init__(
        self,
        function: Any,
        signature: str | None = None,
        doc: str | None = None,
        parameters: tuple[str, ...] | None = None,
    ) -> None: ...
    def __call__(self, *args: Any) -> Any: ...

class constructor:
    def __init__(
        self,
        new: Any,
        attach: Any,
        signature: str | None = None,
        doc: str | None = None,
        parameters: tuple[str, ...] | None = None,
        with_director: bool = False,
    ) -> None: ...

class member:
    def __init__(self, get: Any, set: Any = None, doc: str | None = None, of_class: bool = False) -> None: ...

def let_go(proxy: Handle, /) -> None:
    """Takes the native object from a proxy, as if that ended: the last proxy ends the object."""

def release(object: Any, /) -> None:
    """The destroy function of classes without one: drops the constructor's reference."""

def describe(module: ModuleType, /) -> list[dict[str, Any]]:
    """The functions of an extension module of the family, with their forms."""
