"""What a sweep leaves in its folder: enough to go on after a stop, to trust a number later, and to repeat a run.

sweep.json       versions, machine, code, runs
functions.pkl    the functions themselves, for `rerun`
runs/0007.json   parameters, results, seconds, attempts of a run, written when it has ended
pictures/, journals/
"""

from __future__ import annotations

import contextlib
import hashlib
import json
import os
import platform
import sys
import time
from collections.abc import Callable
from dataclasses import asdict, dataclass
from importlib import metadata
from pathlib import Path
from typing import Any

import cloudpickle
from _hyx_extras.whole_files import whole_file

from .designs import Parameters


class RunFailed(RuntimeError):
    """Runs of a sweep have ended with an error, or died more often than allowed."""


@dataclass
class Task:
    """What every run does; crosses to the processes that run it."""

    build: Callable[..., Any]
    measure: Callable[[Any], Any] | None
    seconds: float
    pictures: bool
    journals: bool
    size: tuple[int, int]
    folder: str


@dataclass
class Run:
    number: int
    parameters: Parameters


@dataclass
class Outcome:
    """How a run ended: what was measured, or the error."""

    number: int
    parameters: Parameters
    results: dict[str, Any]
    seconds: float = 0.0
    attempts: int = 1
    error: str = ""


class Record:
    """The folder of a sweep."""

    def __init__(self, folder: str | os.PathLike[str]) -> None:
        self.folder = Path(folder)

    def begin(self, task: Task, runs: list[Run], resume: bool) -> dict[int, Outcome]:
        """Writes what the sweep is, and returns the runs that an earlier start of the same sweep has finished."""
        present = self.description(task, runs)
        place = self.folder / "sweep.json"
        done: dict[int, Outcome] = {}
        if place.exists() and resume:
            former = json.loads(place.read_text())
            different = [name for name in ("runs", "code", "seconds") if former[name] != present[name]]
            if different:
                raise ValueError(
                    f"{self.folder} holds another sweep ({' and '.join(different)} differ): "
                    "give another folder, or resume=False to start it anew"
                )
            done = {outcome.number: outcome for outcome in self.outcomes() if self._is_whole(outcome, task)}
        self._make_folders(task)
        if not done:
            for old in (self.folder / "runs").glob("*.json"):
                old.unlink()
            with whole_file(self.folder / "functions.pkl") as file:
                file.write_bytes(cloudpickle.dumps(task))
            with whole_file(place) as file:
                file.write_text(json.dumps(present, indent=1))
        return done

    def _make_folders(self, task: Task) -> None:
        for folder in ("runs", *(["pictures"] if task.pictures else []), *(["journals"] if task.journals else [])):
            (self.folder / folder).mkdir(parents=True, exist_ok=True)

    def _is_whole(self, outcome: Outcome, task: Task) -> bool:
        """Whether the run ended well, with everything that the task keeps of it."""
        kept = [self.picture(outcome.number)] * task.pictures + [self.journal(outcome.number)] * task.journals
        return not outcome.error and all(file.exists() for file in kept)

    def picture(self, number: int) -> Path:
        return self.folder / "pictures" / f"{number:04}.png"

    def journal(self, number: int) -> Path:
        return self.folder / "journals" / f"{number:04}.h5"

    def write(self, outcome: Outcome) -> None:
        # A run that the machine took with it is run again; to wait for the disk would take longer than many a run.
        with whole_file(self.folder / "runs" / f"{outcome.number:04}.json", lasting=False) as file:
            file.write_text(json.dumps(asdict(outcome)))

    def outcomes(self) -> list[Outcome]:
        """The runs that have ended, by number, but those whose files broke when the machine stopped."""
        found = []
        for file in (self.folder / "runs").glob("*.json"):
            with contextlib.suppress(ValueError):
                found.append(Outcome(**json.loads(file.read_text())))
        return sorted(found, key=lambda run: run.number)

    def task(self) -> Task:
        task: Task = cloudpickle.loads((self.folder / "functions.pkl").read_bytes())
        return task

    @staticmethod
    def description(task: Task, runs: list[Run]) -> dict[str, Any]:
        return {
            "versions": {"python": sys.version.split()[0], **versions("hyxosg", "numpy", "xarray", "distributed")},
            "machine": platform.platform(),
            "begun": time.strftime("%Y-%m-%dT%H:%M:%S%z"),
            "code": code_digest(task),
            "seconds": task.seconds,
            "runs": json.loads(json.dumps([run.parameters for run in runs])),
        }


def versions(*packages: str) -> dict[str, str]:
    found = {}
    for name in packages:
        try:
            found[name] = metadata.version(name)
        except metadata.PackageNotFoundError:
            continue
    return found


def code_digest(task: Task) -> str:
    """Changes with the functions' code and constants, not with where their files lie."""
    digest = hashlib.sha256()
    for function in (task.build, task.measure):
        digest.update(repr(_code_of(getattr(function, "__code__", None))).encode())
    return digest.hexdigest()[:16]


def _code_of(code: Any) -> Any:
    if code is None:
        return None
    return code.co_code.hex(), [_constant(value) for value in code.co_consts], code.co_names


def _constant(value: Any) -> Any:
    if hasattr(value, "co_code"):
        return _code_of(value)
    # The order of a set is another in each process.
    return sorted(map(repr, value)) if isinstance(value, frozenset) else repr(value)
