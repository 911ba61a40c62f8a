"""Off-screen frames read back into NumPy against a plain C++ loop, and what recording a video costs.

    tools/bench read_back

The two loops draw the first example's scene in turn; printed are medians and the ratio of the rounds' pairs. A video
should cost no more than the slower of drawing and encoding, where the machine has a processor for each.
"""

import importlib
import os
import random
import statistics
import subprocess
import tempfile
import time

import hyx
import hyxOSG
import hyxSDK
import plain_read_back

WIDTH, HEIGHT, ROUNDS, FRAMES = 640, 480, 11, 40
STEP = 1 / 60


def demo_application():
    example = importlib.import_module("01_falling_boxes")
    app = hyxOSG.ExampleApplication(look="plain")
    app.init(None)
    simulation = hyxSDK.Simulation()
    app.initSimulation(simulation)
    app.initViewer(64, 48)
    example.add_ground(simulation, app.getSceneRoot())
    example.add_bodies(simulation, app.getSceneRoot(), 200, random.Random(1))
    app.setRealTimeSync(False)
    app.setTargetFPS(0)
    return app, simulation


def demo_target():
    target = hyxOSG.RenderToImage(WIDTH, HEIGHT)
    target.setViewMatrixAsLookAt(hyx.Vec3(6, -8, 4), hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, 1))
    target.setProjectionMatrixAsPerspective(45.0, WIDTH / HEIGHT, 0.1, 100.0)
    return target


def read_back_from_python(app, target, frames):
    timer, total = hyx.HighAccuracyTimer(), 0
    for _ in range(frames):
        app.executeOneStepWithGraphics(timer)
        total += int(target.pixels[HEIGHT // 2, WIDTH // 2, 0])
    return total


def seconds(loop, *arguments):
    start = time.perf_counter()
    loop(*arguments)
    return time.perf_counter() - start


def compare_read_back(app, target):
    pairs = []
    for _ in range(ROUNDS):
        app.addRenderTarget(target, app.getSceneRoot())
        read_back_from_python(app, target, 2)
        ours = FRAMES / seconds(read_back_from_python, app, target, FRAMES)
        app.removeRenderTarget(target)
        plain_read_back.run(app, target, 2)
        pairs.append((ours, FRAMES / seconds(plain_read_back.run, app, target, FRAMES)))
    ours, plain = (statistics.median(column) for column in zip(*pairs))
    ratio = statistics.median(a / b for a, b in pairs)
    print(f"read back into NumPy {ours:6.1f} frames/s, plain C++ loop {plain:6.1f} frames/s, ratio {ratio:.3f}")


def encoder_alone(frame, frames, file):
    """Seconds that the encoder takes for the same number of frames when nothing else runs."""
    command = [
        "ffmpeg",
        "-v",
        "error",
        "-y",
        "-f",
        "rawvideo",
        "-pixel_format",
        "rgb24",
        "-video_size",
        f"{WIDTH}x{HEIGHT}",
    ]
    command += [
        "-framerate",
        "60",
        "-i",
        "-",
        "-c:v",
        "libx264",
        "-preset",
        "veryfast",
        "-crf",
        "18",
        "-pix_fmt",
        "yuv420p",
        file,
    ]
    return seconds(lambda: subprocess.run(command, input=frame * frames, check=True))


def measure_video(app, simulation, target, folder):
    frames = 3 * FRAMES
    app.addRenderTarget(target, app.getSceneRoot())
    read_back_from_python(app, target, 2)
    drawing = seconds(read_back_from_python, app, target, frames)
    video = hyxOSG.VideoFFMPEGPipeCapture(WIDTH, HEIGHT, 1 / STEP, simulation)
    video.setFilename(os.path.join(folder, "video"))
    target.setImageCapture(video)

    def record():
        with video:
            read_back_from_python(app, target, frames)

    both = seconds(record)
    encoding = encoder_alone(target.pixels[::-1, :, :3].tobytes(), frames, os.path.join(folder, "alone.mp4"))
    milliseconds = 1000 / frames
    print(
        f"a frame takes {drawing * milliseconds:.1f} ms drawn, {encoding * milliseconds:.1f} ms encoded alone, "
        f"{both * milliseconds:.1f} ms drawn and recorded"
    )


def main():
    app, simulation = demo_application()
    target = demo_target()
    compare_read_back(app, target)
    with tempfile.TemporaryDirectory() as folder:
        measure_video(app, simulation, target, folder)


if __name__ == "__main__":
    main()
