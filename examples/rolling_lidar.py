"""A car scans a street while it drives: the points as measured, files for other programs, and a picture of them."""

import argparse
from pathlib import Path

import hyx
import hyxCollide
import hyxOSG
import hyxSensor
import osg

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--output", type=Path, default=Path("output"), help="folder of the files")
folder = parser.parse_args().output
folder.mkdir(parents=True, exist_ok=True)
app = hyxOSG.ExampleApplication()
app.init(None)
app.initSimulation()
paint = hyx.Material("paint")
for x in range(-24, 25, 6):
    for side in (-6, 6):
        house = hyxCollide.Geometry(hyxCollide.Box(2, 1, 2 + x % 4))
        house.setMaterial(paint)
        house.setLocalPosition(hyx.Vec3(x, side, 0))
        app.getSimulation().add(house)
app.getSimulation().add(hyxCollide.Geometry(hyxCollide.Plane(hyx.Vec3(0, 0, 1), hyx.Vec3(0, 0, 0))))
car = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(2, 0.9, 0.7)), "car")
car.setMotionControl(hyx.RigidBody.KINEMATICS)
car.setPosition(hyx.Vec3(-8, 0, 1))
car.setVelocity(hyx.Vec3(14, 0, 0))
app.getSimulation().add(car)

lidar = hyxSensor.Lidar(hyx.Frame(hyx.AffineMatrix4x4(hyx.Vec3(0, 0, 1)), car.getFrame()))
lidar.setIgnoredBody(car)
lidar.setResolution(32, 1024)
lidar.setRolling(True)  # ten turns a second, each column at its own moment
lidar.setMaxReturns(2)
lidar.setBeamDivergence(0.003)
lidar.setReflectivity(paint, 0.4)
lidar.setDistanceNoise(0.01)
lidar.setDropout(0.02)
app.getSimulation().add(lidar)
while lidar.getRevision() < 2:
    app.getSimulation().step()
for ending in ("ply", "pcd", "las", "npz"):
    lidar.save(folder / f"rolling_lidar.{ending}")
cloud = lidar.cloud
print(f"{len(cloud)} points in {1000 * (cloud['time'][-1] - cloud['time'][0]):.0f} ms")

app.initViewer(640, 400)
points = osg.Geometry()
points.vertices = [tuple(point) for point in cloud[["x", "y", "z"]].tolist()]
points.colors = hyxOSG.ColorScale("viridis", 0, 0.1).colors(cloud["time"] - cloud["time"][0])
points.addElements(0, list(range(len(cloud))))  # GL_POINTS
points.getOrCreateStateSet().setMode(0x0B50, osg.StateAttribute.OFF)  # GL_LIGHTING
app.getSceneRoot().addChild(points)
app.setCameraHome(hyx.Vec3(-16, -16, 16), hyx.Vec3(-3, 0, 0))
app.takeScreenShot(str(folder / "rolling_lidar.png"))
