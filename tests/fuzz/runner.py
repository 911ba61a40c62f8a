"""Runs programs in forked processes, and shrinks those that end one: python -m fuzz.runner --minutes 5 --seed 1

A process may run several programs one after another: under the sanitizers its start takes longer than a program.
"""

from __future__ import annotations

import argparse
import faulthandler
import os
import re
import resource
import signal
import sys
import tempfile
import time
from collections import Counter
from collections.abc import Callable
from dataclasses import dataclass, field
from functools import partial
from pathlib import Path

from fuzz import hostile
from fuzz.programs import HEAD, MODULES, Generator, Program
from fuzz.worlds import world_program

SANITIZED = "ASAN_OPTIONS" in os.environ  # needs terabytes of addresses, and much memory of its own
MEMORY = 6 << 30  # bytes of addresses: more raises MemoryError
MOST_RESIDENT = 2 << 30  # bytes that programs may fill, which have no use for so many


@dataclass(frozen=True)
class Outcome:
    """How a program's process ended."""

    status: int
    report: str
    resident: int = 0  # bytes at most

    @property
    def failed(self) -> bool:
        return self.kind != "exit 0"

    @property
    def kind(self) -> str:
        if self.status == 0 and self.resident > MOST_RESIDENT and not SANITIZED:
            return "memory"
        if os.WIFSIGNALED(self.status):
            number = os.WTERMSIG(self.status)
            return "hang" if number in (signal.SIGALRM, signal.SIGPROF) else signal.Signals(number).name
        return f"exit {os.WEXITSTATUS(self.status)}"


def load() -> None:
    """Imports once what all programs need: forked processes have it for nothing."""
    for name in MODULES.split(", "):
        __import__(name)


def execute(program: Program) -> None:
    """The child's part: ends as the program does, the end of the interpreter included."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    if not SANITIZED:
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    faulthandler.enable()
    for number in (signal.SIGALRM, signal.SIGPROF):
        signal.signal(number, signal.SIG_DFL)
        faulthandler.register(number, chain=True)
    exec(compile(program.script(), "program", "exec"), {"__name__": "program"})
    sys.exit(0)


def run(program: Program, seconds: float = hostile.LONGEST) -> Outcome:
    with tempfile.TemporaryFile() as report, tempfile.TemporaryDirectory() as folder:
        sys.stdout.flush()
        child = os.fork()
        if child == 0:
            os.dup2(report.fileno(), 1)
            os.dup2(report.fileno(), 2)
            os.chdir(folder)
            hostile.LONGEST = seconds
            execute(program)
        _, status, usage = os.wait4(child, 0)
        report.seek(0)
        return Outcome(status, report.read().decode(errors="replace")[-12000:], usage.ru_maxrss << 10)


def shrink(program: Program, outcome: Outcome, seconds: float = 60) -> Program:
    """A smallest program that ends in the same way: leaves out halves, quarters, ... and at last single lines."""
    end = time.monotonic() + seconds
    longest = hostile.LONGEST / 4 if outcome.kind == "hang" else hostile.LONGEST
    lines = list(program.lines[: last_line(outcome)])
    size = max(1, len(lines) // 2)
    while size:
        start = 0
        while start < len(lines) and time.monotonic() < end:
            fewer = lines[:start] + lines[start + size :]
            if run(Program(tuple(fewer)), longest).kind == outcome.kind:
                lines = fewer
            else:
                start += size
        size //= 2
    return Program(tuple(lines))


def last_line(outcome: Outcome) -> int | None:
    """How many lines the program had come to, where the report tells."""
    places = re.findall(r'File "program", line (\d+) in <module>', outcome.report)
    return int(places[-1]) - HEAD.format(modules=MODULES).count("\n") if places else None


@dataclass
class Tally:
    """What has been run so far."""

    first: int  # seed
    programs: int = 0
    operations: int = 0
    failures: list[Outcome] = field(default_factory=list)

    def __str__(self) -> str:
        kinds = Counter(failure.kind for failure in self.failures)
        return (
            f"{self.programs} programs of {self.operations} operations from seed {self.first}: "
            f"{len(self.failures)} failed {dict(kinds) or ''}"
        )


def search(
    write: Callable[[int], Program], seeds: range, batch: int, seconds: float, operations: int, keep: Path | None = None
) -> Tally:
    """Runs the programs of the seeds, as long as there is time and until so many operations are done."""
    tally = Tally(seeds.start)
    end = time.monotonic() + seconds
    for start in range(seeds.start, seeds.stop, batch):
        if time.monotonic() > end or tally.operations >= operations:
            break
        several = [write(seed) for seed in range(start, min(start + batch, seeds.stop))]
        program = Program.joined(several)
        try:
            outcome = run(program)
        except KeyboardInterrupt:
            break
        tally.programs += len(several)
        tally.operations += len(program.lines)
        if outcome.failed:
            tally.failures.append(report(start, program, outcome, keep))
    return tally


def report(seed: int, program: Program, outcome: Outcome, keep: Path | None) -> Outcome:
    """Tells the smallest program that ends as this one."""
    smallest = shrink(program, outcome)
    outcome = run(smallest)
    if keep:
        keep.mkdir(parents=True, exist_ok=True)
        (keep / f"seed{seed}.py").write_text(smallest.script())
        (keep / f"seed{seed}.txt").write_text(outcome.report)
    print(f"seed {seed}: {outcome.kind}\n{smallest.script()}\n{outcome.report[-1500:]}", flush=True)
    return outcome


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--minutes", type=float, default=1.0)
    parser.add_argument("--seed", type=int, default=0, help="of the first program; the others follow")
    parser.add_argument("--programs", type=int, default=10**9, help="at most")
    parser.add_argument("--operations", type=int, default=10**12, help="enough when so many are done")
    parser.add_argument("--batch", type=int, default=1, help="programs that a process runs")
    parser.add_argument("--worlds", action="store_true", help="numbers of every size for what stands in a world")
    parser.add_argument("--keep", type=Path, help="folder for the smallest scripts and what is said of them")
    given = parser.parse_args()
    signal.signal(signal.SIGTERM, signal.default_int_handler)  # a run that is stopped tells what it has done
    seeds = range(given.seed, given.seed + given.programs)
    load()
    generator = Generator()
    write = partial(world_program, generator) if given.worlds else generator.program
    tally = search(write, seeds, given.batch, 60 * given.minutes, given.operations, given.keep)
    print(tally)
    sys.exit(bool(tally.failures))


if __name__ == "__main__":
    main()
