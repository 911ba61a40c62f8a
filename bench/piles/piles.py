"""Boxes that fall into a pile, beside other libraries: steps a second, and how well the pile lies.

    tools/bench piles [--counts 100,1000] [--rounds 3] [--seconds 6] [--contenders here,sapien]

All contenders in turn, in rounds, on one processor each: cubes of 0.2 m, steps of 1/60 s, friction 0.5, all else as it
comes. Prints the median rate, its part of the fastest other's, the deepest overlap in the second half of the time, and
the mean speed at its end.
"""

import argparse
import json
import os
import statistics
import subprocess
import sys
from pathlib import Path

import pile

HERE = Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "peers"))
from peers import peers_python  # noqa: E402

OWN = ("here", "bullet")
CONTENDERS = (*OWN, "pybullet", "mujoco", "sapien")


def turn(contender, count, seconds):
    script = HERE / ("here.py" if contender == "here" else f"{contender}_turn.py")
    environment = dict(os.environ)
    if contender not in OWN:
        environment.pop("PYTHONPATH", None)
    python = sys.executable if contender in OWN else peers_python()
    processor = [] if not hasattr(os, "sched_getaffinity") else ["taskset", "-c", str(max(os.sched_getaffinity(0)))]
    command = [*processor, python, script, str(count), str(seconds)]
    done = subprocess.run(command, capture_output=True, text=True, env=environment)
    if done.returncode:
        sys.exit(f"{contender} failed:\n{done.stderr}")
    return json.loads(done.stdout.splitlines()[-1])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--counts", default="100,1000")
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--seconds", type=float, default=6)
    parser.add_argument("--contenders", default=",".join(CONTENDERS))
    options = parser.parse_args()
    contenders = options.contenders.split(",")
    if unknown := set(contenders) - set(CONTENDERS):
        parser.error(f"no such contender: {', '.join(sorted(unknown))}; there are {', '.join(CONTENDERS)}")
    for count in map(int, options.counts.split(",")):
        turns = {contender: [] for contender in contenders}
        for _ in range(options.rounds):
            for contender in contenders:
                turns[contender].append(turn(contender, count, options.seconds))
        rates = {contender: statistics.median(one["rate"] for one in turns[contender]) for contender in contenders}
        print(f"{count} boxes    steps/s   of the best other    overlap, mm   speed, mm/s")
        for contender in contenders:
            best = max((rate for other, rate in rates.items() if other != contender), default=rates[contender])
            last = turns[contender][-1]
            overlap = 1e3 * max(map(pile.deepest, last["samples"]))
            print(
                f"  {contender:10}{rates[contender]:10.0f}{rates[contender] / best:16.2f}"
                f"{overlap:18.2f}{1e3 * last['speed']:14.2f}"
            )


main()
