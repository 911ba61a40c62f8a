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


def test_errors_that_a_script_can_catch_are_not_kept(manager):
    with pytest.raises(ZeroDivisionError):
        hyx.Callback(lambda: 1 / 0)()
    assert not manager.hasErrors()


PREPARED = """
import sys
import hyxSDK

folders = [{scripts!r}, {modules!r}]
for _ in range(2):
    manager = hyxSDK.ScriptManager.instance(*folders, {start!r}, False)
assert [folder for folder in sys.path if folder in folders], sys.path
assert manager.hasErrors() is {fails}, manager.getErrors()
import of_scripts, of_modules
print(runs)
"""


@pytest.mark.parametrize("line, fails", [("", False), ("raise ValueError('no start')", True)])
def test_scripts_find_their_modules_and_start_once(tmp_path, line, fails):
    scripts, modules, start = tmp_path / "scripts", tmp_path / "modules", tmp_path / "start.py"
    for folder, module in ((scripts, "of_scripts.py"), (modules, "of_modules.py")):
        folder.mkdir()
        (folder / module).write_text("")
    start.write_text(f"runs = globals().get('runs', 0) + 1\n{line}\n")
    done = run_python(PREPARED.format(scripts=str(scripts), modules=str(modules), start=str(start), fails=fails))
    assert done.stdout == "1\n", done.stderr
