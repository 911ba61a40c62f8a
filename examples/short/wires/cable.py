"""An elastic cable that is bent to and fro, and where that wears it out."""

import hyxCable
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
rubber = hyxCable.CableProperties()
rubber.youngModulus = 5e7  # pascals
cable = hyxCable.Cable(0.02, 14, rubber)
for point in ((-1, 0, 0.6), (-0.4, 0, 0), (0.4, 0, 0), (1, 0, 0.6)):
    cable.add(point)
sim.add(cable)
wear = hyxCable.DamageProperties()
wear.bendWeight = 2
damage = hyxCable.CableDamage(cable, wear)
sim.add(damage)
shown = hyxOSG.CableDamageRenderer(damage, 0.04, app.getSceneRoot())
shown.renderAccumulated()
sim.add(shown)
for step in range(180):
    cable.setEndPoint(False, (1 - 0.6 * (step % 60) / 60, 0, 0.6))
    sim.step()
print(f"{damage.getMaximumAccumulatedDamage():.1e} of a life")
app.setCameraHome((0, -3, 0.8), (0, 0, 0.1))
app.takeScreenShot("cable.png")
