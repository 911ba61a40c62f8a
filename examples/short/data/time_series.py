"""Position and speed of a bouncing ball, recorded by a listener and plotted."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK


class Recorder(hyxSDK.EventListener):
    """Keeps a row after each step."""

    def __init__(self, body):
        super().__init__()
        self.body, self.rows = body, []

    def post(self, time):
        self.rows.append((time, self.body.getPosition().z, self.body.getVelocity().z))


app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
sim = app.getSimulation()
rubber = hyx.Material("rubber")
rubber.setRestitution(0.8)
floor, ball = hyxCollide.Geometry(hyxCollide.Plane()), hyxCollide.Geometry(hyxCollide.Sphere(0.1))
floor.setMaterial(rubber)
ball.setMaterial(rubber)
body = hyx.RigidBody(ball)
body.setPosition((0, 0, 1.5))
recorder = Recorder(body)
for item in (floor, body, recorder):
    sim.add(item)
sim.stepTo(4)
for place, scale, color in ((1, 1, (0.8, 0.2, 0.1, 1)), (2, 0.2, (0.1, 0.3, 0.8, 1))):
    curve = hyxOSG.createPolyline([(row[0], 0, row[place] * scale) for row in recorder.rows], color, 3)
    app.getSceneRoot().addChild(curve)
app.setCameraHome((2, -5.2, 0.3), (2, 0, 0.3))
app.takeScreenShot("time_series.png")
