"""Eight sensor cameras with all channels, beside a loop of a user's own that draws the same without a scene graph.

    pip install moderngl
    tools/bench sensor_cameras

Both draw 200 boxes on a ground, smooth the edges of colours with four samples, and give NumPy arrays of colours,
depth, identities, normals and flow, rows from the top. Printed are processor times, which count the threads of a
software rasterizer, too, and the median of the ratios of rounds taken in turn.
"""

import itertools
import multiprocessing
import statistics
import time

import hyx
import hyxCollide
import hyxOSG
import moderngl
import numpy

WIDTH, HEIGHT, CAMERAS, ROUNDS, FRAMES = 320, 240, 8, 9, 4
CHANNELS = "rgb", "depth", "identity", "normals", "flow"
BOXES = [((i % 20 - 10) * 0.8, (i // 20 - 5) * 0.8, 0.3) for i in range(200)]

VERTEX = """
#version 330
uniform mat4 model, before, view, view_before, projection;
in vec3 place, normal;
out vec3 eye_normal;
out float depth;
out vec4 now, then;
void main() {
    vec4 eye = view * model * vec4(place, 1);
    eye_normal = mat3(view) * mat3(model) * normal;
    depth = -eye.z;
    now = gl_Position = projection * eye;
    then = projection * view_before * before * vec4(place, 1);
}"""
TRUTH = """
#version 330
uniform float identity;
uniform vec2 size;
in vec3 eye_normal;
in float depth;
in vec4 now, then;
layout(location = 0) out vec4 first;
layout(location = 1) out vec4 second;
void main() {
    vec2 flow = (now.xy / now.w - then.xy / then.w) * size / 2 * vec2(1, -1);
    first = vec4(depth, identity, flow);
    second = vec4(normalize(eye_normal) * vec3(1, -1, -1), 1);
}"""
COLOR = """
#version 330
uniform vec3 color;
in vec3 eye_normal;
out vec4 shown;
void main() { shown = vec4(color * (0.2 + 0.8 * max(dot(normalize(eye_normal), vec3(0.3, 0.5, 0.8)), 0.0)), 1); }"""


def eyes():
    return [(9 * numpy.cos(a), 9 * numpy.sin(a), 4) for a in numpy.arange(CAMERAS) * 2 * numpy.pi / CAMERAS]


class Ours:
    def __init__(self):
        self.app = hyxOSG.ExampleApplication(look="plain")
        self.app.init(None)
        self.app.initViewer(64, 48)
        self.bodies = []
        for half, place in [((0.2, 0.2, 0.3), place) for place in BOXES] + [((12, 12, 0.1), (0, 0, -0.1))]:
            body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(*half)))
            body.setPosition(hyx.Vec3(*place))
            self.app.getSimulation().add(body)
            hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, self.app.getSceneRoot()), hyx.Vec4f(0.3, 0.5, 0.8, 1))
            self.bodies.append(body)
        self.cameras = [hyxOSG.SensorCamera(self.app, WIDTH, HEIGHT, field_of_view=60) for _ in range(CAMERAS)]
        for camera, eye in zip(self.cameras, eyes()):
            camera.look_at(eye, (0, 0, 0))

    def frame(self, lift):
        for body, place in zip(self.bodies, BOXES):
            body.setPosition(hyx.Vec3(place[0], place[1], place[2] + lift))
        return [[getattr(frame, name) for name in CHANNELS] for frame in hyxOSG.read_cameras(self.cameras, *CHANNELS)]


def box_mesh():
    """36 corners with their normals, of a box from -1 to 1."""
    corners = []
    for axis, sign in itertools.product(range(3), (-1, 1)):
        normal = numpy.eye(3)[axis] * sign
        u, v = numpy.eye(3)[(axis + 1) % 3], numpy.eye(3)[(axis + 2) % 3] * sign
        square = [normal - u - v, normal + u - v, normal + u + v, normal - u + v]
        corners += [numpy.concatenate([square[i], normal]) for i in (0, 1, 2, 0, 2, 3)]
    return numpy.array(corners, "f4")


def view_of(eye):
    back = numpy.array(eye) / numpy.linalg.norm(eye)
    right = numpy.cross((0, 0, 1), back)
    right /= numpy.linalg.norm(right)
    view = numpy.eye(4)
    view[:3, :3] = [right, numpy.cross(back, right), back]
    view[:3, 3] = -view[:3, :3] @ eye
    return view


class Plain:
    def __init__(self):
        self.context = moderngl.create_context(standalone=True, backend="egl")
        self.context.enable(moderngl.DEPTH_TEST)
        buffer = self.context.buffer(box_mesh().tobytes())
        size = (WIDTH, HEIGHT)
        self.programs = [self.context.program(VERTEX, text) for text in (TRUTH, COLOR)]
        self.arrays = [self.context.vertex_array(p, [(buffer, "3f 3f", "place", "normal")]) for p in self.programs]
        layers = [self.context.texture(size, 4, dtype="f4") for _ in range(2)]
        self.truth = self.context.framebuffer(layers, self.context.depth_renderbuffer(size))
        self.smooth = self.context.framebuffer(
            [self.context.renderbuffer(size, 4, samples=4)], self.context.depth_renderbuffer(size, samples=4)
        )
        self.color = self.context.framebuffer([self.context.renderbuffer(size, 4)])
        focal = 1 / numpy.tan(numpy.radians(30))
        near, far = 0.1, 100
        projection = numpy.zeros((4, 4))
        projection[0, 0], projection[1, 1], projection[3, 2] = focal * HEIGHT / WIDTH, focal, -1
        projection[2, 2:] = -(far + near) / (far - near), -2 * far * near / (far - near)
        self.projection, self.views, self.former = projection, [view_of(eye) for eye in eyes()], None

    def frame(self, lift):
        models = []
        for half, place in [((0.2, 0.2, 0.3), (x, y, z + lift)) for x, y, z in BOXES] + [((12, 12, 0.1), (0, 0, -0.1))]:
            model = numpy.diag([*half, 1.0])
            model[:3, 3] = place
            models.append(model.T.astype("f4").tobytes())
        former, self.former = self.former or models, models
        return [self.camera(view, models, former) for view in self.views]

    def camera(self, view, models, former):
        for program, array, target in zip(self.programs, self.arrays, (self.truth, self.smooth)):
            target.use()
            target.clear()
            for name, matrix in (("view", view), ("view_before", view), ("projection", self.projection)):
                if name in program:
                    program[name].write(matrix.T.astype("f4").tobytes())
            if "size" in program:
                program["size"] = (WIDTH, HEIGHT)
            else:
                program["color"] = (0.3, 0.5, 0.8)
            for number, (model, before) in enumerate(zip(models, former)):
                program["model"].write(model)
                if "before" in program:
                    program["before"].write(before)
                    program["identity"] = number + 1
                array.render()
        self.context.copy_framebuffer(self.color, self.smooth)
        rgb = numpy.frombuffer(self.color.read(components=3), numpy.uint8).reshape(HEIGHT, WIDTH, 3)[::-1].copy()
        first, second = (
            numpy.frombuffer(self.truth.read(components=4, attachment=i, dtype="f4"), "f4").reshape(HEIGHT, WIDTH, 4)
            for i in range(2)
        )
        depth, identity = first[::-1, :, 0].copy(), first[::-1, :, 1].astype(numpy.uint32)
        depth[identity == 0] = numpy.inf
        return rgb, depth, identity, second[::-1, :, :3].copy(), first[::-1, :, 2:].copy()


def serve(kind, requests):
    """In a process of its own: two programs have no current context in common."""
    program = kind()
    while (start := requests.recv()) is not None:
        begun = time.process_time()
        for i in range(FRAMES):
            frames = program.frame(0.01 * (start + i))
        requests.send(((time.process_time() - begun) / FRAMES, [frame[1:3] for frame in frames]))


def main():
    context = multiprocessing.get_context("spawn")
    ends = []
    for kind in (Ours, Plain):
        mine, other = context.Pipe()
        context.Process(target=serve, args=(kind, other), daemon=True).start()
        ends.append(mine)

    def turn(end, start):
        end.send(start)
        return end.recv()

    ours, plain = (turn(end, 0)[1] for end in ends)
    same = [(abs(a[0] - b[0]) < 1e-3)[(a[1] > 0) & (b[1] > 0)].mean() for a, b in zip(ours, plain)]
    print(f"{100 * min(same):.2f} % of the pixels have the same depth")
    pairs = [[turn(end, i)[0] for end in ends] for i in range(ROUNDS)]
    own, other = (1000 * statistics.median(column) for column in zip(*pairs))
    ratio = statistics.median(b / a for a, b in pairs)
    print(
        f"{CAMERAS} cameras, all channels: {own:.0f} ms, the loop {other:.0f} ms, {ratio:.2f} of its rate (0.9 wanted)"
    )
    for end in ends:
        end.send(None)


if __name__ == "__main__":
    main()
