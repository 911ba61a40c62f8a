"""Prints the table of a sweep: python -m hyxsweep FOLDER; with --rerun N repeats a run and compares."""

from __future__ import annotations

import argparse
import signal
import sys

from .results import Result
from .sweeps import rerun


def main() -> int:
    parser = argparse.ArgumentParser(prog="python -m hyxsweep", description=__doc__)
    parser.add_argument("folder")
    parser.add_argument("--rerun", type=int, metavar="N", help="repeat run N and compare its results")
    arguments = parser.parse_args()
    result = Result(arguments.folder)
    if arguments.rerun is None:
        for outcome in result.outcomes:
            told = outcome.error.strip().splitlines()[-1] if outcome.error else outcome.results
            print(f"{outcome.number:6} {outcome.parameters} -> {told}")
        return 1 if result.failed else 0
    again = rerun(arguments.folder, arguments.rerun)
    (former,) = [outcome for outcome in result.outcomes if outcome.number == arguments.rerun]
    print(f"then {former.results}\nnow  {again.results}")
    return 0 if again.results == former.results else 1


if __name__ == "__main__":
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # a reader such as `head` may have enough
    sys.exit(main())
