"""What a thousand reloads of scenes of all kinds leave behind: memory and processor time of frames after 10, 100, 1000.

    tools/bench scene_reloads [RELOADS]

Scenes take turns, A, B, A; then files of each kind. Exits with 1 when a kind grows.
"""

import gc
import os
import statistics
import sys
import tempfile
import time
from pathlib import Path

import hyxIO
import hyxOSG
from living import write_files

SCENES = """
import hyx, hyxCollide, hyxOSG

class Counter(hyxOSG.ExampleApplicationListener):
    def preFrame(self, app):
        self.frames = getattr(self, "frames", 0) + 1

def stack(sim, root, count):
    for i in range(count):
        body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)), f"box{i}")
        body.setPosition(hyx.Vec3(0.7 * (i % 4), 0.1 * i, 1 + 0.7 * (i // 4)))
        sim.add(body)
        hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, root), hyx.Vec4f(0.9, 0.1 * (i % 5), 0.2, 1))
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(5, 5, 0.5)), "ground")
    ground.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(ground)
    hyxOSG.createVisual(ground, root)

def buildA(sim, app, root):
    stack(sim, root, 12)
    app.getSceneDecorator().setEnableShadows(True)
    app.getSceneDecorator().setText(0, "A", hyx.Vec4f(1, 1, 1, 1))
    app.addListener(Counter())
    app.addRenderTarget(hyxOSG.RenderToImage(64, 64))
    app.setStepCallback(hyx.Callback(lambda: None))
    root.addChild(hyxOSG.Text("mark", hyx.Vec3(0, 0, 2), hyx.Vec4(1, 1, 1, 1)))

def buildB(sim, app, root):
    stack(sim, root, 8)
    grains = hyx.ParticleSystem()
    grains.setParticleRadius(0.05)
    sim.add(grains)
    for i in range(50):
        grains.createParticle(hyx.Vec3(0.12 * (i % 10), 0.12 * (i // 10), 4), hyx.Vec3())
    hyxOSG.createVisual(grains, root)
    app.setLook("paper")
    app.getSceneDecorator().setBackgroundColor(hyx.Vec4f(0, 0, 1, 1))
    app.setEnableGrid(True)
    app.addListener(Counter())
"""


def resident():
    """MiB of this process, without what the cyclic collector would free."""
    gc.collect()
    return int(Path("/proc/self/statm").read_text().split()[1]) * os.sysconf("SC_PAGESIZE") / 2**20


def frame_time(app, count=15):
    """The median of the processor time of a frame, in ms."""
    times = []
    for _ in range(count):
        start = time.process_time()
        app.step()
        times.append(1000 * (time.process_time() - start))
    return statistics.median(times)


def measure(app, name, turn, reloads):
    """Prints memory and frame time as the reloads go, and says whether they stayed."""
    marks, figures = {reloads // 100, reloads // 10, reloads}, []
    for number in range(1, reloads + 1):
        start = time.process_time()
        turn(number)
        if number in marks:
            figures.append((resident(), 1000 * (time.process_time() - start), frame_time(app)))
            text = "{:.1f} MiB, {:.2f} ms the reload, {:.2f} ms a frame".format(*figures[-1])
            print(f"{name} after {number}: {text}", flush=True)
    *former, (memory, _, last) = figures  # drivers give memory back when they like
    return memory - max(before for before, _, _ in former) < 5 and last < 1.5 * max(time for _, _, time in former)


def application():
    app = hyxOSG.ExampleApplication()
    app.init(hyxIO.ArgumentParser([]))
    app.initViewer(160, 120, True)
    app.initScene()
    return app


def main():
    reloads = int(sys.argv[1]) if len(sys.argv) > 1 else 1000
    kept = []
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        write_files(folder)
        (folder / "scenes.py").write_text(SCENES)
        app = application()
        app.addScene(str(folder / "scenes.py"), "buildA")
        app.addScene(str(folder / "scenes.py"), "buildB")

        def take_turns(number):
            app.createSceneFromIndex(number % 2)
            app.step()

        kept.append(measure(app, "scenes A, B, A", take_turns, reloads))
        for files in (["scene.json"], ["robot.urdf"], ["model.glb"], ["run.h5"], ["scene.json", "here.state"]):

            def show(number, paths=[str(folder / file) for file in files]):
                for path in paths:
                    app.showFile(path)
                app.step()

            kept.append(measure(app, files[-1], show, reloads))
    sys.exit(not all(kept))


if __name__ == "__main__":
    main()
