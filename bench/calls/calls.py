"""Calls through rows against hand-written functions of the same convention and checks, in one interleaved run.

    tools/bench calls

Prints nanoseconds a call (the best of many short rounds that alternate between the two) and their ratio.
"""

import timeit

import _hyxOSG
import hand_written
import hyx
import hyxOSG

ROUNDS, CALLS = 60, 20_000


def measure(function_name, arguments):
    timers = [
        timeit.Timer(
            "f(*a)" if len(arguments) != 1 else "f(a)",
            globals={"f": getattr(module, function_name), "a": arguments if len(arguments) != 1 else arguments[0]},
        )
        for module in (_hyxOSG, hand_written)
    ]
    best = [float("inf")] * 2
    for _ in range(ROUNDS):
        for index, timer in enumerate(timers):
            best[index] = min(best[index], timer.timeit(CALLS) / CALLS * 1e9)
    return best


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
    print(f"{'wrong argument, caught':34} {wrong_argument():7.1f}")


if __name__ == "__main__":
    main()
