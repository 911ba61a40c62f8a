"""One run: builds, simulates, measures, and keeps the picture and the journal."""

from __future__ import annotations

import random
import time
import traceback
from collections.abc import Mapping
from pathlib import Path
from typing import Any

import hyxSDK

from .designs import plain
from .record import Outcome, Run, Task


def run_one(task: Task, run: Run) -> Outcome:
    """Never raises for what the script does: the outcome says it."""
    begin = time.perf_counter()
    outcome = Outcome(run.number, run.parameters, {})
    if "seed" in run.parameters:
        _seed(run.parameters["seed"])
    try:
        outcome.results = _results(task, run)
        _refuse_two_meanings(outcome)
    except Exception:
        outcome.error = traceback.format_exc()
    outcome.seconds = time.perf_counter() - begin
    return outcome


def _refuse_two_meanings(outcome: Outcome) -> None:
    """Parameters and results stand in one row of the table."""
    for name in outcome.parameters.keys() & outcome.results.keys():
        if outcome.parameters[name] != outcome.results[name]:
            raise ValueError(f"{name!r} is a parameter and a result: give the result another name")


def _seed(seed: Any) -> None:
    """A script that draws random numbers draws the same in each repetition."""
    random.seed(seed)
    try:
        import numpy
    except ImportError:
        return
    numpy.random.seed(int(seed) % 2**32)


def _results(task: Task, run: Run) -> dict[str, Any]:
    built = task.build(**run.parameters)
    if not isinstance(built, hyxSDK.Simulation):
        return _named(task.measure(built) if task.measure else built)
    if task.journals:
        _record(built, task, run)
    elif task.seconds > 0:
        built.stepTo(built.getTimeStamp() + task.seconds)
    measured = _named(task.measure(built)) if task.measure else {}
    if task.pictures:
        _draw(built, task, run)
    return measured


def _named(measured: Any) -> dict[str, Any]:
    if isinstance(measured, Mapping):
        return {name: plain(value) for name, value in measured.items()}
    return {"value": plain(measured)}


def _record(simulation: hyxSDK.Simulation, task: Task, run: Run) -> None:
    import hyxOSG

    with hyxOSG.ExampleApplication(simulation) as application:
        application.setJournalRecordPath(str(Path(task.folder) / "journals" / f"{run.number:04}.h5"))
        application.setEnableJournalRecord(True)
        end = simulation.getTimeStamp() + task.seconds
        while simulation.getTimeStamp() < end - simulation.getTimeStep() / 2:
            application.stepSimulation()


def _draw(simulation: hyxSDK.Simulation, task: Task, run: Run) -> None:
    import hyxOSG

    with hyxOSG.ExampleApplication(simulation) as application:
        application.initViewer(*task.size, True)
        application.createVisual(simulation)
        application.fitSceneIntoView()
        application.takeScreenShot(str(Path(task.folder) / "pictures" / f"{run.number:04}.png"))
