"""What a sweep has found, as tables."""

from __future__ import annotations

import os
from pathlib import Path
from typing import TYPE_CHECKING, Any

from .record import Outcome, Record

if TYPE_CHECKING:
    import pandas
    import xarray


class Result:
    """The outcomes of a sweep, also of one that has been stopped, from its folder."""

    def __init__(self, folder: str | os.PathLike[str], outcomes: list[Outcome] | None = None) -> None:
        self.record = Record(folder)
        self.folder = self.record.folder
        self.outcomes = self.record.outcomes() if outcomes is None else outcomes

    def __len__(self) -> int:
        return len(self.outcomes)

    @property
    def failed(self) -> list[Outcome]:
        return [outcome for outcome in self.outcomes if outcome.error]

    def rows(self) -> list[dict[str, Any]]:
        """A row a run: parameters and results."""
        return [{**outcome.parameters, **outcome.results} for outcome in self.outcomes if not outcome.error]

    def frame(self) -> pandas.DataFrame:
        """A pandas table with a row a run, indexed by the run's number."""
        import pandas

        numbers = pandas.Index([outcome.number for outcome in self.outcomes if not outcome.error], name="run")
        return pandas.DataFrame(self.rows(), index=numbers)

    def dataset(self) -> xarray.Dataset:
        """An xarray dataset with a dimension a parameter, for a grid. Results that are lists get dimensions
        of their own (`<result>_0`, ...); runs that failed are NaN. Parameters that are no numbers or texts are
        coordinates by their text."""
        import numpy
        import xarray

        rows = self.rows()
        names = list(self.outcomes[0].parameters) if self.outcomes else []
        runs = [outcome.parameters for outcome in self.outcomes]
        values = {name: list(dict.fromkeys(_coordinate(run[name]) for run in runs)) for name in names}
        places = {name: {value: place for place, value in enumerate(values[name])} for name in names}
        variables = {}
        for result in dict.fromkeys(key for row in rows for key in row if key not in values):
            found = {self._place(places, row): numpy.asarray(row[result]) for row in rows if result in row}
            some = next(iter(found.values()))
            kind = float if all(value.dtype.kind in "biuf" for value in found.values()) else object
            table = numpy.full((*map(len, values.values()), *some.shape), numpy.nan, kind)
            for place, value in found.items():
                table[place] = value
            variables[result] = ([*names, *(f"{result}_{axis}" for axis in range(some.ndim))], table)
        return xarray.Dataset(variables, coords=values)

    @staticmethod
    def _place(places: dict[str, dict[Any, int]], row: dict[str, Any]) -> tuple[int, ...]:
        return tuple(place[_coordinate(row[name])] for name, place in places.items())

    def picture(self, number: int) -> Path:
        return self.record.picture(number)

    def journal(self, number: int) -> Path:
        return self.record.journal(number)

    def contact_sheet(self, file: str | os.PathLike[str], columns: int = 0) -> Path:
        """All pictures in one, with their parameters; see `hyxsweep.contact_sheet`."""
        from .contact_sheet import contact_sheet

        pictures = {
            ", ".join(f"{name} {_short(value)}" for name, value in outcome.parameters.items()): picture
            for outcome in self.outcomes
            if (picture := self.picture(outcome.number)).exists()
        }
        return contact_sheet(pictures, file, columns)


def _coordinate(value: Any) -> Any:
    return str(value) if isinstance(value, (list, dict)) else value


def _short(value: Any) -> str:
    return f"{value:.4g}" if isinstance(value, float) else str(value)
