"""Calls every getter of all modules and watches the hold on the type table: python shared_results.py PACKAGE

PACKAGE is imported before all others, so that each module in turn is the one that publishes the table. Prints a line
per call that does not give back what it took, then the functions whose results kept a native object alive.
"""

import faulthandler
import importlib
import os
import re
import sys

faulthandler.enable()
first, *others = sys.argv[1:]
importlib.import_module(first)
capsule = sys.modules["swig_runtime_data4"].type_pointer_capsule
for other in others:
    importlib.import_module(other)

from every_function import DESCRIBED, Maker, Unavailable  # noqa: E402

GETTER = re.compile(r"(^|_)(get|as|find|front|back|pop|begin|iterator|copy|value|__getitem__)([A-Z_]|$)")
FILLER = re.compile(r"_(add|insert|append|push_back|set|attach)([A-Z]|$)")
# They wait for a peer, or want a window.
SEPARATE = re.compile("ExampleApplication_|Viewer_(run|frame|realize)|CoSimulation")


def fill(module, functions, maker):
    """Gives containers and owners something to hand out."""
    for function in functions:
        for form in function["forms"]:
            if not FILLER.search(function["name"]) or SEPARATE.search(function["name"]):
                continue
            # A class is not put into itself, nor numbers where they change sizes.
            types = [parameter["type"].rstrip(" *&").removesuffix(" const") for parameter in form["parameters"]]
            if not any(kind.startswith(("osg", "hyx")) and kind != form["class"] for kind in types):
                continue
            try:
                getattr(module, function["name"])(*maker.arguments(form))
            except Exception:  # noqa: BLE001 - what cannot be filled stays empty
                continue


def is_owner(result):
    handle = getattr(result, "this", result)
    return hasattr(handle, "own") and handle.own()


def watch(module, function, form, maker):
    """Whether one call gave an owner."""
    try:
        arguments = maker.arguments(form)
    except Unavailable:
        return False
    arguments = [0 if type(argument) is int else argument for argument in arguments]
    call = getattr(module, function["name"])
    before = sys.getrefcount(capsule)
    try:
        result = call(*arguments)
    except Exception:  # noqa: BLE001 - a refusal gives nothing
        result = None
    owner = is_owner(result)
    del result
    after = sys.getrefcount(capsule)
    if after != before:
        print(f"SURPRISE {function['name']}: {after - before:+} holds on the type table")
    return owner


def main():
    maker = Maker()
    owners = set()
    for name, functions in DESCRIBED.items():
        fill(importlib.import_module(name), functions, maker)
    for name, functions in DESCRIBED.items():
        module = importlib.import_module(name)
        for function in functions:
            if function["role"] not in ("function", "member-get") or SEPARATE.search(function["name"]):
                continue
            if function["role"] == "function" and not GETTER.search(function["name"]):
                continue
            for form in function["forms"]:
                if watch(module, function, form, maker):
                    owners.add(function["name"])
    print("OWNERS", *sorted(owners))
    print("END")
    sys.stdout.flush()
    os._exit(0)


if __name__ == "__main__":
    main()
