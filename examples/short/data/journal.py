"""A run that is recorded to a file, and a moment of it that is shown again."""

import hyx
import hyxCollide
import hyxOSG

app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
for number in range(30):
    box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.3, 0.2, 0.1)), f"box {number}")
    box.setPosition((0.25 * (number % 3), 0.1 * (number % 5), 0.4 + 0.35 * number))
    sim.add(box)
app.createVisual(sim)
for number, box in enumerate(sim.getRigidBodies()):
    hyxOSG.setDiffuseColor(box, (0.9, 0.3 + 0.02 * number, 0.2, 1), app.getRoot())
app.setJournalRecordPath("boxes.h5#fall")
app.setEnableJournalRecord(True)
while app.getTimeStamp() < 2:
    app.executeOneStepWithoutGraphics()
app.setEnableJournalRecord(False)
app.clearScene()
app.journalPlayback()
app.goToTime(0.9)  # seconds
app.setCameraHome((2, -6, 3.5), (0.2, 0, 1))
app.takeScreenShot("journal.png")
