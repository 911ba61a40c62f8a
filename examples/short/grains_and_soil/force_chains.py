"""Who presses whom in a bed of grains: the graph of their contacts, coloured by force."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
grains = hyx.ParticleSystem()
grains.setParticleRadius(0.08)
for half, place in (((1, 0.3, 0.05), (0, 0, -0.05)), ((0.05, 0.3, 1), (-1, 0, 0.9)), ((0.05, 0.3, 1), (1, 0, 0.9))):
    wall = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(half)))
    wall.setPosition(place)
    wall.setMotionControl(hyx.RigidBody.STATIC)
    sim.add(wall)
    grains.addObstacle(wall)
for number in range(150):
    column, row = number % 11, number // 11
    grains.createParticle((-0.84 + 0.166 * column + 0.02 * (row % 2), 0, 0.1 + 0.17 * row), (0, 0, 0))
sim.add(grains)
sim.stepTo(2)
heaviest = max(contact.force for contact in grains.getContacts())
hyxOSG.createParticleContactGraph(grains, app.getSceneRoot(), 0, heaviest)
print(len(grains.getContacts()), "contacts, up to", round(heaviest), "N")
app.setCameraHome((0, -4, 1), (0, 0, 0.9))
app.takeScreenShot("force_chains.png")
