"""How pictures a second fall with the number of bodies: 20 shapes, all in sight and all moving, 640x480.

    tools/bench many_bodies [--counts 100,1000,10000] [--rounds 3] [--seconds 1] [--plot docs/many_bodies.png]

Prints pictures a second by the clock, and processor milliseconds for each, of all threads and of the one that culls and
sends; medians of the rounds. With --plot also draws them.
"""

import argparse
import statistics
import time

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy

SIZES = numpy.array([0.25, 0.3, 0.35, 0.4])
KINDS = (
    lambda r: hyxCollide.Box(r, r, r),
    lambda r: hyxCollide.Sphere(r),
    lambda r: hyxCollide.Cylinder(r, 2 * r),
    lambda r: hyxCollide.Capsule(0.6 * r, r),
    lambda r: hyxCollide.Cone(r, 2 * r),
)


def field(count):
    """Places on a square grid, a metre apart."""
    side = int(numpy.ceil(numpy.sqrt(count)))
    index = numpy.arange(count)
    return numpy.column_stack([index % side - side / 2, index // side - side / 2, 0 * index]).astype(float)


class Stage:
    def __init__(self, count, samples):
        self.app = hyxOSG.ExampleApplication(look="plain")
        self.app.init(None)
        self.simulation = hyxSDK.Simulation()
        self.app.initSimulation(self.simulation)
        if samples is not None:
            self.app.setNumSamples(samples)
        self.app.initViewer(640, 480)
        self.app.getSceneDecorator().setEnableShadows(False)
        self.places = field(count)
        shapes = [kind(size) for kind in KINDS for size in SIZES]
        colors = numpy.random.default_rng(1).uniform(0.2, 0.95, (count, 3))
        for index, (place, color) in enumerate(zip(self.places.tolist(), colors.tolist())):
            body = hyx.RigidBody(hyxCollide.Geometry(shapes[index % len(shapes)]))
            body.setPosition(hyx.Vec3(*place))  # before it is added: all at one place would all touch
            self.simulation.add(body)
            visual = hyxOSG.createVisual(body, self.app.getSceneRoot())
            hyxOSG.setDiffuseColor(visual, hyx.Vec4f(*color, 1))
        self.bodies = self.simulation.getRigidBodies()
        reach = numpy.sqrt(count)
        self.app.setCameraHome(hyx.Vec3(0, -1.1 * reach, 0.9 * reach), hyx.Vec3(0, -0.05 * reach, 0))

    def draw(self, frame):
        self.places[:, 2] = 0.5 * numpy.sin(0.1 * frame + numpy.arange(len(self.places)))
        self.simulation.setPositions(self.places, self.bodies)
        return self.app.render()


def timed(stage, seconds):
    """Pictures a second, and processor milliseconds of all threads and of this one."""
    start = time.perf_counter(), time.process_time(), time.thread_time()
    frames = 0
    while frames < 2 or time.perf_counter() - start[0] < seconds:
        stage.draw(frames)
        frames += 1
    clock, processor, own = (end - begin for end, begin in zip(_now(), start))
    return frames / clock, 1000 * processor / frames, 1000 * own / frames


def _now():
    return time.perf_counter(), time.process_time(), time.thread_time()


def measure(count, options):
    with_stage = Stage(count, options.samples)
    for frame in range(3):
        picture = with_stage.draw(frame)
    rounds = [timed(with_stage, options.seconds) for _ in range(options.rounds)]
    with_stage.app.close()
    return tuple(map(statistics.median, zip(*rounds))), picture


def plot(counts, figures, picture, path):
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot

    figure, (left, right) = pyplot.subplots(1, 2, figsize=(11, 4), constrained_layout=True)
    left.loglog(counts, [row[1] for row in figures], "o-", label="all threads")
    left.loglog(counts, [row[2] for row in figures], "s--", label="the thread that culls and sends")
    left.set(xlabel="bodies", ylabel="processor time for a picture [ms]")
    left.grid(True, which="both", alpha=0.3)
    left.legend()
    right.imshow(picture)
    right.set_title(f"{counts[-1]:,} bodies of 20 shapes")
    right.axis("off")
    figure.savefig(path, dpi=80)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--counts", default="100,200,500,1000,2000,5000,10000")
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--seconds", type=float, default=1)
    parser.add_argument("--samples", type=int, help="of each pixel; by default as the application comes")
    parser.add_argument("--plot", help="a picture of the figures, and of the last scene")
    options = parser.parse_args()
    counts = [int(word) for word in options.counts.split(",")]
    figures = []
    print(f"{'bodies':>8}{'pictures/s':>12}{'all [ms]':>10}{'own [ms]':>10}", flush=True)
    for count in counts:
        row, picture = measure(count, options)
        figures.append(row)
        print(f"{count:8}{row[0]:12.1f}{row[1]:10.2f}{row[2]:10.2f}", flush=True)
    if options.plot:
        plot(counts, figures, picture, options.plot)


if __name__ == "__main__":
    main()
