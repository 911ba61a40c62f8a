"""Calls of the directors into Python against hand-written overrides that call the same methods with the same
arguments, in one interleaved run.

    tools/bench callbacks

Prints nanoseconds a call, the best of many short rounds that alternate between the two, and their ratio.
"""

import sys

import hand_written_callbacks as hand_written
import hyx
import hyxOSG
import osg

ROUNDS, CALLS, LIMIT = 400, 2_000, 1.3


class Input(hyxOSG.GuiEventListener):
    def update(self, x, y):
        pass

    def rebind(self):
        pass

    def mouse(self, button, state, x, y):
        return True

    def addObject(self, thing, replace):
        pass

    def setInverseTransform(self, matrix):
        pass


class Frames(hyxOSG.ExampleApplicationListener):
    def preFrame(self, app):
        pass


class Colors(hyxOSG.LidarOutputRendererColorFunctionCallback):
    red = osg.Vec4(1, 0, 0, 1)

    def getLidarPointColor(self, intensity):
        return self.red


CASES = [
    (Input, "input", "rebind"),
    (Input, "input", "update"),
    (Input, "input", "mouse"),
    (Input, "input", "addObject"),
    (Input, "input", "setInverseTransform"),
    (Frames, "frames", "preFrame"),
    (Colors, "colors", "getLidarPointColor"),
]


def measure(cls, kind, method, thing):
    ours, theirs = cls(), cls()
    addresses = int(ours.this), hand_written.make(kind, theirs)
    best = [float("inf"), float("inf")]
    for _ in range(ROUNDS):
        for index, address in enumerate(addresses):
            best[index] = min(best[index], hand_written.measure(kind, address, method, CALLS, int(thing.this)))
    return best


def main():
    things = {"addObject": hyx.RigidBody("thing"), "preFrame": hyxOSG.ExampleApplication()}
    failed = False
    print(f"{'method':20} {'director':>9} {'by hand':>9} {'ratio':>6}")
    for cls, kind, method in CASES:
        ours, theirs = measure(cls, kind, method, things.get(method, things["addObject"]))
        missed = ours > LIMIT * theirs
        failed |= missed
        print(
            f"{method:20} {ours:9.1f} {theirs:9.1f} {ours / theirs:6.2f}{' MISSED' if missed else ''} (at most {LIMIT})"
        )
    sys.exit(failed)


if __name__ == "__main__":
    main()
