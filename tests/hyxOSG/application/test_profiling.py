"""Traces of the loop and dumps of the simulation."""

import json

import hyxOSG
import pytest
from application_stage import add_box


@pytest.fixture
def traced(tmp_path):
    parser = hyxIO_parser(["--profile", str(tmp_path / "trace.json")])
    app = hyxOSG.ExampleApplication()
    app.init(parser)
    return app


def hyxIO_parser(arguments):
    import hyxIO

    return hyxIO.ArgumentParser(arguments)


def events(app):
    app.postExecution()
    with open(app.getProfilingJournalPath()) as file:
        return json.load(file)


def test_the_timeline_has_an_event_for_each_task(traced):
    for _ in range(5):
        traced.step()
    steps = [e for e in events(traced) if e["ph"] == "X" and e["name"] == "simulation"]
    assert len(steps) == 5
    assert all(e["dur"] >= 0 for e in steps)
    assert [e["ts"] for e in steps] == sorted(e["ts"] for e in steps)


def test_the_task_profile_counts_and_sums(traced):
    traced.setEnableThreadTimeline(False)
    for _ in range(7):
        traced.step()
    found = events(traced)
    assert not [e for e in found if e["ph"] == "X"]
    total = next(e for e in found if e["name"] == "total of simulation")
    assert total["args"]["count"] == 7 and total["args"]["milliseconds"] > 0
    traced.setEnableTaskProfile(False)
    traced.step()
    traced.setEnableThreadTimeline(True)
    traced.step()
    assert not [e for e in events(traced) if e["name"].startswith("total")]


def test_the_dump_has_the_state_after_each_step(app, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    add_box(app, "box", (0, 0, 2))
    assert not app.getEnableSimulationDump()
    app.setEnableSimulationDump(True)
    assert app.getEnableSimulationDump()
    app.step()
    app.step()
    app.setEnableSimulationDump(False)
    app.step()
    files = sorted((tmp_path / "hyx_profile_dump").iterdir())
    assert [file.name for file in files] == ["state_000001.json", "state_000002.json"]
    state = json.loads(files[1].read_text())
    assert state["time"] == pytest.approx(2 * app.getTimeStep())
    assert state["bodies"][0]["name"] == "box" and 1.9 < state["bodies"][0]["position"][2] < 2
