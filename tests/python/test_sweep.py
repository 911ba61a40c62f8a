"""Sweeps run every combination once, also when workers die or the sweep is stopped, and their record repeats a run."""

import json
import math
import os
import signal
import subprocess
import sys
import time

import numpy
import pytest
from PIL import Image
from subprocesses import BUILD

pytest.importorskip("cloudpickle")
import hyxsweep
from hyxsweep import sweep


def build(height, seed=0):
    import random

    import hyx
    import hyxCollide
    import hyxSDK

    simulation = hyxSDK.Simulation()
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5)))
    ball.setName("ball")
    ball.setPosition(hyx.Vec3(0, 0, height))
    ball.setVelocity(hyx.Vec3(random.random(), 0, 0))
    simulation.add(ball)
    return simulation


def measure(simulation):
    ball = simulation.getRigidBody("ball")
    return {"z": ball.getPosition().z, "x": ball.getPosition().x, "way": [ball.getPosition().x, ball.getPosition().z]}


def test_a_grid_becomes_a_dataset(tmp_path):
    result = sweep(
        build,
        {"height": numpy.array([5.0, 10.0]), "seed": range(2)},
        measure,
        seconds=1,
        pictures=True,
        journals=True,
        size=(64, 48),
        scheduler=2,
        folder=tmp_path,
    )
    data = result.dataset()
    assert data["z"].dims == ("height", "seed") and data["way"].shape == (2, 2, 2)
    # Free fall for a second, whatever the seed; the seed gives the speed aside.
    assert data["z"].values == pytest.approx(numpy.array([[5, 5], [10, 10]]) - 9.80665 / 2, abs=0.1)
    assert data["x"].sel(height=5, seed=0) == data["x"].sel(height=10, seed=0) != data["x"].sel(height=5, seed=1)
    assert list(result.frame().columns) == ["height", "seed", "z", "x", "way"]
    import hyx

    assert hyx.Journal.listSessions(str(result.journal(3)))
    sheet = Image.open(result.contact_sheet(tmp_path / "sheet.png"))
    assert sheet.width > 2 * 200 and numpy.asarray(sheet).std() > 5
    again = hyxsweep.rerun(tmp_path, 2)
    assert (again.parameters, again.results) == ({"height": 10.0, "seed": 0}, result.outcomes[2].results)
    table = subprocess.run(
        [sys.executable, "-m", "hyxsweep", tmp_path, "--rerun", "1"],
        env={**os.environ, "PYTHONPATH": str(BUILD / "python")},
        capture_output=True,
        text=True,
    )
    assert table.returncode == 0 and table.stdout.startswith("then")


def test_a_sampler_covers_each_range_evenly():
    points = hyxsweep.sample({"a": (0, 1), "b": (-1, 1)}, 20, seed=3)
    assert sorted(math.floor(20 * point["a"]) for point in points) == list(range(20))
    assert sorted(math.floor(10 * point["b"]) for point in points) == list(range(-10, 10))
    assert points == hyxsweep.sample({"a": (0, 1), "b": (-1, 1)}, 20, seed=3)


@pytest.mark.parametrize("scheduler", [2, "cluster"])
def test_a_run_whose_worker_is_killed_is_run_again(tmp_path, scheduler):
    folder = tmp_path / "sweep"

    def die_once(number):
        mark = tmp_path / f"begun-{number}"
        if number == 3 and not mark.exists():
            mark.write_text("")
            os.kill(os.getpid(), signal.SIGKILL)
        return {"square": number * number, "process": os.getpid()}

    runs = {"number": range(8)}
    if scheduler == "cluster":
        distributed = pytest.importorskip("distributed")
        with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
            result = sweep(die_once, runs, scheduler=cluster.scheduler_address, folder=folder)
    else:
        result = sweep(die_once, runs, scheduler=scheduler, folder=folder)
        assert result.outcomes[3].attempts == 2 and len({row["process"] for row in result.rows()}) >= 2
    assert [row["square"] for row in result.rows()] == [n * n for n in range(8)]
    assert (tmp_path / "begun-3").exists()
    assert os.getpid() not in {row["process"] for row in result.rows()}


def test_a_run_that_kills_every_worker_is_given_up_and_the_others_are_kept(tmp_path):
    def die(number):
        if number == 1:
            os.kill(os.getpid(), signal.SIGKILL)
        if number == 2:
            raise ZeroDivisionError("two")
        return number

    with pytest.raises(hyxsweep.RunFailed, match="2 runs failed"):
        sweep(die, {"number": range(4)}, scheduler=2, folder=tmp_path, retries=1)
    result = hyxsweep.Result(tmp_path)
    assert [row["value"] for row in result.rows()] == [0, 3]
    assert [outcome.attempts for outcome in result.failed] == [2, 1]
    assert "ZeroDivisionError: two" in result.failed[1].error


def test_a_stopped_sweep_goes_on_where_it_was(tmp_path):
    calls = tmp_path / "calls"
    calls.mkdir()

    def note(number):
        (calls / f"{number}-{time.monotonic_ns()}").write_text("")
        if number == 3 and not (tmp_path / "mended").exists():
            raise KeyboardInterrupt
        return number

    with pytest.raises(KeyboardInterrupt):
        sweep(note, {"number": range(6)}, scheduler=0, folder=tmp_path / "sweep")
    (tmp_path / "mended").write_text("")
    result = sweep(note, {"number": range(6)}, scheduler=0, folder=tmp_path / "sweep")
    assert [row["value"] for row in result.rows()] == list(range(6))
    numbers = sorted(int(name.name.split("-")[0]) for name in calls.iterdir())
    assert numbers == [0, 1, 2, 3, 3, 4, 5]
    (tmp_path / "sweep" / "runs" / "0002.json").write_text("")  # as after a power cut
    assert len(sweep(note, {"number": range(6)}, scheduler=0, folder=tmp_path / "sweep")) == 6
    assert len(list(calls.iterdir())) == 8
    with pytest.raises(ValueError, match="another sweep .*runs"):
        sweep(note, {"number": range(7)}, scheduler=0, folder=tmp_path / "sweep")
    assert len(sweep(note, {"number": range(7)}, scheduler=0, folder=tmp_path / "sweep", resume=False)) == 7
    assert set(json.loads((tmp_path / "sweep" / "sweep.json").read_text())) >= {"versions", "code", "runs"}


def fall_from(place):
    return build(place[2] if place else 0)


def whole_state(simulation):
    ball = simulation.getRigidBody("ball")
    return {"end": ball.getPosition(), "name": ball.getName()}


def test_vectors_go_in_and_come_out(tmp_path):
    design = {"place": [(0, 0, 1), numpy.array([0, 0, 2.0])], "seed": [0]}
    sweep(lambda place, seed: fall_from(place), design, whole_state, scheduler=0, folder=tmp_path)
    data = hyxsweep.Result(tmp_path).dataset()
    assert data["end"].shape == (2, 1, 3)
    assert data["place"].values.tolist() == ["[0, 0, 1]", "[0.0, 0.0, 2.0]"]
    assert hyxsweep.Result(tmp_path).rows()[1]["name"] == "ball" == data["name"].values[0, 0]


def test_what_cannot_be_kept_is_told(tmp_path):
    with pytest.raises(hyxsweep.RunFailed, match="keeps numbers, texts.* not a RigidBody"):
        sweep(build, {"height": [1]}, lambda sim: sim.getRigidBody("ball"), scheduler=0, folder=tmp_path)
    with pytest.raises(hyxsweep.RunFailed, match="'height' is a parameter and a result"):
        sweep(build, {"height": [1]}, lambda sim: {"height": 2}, scheduler=0, folder=tmp_path / "two")


def test_pictures_that_are_asked_for_later_are_made(tmp_path):
    design = {"height": [1, 2]}
    sweep(build, design, measure, scheduler=0, folder=tmp_path)
    result = sweep(build, design, measure, scheduler=0, folder=tmp_path, pictures=True, size=(32, 24))
    assert [result.picture(number).exists() for number in range(2)] == [True, True]


def test_a_sweep_goes_on_in_another_process_whatever_its_code_holds(tmp_path):
    script = tmp_path / "script.py"
    script.write_text(
        "import hyxsweep\n"
        "def build(kind):\n"
        "    return kind in {'box', 'ball', 'rod', 'cone', 'plane', 'mesh'}\n"
        f"hyxsweep.sweep(build, {{'kind': ['box', 'well']}}, scheduler=0, folder={str(tmp_path / 'sweep')!r})\n"
    )
    for seed in "123":
        environment = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "PYTHONHASHSEED": seed}
        subprocess.run([sys.executable, script], env=environment, check=True)
    assert [row["value"] for row in hyxsweep.Result(tmp_path / "sweep").rows()] == [True, False]


@pytest.mark.parametrize(
    "wrong",
    [{"seconds": -1}, {"seconds": float("nan")}, {"seconds": float("inf")}, {"scheduler": -1}, {"retries": -1}],
    ids=str,
)
def test_what_would_never_end_or_run_backwards_is_refused(tmp_path, wrong):
    with pytest.raises(ValueError, match="0 or more"):
        hyxsweep.sweep(lambda a: a, {"a": [1]}, folder=tmp_path / "sweep", **wrong)
    assert list(tmp_path.iterdir()) == []
