"""A calibrated camera on a moving body: colours, distances, identities, normals and flow of the same moment."""

import argparse
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import numpy
from PIL import Image


def add_tower(app, sim):
    colors = [(0.85, 0.3, 0.2, 1), (0.25, 0.55, 0.8, 1), (0.95, 0.75, 0.2, 1), (0.35, 0.7, 0.4, 1)]
    for i in range(12):
        shape = hyxCollide.Sphere(0.16) if i % 3 == 2 else hyxCollide.Box(0.2, 0.15, 0.12)
        body = hyx.RigidBody(hyxCollide.Geometry(shape))
        body.setPosition(hyx.Vec3(0.5 * (i % 4) - 0.75, 0.3 * (i // 4), 0.6 + 0.3 * (i // 4)))
        sim.add(body)
        hyxOSG.setDiffuseColor(hyxOSG.createVisual(body, app.getSceneRoot(), 2.0), hyx.Vec4f(*colors[i % 4]))


def add_ground(app, sim):
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(6, 6, 0.1)))
    ground.setPosition(hyx.Vec3(0, 0, -0.1))
    ground.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(ground)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(ground, app.getSceneRoot()), hyx.Vec4f(0.75, 0.75, 0.72, 1))


def add_drone(sim):
    """A weightless body that passes by; it carries the camera and is not seen."""
    drone = hyx.RigidBody("drone")
    drone.setMotionControl(hyx.RigidBody.KINEMATICS)
    drone.setPosition(hyx.Vec3(-1.5, -3.5, 1.6))
    drone.setVelocity(hyx.Vec3(1.0, 0, 0))
    sim.add(drone)
    return drone


def pictures(frame):
    """Each channel as colours for the eye."""
    near, far = 2.0, 7.0
    depth = numpy.clip(1 - (frame.depth - near) / (far - near), 0, 1)
    numbers = frame.identity[..., None].astype(float)
    yield "rgb", frame.rgb
    yield "depth", numpy.repeat((255 * depth).astype(numpy.uint8)[..., None], 3, axis=2)
    yield "identity", (255 * numpy.modf(numbers * (0.61803, 0.41421, 0.73205))[0] * (numbers > 0)).astype(numpy.uint8)
    yield "normals", (127.5 * (frame.normals * (1, -1, -1) + 1)).astype(numpy.uint8)
    flow = numpy.clip(numpy.concatenate([frame.flow, 0 * frame.flow[..., :1]], axis=-1) / 6, -1, 1)
    yield "flow", (127.5 * (flow + 1)).astype(numpy.uint8)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the pictures")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)

    app = hyxOSG.ExampleApplication()
    app.init(None)
    sim = hyxSDK.Simulation()
    app.initSimulation(sim)
    app.initViewer(480, 360)
    add_ground(app, sim)
    add_tower(app, sim)
    drone = add_drone(sim)

    lens = (-0.12, 0.02, 0.0, 0.0)  # a little barrel distortion
    camera = hyxOSG.SensorCamera(app, 480, 360, field_of_view=45, distortion=lens)
    camera.follow(drone, camera.looking((0, 0, 0), (1.0, 3.5, -1.2)))
    for _ in range(40):
        sim.step()
        frame = camera.read(*camera.CHANNELS)
    frame.save_npz(options.output / "sensor_camera.npz")
    frame.save_depth_png(options.output / "sensor_camera_millimetres.png")
    for name, colors in pictures(frame):
        path = options.output / f"sensor_camera_{name}.png"
        Image.fromarray(colors).save(path)
        print(path)


if __name__ == "__main__":
    main()
