"""A turn of a lidar as a picture: rows are its rings, colours its distances."""

import math

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
import hyxSensor
import numpy
from PIL import Image

sim = hyxSDK.Simulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(14):
    tree = hyxCollide.Geometry(hyxCollide.Capsule(0.4, 2.5))
    tree.setLocalPosition((6 * math.cos(number * 0.9) + number % 3, 6 * math.sin(number * 0.9), 1.5))
    tree.setLocalRotation(hyx.Quat(math.pi / 2, (1, 0, 0)))
    sim.add(tree)
lidar = hyxSensor.Lidar(hyx.Frame(hyx.AffineMatrix4x4.translate((0, 0, 1.6))))
lidar.setResolution(96, 640)
lidar.setFieldOfView(math.tau, 0.9)
sim.add(lidar)
lidar.scan()
cloud = lidar.cloud  # x, y, z, time, intensity, distance, identity, ring, ...
column = numpy.rint(numpy.arctan2(cloud["y"], cloud["x"]) / math.tau * 640).astype(int) % 640
picture = numpy.zeros((96, 640, 3))
picture[95 - cloud["ring"], column] = hyxOSG.ColorScale("viridis_r", 2, 15).colors(cloud["distance"])[:, :3]
Image.fromarray((255 * picture).astype(numpy.uint8)).resize((640, 192)).save("lidar_distances.png")
