"""Files that are damaged, or made to do harm, end neither the process nor its patience."""

import os
import resource
import shutil
import struct

import hyxOSG
import hyxSDK
import osg
import osgDB
import pytest
from good_files import good_files
from mutations import Trial
from subprocesses import weighs_memory

TRIED = int(os.environ.get("HYX_MUTATIONS", 2))  # of each kind; `mutations.py` tries as many as one likes


def test_changed_files_are_read_or_refused(tmp_path):
    """Of every kind: nothing dies or waits, takes much memory or opens files that are not its own."""
    kinds, trial = good_files(tmp_path), Trial(tmp_path)
    for kind in kinds:
        trial.run(kind, TRIED)
    assert trial.faults() == {}
    assert len(kinds) > 40 and sum(trial.tally.values()) == TRIED * len(kinds)


def nested_groups(levels):
    return "Group {\n num_children 1\n" * levels + "Group { }\n" + "}\n" * levels


STL = "solid s\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n{third}endloop\nendfacet\nendsolid s\n"
OSG_MESH = """Geometry {{
  PrimitiveSets 1 {{ DrawElementsUInt TRIANGLES 1 {{ {indices} }} }}
  VertexArray Vec3Array 3 {{ 0 0 0  1 0 0  0 1 0 }}
}}
"""
BAD = {
    "a hundred thousand groups": ("deep.osg", nested_groups(100_000)),
    "more groups than a scene takes": ("levels.osg", nested_groups(2000)),
    "a facet of two vertices": ("two.stl", STL.format(third="")),
    "a vertex that is no number": ("nan.stl", STL.format(third="vertex nan 0 0\n")),
    "an endless coordinate": (
        "far.ply",
        "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nend_header\n1e999\n",
    ),
    "a vertex that is not there": ("index.osg", OSG_MESH.format(indices="0 1 99999999")),
}


@pytest.mark.parametrize("name, text", BAD.values(), ids=BAD.keys())
def test_what_comes_back_is_whole(tmp_path, name, text):
    path = tmp_path / name
    path.write_text(text)
    node = hyxOSG.readNodeFile(str(path), False)
    if node is not None:  # what was wrong was left out
        hyxOSG.createTrimesh(node)
        assert node.getBound().radius() < 10
    osgDB.readNodeFile(str(path))


@weighs_memory
def test_a_picture_of_a_few_bytes_does_not_take_the_memory(tmp_path):
    """A header that promises 30,000 pixels each way."""
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    header = b"BM" + (54).to_bytes(4, "little") + bytes(4) + (54).to_bytes(4, "little") + (40).to_bytes(4, "little")
    bomb = tmp_path / "bomb.bmp"
    bomb.write_bytes(header + 2 * (30_000).to_bytes(4, "little") + b"\1\0\x20\0" + bytes(24))
    osgDB.readImageFile(str(bomb))
    assert resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before < 1_000_000


def test_files_are_found_from_wherever_the_process_stands(tmp_path, monkeypatch):
    assert osgDB.writeImageFile(osg.Image(4, 4), str(tmp_path / "good.png"))
    for folder in (tmp_path, tmp_path / "below"):
        folder.mkdir(exist_ok=True)
        monkeypatch.chdir(folder)
        shutil.copy(tmp_path / "good.png", folder / "file.png")
        assert osgDB.readImageFile("file.png")
        os.remove(folder / "file.png")
        assert osgDB.readImageFile("file.png") is None


def test_words_that_are_none_are_told_readably(tmp_path):
    (tmp_path / "bad.json").write_bytes(b'{"bodies": [{"\xe5')
    with pytest.warns(RuntimeWarning, match="it is no JSON"):
        assert not hyxOSG.readFile(str(tmp_path / "bad.json"), hyxSDK.Simulation(), osg.Group())


@pytest.mark.parametrize("cut, triangles", [(0, 2), (-1, 2), (-50, 2), (1, None), (50, None), (100, None)])
def test_a_binary_mesh_that_ends_early_is_refused(tmp_path, cut, triangles):
    """What comes after the last triangle does no harm."""
    facet = struct.pack("<12fH", 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0)
    whole = b"binary".ljust(80, b"\0") + struct.pack("<I", 2) + 2 * facet
    path = tmp_path / "mesh.stl"
    path.write_bytes(whole[: len(whole) - cut] if cut > 0 else whole + b"\0" * -cut)
    if triangles:
        assert hyxOSG.readNodeFile(str(path))
    else:
        with pytest.warns(RuntimeWarning, match="of its 2 triangles"):
            assert hyxOSG.readNodeFile(str(path)) is None


@pytest.mark.parametrize("read", [hyxOSG.readNodeFile, hyxOSG.createTexture])
def test_pipes_are_told_from_missing_files(read, tmp_path):
    os.mkfifo(tmp_path / "pipe.png")
    with pytest.warns(RuntimeWarning, match="is a device or pipe, not the (image|model) file"):
        assert read(str(tmp_path / "pipe.png")) is None
