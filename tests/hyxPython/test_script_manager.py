"""The script manager keeps the errors that no script can catch, and prepares the interpreter for scripts."""

import hyx
import hyxSDK
import pytest
from subprocesses import run_python


@pytest.fixture
def manager():
    manager = hyxSDK.ScriptManager.instance()
    manager.clearErrors()
    yield manager
    manager.clearErrors()


class Failing(hyxSDK.EventListener):
    def __init__(self, text):
        super().__init__()
        self.text = text

    def pre(self, time):
        raise ValueError(self.text)

    def post(self, time):
        {}[self.text]


def test_errors_stay_in_the_order_in_which_they_came(manager, capfd):
    simulation = hyxSDK.Simulation()
    simulation.add(Failing("no such gear"))
    simulation.step()
    simulation.step()
    errors = manager.getErrors()
    assert [(where.rpartition("::")[2], message) for where, message, _ in errors] == [
        ("pre", "ValueError: no such gear"),
        ("post", "KeyError: 'no such gear'"),
    ] * 2
    assert manager.hasErrors() and manager.getNumErrors() == len(errors)
    assert all(traceback in capfd.readouterr().err for *_, traceback in errors[:1])


def test_forgotten_errors_are_gone_for_all_who_ask(manager):
    simulation = hyxSDK.Simulation()
    simulation.add(Failing("no such gear"))
    simulation.step()
    kept = manager.getErrors()
    hyxSDK.ScriptManager.instance("", "", "", True)
    assert not manager.hasErrors() and manager.getErrors() == [] and manager.getNumErrors() == 0
    assert len(kept) == 2


def test_the_error_of_a_callback_is_kept_with_the_line_that_raised_it(manager):
    hyx.Callback(lambda: 1 / 0)()
    ((_, message, traceback),) = manager.getErrors()
    assert message == "ZeroDivisionError: division by zero"
    assert "test_script_manager.py" in traceback and "1 / 0" in traceback


PREPARED = """
import hyxSDK
hyxSDK.ScriptManager.instance({scripts!r}, {modules!r}, {start!r}, False)
import both, of_modules
print(runs, both.place, of_modules.place)
"""


@pytest.mark.parametrize("line", ["", "raise ValueError('no start')"])
def test_a_start_script_runs_where_scripts_find_their_modules(tmp_path, line):
    """A start that fails is told of, and the program goes on."""
    for folder, modules in (("scripts", ("both",)), ("modules", ("both", "of_modules"))):
        (tmp_path / folder).mkdir()
        for module in modules:
            (tmp_path / folder / f"{module}.py").write_text(f"place = {folder!r}")
    start = tmp_path / "start.py"
    start.write_text(f"runs = globals().get('runs', 0) + 1\n{line}\n")
    folders = {folder: str(tmp_path / folder) for folder in ("scripts", "modules")}
    done = run_python(PREPARED.format(**folders, start=str(start)))
    assert done.stdout == "1 scripts modules\n", done.stderr
    assert ("ValueError: no start" in done.stderr) == bool(line)
