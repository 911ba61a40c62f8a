"""Which runs a sweep is made of."""

from __future__ import annotations

import itertools
import random
from collections.abc import Iterable, Mapping
from typing import Any

Parameters = dict[str, Any]


def grid(values: Mapping[str, Iterable[Any]]) -> list[Parameters]:
    """Every combination; the last parameter changes fastest.

    >>> grid({"mass": [1, 5], "seed": range(2)})
    [{'mass': 1, 'seed': 0}, {'mass': 1, 'seed': 1}, {'mass': 5, 'seed': 0}, {'mass': 5, 'seed': 1}]
    """
    names = list(values)
    return [dict(zip(names, map(plain, chosen))) for chosen in itertools.product(*values.values())]


def sample(ranges: Mapping[str, tuple[float, float]], runs: int, seed: int = 0) -> list[Parameters]:
    """A Latin hypercube: `runs` points, so spread that each parameter's range, cut into `runs` equal parts, has one
    point in each. The same seed gives the same points.

    >>> sorted(int(10 * point["mass"]) for point in sample({"mass": (0, 1), "speed": (0, 5)}, 10))
    [0, 1, 2, 3, 4, 5, 6, 7, 8, 9]
    """
    generator = random.Random(seed)
    columns = []
    for low, high in ranges.values():
        places = generator.sample(range(runs), runs)
        columns.append([low + (high - low) * (place + generator.random()) / runs for place in places])
    return [dict(zip(ranges, row)) for row in zip(*columns)]


def runs_of(design: Mapping[str, Iterable[Any]] | Iterable[Mapping[str, Any]]) -> list[Parameters]:
    """The runs of a grid (a mapping of parameters to values) or of a list of runs."""
    if isinstance(design, Mapping):
        return grid(design)
    return [{name: plain(value) for name, value in run.items()} for run in design]


def plain(value: Any) -> Any:
    """Numbers, texts, lists and mappings of them, as the record can hold them: NumPy's and vectors become lists.
    TypeError for anything else."""
    if hasattr(value, "tolist"):
        return value.tolist()
    if value is None or isinstance(value, (bool, int, float, str)):
        return value
    if isinstance(value, Mapping):
        return {str(name): plain(item) for name, item in value.items()}
    if isinstance(value, Iterable):
        return [plain(item) for item in value]
    raise TypeError(f"a sweep keeps numbers, texts, and lists and mappings of them, not a {type(value).__name__}")
