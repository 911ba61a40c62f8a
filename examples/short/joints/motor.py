"""Motors with a limited torque: the strongest lifts its load, the weakest cannot."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
for number, torque in enumerate((100, 300, 1000)):
    arm = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.6, 0.08, 0.08)))
    arm.setMass(60)
    arm.setPosition((2 * number - 1.4, 0, 0))
    sim.add(arm)
    hinge = hyx.Hinge((2 * number - 2, 0, 0), (0, -1, 0), arm)
    motor = hinge.getMotor1D()
    motor.setSpeed(0.8)  # rad/s, wanted
    motor.setForceRange(hyx.RangeReal(torque))  # Nm either way
    motor.setEnable(True)
    hinge.setViscosity(50)  # Nm a rad/s
    sim.add(hinge)
    label = hyxOSG.createText(f"{torque} Nm", (2 * number - 2.2, 0, 1), (0.1, 0.1, 0.2, 1), 0.3)
    app.getSceneRoot().addChild(label)
    hyxOSG.createAxes(hinge, app.getSceneRoot(), 1, 0.3)
sim.stepTo(1.2)
app.createVisual(sim)
for arm in sim.getRigidBodies():
    hyxOSG.setDiffuseColor(arm, (0.85, 0.5, 0.2, 1), app.getRoot())
app.setCameraHome((0.3, -5.5, 1), (0.3, 0, 0))
app.takeScreenShot("motor.png")
