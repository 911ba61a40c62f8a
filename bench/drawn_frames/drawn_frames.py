"""Frame times of what the library draws against plain vertex buffers of the same content, in turns.

    tools/bench drawn_frames [--rounds N] [--amount N] [NAME ...]

Exits with 1 when a frame rate is below the least share of the plain one.
"""

import argparse
import ctypes
import sys
from dataclasses import dataclass
from pathlib import Path

LIBRARY = Path(__file__).resolve().parents[2] / "build" / "bench" / "bench_drawn_frames.so"


@dataclass
class Comparison:
    amount: int
    cases: list[str]
    plain: int  # the case to compare with
    least_shares: dict[int, float]  # by case


COMPARISONS = {
    "lidar_points": Comparison(
        1_000_000, ["plain, one colour", "plain, coloured", "legend", "legend, new hits each frame"], 1, {2: 0.8}
    ),
    "terrain_surface": Comparison(
        512, ["plain, rewritten", "terrain, all heights new", "terrain at rest"], 0, {1: 0.8}
    ),
    "particles": Comparison(100_000, ["plain, rewritten", "points", "quads", "meshes"], 0, {1: 0.5, 2: 0.5}),
}


def compare(name, amount, rounds):
    """Prints the times and tells whether they are short enough."""
    comparison = COMPARISONS[name]
    best = (ctypes.c_double * len(comparison.cases))()
    getattr(ctypes.PyDLL(str(LIBRARY)), name)(amount or comparison.amount, rounds, best)
    shares = [best[comparison.plain] / time for time in best]
    print(f"{name}, {amount or comparison.amount}")
    for case, time, share in zip(comparison.cases, best, shares):
        print(f"    {case:30} {time:8.1f} ms   {share:5.2f} of the frame rate of {comparison.cases[comparison.plain]}")
    return all(shares[case] >= least for case, least in comparison.least_shares.items())


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("names", nargs="*", metavar="NAME", help=f"which of {', '.join(COMPARISONS)}; all by default")
    parser.add_argument("--amount", type=int, help="points, columns to a side, or particles")
    parser.add_argument("--rounds", type=int, default=5)
    options = parser.parse_args()
    return 0 if all([compare(name, options.amount, options.rounds) for name in options.names or COMPARISONS]) else 1


if __name__ == "__main__":
    sys.exit(main())
