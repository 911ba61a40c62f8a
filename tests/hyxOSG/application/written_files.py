"""Writes a file of every kind into a folder where that cannot succeed, and prints how each went, as JSON.

    python written_files.py FOLDER FAULT      FAULT: full, limit or readonly; the folder has been readied for it

Each file is there before, with OLD in it, and has to be so afterwards.
"""

import json
import os
import pathlib
import resource
import sys
import tempfile

import hyx
import hyxCollide
import hyxIO
import hyxOSG
import hyxSensor
import numpy
import osg
import osgDB

OLD = b"what was there before"
PICTURES = ["png", "jpg", "bmp", "tga", "ppm", "tiff", "rgb"]
POINTS = ["ply", "pcd", "las", "npz"]
MODELS = ["osgt", "osgb", "ive", "stl", "3ds", "obj"]


def noisy_image():
    """Pixels that no format packs into a few bytes."""
    image = osg.Image(128, 128)
    image.setData(os.urandom(128 * 128 * 3))
    return image


def model():
    with tempfile.NamedTemporaryFile("w", suffix=".obj") as file:
        for number in range(100):
            file.write(f"v {number} 0 0\nv {number} 1 0\nv {number} 0 1\nf -3 -2 -1\n")
        file.flush()
        return osgDB.readNodeFile(file.name)


class Writers:
    """What is written, by the name of the file; made ready before the fault begins."""

    def __init__(self):
        self.app = hyxOSG.ExampleApplication()
        self.app.init(None)
        self.app.initSimulation()
        for number in range(20):
            self.simulation.add(hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Sphere(1)), f"ball {number}"))
        self.app.initViewer(160, 120)
        self.image = noisy_image()
        self.target = hyxOSG.RenderToImage(64, 64)
        self.model = model()
        self.app.createVisual(self.simulation)
        self.motion = hyxOSG.GltfRecording(self.app)
        self.motion.capture()
        camera = hyxOSG.SensorCamera(self.app, 64, 48)
        camera.look_at((3, 1, 0), (0, 0, 0))
        self.frame = camera.read("rgb", "depth", "normals")
        self.all = {f"shot.{ending}": self.app.takeScreenShot for ending in PICTURES}
        self.all |= {f"image.{ending}": self.write_image for ending in PICTURES}
        self.all |= {f"model.{ending}": self.write_model for ending in MODELS}
        self.all |= {f"points.{ending}": self.write_points for ending in POINTS}
        self.all |= {
            "number00000.png": self.number,
            "target.bmp": self.target.saveImage,
            "motion.glb": self.motion.save,
            "motion.gltf": self.motion.save,
            "frame.npz": self.frame.save_npz,
            "frame.exr": self.frame.save_exr,
            "depth.png": self.frame.save_depth_png,
            "state": lambda path: self.simulation.save(path),
            "plain.h5": lambda path: self.record(path, 0),
            "compressed.h5": lambda path: self.record(path, 1),
            "trace.json": self.trace,
            "hyx_profile_dump/state_000001.json": self.dump,
            "film.mp4": self.film,
        }

    @property
    def simulation(self):
        return self.app.getSimulation()

    def write_image(self, path):
        return osgDB.writeImageFile(self.image, path)

    def write_model(self, path):
        return osgDB.writeNodeFile(self.model, path)

    def write_points(self, path):
        hyxSensor.save_points(path, numpy.frombuffer(os.urandom(9600), [(axis, "<i4") for axis in "xyz"]))

    def number(self, path):
        capture = hyxOSG.ImageCapture()
        capture.setDirectoryPath(os.path.dirname(path))
        capture.setPrefix("number")
        capture.writeImage(self.image, 0)

    def record(self, path, form):
        self.app.setJournalRecordPath(path)
        self.app.setJournalFormat(form)
        self.app.initRecordJournal()
        try:
            for _ in range(100):
                self.app.step()
        finally:
            self.app.setEnableJournalRecord(False)

    def film(self, path):
        capture = hyxOSG.VideoFFMPEGPipeCapture(128, 128, 30.0)
        capture.setFilename(path.removesuffix(".mp4"))
        capture.init()
        for number in range(60):
            capture.writeImage(self.image, number)
        capture.stopProcess()

    def trace(self, path):
        traced = hyxOSG.ExampleApplication()
        traced.init(hyxIO.ArgumentParser(["--profile", path]))
        for _ in range(100):
            traced.step()
        traced.postExecution()

    def dump(self, path):
        os.chdir(os.path.dirname(os.path.dirname(path)))
        self.app.setEnableSimulationDump(True)
        try:
            self.app.step()
        finally:
            self.app.setEnableSimulationDump(False)


def outcome(write, path):
    try:
        result = write(str(path))
    except OSError as error:
        return {"error": type(error).__name__, "errno": error.errno, "path": str(error.filename)}
    except Exception as error:
        return {"error": type(error).__name__, "text": str(error)}
    return {"result": result}


def main():
    folder, fault = pathlib.Path(sys.argv[1]), sys.argv[2]
    writers = Writers()
    if fault == "limit":
        resource.setrlimit(resource.RLIMIT_FSIZE, (512, resource.RLIM_INFINITY))
    report = {}
    for name, write in writers.all.items():
        path = folder / name
        report[name] = outcome(write, path)
        report[name]["kept"] = path.read_bytes() == OLD
    report["left over"] = [path.name for path in folder.rglob(".*")]
    print(json.dumps(report))


if __name__ == "__main__":
    main()
