"""Draws many lidar points coloured by a legend, and the same points as a plain vertex buffer; prints both frame rates.

    python bench/lidar_points/measure.py [--points N] [--rounds N]     after: ninja -C build bench_lidar_points

Exits with 1 when the legend costs more than a fifth of the plain frame rate.
"""

import argparse
import ctypes
import sys
from pathlib import Path

LIBRARY = Path(__file__).resolve().parents[2] / "build" / "bench" / "bench_lidar_points.so"
CASES = ["plain, one colour", "plain, coloured", "legend", "legend, new hits each frame"]
LEAST_SHARE = 0.8


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--points", type=int, default=1_000_000)
    parser.add_argument("--rounds", type=int, default=5)
    options = parser.parse_args()
    best = (ctypes.c_double * len(CASES))()
    ctypes.PyDLL(str(LIBRARY)).measure(options.points, options.rounds, best)
    for case, time in zip(CASES, best):
        print(f"{case:30} {time:8.1f} ms   {best[1] / time:5.2f} of plain, coloured   {best[0] / time:5.2f} of one colour")
    return 0 if best[1] / best[2] >= LEAST_SHARE else 1


if __name__ == "__main__":
    sys.exit(main())
