"""A box on a slide, held by a spring: a lock that gives way by its compliance."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.2, 0.2, 0.2)))
box.setMass(10)
sim.add(box)
slide = hyx.Prismatic((0, 0, 0), (0, 0, 1), box)
spring = slide.getLock1D()
spring.setEnable(True)
spring.setCompliance(1 / 500)  # metres a newton
spring.setDamping(0.05)  # seconds
sim.add(slide)
heights = []
while sim.getTimeStamp() < 4:
    sim.step()
    heights.append((sim.getTimeStamp() - 1.5, 0, box.getPosition().z))
app.createVisual(sim)
hyxOSG.setDiffuseColor(box, (0.3, 0.55, 0.75, 1), app.getRoot())
app.getSceneRoot().addChild(hyxOSG.createPolyline(heights, (0.8, 0.2, 0.1, 1), 3))
print(f"rests at {heights[-1][2]:.3f} m; weight over stiffness is {-10 * 9.80665 / 500:.3f} m")
app.setCameraHome((0.5, -4, 0.6), (0.5, 0, -0.2))
app.takeScreenShot("slider_with_spring.png")
