"""Two views of one simulation inside a Qt application: the host owns the windows, forwards input and steps the time.

    06_embedded_window.py [--seconds S] [--picture FILE]

Drag to turn a view, wheel to come nearer, hold control and drag a box to pull it. Needs PySide6-Essentials.
"""

import argparse
import sys

import hyx
import hyxCollide
import hyxOSG
import hyxSDK
from PySide6.QtCore import Qt, QTimer
from PySide6.QtOpenGLWidgets import QOpenGLWidget
from PySide6.QtWidgets import QApplication, QHBoxLayout, QWidget

STEP = 1 / 60
BUTTONS = {Qt.LeftButton: 1, Qt.MiddleButton: 2, Qt.RightButton: 3}
MODIFIERS = {Qt.ShiftModifier: 0x01, Qt.ControlModifier: 0x04, Qt.AltModifier: 0x10}
COLORS = [(0.86, 0.32, 0.23), (0.95, 0.66, 0.22), (0.27, 0.55, 0.62), (0.36, 0.66, 0.42)]


class SimulationView(QOpenGLWidget):
    """Shows a simulation in Qt's OpenGL context. Qt makes the context current before it calls the GL functions."""

    def __init__(self, sim, eye):
        super().__init__()
        self.sim, self.eye = sim, eye
        self.view = hyxOSG.EmbeddedGLWindow()
        self.setFocusPolicy(Qt.StrongFocus)
        self.setMouseTracking(True)

    def initializeGL(self):
        self.view.init(0, 0, *self.pixels(self.width(), self.height()))
        self.view.setSimulation(self.sim)
        self.decorate(self.view.getSceneDecorator())
        self.color_bodies()
        ground = hyxOSG.findGeometryNode(self.sim.getRigidBodies()[0].getGeometries()[0], self.view.getRoot())
        self.view.setOrbitCamera(ground, hyx.Vec3(*self.eye))
        self.context().aboutToBeDestroyed.connect(self.release)

    def decorate(self, decorator):
        decorator.setBackgroundColor(hyx.Vec3(0.36, 0.52, 0.7), hyx.Vec3(0.86, 0.89, 0.92))
        decorator.getLightSource(decorator.LIGHT0).setPosition(hyx.Vec4(4, -8, 12, 1))
        decorator.setEnableCalculateLightPositions(decorator.LIGHT0, False)
        decorator.setEnableShadows(True)
        decorator.setText(0, f"seen from {self.eye}")

    def color_bodies(self):
        for number, body in enumerate(self.sim.getRigidBodies()):
            node = hyxOSG.findGeometryNode(body.getGeometries()[0], self.view.getRoot())
            color = COLORS[number % len(COLORS)] if number else (0.62, 0.62, 0.58)
            hyxOSG.setDiffuseColor(node, hyx.Vec4f(*color, 1))
            if number:
                node.setNodeMask(node.getNodeMask() | hyxOSG.ExampleApplication.CASTS_SHADOWS_MASK)

    def resizeGL(self, width, height):
        self.view.resize(0, 0, *self.pixels(width, height))

    def paintGL(self):
        self.view.frame()

    def release(self):
        """The view gives back what it holds in the context while there still is one."""
        self.makeCurrent()
        self.view = None
        self.doneCurrent()

    def pixels(self, *lengths):
        return [round(length * self.devicePixelRatio()) for length in lengths]

    def mouse(self, event):
        return self.pixels(event.position().x(), event.position().y())

    def mouseMoveEvent(self, event):
        self.view.mouseMoveEvent(*self.mouse(event))

    def mousePressEvent(self, event):
        self.view.mousePressEvent(*self.mouse(event), BUTTONS.get(event.button(), 0))

    def mouseReleaseEvent(self, event):
        self.view.mouseReleaseEvent(*self.mouse(event), BUTTONS.get(event.button(), 0))

    def wheelEvent(self, event):
        self.view.wheelEvent(event.angleDelta().y())

    def keyPressEvent(self, event):
        self.view.keyPressEvent(key(event), modifiers(event))

    def keyReleaseEvent(self, event):
        self.view.keyReleaseEvent(key(event), modifiers(event))


def key(event):
    """The key as its character; the control keys as the codes that the events of the scene graph have."""
    special = {Qt.Key_Shift: 0xFFE1, Qt.Key_Control: 0xFFE3, Qt.Key_Alt: 0xFFE9}
    return special.get(event.key()) or (ord(event.text()) if event.text() else 0)


def modifiers(event):
    return sum(mask for modifier, mask in MODIFIERS.items() if event.modifiers() & modifier)


def create_simulation():
    sim = hyxSDK.Simulation()
    sim.setTimeStep(STEP)
    ground = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(5, 5, 0.25)))  # half extents, metres
    ground.setMotionControl(hyx.RigidBody.STATIC)
    ground.setPosition(hyx.Vec3(0, 0, -0.25))
    sim.add(ground)
    for level in range(5):
        for column in range(5 - level):
            box = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.45, 0.4, 0.25)))
            box.setPosition(hyx.Vec3(column - (4 - level) / 2, 0, 0.3 + 0.6 * level))
            sim.add(box)
    ball = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(0.5)))
    ball.setPosition(hyx.Vec3(0.3, -4, 1.5))
    ball.setVelocity(hyx.Vec3(0, 6, 1))
    sim.add(ball)
    return sim


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seconds", type=float, help="stop after this simulated time")
    parser.add_argument("--picture", help="save a picture of the window at the end")
    options = parser.parse_args()

    application = QApplication(sys.argv[:1])
    sim = create_simulation()
    window = QWidget(windowTitle="One simulation, two views")
    layout = QHBoxLayout(window)
    views = [SimulationView(sim, eye) for eye in ((4, -9, 4), (-2, -1, 12))]
    for view in views:
        layout.addWidget(view)
    window.resize(960, 480)
    window.show()

    def tick():
        sim.step()
        for view in views:
            view.update()
        if options.seconds is not None and sim.getTimeStamp() >= options.seconds:
            clock.stop()
            if options.picture:
                window.grab().save(options.picture)
            window.close()

    clock = QTimer(interval=round(1000 * STEP))
    clock.timeout.connect(tick)
    clock.start()
    application.exec()
    for view in views:
        view.release()


if __name__ == "__main__":
    main()
