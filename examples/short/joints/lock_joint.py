"""A shelf of locked boxes; what each joint has to bear, from the wall outwards."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
wall = hyxCollide.Geometry(hyxCollide.Box(0.1, 0.6, 0.8))
wall.setLocalPosition((-0.35, 0, 0))
sim.add(wall)
boxes, joints = [], []
for number in range(7):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.25, 0.3, 0.1)))
    box.setPosition((0.5 * number, 0, 0))
    sim.add(box)
    joints.append(hyx.LockJoint(box, boxes[-1] if boxes else None))
    sim.add(joints[-1])
    boxes.append(box)
sim.stepTo(1)
app.createVisual(sim)
force, torque = hyx.Vec3(), hyx.Vec3()
for box, joint in zip(boxes, joints):
    joint.getLastForce(0, force, torque)
    share = torque.length() / 10000
    hyxOSG.setDiffuseColor(box, (0.3 + 0.6 * share, 0.6 - 0.4 * share, 0.3, 1), app.getRoot())
    print(f"{force.z:.0f} N, {torque.y:.0f} Nm")
app.setCameraHome((1.5, -5, 2.5), (1.4, 0, 0))
app.takeScreenShot("lock_joint.png")
