"""Journals: recorded, listed, appended to, played back, damaged."""

import json
import os
import signal
import subprocess
import sys

import h5py
import hyx
import pytest
from application_stage import add_box, difference
from subprocesses import run_python


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


def size_of(app, path):
    app.initRecordJournal()
    for _ in range(2000):
        app.getJournal().store(app.getSimulation(), True)
    app.setEnableJournalRecord(False)
    return os.path.getsize(path)


def test_single_precision_takes_about_half_the_room(falling, path):
    for i in range(20):
        add_box(falling, f"box{i}")
    double = size_of(falling, path)
    falling.setEnableJournal32bitMode(True)
    assert size_of(falling, path) < 0.6 * double


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


def test_the_compressed_format_takes_less_room_and_plays_the_same(falling, path):
    assert falling.getJournalFormat() == 0
    plain = size_of(falling, path)
    falling.setJournalFormat(1)
    assert falling.getJournalFormat() == 1 and size_of(falling, path) < 0.3 * plain
    assert open(path, "rb").read(8) == b"\x89HDF\r\n\x1a\n"
    falling.initRecordJournal()
    for _ in range(5):
        falling.step()
    falling.setEnableJournalRecord(False)
    height = falling.getSimulation().getRigidBody("box").getPosition().z
    falling.clearScene()
    falling.journalPlayback()
    for _ in range(5):
        falling.step()
    assert falling.getSimulation().getRigidBody("box").getPosition().z == height


@pytest.mark.parametrize("format", [2, 7, 2**63])
def test_other_formats_are_refused(falling, format):
    falling.setJournalFormat(1)
    with pytest.raises(RuntimeError, match="0 .HDF5. or 1"):
        falling.setJournalFormat(format)
    assert falling.getJournalFormat() == 1


READ = """
import h5py, json, sys
with h5py.File(sys.argv[1]) as file:
    part = file["session_1"]["part_000000"]
    names = [name.decode() for name in part["bodies"]]
    print(json.dumps({
        "names": names,
        "shapes": dict(zip(names, json.loads(part["shapes"][0]))),
        "times": len(part["time"]),
        "heights": part["position"][:, names.index("box"), 2].tolist(),
        "columns": [name.decode() for name in part["particleColumns"]],
        "counts": part["particleCount"][:, 0, 0].tolist(),
        "grains": part["particles"].shape}))
"""


def test_another_program_reads_what_was_recorded(falling, path):
    grains = hyx.ParticleSystem()
    falling.getSimulation().add(grains)
    falling.initRecordJournal()
    heights = []
    for _ in range(3):
        grains.createParticle(hyx.Vec3(0, 0, 5))
        falling.step()
        heights.append(falling.getSimulation().getRigidBody("box").getPosition().z)
    falling.setEnableJournalRecord(False)
    done = subprocess.run([sys.executable, "-c", READ, path], capture_output=True, text=True, timeout=60)
    assert done.stderr == ""
    found = json.loads(done.stdout)
    assert found["names"] == ["ground", "box"] and found["times"] == 3 and found["heights"] == heights
    box = found["shapes"]["box"]
    assert box["geometries"][0]["shape"] == {"kind": "box", "halfExtents": [0.5, 0.5, 0.5]}
    assert box["mass"] == pytest.approx(1000) and box["motion"] == hyx.RigidBody.DYNAMICS
    assert found["counts"] == [1, 2, 3] and found["grains"] == [6, 1, len(found["columns"])]


def grains_of(system):
    return [
        (grain.id, tuple(grain.position), tuple(grain.velocity), grain.radius, grain.mass)
        for grain in system.getParticles()
    ]


@pytest.mark.parametrize("fresh", [False, True])
def test_grains_are_played_back(app, path, fresh):
    systems = [hyx.ParticleSystem(), hyx.ParticleSystem()]
    for system in systems:
        app.getSimulation().add(system)
    app.setJournalRecordPath(path)
    app.initRecordJournal()
    recorded = []
    for step in range(40):
        systems[step % 2].createParticle(hyx.Vec3(step, 0, 5), hyx.Vec3(0, 1, 0), 0.1 + 0.01 * step, 2.0)
        if step == 20:
            systems[0].clear()
        app.step()
        recorded.append([grains_of(system) for system in systems])
    app.setEnableJournalRecord(False)
    if fresh:
        app.clearScene()
    app.journalPlayback()
    for expected in recorded:
        app.step()
        played = [process for process in app.getSimulation().getProcesses()]
        assert [grains_of(system) for system in played] == expected


def test_played_bodies_have_their_masses(falling, path):
    falling.getSimulation().getRigidBody("box").setMass(3.5)
    falling.initRecordJournal()
    falling.step()
    falling.setEnableJournalRecord(False)
    falling.clearScene()
    falling.journalPlayback()
    falling.step()
    assert falling.getSimulation().getRigidBody("box").getMass() == 3.5


def test_what_cannot_be_written_or_read_is_an_exception(app, tmp_path):
    with pytest.raises(RuntimeError, match="setJournalRecordPath"):
        app.initRecordJournal()
    app.setJournalRecordPath("/nowhere/run.h5")
    with pytest.raises(FileNotFoundError, match="/nowhere/run.h5"):
        app.setEnableJournalRecord(True)
    assert not app.getJournal().isRecording()
    damaged = tmp_path / "damaged.h5"
    damaged.write_bytes(b"\x89HDF\r\n\x1a\n" + b"x" * 1000)
    with pytest.raises(RuntimeError, match="cannot be read"):
        app.listSessionNames(str(damaged))
    with pytest.raises(FileNotFoundError):
        app.listSessionNames("/nowhere/run.h5")
    body = add_box(app, "box", (1, 2, 3))
    app.setJournalRecordPath(str(damaged))
    with pytest.raises(RuntimeError):
        app.journalPlayback()
    assert body.getPosition().z == 3


def test_damage_anywhere_in_a_journal_is_found(falling, path, tmp_path, capfd):
    falling.initRecordJournal()
    for _ in range(64):
        falling.step()
    falling.setEnableJournalRecord(False)
    whole, damaged = open(path, "rb").read(), tmp_path / "damaged.h5"
    falling.setJournalRecordPath(str(damaged))
    found = 0
    for place in range(0, len(whole), len(whole) // 80):
        damaged.write_bytes(whole[:place] + bytes([whole[place] ^ 0x55]) + whole[place + 1 :])
        try:
            falling.journalPlayback()
            for _ in range(64):
                falling.step()
        except RuntimeError as error:
            assert "journal" in str(error)
            found += 1
        found += "passed over" in capfd.readouterr().err
        falling.getJournal().close()
        falling.setAutoStepping(True)
    assert found > 35  # elsewhere nothing is stored
    for size in range(0, len(whole) - 1, len(whole) // 20):
        damaged.write_bytes(whole[:size])
        with pytest.raises(RuntimeError, match="journal"):
            falling.journalPlayback()


CRASH = """
import os, sys, hyx, hyxCollide, hyxOSG
app = hyxOSG.ExampleApplication()
app.initSimulation()
app.getSimulation().add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), "ball"))
app.getSimulation().add(hyx.ParticleSystem())
app.setJournalRecordPath(sys.argv[1])
app.setJournalFormat(int(sys.argv[2]))
app.initRecordJournal()
for step in range(100):
    app.getSimulation().getProcesses()[0].createParticle(hyx.Vec3(step, 0, 0))
    app.step()
"""


def run_crash(path, format, end):
    return run_python("-c", CRASH + end, path, str(format))


@pytest.mark.parametrize("format", [0, 1])
def test_a_crash_loses_no_step(app, path, format):
    assert run_crash(path, format, "os.kill(os.getpid(), 9)").returncode == -signal.SIGKILL
    app.setJournalRecordPath(path)
    app.journalPlayback()
    assert app.getJournal().getNumStates() == 100 and not os.path.exists(path + ".log")
    app.step()
    assert app.getSimulation().getRigidBody("ball").getPosition().z < 0


@pytest.mark.parametrize("end", ["", "sys.exit(0)", "del app", "os.fork() or app.postExecution()"])
def test_the_end_of_a_script_ends_its_journal(path, end):
    done = run_crash(path, 0, end)
    assert (done.returncode, done.stderr) == (0, "")
    with h5py.File(path) as file:
        assert len(file["session_1/part_000000/time"]) == 100
    assert os.listdir(os.path.dirname(path)) == ["run.h5"]


def test_a_journal_that_cannot_be_ended_is_told_at_the_end_of_the_script(path):
    limit = "import resource; resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))"
    done = run_crash(path, 0, limit)
    assert done.returncode == 0 and "stays in the log" in done.stderr and path in done.stderr
    assert os.listdir(os.path.dirname(path)) == ["run.h5.log"]
