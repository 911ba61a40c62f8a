"""What most stages of tests start from."""

import hyx
import hyxOSG
import hyxSDK


class OffScreen:
    """An application drawn off-screen, with a simulation, before a black background without a logo. Without samples
    each pixel has the colour of one thing, so that tests can count."""

    def __init__(self, width, height, samples=0):
        self.app = hyxOSG.ExampleApplication()
        self.app.init(None)
        self.simulation = hyxSDK.Simulation()
        self.app.initSimulation(self.simulation)
        self.app.setNumSamples(samples)
        self.app.initViewer(width, height, True)
        self.root = self.app.getSceneRoot()
        self.decorator = self.app.getSceneDecorator()
        self.decorator.setBackgroundColor(hyx.Vec3(0, 0, 0))
        self.decorator.setEnableLogo(False)

    def look_from(self, eye, center=None):
        self.app.setCameraHome(eye, center or hyx.Vec3(), hyx.Vec3(0, 0, 1))
