"""Loads a robot description (URDF) and drives its joints to and fro.

    04_robot.py [MODEL.urdf] [--seconds S] [--output PICTURE]
"""

import argparse
import math
from pathlib import Path

import hyx
import hyxOSG
import hyxtavlang

ARM = Path(__file__).parent / "data" / "arm.urdf"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("model", nargs="?", type=Path, default=ARM)
    parser.add_argument("--seconds", type=float, default=4.0)
    parser.add_argument("--output", default="robot.png")
    options = parser.parse_args()

    app = hyxOSG.ExampleApplication()
    app.initSimulation()
    app.initViewer(640, 480)
    params = hyxtavlang.OptParams()
    params.setFixedBase(True)
    result = app.loadTavLangFile(str(options.model), app.getSceneRoot(), params)
    if not result.isSuccess():
        raise SystemExit("\n".join(result.getErrors()))

    joints = [joint for joint in app.getSimulation().getConstraints() if hasattr(joint, "getMotor1D")]
    for joint in joints:
        joint.getMotor1D().setEnable(True)

    def drive():
        for index, joint in enumerate(joints):
            joint.getMotor1D().setSpeed(0.8 * math.sin(2 * app.getTimeStamp() + index))

    app.setStepCallback(hyx.Callback(drive))
    app.fitSceneIntoView()
    app.setEnableGrid(True)
    app.stopAfter(options.seconds)
    app.run()
    app.takeScreenShot(options.output)
    for joint in joints:
        print(f"{joint.getName()}: {joint.getAngle():.2f}")


if __name__ == "__main__":
    main()
