"""Where runs are run: in this process, in processes of this machine, on a Dask cluster."""

from __future__ import annotations

import os
from collections.abc import Iterator
from multiprocessing.connection import wait
from typing import Any

from .one_run import run_one
from .record import Outcome, Run, Task
from .workers import Worker, WorkerDied

DIED = "its worker died {count} times"


def outcomes(task: Task, runs: list[Run], scheduler: Any, retries: int) -> Iterator[Outcome]:
    """The outcomes of all runs as they end. `scheduler` is a number of processes (0: this one; None: one a processor),
    the address of a Dask cluster, or its client."""
    if scheduler is None:
        scheduler = min(len(os.sched_getaffinity(0)), len(runs))
    if scheduler == 0:
        return (run_one(task, run) for run in runs)
    if isinstance(scheduler, int):
        return in_processes(task, runs, min(scheduler, len(runs)), retries)
    return on_cluster(task, runs, scheduler, retries)


def in_processes(task: Task, runs: list[Run], count: int, retries: int) -> Iterator[Outcome]:
    waiting = list(reversed(runs))
    deaths: dict[int, int] = {}
    busy: dict[Worker, Run] = {}
    idle = [Worker(run_one, task) for _ in range(count)]
    try:
        while waiting or busy:
            while idle and waiting:
                worker, run = idle.pop(), waiting.pop()
                busy[worker] = run
                try:
                    worker.send(run)
                except WorkerDied:
                    pass  # seen again when the answer is waited for
            ready = wait([worker.connection for worker in busy])
            for worker in [worker for worker in busy if worker.connection in ready]:
                run = busy.pop(worker)
                try:
                    outcome = worker.receive()
                    idle.append(worker)
                except WorkerDied:
                    worker.close()
                    idle.append(Worker(run_one, task))
                    deaths[run.number] = deaths.get(run.number, 0) + 1
                    if deaths[run.number] <= retries:
                        waiting.append(run)
                        continue
                    outcome = Outcome(run.number, run.parameters, {}, error=DIED.format(count=deaths[run.number]))
                outcome.attempts = deaths.get(run.number, 0) + 1 - bool(outcome.error.startswith("its worker"))
                yield outcome
    finally:
        for worker in [*idle, *busy]:
            worker.close(0 if worker in busy else 5)


def on_cluster(task: Task, runs: list[Run], cluster: Any, retries: int) -> Iterator[Outcome]:
    """Dask starts a run anew elsewhere when its worker dies; `retries` is its limit of deaths of one run."""
    import distributed

    dask: Any = distributed  # its functions have no types
    client = dask.Client(cluster) if isinstance(cluster, str) else cluster
    try:
        # Once for all runs, not with each.
        common = client.scatter(task, broadcast=True)
        futures = {client.submit(run_one, common, run, pure=False): run for run in runs}
        for future in dask.as_completed(futures):
            run = futures[future]
            try:
                yield future.result()
            except distributed.KilledWorker as error:
                yield Outcome(run.number, run.parameters, {}, attempts=retries + 1, error=f"its worker died: {error}")
    finally:
        if client is not cluster:
            client.close()
