"""Points of a moving lidar in the files of other programs: PLY, PCD, LAS and NPZ."""

import hyx
import hyxCollide
import hyxOSG
import hyxSensor

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
for number in range(12):
    sim.add(house := hyxCollide.Geometry(hyxCollide.Box(1.5, 1, 1 + number % 3)))
    house.setLocalPosition((4 * (number // 2) - 10, 5 if number % 2 else -5, 1))
car = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 0.5, 0.5)))
car.setPosition((-6, 0, 0.5))
car.setMotionControl(hyx.RigidBody.KINEMATICS)
car.setVelocity((12, 0, 0))
sim.add(car)
lidar = hyxSensor.Lidar(hyx.Frame(hyx.AffineMatrix4x4.translate((0, 0, 1)), car.getFrame()))
lidar.setIgnoredBody(car)
lidar.setResolution(32, 900)
lidar.setRolling(True)  # each column at its own moment
sim.add(lidar)
sim.stepTo(0.5)
for ending in ("ply", "pcd", "npz"):
    lidar.save(f"street.{ending}")
points = hyxOSG.LidarOutputRenderer(lidar)
app.getSceneRoot().addChild(points)
app.getSceneDecorator().setBackgroundColor((0.04, 0.05, 0.08))
app.setCameraHome((-12, -14, 12), (0, 0, 0))
app.takeScreenShot("lidar_files.png")
