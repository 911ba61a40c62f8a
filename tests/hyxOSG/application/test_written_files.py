"""Full disks, size limits, read-only folders and kills: what is reported as written is whole, and old files stand."""

import contextlib
import errno
import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import time

import _hyxOSG
import h5py
import pytest
from mounts import mount, mounted
from subprocesses import run_python
from written_files import MODELS, OLD, PICTURES, POINTS

HERE = pathlib.Path(__file__).parent
KILLS = int(os.environ.get("HYX_KILLS", 3))
STREAMS = {"trace.json", "film.mp4"}  # grow in their place; a part of them can be read
FILES = [f"shot.{e}" for e in PICTURES] + [f"image.{e}" for e in PICTURES] + [f"model.{e}" for e in MODELS]
FILES += [f"points.{ending}" for ending in POINTS]
FILES += [
    "motion.glb",
    "motion.gltf",
    "frame.npz",
    "frame.exr",
    "depth.png",
    "number00000.png",
    "target.bmp",
    "state",
    "plain.h5",
    "compressed.h5",
    "hyx_profile_dump/state_000001.json",
]


def put_old_files(folder):
    (folder / "hyx_profile_dump").mkdir()
    for name in [*FILES, *STREAMS]:
        (folder / name).write_bytes(OLD)


@contextlib.contextmanager
def full(folder):
    with mounted(folder, "-t", "tmpfs", "-o", "size=256k", "tmpfs"):
        put_old_files(folder)
        with pytest.raises(OSError), open(folder / "filler", "wb", buffering=0) as filler:
            while True:
                filler.write(bytes(4096))
        yield errno.ENOSPC


@contextlib.contextmanager
def limit(folder):
    put_old_files(folder)
    yield errno.EFBIG


@contextlib.contextmanager
def readonly(folder):
    put_old_files(folder)
    with mounted(folder, "--bind", str(folder)):
        mount("-o", "remount,bind,ro", str(folder))
        yield errno.EROFS


@pytest.mark.parametrize("fault", [full, limit, readonly], ids=lambda fault: fault.__name__)
def test_what_cannot_be_written_is_an_error_and_the_old_file_stands(fault, tmp_path):
    with fault(tmp_path) as reason:
        done = run_python(str(HERE / "written_files.py"), str(tmp_path), fault.__name__)
    assert done.returncode == 0, done.stderr
    report = json.loads(done.stdout.splitlines()[-1])
    assert report.pop("left over") == []
    assert set(report) == {*FILES, *STREAMS}
    for name, outcome in report.items():
        if name == "target.bmp":
            assert outcome == {"result": False, "kept": True}, name
        elif name == "film.mp4":
            assert outcome["error"] in ("RuntimeError", "ArgumentError", "OSError"), name
        else:
            assert outcome.get("errno") == reason, (name, outcome)
            assert name.split("/")[0].split(".")[0] in outcome["path"]  # or what belongs to it, such as materials
            assert outcome["kept"] or name in STREAMS, name


def test_errors_of_files_are_those_of_python(app, tmp_path):
    missing = str(tmp_path / "missing" / "a")
    for attempt in (
        lambda: app.getSimulation().save(missing),
        lambda: app.getSimulation().restore(missing),
        lambda: app.setJournalRecordPath(missing) or app.initRecordJournal(),
        lambda: app.journalPlayback(),
    ):
        with pytest.raises(FileNotFoundError) as caught:
            attempt()
        assert caught.value.filename.startswith(missing)
    with pytest.raises(IsADirectoryError):
        app.getSimulation().save(str(tmp_path))
    with pytest.raises(RuntimeError, match="No such file") as flat:
        _hyxOSG.ExampleApplication_takeScreenShot(app, missing + ".png")
    assert type(flat.value) is RuntimeError and flat.value.errno == errno.ENOENT


CROWDED = """
import os, sys, hyx, hyxCollide, hyxOSG
folder, form = sys.argv[1], int(sys.argv[2])
app = hyxOSG.ExampleApplication()
app.init(None)
app.initSimulation()
for number in range(20):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), f"ball {number}")
    body.setPosition(hyx.Vec3(3 * number, 0, 0))
    app.getSimulation().add(body)
app.setJournalRecordPath(folder + "/run.h5")
app.setJournalFormat(form)
filler, stored, failures = folder + "/filler", 0, 0
for free in range(10, 400, 30):
    with open(filler, "wb", buffering=0) as file:
        try:
            while True:
                file.write(bytes(1024))
        except OSError:
            file.truncate(os.path.getsize(filler) - 1024 * free)
    try:
        app.initAppendJournal()
        for _ in range(100):
            app.step()
            stored += 1
    except OSError:
        failures += 1
    try:
        app.setEnableJournalRecord(False)
    except OSError:
        failures += 1
    os.remove(filler)
print(stored, failures)
"""


@pytest.mark.parametrize("form", [0, 1])
def test_no_state_is_lost_to_a_full_disk(form, tmp_path, app, capfd):
    with mounted(tmp_path, "-t", "tmpfs", "-o", "size=16m", "tmpfs"):
        done = run_python("-c", CROWDED, str(tmp_path), str(form))
        assert (done.returncode, done.stderr) == (0, "")
        stored, failures = map(int, done.stdout.split())
        assert failures > 5 and stored > 100
        app.listSessionNames(str(tmp_path / "run.h5"))
        assert number_of_states(tmp_path / "run.h5") == stored


def number_of_states(journal):
    with h5py.File(journal) as file:
        return sum(len(part["time"]) for session in file.values() for part in session.values())


STATES = """
import os, sys, hyx, hyxCollide, hyxSDK
simulation = hyxSDK.Simulation()
for number in range(500):
    simulation.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), f"ball {number}"))
print("ready", flush=True)
while True:
    simulation.save(sys.argv[1])
"""

RECORDER = """
import mmap, struct, sys, hyx, hyxCollide, hyxOSG
app = hyxOSG.ExampleApplication()
app.init(None)
app.initSimulation()
for number in range(20):
    app.getSimulation().add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), f"ball {number}"))
app.setJournalRecordPath(sys.argv[1])
app.setJournalFormat(int(sys.argv[3]))
with open(sys.argv[2], "r+b") as file:
    count = mmap.mmap(file.fileno(), 8)
print("ready", flush=True)
stored = 0
while True:
    app.initAppendJournal()
    for _ in range(200):
        app.step()
        stored += 1
        struct.pack_into("q", count, 0, stored)
    app.setEnableJournalRecord(False)
"""


def kill_soon(script, *arguments, by=signal.SIGKILL):
    """Runs the script and ends it at a time that nobody chose, some time after it says that it is ready."""
    environment = {**os.environ, "PYTHONPATH": os.pathsep.join(sys.path)}
    command = [sys.executable, "-c", script, *map(str, arguments)]
    with subprocess.Popen(command, stdout=subprocess.PIPE, env=environment) as process:
        assert process.stdout.readline() == b"ready\n"
        time.sleep(random.uniform(0, 0.6))
        process.send_signal(by)
        assert process.wait(60) == -by


@pytest.mark.parametrize("by", [signal.SIGKILL, signal.SIGTERM])
def test_a_kill_leaves_a_whole_state(by, tmp_path, app):
    path = tmp_path / "state"
    for _ in range(KILLS):
        kill_soon(STATES, path, by=by)
        if path.exists():
            with pytest.raises(RuntimeError, match="500 bodies"):  # read to its end
                app.getSimulation().restore(str(path))


@pytest.mark.parametrize("form", [0, 1])
@pytest.mark.parametrize("by", [signal.SIGKILL, signal.SIGTERM])
def test_a_killed_recorder_loses_no_step(form, by, tmp_path, app, capfd):
    counter = tmp_path / "count"
    for kill in range(KILLS):
        journal = tmp_path / f"run{kill}.h5"
        counter.write_bytes(bytes(8))
        kill_soon(RECORDER, journal, counter, form, by=by)
        stored = int.from_bytes(counter.read_bytes(), "little")
        if stored == 0 and not journal.exists():
            continue  # killed before it began
        app.listSessionNames(str(journal))
        assert stored <= number_of_states(journal) <= stored + 1
        assert not journal.with_suffix(".h5.log").exists()
