"""Journals that are well-formed HDF5 and yet wrong, by what is wrong with them; as a program, plays all in a folder."""

import json
import os
import pathlib
import re
import signal
import sys

import h5py
import numpy

STATES, BODIES, GRAINS = 5, 2, 3
SPHERE = {"kind": "sphere", "radius": 0.5}
LOCAL = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]


def body(shape=SPHERE, **changes):
    return {"geometries": [{"shape": shape, "local": LOCAL}], "mass": 1.0, "motion": 1} | changes


def good():
    """The datasets of a part, by name."""
    rotations = numpy.zeros((STATES, BODIES, 4))
    rotations[:, :, 3] = 1
    return {
        "bodies": numpy.array([b"one", b"two"]),
        "shapes": shapes(body(), body()),
        "time": numpy.arange(STATES, dtype=float).reshape(-1, 1, 1),
        "position": numpy.ones((STATES, BODIES, 3)),
        "rotation": rotations,
        "velocity": numpy.zeros((STATES, BODIES, 3)),
        "angularVelocity": numpy.zeros((STATES, BODIES, 3)),
        "particleCount": numpy.full((STATES, 1, 1), float(GRAINS)),
        "particles": numpy.ones((STATES * GRAINS, 1, 18)),
        "mechanism": joints(),
        "contactCount": numpy.ones((STATES, 1, 1)),
        "contacts": numpy.zeros((STATES, 1, 14)),
    }


def shapes(*bodies):
    return numpy.array([json.dumps(bodies).encode()])


def texts(text):
    return numpy.array([text.encode()])


def joints(**changes):
    return texts(json.dumps([{"kind": "hinge", "bodies": [0, 1], "frames": [LOCAL, LOCAL]} | changes]))


def filled(value, *shape):
    return numpy.full(shape, value)


# Other contents of a dataset; None leaves it out.
CONTENTS = {
    "rotation without components": {"rotation": numpy.ones((STATES, BODIES, 0))},
    "rotation without items": {"rotation": numpy.ones((STATES, 0, 4))},
    "rotation that is none": {"rotation": numpy.zeros((STATES, BODIES, 4))},
    "no rotation": {"rotation": None},
    "rotations in two dimensions": {"rotation": numpy.ones((STATES, 4))},
    "position of two numbers": {"position": numpy.ones((STATES, BODIES, 2))},
    "position of texts": {"position": filled(b"x", STATES, BODIES, 3)},
    "position of records": {"position": numpy.zeros((STATES, BODIES, 3), [("x", "f8"), ("y", "f8")])},
    "position not finite": {"position": filled(numpy.nan, STATES, BODIES, 3)},
    "velocity for another body": {"velocity": numpy.zeros((STATES, 3, 3))},
    "velocity infinite": {"velocity": filled(numpy.inf, STATES, BODIES, 3)},
    "time infinite": {"time": filled(numpy.inf, STATES, 1, 1)},
    "two times a state": {"time": numpy.zeros((STATES, 2, 1))},
    "no time": {"time": None},
    "shapes that are no JSON": {"shapes": numpy.array([b"[{"])},
    "shapes that are no list": {"shapes": numpy.array([b'{"one": 1}'])},
    "shapes nested deeply": {"shapes": numpy.array([b"[" * 100_000 + b"]" * 100_000])},
    "fewer shapes than bodies": {"shapes": shapes(body())},
    "no shape's kind": {"shapes": shapes(body(), body({"kind": "sponge"}))},
    "negative radius": {"shapes": shapes(body(), body({"kind": "sphere", "radius": -1}))},
    "box of nothing": {"shapes": shapes(body(), body({"kind": "box", "halfExtents": [1, None, 1]}))},
    "mesh beyond its vertices": {
        "shapes": shapes(body(), body({"kind": "mesh", "vertices": [[0, 0, 0]], "triangles": [0, 1, 2**31]}))
    },
    "height field without heights": {
        "shapes": shapes(body(), body({"kind": "heights", "resolution": [60000, 60000], "size": [1, 1], "heights": []}))
    },
    "transform of three numbers": {"shapes": shapes(body(), body(geometries=[{"shape": SPHERE, "local": [1, 2, 3]}]))},
    "no such motion": {"shapes": shapes(body(), body(motion=77))},
    "negative mass": {"shapes": shapes(body(), body(mass=-1))},
    "bodies that are numbers": {"bodies": numpy.arange(2)},
    "particles without items": {"particles": numpy.ones((STATES * GRAINS, 0, 18))},
    "particles of other columns": {"particles": numpy.ones((STATES * GRAINS, 1, 3))},
    "negative count of particles": {"particleCount": filled(-1.0, STATES, 1, 1)},
    "more particles than there are": {"particleCount": filled(1e6, STATES, 1, 1)},
    "count that is no number": {"particleCount": filled(numpy.nan, STATES, 1, 1)},
    "particles without counts": {"particleCount": None},
    "joints that are no list": {"mechanism": texts('{"one": 1}')},
    "joint of no kind": {"mechanism": texts('[{"kind": "glue"}]')},
    "joint of no such body": {"mechanism": joints(bodies=[0, 7])},
    "joint of a body with itself": {"mechanism": joints(bodies=[1, 1])},
    "joint of nothing": {"mechanism": joints(bodies=[None, None])},
    "joint with half a frame": {"mechanism": joints(frames=[LOCAL, LOCAL[:8]])},
    "joint with a range upside down": {"mechanism": joints(range=[1, -1])},
    "contacts of other columns": {"contacts": numpy.zeros((STATES, 1, 13))},
    "contacts without counts": {"contactCount": None},
    "contact of no such body": {"contacts": filled(7.0, STATES, 1, 14)},
    "contact of a body between": {"contacts": filled(0.5, STATES, 1, 14)},
    "contact far away": {"contacts": filled(1e300, STATES, 1, 14)},
    "number of a grain": {"particles": filled(1e300, STATES * GRAINS, 1, 18)},
}


def replace(part, name, **layout):
    del part[name]
    return part.create_dataset(name, **layout)


def external(part, path):
    replace(part, "position", shape=(STATES, BODIES, 3), dtype="f8", external=[(str(path), 0, h5py.h5f.UNLIMITED)])


def outside(part):
    secret = pathlib.Path(part.file.filename + ".secret")
    secret.write_bytes(bytes(STATES * BODIES * 3 * 8))
    external(part, secret)


def pipe(part):
    path = part.file.filename + ".pipe"
    os.mkfifo(path)
    external(part, path)


def virtual(part):
    layout = h5py.VirtualLayout((STATES, BODIES, 3), "f8")
    layout[:] = h5py.VirtualSource("other.h5", "position", (STATES, BODIES, 3))
    del part["position"]
    part.create_virtual_dataset("position", layout)


def link(part, target):
    name = part.name.rsplit("/")[-1]
    session = part.parent
    del session[name]
    session[name] = target


def deflated_twice(part):
    creation = h5py.h5p.create(h5py.h5p.DATASET_CREATE)
    creation.set_chunk((1 << 20, BODIES, 3))
    for _ in range(3):
        creation.set_deflate(9)
    space = h5py.h5s.create_simple((1 << 20, BODIES, 3), (h5py.h5s.UNLIMITED, BODIES, 3))
    del part["position"]
    data = h5py.h5d.create(part.id, b"position", h5py.h5t.IEEE_F64LE, space, creation)
    h5py.Dataset(data)[:] = 0


def endless_states(part):
    for name in ("time", "particleCount"):
        replace(part, name, shape=(2_000_000_000, 1, 1), maxshape=(None, 1, 1), dtype="f8", chunks=(1024, 1, 1))


def large_pieces(part):
    rows = 20_000_000
    data = replace(part, "position", shape=(rows, BODIES, 3), dtype="f8", chunks=(rows, BODIES, 3), compression=9)
    del data


def long_texts(part):
    space = h5py.h5s.create_simple((2,))
    kind = h5py.h5t.C_S1.copy()
    kind.set_size((1 << 31) - 1)
    del part["bodies"]
    h5py.h5d.create(part.id, b"bodies", kind, space)


def texts_of_any_length(part):
    replace(part, "bodies", data=["one", "two"], dtype=h5py.string_dtype())


# Other layouts and links.
LAYOUTS = {
    "storage in another file": outside,
    "storage in a pipe": pipe,
    "numbers of another file": virtual,
    "a name elsewhere": lambda part: link(part, h5py.SoftLink("/session_1")),
    "a part of another file": lambda part: link(part, h5py.ExternalLink("other.h5", "/")),
    "a part that is the file": lambda part: link(part, part.file["/"]),
    "deflated thrice": deflated_twice,
    "states without end": endless_states,
    "pieces of a gigabyte": large_pieces,
    "names of two gigabytes": long_texts,
    "names of any length": texts_of_any_length,
}


def write(path, contents=None, layout=None):
    with h5py.File(path, "w") as file:
        part = file.create_group("session_1").create_group("part_000000")
        for name, data in (good() | (contents or {})).items():
            if data is not None:
                part[name] = data
        if layout:
            layout(part)


def write_all(folder):
    for name, contents in CONTENTS.items():
        write(folder / f"{name}.h5", contents)
    for name, layout in LAYOUTS.items():
        write(folder / f"{name}.h5", layout=layout)


def play(path):
    import hyxOSG

    app = hyxOSG.ExampleApplication()
    app.init(None)
    app.initSimulation()
    app.setJournalRecordPath(str(path))
    sys.stderr.flush()
    try:
        app.journalPlayback()
        shown = 0
        while app.getAutoStepping():
            app.step()
            shown += len(app.getSimulation().getRigidBodies()) > 0
        return f"shown {shown}"
    except RuntimeError as error:
        return str(error)


if __name__ == "__main__":
    for journal in sorted(pathlib.Path(sys.argv[1]).glob("*.h5")):
        signal.alarm(10)
        print(f"## {journal.stem}", file=sys.stderr, flush=True)
        print(play(journal), file=sys.stderr, flush=True)
    # Not the usage that the system counts, which begins with that of the process that started this one.
    print(re.search(r"VmHWM:\s*(\d+)", pathlib.Path("/proc/self/status").read_text())[1])
