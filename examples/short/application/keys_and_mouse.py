"""A listener for keys: the space bar pushes a ball up. Here an event of the queue presses it."""

import hyx
import hyxCollide
import hyxOSG


class Push(hyxOSG.GuiEventListener):
    def __init__(self, body):
        super().__init__()
        self.body = body

    def keyboard(self, key, modifiers, x, y, down):
        if down and key == ord(" "):
            self.body.setVelocity((0, 0, 5))
            return True  # used up
        return False


app = hyxOSG.ExampleApplication()
app.initViewer(640, 400)
app.setLook("talk")
sim = app.getSimulation()
sim.add(hyxCollide.Geometry(hyxCollide.Plane()))
balls = [hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.3))) for _ in range(5)]
for number, ball in enumerate(balls):
    ball.setPosition((0.8 * number - 1.6, 0, 0.3))
    sim.add(ball)
sim.add(Push(balls[2]))
app.createVisual(sim, 2)
hyxOSG.setDiffuseColor(balls[2], (0.9, 0.4, 0.2, 1), app.getRoot())
app.setCameraHome((0, -5, 2), (0, 0, 0.6))
app.getCamera().getGraphicsWindow().getEventQueue().keyPress(ord(" "))
for _ in range(25):
    app.executeOneStepWithGraphics(hyx.HighAccuracyTimer())
app.takeScreenShot("keys_and_mouse.png")
