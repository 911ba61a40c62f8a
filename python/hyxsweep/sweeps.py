"""The sweep itself."""

from __future__ import annotations

import math
import os
import sys
from collections.abc import Callable, Iterable, Mapping
from typing import Any

from .by_value import crossing_by_value
from .designs import runs_of
from .one_run import run_one
from .record import Outcome, Record, Run, RunFailed, Task
from .results import Result
from .schedulers import outcomes

Design = Mapping[str, Iterable[Any]] | Iterable[Mapping[str, Any]]


def sweep(
    build: Callable[..., Any],
    design: Design,
    measure: Callable[[Any], Any] | None = None,
    *,
    seconds: float = 0.0,
    pictures: bool = False,
    journals: bool = False,
    size: tuple[int, int] = (640, 480),
    scheduler: Any = None,
    folder: str | os.PathLike[str] = "sweep",
    resume: bool = True,
    retries: int = 2,
    progress: bool | None = None,
    strict: bool = True,
) -> Result:
    """Calls `build(**parameters)` for each run of `design`, simulates, and measures.

    build: makes a `hyxSDK.Simulation`, which is stepped for `seconds` of its own time and given to `measure`. Anything
        else that it returns goes to `measure` as it is.
    design: a mapping of parameters to their values, for every combination; or a list of runs, such as `sample` gives.
        A parameter `seed` also starts the random numbers of Python and NumPy.
    measure: returns a number, a list, or a mapping of names to them. Without it, what `build` returns is that.
    pictures, journals: keep a picture of each run's end (`size`, pixels) and a journal of each run, in `folder`.
    scheduler: a number of processes, 0 for none but this; None for one a processor; the address of a Dask cluster,
        which must see `folder`, or a `distributed.Client`.
    resume: passes over what `folder` has of the same sweep already.
    retries: how often a run is started anew whose worker died.
    progress: shows a bar (needs tqdm); None where standard error is a terminal.
    strict: raises RunFailed at the end when runs have failed; their outcomes are in the folder in any case.
    """
    if not 0 <= seconds < math.inf:
        raise ValueError(f"a run takes 0 or more seconds, not {seconds}")
    if (isinstance(scheduler, int) and scheduler < 0) or retries < 0:
        raise ValueError("the numbers of processes and retries are 0 or more")
    runs = [Run(number, parameters) for number, parameters in enumerate(runs_of(design))]
    task = Task(build, measure, seconds, pictures, journals, size, os.path.abspath(folder))
    record = Record(folder)
    with crossing_by_value(build, measure):
        done = record.begin(task, runs, resume)
        waiting = [run for run in runs if run.number not in done]
        with _Bar(len(runs), len(done), progress) as bar:
            for outcome in outcomes(task, waiting, scheduler, retries) if waiting else ():
                record.write(outcome)
                done[outcome.number] = outcome
                bar.advance()
    result = Result(folder, [done[number] for number in sorted(done)])
    if strict and result.failed:
        raise RunFailed(_failures(result.failed))
    return result


def rerun(folder: str | os.PathLike[str], number: int) -> Outcome:
    """Runs run `number` of the sweep in `folder` again, in this process, and returns the new outcome; the record stays.
    It runs the code in the folder's `functions.pkl`, so only use folders that you trust."""
    record = Record(folder)
    task = record.task()
    task.pictures = task.journals = False
    former = {outcome.number: outcome for outcome in record.outcomes()}
    if number not in former:
        raise KeyError(f"no run {number} in {record.folder}; there are {len(former)}")
    return run_one(task, Run(number, former[number].parameters))


def _failures(failed: list[Outcome]) -> str:
    first = failed[0]
    head = f"{len(failed)} runs failed" if len(failed) > 1 else "a run failed"
    return f"{head}; the first with {first.parameters}:\n{first.error}"


class _Bar:
    """A progress bar where one is wanted and tqdm is installed."""

    def __init__(self, total: int, done: int, wanted: bool | None) -> None:
        self.bar: Any = None
        if wanted or (wanted is None and sys.stderr is not None and sys.stderr.isatty()):
            try:
                from tqdm.auto import tqdm
            except ImportError:
                return
            self.bar = tqdm(total=total, initial=done, unit="run")

    def __enter__(self) -> _Bar:
        return self

    def __exit__(self, *_: object) -> None:
        if self.bar is not None:
            self.bar.close()

    def advance(self) -> None:
        if self.bar is not None:
            self.bar.update()
