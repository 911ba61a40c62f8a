"""Loads a robot description (URDF) and drives its joints to and fro: a humanoid of 44 joints, or any other.

04_robot.py [MODEL.urdf] [--seconds S] [--output PICTURE]
"""

import argparse
import math
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxtavlang
import jvrc_description  # a description that others made, from PyPI

FATAL = 1  # the readers of mesh files have much to say


def load(app, model):
    """The joints of the model that can be driven; its root hangs in the air."""
    params = hyxtavlang.OptParams()
    params.setFixedBase(True)
    params.setSelfCollision(False)  # the shells of neighbouring links overlap
    result = app.loadTavLangFile(str(model), app.getSceneRoot(), params)
    if not result.isSuccess():
        raise SystemExit("\n".join(result.getErrors()))
    joints = [joint for joint in app.getSimulation().getConstraints() if hasattr(joint, "getMotor1D")]
    return [joint for joint in joints if not joint.getLock1D().isEnabled()]  # the others follow one of these


def towards(joint, target):
    """The speed that brings a joint to a position within about a tenth of a second, inside its range."""
    bounds = joint.getRange1D().getRange() if joint.getRange1D().isEnabled() else hyx.RangeReal()
    return 10 * (bounds.clamp(target) - joint.getAngle())


def decorate(app):
    """A floor below the feet, shadows, and the camera."""
    floor = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(3, 3, 0.05)))
    floor.setMotionControl(hyx.RigidBody.STATIC)
    floor.setPosition(hyx.Vec3(0, 0, -1.05))
    app.getSimulation().add(floor)
    hyxOSG.setDiffuseColor(hyxOSG.createVisual(floor, app.getSceneRoot()), hyx.Vec4f(0.5, 0.5, 0.48, 1))
    decorator = app.getSceneDecorator()
    decorator.setEnableShadows(True)
    light = decorator.getLightSource(hyxOSG.SceneDecorator.LIGHT0)
    light.setPosition(hyx.Vec4(4, -5, 6, 1))
    light.setAmbient(hyx.Vec4f(0.35, 0.35, 0.38, 1))
    decorator.setEnableCalculateLightPositions(hyxOSG.SceneDecorator.LIGHT0, False)
    app.setCameraHome(hyx.Vec3(2.1, -1.3, 0.5), hyx.Vec3(0, 0, -0.1))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("model", nargs="?", type=Path, default=Path(jvrc_description.urdf_path))
    parser.add_argument("--seconds", type=float, default=4.0)
    parser.add_argument("--output", default="robot.png")
    options = parser.parse_args()

    app = hyxOSG.ExampleApplication()
    app.setOsgNotifyLevel(FATAL)
    app.initSimulation()
    app.initViewer(640, 480)
    joints = load(app, options.model)
    for joint in joints:
        joint.getMotor1D().setEnable(True)

    def drive():
        for index, joint in enumerate(joints):
            joint.getMotor1D().setSpeed(towards(joint, 0.5 * math.sin(2 * app.getTimeStamp() + index)))

    app.setStepCallback(hyx.Callback(drive))
    decorate(app)
    app.stopAfter(options.seconds)
    app.run()
    app.takeScreenShot(options.output)
    for joint in joints:
        print(f"{joint.getName()}: {joint.getAngle():.2f}")


if __name__ == "__main__":
    main()
