"""Damaged files: good ones with bytes, words and lengths changed by a seeded generator.

`python mutations.py COUNT [KIND...]` tries the seeds 0 to COUNT - 1 of each kind as an application would read them,
in a process that may die. It tells of deaths, files that take long, much memory, and files opened elsewhere.
"""

import collections
import contextlib
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from good_files import JOURNALS, PICTURES, SCENES, good_files

GREAT = (0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF)
NUMBERS = (b"-1", b"0", b"99999999999", b"4294967295", b"1e999", b"nan", b"")
LONGEST = 10.0  # seconds for one small file: the limit of a trial, and what starting its process takes
MOST_MEMORY = 1_000_000  # kB, of either process
# Where the interpreter and its libraries have their files.
SYSTEM = ("/usr/", "/lib", "/etc/", "/proc/", "/sys/", "/dev/", "/var/cache/fontconfig", "/memfd:", "pipe:", "socket:")


def mutate(good, seed):
    """One to eight changes of a file, which follow from the seed."""
    dice, data = random.Random(seed), bytearray(good)
    for _ in range(dice.choice((1, 1, 1, 2, 3, 5, 8))):
        if not data:
            break
        place, change = dice.randrange(len(data)), dice.randrange(7)
        if change == 0:
            data[place] = dice.randrange(256)
        elif change == 1:
            width = dice.choice((1, 2, 4))
            data[place : place + width] = (dice.choice(GREAT) & (256**width - 1)).to_bytes(width, "little")
        elif change == 2:
            del data[place : place + dice.randint(1, 64)]
        elif change == 3:
            data[place:place] = data[place : place + dice.randint(1, 64)]
        elif change == 4:
            del data[place:]
        elif change == 5:
            data[place] ^= 1 << dice.randrange(8)
        else:
            words = bytes(data).split()
            data = bytearray(bytes(data).replace(dice.choice(words), dice.choice(NUMBERS), 1)) if words else data
    return bytes(data)


def play(path):
    """Plays a journal to its end; whether it showed anything."""
    import hyxOSG

    app = hyxOSG.ExampleApplication()
    app.init(None)
    app.initSimulation()
    app.setJournalRecordPath(str(path))
    with contextlib.suppress(RuntimeError, OSError):
        app.journalPlayback()
        while app.getAutoStepping():
            app.step()
    return app.getJournal() is not None and app.getJournal().getNumStates() > 0


def read_log(path):
    """Makes the journal that somebody's process left in a log, and plays it."""
    journal = path.with_name("left.h5")
    journal.unlink(missing_ok=True)
    path.replace(path.with_name("left.h5.log"))
    return play(journal)


def restore(path):
    import hyx
    import hyxCollide
    import hyxSDK

    simulation = hyxSDK.Simulation()
    for number in range(3):
        simulation.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), f"ball {number}"))
    with contextlib.suppress(RuntimeError, OSError):
        simulation.restore(str(path))
        return True


def read_scene(path):
    import hyxOSG
    import hyxSDK
    import osg

    if path.suffix == ".state":
        return restore(path)
    simulation = hyxSDK.Simulation()
    done = hyxOSG.readFile(str(path), simulation, osg.Group())
    simulation.stepTo(0.05)
    return done


def read_font(path):
    import hyxOSG

    text = hyxOSG.Text()
    text.setFont(str(path))
    text.setText("some text")
    return True


def read(path, kind=None):
    """What an application does with a file: reads it and walks over what came."""
    import hyxOSG
    import osgDB

    kind = kind or path.suffix[1:]
    if kind in PICTURES:
        return osgDB.readImageFile(str(path))
    if kind in JOURNALS:
        return read_log(path) if kind == "log" else play(path)
    if kind in SCENES:
        return read_scene(path)
    if kind == "ttf":
        return read_font(path)
    node = hyxOSG.readNodeFile(str(path), False)
    if node:
        hyxOSG.smoothNormals(node, 0.5)
        hyxOSG.createTrimesh(node)
        node.getBound()
    return node


def work(folder, kind, first, count):
    """In a process of its own: says before and after each seed how far it is, and at last what memory it took."""
    good = (folder / f"good.{kind}").read_bytes()
    path = folder / "tried" / f"bad.{kind}"
    path.write_bytes(good)
    assert read(path, kind), f"the good file of the kind {kind} cannot be read"
    for seed in range(first, count):
        path.write_bytes(mutate(good, f"{kind}{seed}"))
        signal.alarm(int(3 * LONGEST))  # ends the process also in the midst of native code
        print("begin", seed, flush=True)
        print("end", int(bool(read(path, kind))), flush=True)
    own = re.search(r"VmHWM:\s*(\d+)", pathlib.Path("/proc/self/status").read_text())[1]
    print("memory", max(int(own), resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss), flush=True)


def opened_elsewhere(log, folder):
    """The files that a trace tells of and that are neither the system's nor in the folder of the file that is read."""
    homes = (
        *SYSTEM,
        sys.prefix,
        sys.base_prefix,
        *filter(None, sys.path),
        str(folder / "tried"),
        str(folder / "good."),
    )
    opened = re.findall(
        r'(?:open|openat|creat|execve)\((?:AT_FDCWD, )?"([^"]*)".* = \d+', log.read_text(errors="replace")
    )
    caches = (str(pathlib.Path.home() / ".cache"), str(folder))
    return {path for path in opened if path.startswith("/") and not path.startswith(homes) and path not in caches} | {
        path for path in opened if not path.startswith("/") and path != "."
    }


def said(stream):
    """What the worker says, between what libraries print."""
    for line in stream:
        if words := re.match(r"(begin|end|memory) (\d+)$", line):
            yield words[1], int(words[2])


class Trial:
    """Runs the worker, again behind each file that it dies of or does not end with, and notes what should not be."""

    def __init__(self, folder):
        self.folder, self.traced = pathlib.Path(folder), bool(shutil.which("strace"))
        self.deaths, self.slow, self.elsewhere, self.memory = [], [], set(), 0
        self.tally = collections.Counter()
        (self.folder / "tried").mkdir(exist_ok=True)

    def run(self, kind, count):
        seed = 0
        while seed < count:
            seed = self.run_from(kind, seed, count)

    def run_from(self, kind, first, count):
        """The seed to go on with."""
        log = self.folder / "trace"
        tracer = ["strace", "-f", "-qq", "--seccomp-bpf", "-e", "trace=open,openat,creat,execve", "-o", str(log)]
        command = [sys.executable, __file__, "--work", str(self.folder), kind, str(first), str(count)]
        if self.traced:
            command = tracer + command
        seed, begun = first, time.monotonic()
        streams = {"stdout": subprocess.PIPE, "stderr": subprocess.DEVNULL, "text": True, "errors": "replace"}
        environment = {**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))}
        with subprocess.Popen(command, env=environment, **streams) as process:
            for word, number in said(process.stdout):
                if word == "begin":
                    seed, begun = number, time.monotonic()
                elif word == "end":
                    self.tally[kind, number] += 1
                    if time.monotonic() - begun > LONGEST:
                        self.slow.append((kind, seed))
                else:
                    self.memory = max(self.memory, number)
        died = process.returncode
        if self.traced:
            self.elsewhere |= opened_elsewhere(log, self.folder)
        if died:
            self.deaths.append((kind, seed, died))
        return seed + 1

    def faults(self):
        found = {"deaths": self.deaths, "slow": self.slow, "opened": sorted(self.elsewhere)}
        if self.memory > MOST_MEMORY:
            found["memory"] = self.memory
        return {name: what for name, what in found.items() if what}


def main(count, kinds):
    with tempfile.TemporaryDirectory() as folder:
        files = good_files(folder)
        trial = Trial(folder)
        for kind in kinds or files:
            trial.run(kind, count)
            print(f"{kind}: {trial.tally[kind, 1]} read, {trial.tally[kind, 0]} refused", trial.faults(), flush=True)
    print(f"{sum(trial.tally.values())} files, {trial.memory} kB at most, faults: {trial.faults() or 'none'}")


if __name__ == "__main__":
    if sys.argv[1] == "--work":
        work(pathlib.Path(sys.argv[2]), sys.argv[3], int(sys.argv[4]), int(sys.argv[5]))
    else:
        main(int(sys.argv[1]), sys.argv[2:])
