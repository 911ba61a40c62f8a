"""Calls every function of every module and every callable of every package wrongly, in seven ways.

python -m fuzz.wrong_calls prints a line for each crash, hang and message that names neither function nor argument.
"""

from __future__ import annotations

import importlib
import os
import signal
import sys
from collections.abc import Callable, Iterator

import _hyx_proxy
from _hyx_proxy import Handle

from fuzz.interface import FAMILY, PACKAGES

SECONDS = 120  # for a batch
BATCH = 40


class Foreign:
    pass


def wrong_arguments() -> dict[str, list[tuple[tuple, dict]]]:
    """The ways by name: each some positional arguments with keywords."""
    import hyx
    import osg

    counts = range(1, 9)
    return {
        "too many": [((Foreign(),) * 40, {})],
        "foreign objects": [((Foreign(),) * count, {}) for count in counts],
        "None": [((None,) * count, {}) for count in counts],
        "objects of other classes": [((value,) * n, {}) for n in counts for value in (osg.Group(), hyx.Vec3())],
        "numbers out of range": [((n,) * count, {}) for count in counts for n in (2**70, -(2**70), float("nan"))],
        "sequences": [
            ((value,) * count, {}) for count in counts for value in ([], (1, 2), ["x"] * 3, b"\xff", "\ud800")
        ],
        "unknown keywords": [((), {"nothing": 1}), ((None,), {"nothing": Foreign()})],
    }


def callables() -> Iterator[tuple[str, Callable]]:
    for module in FAMILY:
        for row in _hyx_proxy.describe(importlib.import_module(module)):
            yield f"{module}.{row['name']}", getattr(importlib.import_module(module), row["name"])
    for package in map(importlib.import_module, PACKAGES):
        yield from members(package.__name__, package)
        for name, value in vars(package).items():
            if isinstance(value, type) and issubclass(value, Handle) and value.__module__ == package.__name__:
                yield f"{package.__name__}.{name}", value
                yield from members(f"{package.__name__}.{name}", value)


def members(owner: str, value: object) -> Iterator[tuple[str, Callable]]:
    for name, operation in vars(value).items():
        if isinstance(operation, (_hyx_proxy.method, _hyx_proxy.function)):
            yield f"{owner}.{name}", operation
        elif isinstance(operation, _hyx_proxy.member):
            yield f"{owner}.{name}", operation.__set__


def call_wrongly(name: str, function: Callable, ways: dict[str, list[tuple[tuple, dict]]]) -> int:
    """Prints what a reader could not find the fault by; returns the number of calls."""
    own = getattr(function, "__name__", name).lower()
    # What is wrong inside of an argument, such as an item that is no number, is told as Python tells it.
    clear = {"argument", "expected", "object", "number", own, *own.split("_")}
    calls = 0
    for way, examples in ways.items():
        for arguments, keywords in examples:
            calls += 1
            try:
                function(*arguments, **keywords)
            except (TypeError, OverflowError) as error:
                text = str(error)
                if not any(word in text.lower() for word in clear):
                    print(f"UNCLEAR {name}, {way}: {text!r}", flush=True)
            except SystemError as error:
                print(f"UNCLEAR {name}, {way}: {error!r}", flush=True)
            except Exception:  # noqa: BLE001, S110 - what the library refuses by itself
                pass
    return calls


def run_batch(batch: list[tuple[str, Callable]]) -> bool:
    """In a process of its own. False where that ended otherwise than by itself."""
    sys.stdout.flush()
    child = os.fork()
    if child == 0:
        signal.signal(signal.SIGALRM, signal.SIG_DFL)
        signal.alarm(SECONDS)
        os.dup2(os.open(os.devnull, os.O_WRONLY), 2)
        ways = wrong_arguments()
        for name, function in batch:
            call_wrongly(name, function, ways)
        sys.stdout.flush()
        os._exit(0)
    return os.waitpid(child, 0)[1] == 0


def main() -> None:
    importlib.import_module("hyxOSG")
    every = list({id(function): (name, function) for name, function in callables()}.values())
    every.sort(key=lambda one: one[0].endswith("_swigregister"))  # what they register is no class of use to others
    for start in range(0, len(every), BATCH):
        batch = every[start : start + BATCH]
        if not run_batch(batch):
            for one in batch:
                if not run_batch([one]):
                    print(f"CRASH OR HANG {one[0]}", flush=True)
    calls = len(every) * sum(map(len, wrong_arguments().values()))
    print(f"CALLED {len(every)} callables, {calls} calls")


if __name__ == "__main__":
    main()
