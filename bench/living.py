"""Whether the application can be lived in: real time, pictures beside heavy steps, rest while paused, seeks, opening.

    tools/bench living

Exits with 1 when a figure misses its limit on an idle 2-core machine.
"""

import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import hyx
import hyxCollide
import hyxIO
import hyxOSG
import trimesh

SECONDS = 4
ROBOT = """<robot name="r"><link name="base"><inertial><mass value="1"/><inertia ixx="1" iyy="1" izz="1" ixy="0" ixz="0"
iyz="0"/></inertial><visual><geometry><box size="1 1 1"/></geometry></visual></link></robot>"""
SCENE = '{"bodies": [{"name": "box", "geometries": [{"shape": "box", "halfExtents": [1, 1, 1]}]}]}'
SCRIPT = """
import hyx, hyxCollide
def buildScene(sim, app, root):
    sim.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), "ball"))
    app.createVisual(sim)
"""


def scene(*options, time_step=1 / 60, bodies=20):
    app = hyxOSG.ExampleApplication()
    app.init(hyxIO.ArgumentParser(list(options)))
    app.initViewer(640, 480)
    app.setTimeStep(time_step)
    for i in range(bodies):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.4, 0.4, 0.4)), f"box{i}")
        body.setPosition(hyx.Vec3(i % 5, i // 5, 1))
        app.getSimulation().add(body)
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Plane()), "ground")
    ground.setMotionControl(hyx.RigidBody.STATIC)
    app.getSimulation().add(ground)
    app.createVisual(app.getSimulation())
    app.setRealTimeSync(True)
    return app


class Watch(hyxOSG.ExampleApplicationListener):
    """Ends the loop after some seconds, of which the first is left out."""

    def __init__(self):
        super().__init__()
        self.begin, self.start, self.frames = time.monotonic(), None, 0

    def postFrame(self, app):
        now = time.monotonic()
        if self.start is None and now - self.begin > 1:
            self.start, self.simulated, self.used = now, app.getTimeStamp(), time.process_time()
        elif self.start is not None:
            self.frames += 1
            if now - self.start > SECONDS:
                passed = now - self.start
                self.factor = (app.getTimeStamp() - self.simulated) / passed
                self.rate = self.frames / passed
                self.load = (time.process_time() - self.used) / passed
                app.stop()


def run(app):
    watch = Watch()
    app.addListener(watch)
    app.run()
    return watch


def heavy():
    """Frames a second beside a step that takes 50 ms."""
    app = scene()
    app.setStepCallback(hyx.Callback(lambda: time.sleep(0.05)))
    return run(app).rate


def paused():
    app = scene()
    app.setAutoStepping(False)
    return 100 * run(app).load


def seek(folder):
    """The slowest of some seeks in a journal of 100 bodies over an hour at 60 Hz, in ms, after the first."""
    app = scene("--no-graphics", bodies=99)
    app.setJournalRecordPath(str(folder / "hour.h5"))
    app.setEnableJournal32bitMode(True)
    app.initRecordJournal()
    simulation, journal = app.getSimulation(), app.getJournal()
    for step in range(3600 * 60):
        simulation.setTimeStamp(step / 60)
        journal.store(simulation, True)
    app.setEnableJournalRecord(False)
    app.journalPlayback()
    app.goToTime(0)
    times = []
    for target in (3500, 12, 1800, 3599, 700, 2222, 3):
        start = time.perf_counter()
        app.goToTime(target)
        times.append(1000 * (time.perf_counter() - start))
        assert abs(app.getTimeStamp() - target) < 1e-3
    return sorted(times)[len(times) // 2]


def write_files(folder):
    """A file of each kind that the command opens."""
    for name, text in (("scene.py", SCRIPT), ("scene.json", SCENE), ("robot.urdf", ROBOT)):
        (folder / name).write_text(text)
    trimesh.creation.icosphere(5).export(folder / "model.glb")
    app = scene("--no-graphics")
    app.setJournalRecordPath(str(folder / "run.h5"))
    app.initRecordJournal()
    for _ in range(60):
        app.stepSimulation()
    app.setEnableJournalRecord(False)
    app = hyxOSG.ExampleApplication()
    app.init(hyxIO.ArgumentParser(["--no-graphics", str(folder / "scene.json")]))
    app.initScene()
    app.getSimulation().save(str(folder / "here.state"))


def opening(folder, *names):
    """Seconds from the command to the end of a run of one frame, the best of three."""
    command = [sys.executable, "-m", "hyxOSG", *(str(folder / name) for name in names), "--stop-after", "0.01"]
    times = []
    for _ in range(3):
        start = time.perf_counter()
        subprocess.run([*command, "--no-watch"], check=True, capture_output=True, env=os.environ)
        times.append(time.perf_counter() - start)
    return min(times)


def main():
    figures = [
        ("real-time factor at steps of 1 ms", run(scene(time_step=0.001)).factor, 0.99, 1.01),
        ("frames/s beside steps of 50 ms", heavy(), 15, 1000),
        ("% of a core while paused", paused(), 0, 3),
    ]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        figures.append(("ms to seek in an hour of 100 bodies", seek(folder), 0, 20))
        write_files(folder)
        for files in (["scene.py"], ["scene.json"], ["robot.urdf"], ["model.glb"], ["run.h5"]):
            figures.append((f"s to open {files[0]}", opening(folder, *files), 0, 1))
        figures.append(("s to open here.state", opening(folder, "scene.json", "here.state"), 0, 1))
    for text, value, low, high in figures:
        print(f"{text}: {value:.3g} ({low} to {high})", flush=True)
    sys.exit(any(not low <= value <= high for _, value, low, high in figures))


if __name__ == "__main__":
    main()
