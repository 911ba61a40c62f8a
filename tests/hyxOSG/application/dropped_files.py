"""Run as a program on a display, with files: another program drags them onto the window. Prints what is shown, as JSON.

With `source` in front it is that other program, and prints whether its files were taken.
"""

import json
import subprocess
import sys
import time

WIDTH, HEIGHT = 320, 240


def offer(files):
    from PySide6 import QtCore, QtGui, QtWidgets

    class Source(QtWidgets.QWidget):
        def mouseMoveEvent(self, event):
            data = QtCore.QMimeData()
            data.setUrls([QtCore.QUrl.fromLocalFile(file) for file in files])
            drag = QtGui.QDrag(self)
            drag.setMimeData(data)
            print(drag.exec(QtCore.Qt.DropAction.CopyAction).name, flush=True)
            QtCore.QTimer.singleShot(800, QtWidgets.QApplication.exit)  # the files are asked for after the drop

    application = QtWidgets.QApplication(sys.argv[:1])
    source = Source()
    source.setGeometry(WIDTH + 40, 0, 100, 100)
    source.show()
    print("ready", flush=True)
    application.exec()


def hand(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def serve(app, seconds):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        app.step()


def main(files):
    import hyxOSG

    app = hyxOSG.ExampleApplication()
    app.init(None)
    app.initViewer(WIDTH, HEIGHT)
    app.setWindowRectangle(0, 0, WIDTH, HEIGHT)
    app.step()
    source = subprocess.Popen(
        [sys.executable, __file__, "source", *files], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True
    )
    assert source.stdout.readline() == "ready\n"
    serve(app, 0.3)
    places = [WIDTH + 90 - 40 * step for step in range(7)]
    hand("mousemove", places[0], 50, "mousedown", 1)
    for place in places[1:]:
        hand("mousemove", place, 50)
        serve(app, 0.1)
    hand("mouseup", 1)
    serve(app, 1)
    bodies = [body.getName() for body in app.getSimulation().getRigidBodies()]
    taken, errors = source.communicate(timeout=20)
    print(json.dumps({"bodies": bodies, "taken": taken.split(), "error": app.getSceneError(), "said": errors}))


if __name__ == "__main__":
    offer(sys.argv[2:]) if sys.argv[1:2] == ["source"] else main(sys.argv[1:])
