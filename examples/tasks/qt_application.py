"""A simulation in a Qt window. Needs PySide6-Essentials."""

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
from PySide6 import QtOpenGLWidgets, QtWidgets


class View(QtOpenGLWidgets.QOpenGLWidget):
    def initializeGL(self) -> None:
        self.view = hyxOSG.EmbeddedGLWindow()
        self.view.init(0, 0, self.width(), self.height())
        self.view.setSimulation(sim)
        node = hyxOSG.findGeometryNode(box.getGeometries()[0], self.view.getRoot())
        self.view.setOrbitCamera(node, hyx.Vec3(4, -6, 3))

    def paintGL(self) -> None:
        sim.step()
        self.view.frame()
        self.update()  # again as soon as the display wants the next frame


sim = hyxSDK.Simulation()
box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.5, 0.5, 0.5)))
sim.add(box)
application = QtWidgets.QApplication([])
view = View()
view.show()
application.exec()
