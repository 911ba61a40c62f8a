"""An arm driven by a sine, and what a camera at its end sees: arm_0.png to arm_3.png."""

import math

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
sim = app.getSimulation()
target = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.3, 0.3)))
target.setPosition(hyx.Vec3(4, 0, 1))
target.setMotionControl(hyx.RigidBody.STATIC)
sim.add(target)
arm = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.05, 0.05)))
arm.setPosition(hyx.Vec3(0.5, 0, 1))
sim.add(arm)
hinge = hyx.Hinge(hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, 1), arm)  # point and axis, in the world
hinge.getMotor1D().setEnable(True)
sim.add(hinge)
app.createVisual(sim)
app.addRenderTarget(eye := hyxOSG.RenderToImage(320, 240))
for number in range(4):
    for _ in range(15):
        hinge.getMotor1D().setSpeed(0.6 * math.cos(2 * math.pi * sim.getTimeStamp()))  # rad/s
        sim.step()
    wrist, ahead = (arm.getTransform().transformPoint(hyx.Vec3(x, 0, 0)) for x in (0.6, 2))
    eye.setViewMatrixAsLookAt(wrist, ahead, hyx.Vec3(0, 0, 1))
    app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
    eye.saveImage(f"arm_{number}.png")
