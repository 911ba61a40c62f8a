"""Writes the Python packages into the folder where the built extension modules are."""

from __future__ import annotations

import argparse
import importlib
import importlib.util
import sys
from pathlib import Path


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument(
        "--import-root", type=Path, required=True, help="where the extension modules are and the packages go"
    )
    parser.add_argument("--source", type=Path, required=True, help="the root of the source tree")
    parser.add_argument("--description", type=Path, required=True, help="what the headers declare")
    parser.add_argument("--version", required=True, help="what the packages call their version")
    arguments = parser.parse_args()
    sys.path.insert(0, str(arguments.import_root))

    from . import interface
    from .packages import write_packages

    modules = {name: importlib.import_module(name) for name in interface.MODULES if importlib.util.find_spec(name)}
    write_packages(modules, arguments.source, arguments.import_root, arguments.description, arguments.version)


if __name__ == "__main__":
    main()
