"""Proxy methods against the same operations bound with nanobind, in one interleaved run.

    tools/bench proxy_calls

Prints nanoseconds a call, the best of many short rounds that alternate between the two, and their ratio.
"""

import sys
import timeit

import hyx
import hyxOSG
import nanobind_contender as contender
import osg

ROUNDS, CALLS = 400, 4_000


def cases():
    """name, (statement, names) of the proxies, (statement, names) of the contender, largest allowed ratio"""
    node, other = hyxOSG.GeometryNode(), contender.make_geometry_node()
    move, other_move = hyxOSG.Transform(), contender.make_transform()
    group, other_group = osg.Group(), contender.make_group()
    texture, other_texture = hyxOSG.Texture2D(None), contender.make_texture()
    point, other_point = hyx.Vec3(1, 2, 3), contender.Vec3(1, 2, 3)

    def pair(statement, ours, theirs):
        return (statement, ours), (statement, theirs)

    def texture_pair(arguments):
        ours = {"f": hyxOSG.setTexture, "n": group, "t": texture}
        theirs = {"f": contender.setTexture, "n": other_group, "t": other_texture}
        return pair(f"f({arguments})", ours, theirs)

    yield "getter", *pair("o.getAutoRemove()", {"o": node}, {"o": other}), 1.2
    yield "bool setter", *pair("o.setAutoRemove(True)", {"o": node}, {"o": other}), 1.2
    yield (
        "vector argument",
        *pair("o.setTranslate(p)", {"o": move, "p": point}, {"o": other_move, "p": other_point}),
        1.2,
    )
    yield "overload, first of 26", *texture_pair('None, "x"'), 1.2
    yield "overload, middle of 26", *texture_pair("n, t, True, 0"), 1.0
    yield "overload, last of 26", *texture_pair("n, t, True, 0, 1.0, 1.0"), 1.0


def measure(ours, theirs):
    timers = [timeit.Timer(statement, globals=names) for statement, names in (ours, theirs)]
    best = [float("inf"), float("inf")]
    for _ in range(ROUNDS):
        for index, timer in enumerate(timers):
            best[index] = min(best[index], timer.timeit(CALLS) / CALLS * 1e9)
    return best


def main():
    failed = False
    print(f"{'operation':24} {'proxy':>8} {'nanobind':>9} {'ratio':>6}")
    for name, ours, theirs, limit in cases():
        mine, their = measure(ours, theirs)
        verdict = (
            "" if limit is None else f"  (at most {limit})" if mine <= limit * their else f"  MISSED: at most {limit}"
        )
        failed |= "MISSED" in verdict
        print(f"{name:24} {mine:8.1f} {their:9.1f} {mine / their:6.2f}{verdict}")
    sys.exit(failed)


if __name__ == "__main__":
    main()
