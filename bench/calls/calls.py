"""Calls through rows against hand-written functions of the same convention and checks, in one interleaved run.

    tools/bench calls

Prints nanoseconds a call (the best of many short rounds that alternate between the two) and their ratio. Then the same
of pointer results: the proxies', which find the object that Python sees already, against a flat function's, which makes
a new one each time.
"""

import timeit

import _hyxOSG
import _osg
import hand_written
import hyx
import hyxOSG
import osg

ROUNDS, CALLS = 60, 20_000
REGISTRY_LIMIT = 1.15


def measure(function_name, arguments):
    statement, value = ("f(*a)", arguments) if len(arguments) != 1 else ("f(a)", arguments[0])
    return best([(statement, {"f": getattr(module, function_name), "a": value}) for module in (_hyxOSG, hand_written)])


def best(statements):
    """Of each statement with its names, nanoseconds."""
    timers = [timeit.Timer(statement, globals=names) for statement, names in statements]
    fastest = [float("inf")] * len(timers)
    for _ in range(ROUNDS):
        for index, timer in enumerate(timers):
            fastest[index] = min(fastest[index], timer.timeit(CALLS) / CALLS * 1e9)
    return fastest


def pointer_results():
    """label, nanoseconds of the proxy and of the flat function"""
    group, held = osg.Group(), osg.Group()
    group.addChild(held)
    group.addChild(osg.Group())
    names = {"group": group, "flat": _osg.Group_getChild}
    for label, place in (("pointer result, held by Python", 0), ("pointer result, new to Python", 1)):
        yield label, *best([(f"group.getChild({place})", names), (f"flat(group, {place})", names)])


def wrong_argument():
    timer = timeit.Timer("try:\n f(1)\nexcept TypeError: pass", globals={"f": _hyxOSG.GeometryNode_getAutoRemove})
    return min(timer.repeat(ROUNDS, CALLS)) / CALLS * 1e9


def main():
    node, move, point = hyxOSG.GeometryNode(), hyxOSG.Transform(), hyx.Vec3(1, 2, 3)
    print(f"{'operation':34} {'row':>7} {'hand':>7} {'ratio':>6}")
    for label, name, arguments in [
        ("getter, handle", "GeometryNode_getAutoRemove", (node.this,)),
        ("getter, proxy", "GeometryNode_getAutoRemove", (node,)),
        ("bool setter, handle", "GeometryNode_setAutoRemove", (node.this, True)),
        ("vector setter, handles", "Transform_setTranslate", (move.this, point.this)),
        ("vector setter, proxies", "Transform_setTranslate", (move, point)),
    ]:
        row, hand = measure(name, arguments)
        print(f"{label:34} {row:7.1f} {hand:7.1f} {row / hand:6.2f}")
    print(f"\n{'':34} {'proxy':>7} {'flat':>7} {'ratio':>6}  (at most {REGISTRY_LIMIT})")
    for label, proxy, flat in pointer_results():
        print(f"{label:34} {proxy:7.1f} {flat:7.1f} {proxy / flat:6.2f}")
    print(f"\n{'wrong argument, caught':34} {wrong_argument():7.1f}")


if __name__ == "__main__":
    main()
