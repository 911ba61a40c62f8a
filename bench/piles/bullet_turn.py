"""Hands the pile to the plain Bullet program and passes on what it found."""

import json
import subprocess
import sys
from pathlib import Path

import pile

PROGRAM = Path(__file__).resolve().parents[2] / "build" / "bench" / "piles" / "plain_pile"

count, seconds = pile.arguments()
steps = round(seconds / pile.STEP) // pile.SAMPLES
lines = "\n".join(" ".join(map(str, [*place, *rotation])) for place, rotation in pile.starts(count))
numbers = [pile.HALF, pile.DENSITY, pile.FRICTION, pile.STEP, steps, pile.SAMPLES]
done = subprocess.run([PROGRAM, *map(str, numbers)], input=lines, capture_output=True, text=True, check=True)
*rows, rate = [list(map(float, line.split())) for line in done.stdout.splitlines()]
parts = [rows[i : i + count] for i in range(0, len(rows), count)][pile.SAMPLES // 2 :]
outcome = {
    "rate": rate[0],
    "samples": [[row[:7] for row in part] for part in parts],
    "speed": sum(row[7] for row in parts[-1]) / count,
}
json.dump(outcome, sys.stdout)
