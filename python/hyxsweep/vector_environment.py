"""Many environments at once, each in a process of its own."""

from __future__ import annotations

import contextlib
from collections.abc import Callable, Sequence
from typing import Any

from .by_value import crossing_by_value
from .workers import Worker, WorkerDied

_present: Any = None


def _serve(make: Callable[[], Any], command: str, argument: Any) -> Any:
    """Runs in the worker: makes its environment with the first call, and keeps it."""
    global _present
    if _present is None:
        _present = make()
    if command == "reset":
        return _present.reset(seed=argument)
    observation, reward, over, cut, information = _present.step(argument)
    if over or cut:
        information = {**information, "final_observation": observation}
        observation, first = _present.reset()
        information = {**first, **information}
    return observation, reward, over, cut, information


class VectorEnvironment:
    """Steps `count` environments that `make` makes, side by side. One whose episode ends starts the next at once:
    its observation is the new episode's first, and its information has the old one's last as `final_observation`.

    An environment whose process dies starts anew: its episode is cut off, its information has `died`.
    """

    def __init__(self, make: Callable[[], Any], count: int) -> None:
        if count < 1:
            raise ValueError(f"a vector of {count} environments: at least 1 is needed")
        self.make = make
        self.workers = [self._started() for _ in range(count)]

    def __len__(self) -> int:
        return len(self.workers)

    def reset(self, *, seed: int | None = None) -> tuple[Any, list[dict[str, Any]]]:
        """Starts an episode everywhere; environment i draws from `seed + i`."""
        seeds = [None if seed is None else seed + place for place in range(len(self))]
        answers = self._ask("reset", seeds)
        return _stack([answer[0] for answer in answers]), [answer[1] for answer in answers]

    def step(self, actions: Sequence[Any]) -> tuple[Any, Any, Any, Any, list[dict[str, Any]]]:
        """Gives each environment its action. Returns observations, rewards, whether tasks are over, whether episodes
        were cut off (arrays), and the informations."""
        if len(actions) != len(self):
            raise ValueError(f"{len(actions)} actions for {len(self)} environments")
        answers = self._ask("step", actions)
        columns = list(zip(*answers))
        observations, rewards, over, cut = (_stack(column) for column in columns[:4])
        return observations, rewards, over, cut, list(columns[4])

    def close(self) -> None:
        for worker in self.workers:
            worker.close()
        self.workers = []

    def __enter__(self) -> VectorEnvironment:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def _started(self) -> Worker:
        with crossing_by_value(self.make):
            return Worker(_serve, self.make)

    def _ask(self, command: str, arguments: Sequence[Any]) -> list[Any]:
        for worker, argument in zip(self.workers, arguments):
            with contextlib.suppress(WorkerDied):  # seen again when the answer is waited for
                worker.send(command, argument)
        return [self._answer(place, command, argument) for place, argument in enumerate(arguments)]

    def _answer(self, place: int, command: str, argument: Any) -> Any:
        try:
            return self.workers[place].receive()
        except WorkerDied:
            self.workers[place].close()
            self.workers[place] = self._started()
        self.workers[place].send("reset", argument if command == "reset" else None)
        observation, information = self.workers[place].receive()
        if command == "reset":
            return observation, information
        return observation, 0.0, False, True, {**information, "died": True}


def _stack(values: Sequence[Any]) -> Any:
    import numpy

    return numpy.stack([numpy.asarray(value) for value in values])
