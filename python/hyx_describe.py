"""Prints the functions of the extension modules as JSON: names, forms, types, defaults, results.

python -m hyx_describe [MODULE ...]
"""

import importlib
import importlib.util
import json
import signal
import sys

MODULES = ("_hyx", "_hyxCollide", "_hyxSDK", "_hyxModel", "_osg", "_hyxOSG")


def main() -> None:
    import _hyx_proxy

    names = sys.argv[1:] or [name for name in MODULES if importlib.util.find_spec(name)]
    described = {name: _hyx_proxy.describe(importlib.import_module(name)) for name in names}
    json.dump(described, sys.stdout, indent=1)
    print()


if __name__ == "__main__":
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # a reader such as `head` may have enough
    main()
