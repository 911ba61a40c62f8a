"""Draws a large terrain whose heights all change in every frame, and the same surface as a plain vertex buffer that is rewritten.

    python bench/terrain_surface/measure.py [--columns N] [--rounds N]     after: ninja -C build bench_terrain_surface

Prints the times of a frame. Exits with 1 when the terrain's frame rate is below 0.8 of the plain one.
"""

import argparse
import ctypes
import sys
from pathlib import Path

LIBRARY = Path(__file__).resolve().parents[2] / "build" / "bench" / "bench_terrain_surface.so"
CASES = ["plain, rewritten", "terrain, all heights new", "terrain at rest"]
LEAST_SHARE = 0.8


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--columns", type=int, default=512)
    parser.add_argument("--rounds", type=int, default=10)
    options = parser.parse_args()
    best = (ctypes.c_double * len(CASES))()
    ctypes.PyDLL(str(LIBRARY)).measure(options.columns, options.rounds, best)
    for case, time in zip(CASES, best):
        print(f"{case:26} {time:8.1f} ms   {best[0] / time:5.2f} of plain")
    return 0 if best[0] / best[1] >= LEAST_SHARE else 1


if __name__ == "__main__":
    sys.exit(main())
