"""Collects what the physics cases measured, for a table at the end of a verbose run."""

import pytest

ROWS = []


class Measured:
    """Compares with closed forms and keeps a row for each comparison."""

    def __init__(self, case):
        self.case = case

    def __call__(self, what, closed_form, measured, tolerance):
        """The tolerance is in the unit of the value."""
        ROWS.append((self.case, what, closed_form, measured, tolerance))
        assert abs(measured - closed_form) <= tolerance, f"{what}: {measured} instead of {closed_form} +- {tolerance}"

    def relative(self, what, closed_form, measured, share):
        self(what, closed_form, measured, abs(closed_form) * share)


@pytest.fixture
def measured(request):
    return Measured(request.node.name.removeprefix("test_"))


def pytest_terminal_summary(terminalreporter, config):
    if not ROWS or config.getoption("verbose") < 1:
        return
    terminalreporter.section("physics")
    width = max(len(row[0]) for row in ROWS)
    terminalreporter.line(f"{'case':{width}}  {'what':22}{'closed form':>14}{'measured':>16}{'tolerance':>11}")
    for case, what, closed_form, found, tolerance in ROWS:
        terminalreporter.line(f"{case:{width}}  {what:22}{closed_form:14.8g}{found:16.10g}{tolerance:11.2g}")
