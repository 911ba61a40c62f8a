"""Records a swinging ball, plays the recording back and plots its height.

    03_journal.py [--output FOLDER]

The journal is an HDF5 file: any other program can read the arrays of positions and velocities in it.
"""

import argparse
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG


def build(sim):
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.2)), "ball")
    ball.setPosition(hyx.Vec3(1.5, 0, 2))
    sim.add(ball)
    sim.add(hyx.Hinge(hyx.Vec3(0, 0, 2), hyx.Vec3(0, 1, 0), ball))


def plot(points, file, width=640, height=240):
    """A curve as a picture that browsers show (SVG)."""
    times, values = zip(*points)
    low, high = min(values), max(values)
    xy = " ".join(f"{width * t / times[-1]:.1f},{height * (high - v) / (high - low or 1):.1f}" for t, v in points)
    file.write_text(
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}">'
        f'<polyline points="{xy}" fill="none" stroke="#27566b" stroke-width="2"/></svg>\n'
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("."))
    options = parser.parse_args()

    app = hyxOSG.ExampleApplication()
    app.initSimulation()
    app.initViewer(480, 320)
    build(app.getSimulation())
    app.createVisual(app.getSimulation())
    app.setCameraHome(hyx.Vec3(0, -7, 1.5), hyx.Vec3(0, 0, 1.5))

    app.setJournalRecordPath(str(options.output / "swing.h5"))
    app.setEnableJournalRecord(True)
    app.stopAfter(5.0)
    app.run()  # the end of the loop closes the journal

    app.stopAfter(-1)
    app.clearScene()
    app.journalPlayback()
    heights = []
    while app.getAutoStepping():  # the end of the journal pauses the application
        app.step()
        heights.append((app.getTimeStamp(), app.getSimulation().getRigidBody("ball").getPosition().z))
    plot(heights, options.output / "swing.svg")
    print(f"{len(heights)} states, lowest {min(h for _, h in heights):.3f} m")


if __name__ == "__main__":
    main()
