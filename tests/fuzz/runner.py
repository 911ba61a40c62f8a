"""Runs programs in forked processes, and shrinks those that end one: python -m fuzz.runner --minutes 5 --seed 1"""

from __future__ import annotations

import argparse
import faulthandler
import os
import resource
import signal
import sys
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path

from fuzz.programs import MODULES, Generator, Program

LONGEST = 20  # seconds of a processor that a program may take; it may wait six times as long
MEMORY = 6 << 30


@dataclass(frozen=True)
class Outcome:
    """How a program's process ended."""

    status: int
    report: str

    @property
    def failed(self) -> bool:
        return self.status != 0

    @property
    def kind(self) -> str:
        if os.WIFSIGNALED(self.status):
            number = os.WTERMSIG(self.status)
            return "hang" if number in (signal.SIGALRM, signal.SIGPROF) else signal.Signals(number).name
        return f"exit {os.WEXITSTATUS(self.status)}"


def load() -> None:
    """Imports once what all programs need: forked processes have it for nothing."""
    __import__("fuzz.hostile")
    for name in MODULES.split(", "):
        __import__(name)


def execute(program: Program) -> None:
    """The child's part: ends as the program does, the end of the interpreter included."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    if not os.environ.get("ASAN_OPTIONS"):
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    faulthandler.enable()
    signal.signal(signal.SIGALRM, signal.SIG_DFL)
    signal.setitimer(signal.ITIMER_PROF, LONGEST)
    signal.alarm(6 * LONGEST)
    exec(compile(program.script(), "program", "exec"), {"__name__": "program"})
    sys.exit(0)


def run(program: Program) -> Outcome:
    with tempfile.TemporaryFile() as report, tempfile.TemporaryDirectory() as folder:
        sys.stdout.flush()
        child = os.fork()
        if child == 0:
            os.dup2(report.fileno(), 1)
            os.dup2(report.fileno(), 2)
            os.chdir(folder)
            execute(program)
        _, status = os.waitpid(child, 0)
        report.seek(0)
        return Outcome(status, report.read().decode(errors="replace")[-6000:])


def shrink(program: Program, kind: str, seconds: float = 60) -> Program:
    """A smallest program that ends in the same way: leaves out halves, quarters, ... and at last single lines."""
    end = time.monotonic() + seconds
    lines, size = list(program.lines), max(1, len(program.lines) // 2)
    while size:
        start = 0
        while start < len(lines) and time.monotonic() < end:
            fewer = lines[:start] + lines[start + size :]
            if run(Program(tuple(fewer))).kind == kind:
                lines = fewer
            else:
                start += size
        size //= 2
    return Program(tuple(lines))


def search(seeds: range, seconds: float, keep: Path | None = None) -> tuple[int, list[tuple[int, Outcome, Program]]]:
    """Runs the programs of the seeds, as long as there is time; returns how many, and what failed."""
    load()
    generator, failures, done = Generator(), [], 0
    end = time.monotonic() + seconds
    for seed in seeds:
        if time.monotonic() > end:
            break
        program = generator.program(seed)
        try:
            outcome = run(program)
        except KeyboardInterrupt:
            break
        done += 1
        if outcome.failed:
            smallest = shrink(program, outcome.kind)
            failures.append((seed, run(smallest), smallest))
            if keep:
                keep.mkdir(parents=True, exist_ok=True)
                (keep / f"seed{seed}.py").write_text(smallest.script())
            print(
                f"seed {seed}, program {done}: {outcome.kind}\n{smallest.script()}\n{failures[-1][1].report[-1500:]}",
                flush=True,
            )
    return done, failures


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--minutes", type=float, default=1.0)
    parser.add_argument("--seed", type=int, default=0, help="of the first program; the others follow")
    parser.add_argument("--programs", type=int, default=10**9, help="at most")
    parser.add_argument("--keep", type=Path, help="folder for the smallest scripts")
    given = parser.parse_args()
    signal.signal(signal.SIGTERM, signal.default_int_handler)  # a run that is stopped tells what it has done
    done, failures = search(range(given.seed, given.seed + given.programs), 60 * given.minutes, given.keep)
    print(f"{done} programs from seed {given.seed}: {len(failures)} failed")
    sys.exit(bool(failures))


if __name__ == "__main__":
    main()
