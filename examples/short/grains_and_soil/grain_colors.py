"""Grains coloured by how fast they are, from an array."""

import hyx
import hyxCollide
import hyxOSG
import numpy

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
grains = hyx.ParticleSystem()
grains.setParticleRadius(0.04)
for half, x, z in (((0.8, 0.5, 0.05), 0, -0.05), ((0.05, 0.5, 0.6), -0.8, 0.5), ((0.05, 0.5, 0.6), 0.8, 0.5)):
    wall = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(half)))
    wall.setPosition((x, 0, z))
    wall.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(wall)
    grains.addObstacle(wall)
sim.add(grains)
jitter = numpy.random.default_rng(1).normal(0, 0.004, (700, 3))
for number, shift in enumerate(jitter):
    x, y, z = number % 7, number // 7 % 6, number // 42
    grains.createParticle((-0.7 + 0.085 * x, -0.22 + 0.085 * y, 0.05 + 0.085 * z) + shift, (0, 0, 0))
sim.stepTo(0.6)
app.createVisual(sim)
hyxOSG.createVisual(grains, app.getSceneRoot())
speeds = numpy.linalg.norm(grains.getVelocities(), axis=1)
scale = hyxOSG.ColorScale("plasma", 0, speeds.max())
grains.setColors(scale.colors(speeds))
bar = hyxOSG.ColorBar(app, scale, "m/s")
app.setCameraHome((0.6, -3.4, 1.3), (0.1, 0, 0.6))
app.takeScreenShot("grain_colors.png")
