"""Functions of a script's own files cross to workers and into records with their code: nobody there has the files."""

from __future__ import annotations

import contextlib
import sys
import sysconfig
from collections.abc import Callable, Iterator
from types import ModuleType
from typing import Any

import cloudpickle


@contextlib.contextmanager
def crossing_by_value(*functions: Callable[..., Any] | None) -> Iterator[None]:
    modules = {sys.modules[name] for function in functions if (name := getattr(function, "__module__", None))}
    own = [module for module in modules if module.__name__ != "__main__" and not _is_installed(module)]
    for module in own:
        cloudpickle.register_pickle_by_value(module)
    try:
        yield
    finally:
        for module in own:
            cloudpickle.unregister_pickle_by_value(module)


def _is_installed(module: ModuleType) -> bool:
    file = getattr(module, "__file__", None)
    paths = sysconfig.get_paths()
    return file is None or file.startswith((paths["stdlib"], paths["purelib"], paths["platlib"]))
