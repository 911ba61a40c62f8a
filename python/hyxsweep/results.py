"""What a sweep has found, as tables."""

from __future__ import annotations

from pathlib import Path
from typing import TYPE_CHECKING, Any

from .record import Outcome, Record

if TYPE_CHECKING:
    import pandas
    import xarray


class Result:
    """The outcomes of a sweep, also of one that has been stopped, from its folder."""

    def __init__(self, folder: str | Path, outcomes: list[Outcome] | None = None) -> None:
        self.folder = Path(folder)
        self.outcomes = Record(folder).outcomes() if outcomes is None else outcomes

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
        of their own (`<result>_0`, ...); runs that failed are NaN."""
        import numpy
        import xarray

        rows = self.rows()
        names = list(self.outcomes[0].parameters) if self.outcomes else []
        values = {name: list(dict.fromkeys(outcome.parameters[name] for outcome in self.outcomes)) for name in names}
        places = {name: {value: place for place, value in enumerate(values[name])} for name in names}
        variables = {}
        for result in dict.fromkeys(key for row in rows for key in row if key not in values):
            shape = next(numpy.shape(row[result]) for row in rows if result in row)
            table = numpy.full((*map(len, values.values()), *shape), numpy.nan)
            for row in rows:
                if result in row:
                    table[tuple(places[name][row[name]] for name in names)] = row[result]
            variables[result] = ([*names, *(f"{result}_{axis}" for axis in range(len(shape)))], table)
        return xarray.Dataset(variables, coords=values)

    def picture(self, number: int) -> Path:
        return self.folder / "pictures" / f"{number:04}.png"

    def journal(self, number: int) -> Path:
        return self.folder / "journals" / f"{number:04}.h5"

    def contact_sheet(self, file: str | Path, columns: int = 0) -> Path:
        """All pictures in one, with their parameters; see `hyxsweep.contact_sheet`."""
        from .contact_sheet import contact_sheet

        pictures = {
            ", ".join(f"{name} {_short(value)}" for name, value in outcome.parameters.items()): picture
            for outcome in self.outcomes
            if (picture := self.picture(outcome.number)).exists()
        }
        return contact_sheet(pictures, file, columns)


def _short(value: Any) -> str:
    return f"{value:.4g}" if isinstance(value, float) else str(value)
