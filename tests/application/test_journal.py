"""Journals: recorded, listed, appended to, played back, damaged."""
import json
import os
import signal
import subprocess
import sys

import pytest

import hyx
import hyxOSG
import hyxSDK

from application_stage import add_box, difference


@pytest.fixture
def path(tmp_path):
    return str(tmp_path / "run.h5")


@pytest.fixture
def falling(app, path):
    """An application with a ground and a falling box, and a file to record to."""
    add_box(app, "ground", (0, 0, -5), static=True)
    add_box(app, "box", (0, 0, 0))
    app.setJournalRecordPath(path)
    return app


def test_a_recorded_session_is_played_back_exactly(falling, path):
    falling.setEnableJournalRecord(True)
    assert falling.getJournal().isRecording()
    falling.storeInitialJournalState()
    heights = [0.0]
    for _ in range(40):
        falling.step()
        heights.append(falling.getSimulation().getRigidBody("box").getPosition().z)
    falling.setEnableJournalRecord(False)
    assert not falling.getJournal().isRecording()

    falling.getSimulation().getRigidBody("box").setPosition(hyx.Vec3(9, 9, 9))
    falling.journalPlayback()
    assert falling.getJournalPlaybackPath() == path and falling.getJournal().getNumStates() == 41
    played = []
    while falling.getAutoStepping():
        falling.step()
        played.append(falling.getSimulation().getRigidBody("box").getPosition().z)
    assert played[:41] == heights
    assert falling.getTimeStamp() == pytest.approx(40 * falling.getTimeStep())


def test_playback_makes_the_bodies_and_the_pictures(window, shoot, tmp_path):
    window.setJournalRecordPath(str(tmp_path / "run.h5"))
    add_box(window, "box", (1, 0, 1))
    window.initRecordJournal()
    window.step()
    window.createVisual(window.getSimulation())
    recorded = shoot(window)
    window.setEnableJournalRecord(False)
    window.clearScene()
    window.journalPlayback()
    window.createVisual(window.getSimulation())
    window.step()
    assert [body.getName() for body in window.getSimulation().getRigidBodies()] == ["box"]
    assert difference(recorded, shoot(window)) < 20


def sessions(path, capfd, app):
    capfd.readouterr()
    app.listSessionNames(path)
    return capfd.readouterr().out.split()


def test_sessions_are_appended_and_listed(falling, path, capfd):
    falling.initRecordJournal()
    falling.step()
    falling.setJournalRecordPath(path + "#named")
    falling.initAppendJournal()
    falling.step()
    falling.setEnableJournalRecord(False)
    assert sessions(path, capfd, falling) == ["session_1", "named"]
    with pytest.raises(RuntimeError, match="already"):
        falling.initAppendJournal()
    falling.initRecordJournal()
    falling.setEnableJournalRecord(False)
    assert sessions(path, capfd, falling) == ["named"]
    falling.setJournalRecordPath(path + "#missing")
    with pytest.raises(RuntimeError, match="missing"):
        falling.journalPlayback()


def test_the_frequency_thins_the_states(falling):
    falling.setRequestedJournalFrequency(10)
    falling.initRecordJournal()
    for _ in range(61):
        falling.step()
    assert falling.getJournal().getNumStates() == 11
    with pytest.raises(RuntimeError):
        falling.setRequestedJournalFrequency(-1)


def size_of(app, path, single):
    app.setEnableJournal32bitMode(single)
    app.initRecordJournal()
    for _ in range(2000):
        app.getJournal().store(app.getSimulation(), True)
    app.setEnableJournalRecord(False)
    return os.path.getsize(path)


def test_single_precision_takes_about_half_the_room(falling, path):
    for i in range(20):
        add_box(falling, f"box{i}")
    assert size_of(falling, path, True) < 0.6 * size_of(falling, path, False)


@pytest.mark.parametrize("incremental, played", [(True, [2, 3, 2]), (False, [2, 2, 2])])
def test_bodies_that_come_and_go_are_recorded_incrementally(falling, incremental, played):
    falling.setEnableJournalIncrementalStructure(incremental)
    assert falling.getEnableJournalIncrementalStructure() == incremental
    falling.initRecordJournal()
    falling.step()
    extra = add_box(falling, "", (3, 0, 0))
    falling.step()
    falling.getSimulation().remove(extra)
    falling.step()
    falling.setEnableJournalRecord(False)
    falling.clearScene()
    falling.journalPlayback()
    numbers = []
    for _ in range(3):
        falling.step()
        numbers.append(len(falling.getSimulation().getRigidBodies()))
    assert numbers == played


def test_the_configuration_file_has_the_last_word(falling, tmp_path):
    configuration = tmp_path / "journal.json"
    configuration.write_text(json.dumps({"frequency": 30, "session": "configured", "velocities": False}))
    falling.setJournalConfigurationPath(str(configuration))
    assert falling.getJournalConfigurationPath() == str(configuration)
    falling.initRecordJournal()
    assert falling.getJournal().getSessionName() == "configured"
    for _ in range(60):
        falling.step()
    assert falling.getJournal().getNumStates() == 30
    falling.setEnableJournalRecord(False)
    configuration.write_text("[1, 2")
    with pytest.raises(RuntimeError, match="journal.json"):
        falling.initRecordJournal()


def test_the_only_format_is_hdf5(falling, path):
    assert falling.getJournalFormat() == 0
    falling.setJournalFormat(0)
    with pytest.raises(RuntimeError, match="HDF5"):
        falling.setJournalFormat(1)
    falling.initRecordJournal()
    falling.setEnableJournalRecord(False)
    assert open(path, "rb").read(8) == b"\x89HDF\r\n\x1a\n"


def test_what_cannot_be_written_or_read_is_an_exception(app, tmp_path):
    with pytest.raises(RuntimeError, match="setJournalRecordPath"):
        app.initRecordJournal()
    app.setJournalRecordPath("/nowhere/run.h5")
    with pytest.raises(RuntimeError, match="/nowhere/run.h5"):
        app.setEnableJournalRecord(True)
    assert not app.getJournal().isRecording()
    damaged = tmp_path / "damaged.h5"
    damaged.write_bytes(b"\x89HDF\r\n\x1a\n" + b"x" * 1000)
    for action in (lambda: app.listSessionNames(str(damaged)), lambda: app.listSessionNames("/nowhere/run.h5")):
        with pytest.raises(RuntimeError, match="cannot be read"):
            action()
    body = add_box(app, "box", (1, 2, 3))
    app.setJournalRecordPath(str(damaged))
    with pytest.raises(RuntimeError):
        app.journalPlayback()
    assert body.getPosition().z == 3


CRASH = """
import os, sys, hyx, hyxCollide, hyxOSG
app = hyxOSG.ExampleApplication()
app.initSimulation()
app.getSimulation().add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), "ball"))
app.setJournalRecordPath(sys.argv[1])
app.initRecordJournal()
for _ in range(100):
    app.step()
os.kill(os.getpid(), 9)
"""


def test_a_crash_loses_the_last_block_at_most(app, path):
    done = subprocess.run([sys.executable, "-c", CRASH, path], env={**os.environ, "PYTHONPATH": os.pathsep.join(sys.path)})
    assert done.returncode == -signal.SIGKILL
    app.setJournalRecordPath(path)
    app.journalPlayback()
    assert 64 <= app.getJournal().getNumStates() <= 100
    app.step()
    assert app.getSimulation().getRigidBody("ball").getPosition().z < 0
