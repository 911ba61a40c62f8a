"""A lidar's points in a file: lidar_points.csv, x y z in metres and the intensity."""

import math

import hyx
import hyxCollide
import hyxSDK
import hyxSensor
import numpy

sim = hyxSDK.Simulation()
for number in range(6):
    geometry = hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 1))
    angle = math.tau * number / 6
    geometry.setLocalPosition(hyx.Vec3(5 * math.cos(angle), 5 * math.sin(angle), 1))
    sim.add(geometry)
lidar = hyxSensor.Lidar(hyx.Frame(hyx.AffineMatrix4x4.translate(hyx.Vec3(0, 0, 1))))
lidar.setResolution(360, 16)
lidar.setFieldOfView(math.tau, 0.5)  # radians, around and up
sim.add(lidar)
lidar.scan()
points = numpy.column_stack([numpy.asarray(lidar.getPoints()), numpy.asarray(lidar.getIntensities())])
numpy.savetxt("lidar_points.csv", points, "%.4f", ",", header="x,y,z,intensity")
