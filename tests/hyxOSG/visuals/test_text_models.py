"""OBJ, OFF and PLY as their makers meant them: faces, materials, pictures; a million triangles in a moment."""

import math

import hyx
import hyxOSG
import numpy
import picture_files
import pytest
from off_screen import OffScreen
from subprocesses import run_python, weighs_memory

SQUARE = "v -1 0 -1\nv 1 0 -1\nv 1 0 1\nv -1 0 1\n"
TEXCOORDS = "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"


def read(path, text=None):
    if text is not None:
        path.write_text(text)
    return hyxOSG.readNodeFile(str(path), False)


def area(node):
    mesh = hyxOSG.createTrimesh(node)
    corners = numpy.array([tuple(vertex) for vertex in mesh.getVertices()])[
        numpy.array(mesh.getIndices()).reshape(-1, 3)
    ]
    across = numpy.cross(corners[:, 1] - corners[:, 0], corners[:, 2] - corners[:, 0])
    return numpy.linalg.norm(across, axis=1).sum() / 2, len(corners)


@pytest.fixture(scope="module")
def stage():
    made = OffScreen(64, 64)
    made.look_from(hyx.Vec3(0, -4, 0))
    yield made
    made.app.close()


def colors(stage, node):
    stage.root.addChild(node)
    picture = stage.app.render()
    stage.root.removeChild(node)
    return picture.astype(int)


def ring(corners, inner):
    """A star: every second corner lies farther in."""
    radii = [1 if i % 2 else inner for i in range(corners)]
    places = [
        (r * math.cos(2 * math.pi * i / corners), r * math.sin(2 * math.pi * i / corners)) for i, r in enumerate(radii)
    ]
    text = "".join(f"v {x} 0 {z}\n" for x, z in places) + "f " + " ".join(str(i + 1) for i in range(corners)) + "\n"
    exact = sum(a[0] * b[1] - a[1] * b[0] for a, b in zip(places, places[1:] + places[:1])) / 2
    return text, abs(exact)


@pytest.mark.parametrize("corners, inner", [(3, 1), (4, 1), (5, 1), (8, 0.3), (40, 0.5)])
@pytest.mark.parametrize("turned", [False, True])
def test_polygons_with_bays_are_cut_without_gaps_or_overlaps(tmp_path, corners, inner, turned):
    text, exact = ring(corners, inner)
    if turned:
        head, face = text.rsplit("f ", 1)
        text = head + "f " + " ".join(reversed(face.split())) + "\n"
    assert area(read(tmp_path / "ring.obj", text)) == pytest.approx((exact, corners - 2), rel=1e-5)


@pytest.mark.parametrize(
    "face",
    [
        "f 1 2 3 4",
        "f -4 -3 -2 -1",
        "f 1/1 2/2 3/3 4/4",
        "f 1//1 2//1 3//1 4//1",
        "f 1/1/-1 2/2/1 3/3/1 \\\n 4/4/1 # all",
    ],
)
def test_corners_are_counted_from_either_end_and_written_in_five_ways(tmp_path, face):
    text = f"# by hand\r\n{SQUARE}{TEXCOORDS}vn 0 -1 0\n\ng one\ns off\n{face}\n"
    assert area(read(tmp_path / "m.obj", text)) == pytest.approx((4, 2))


@pytest.mark.parametrize("face", ["f 1 2 5", "f 0 1 2", "f 1 2 -5", "f 1/9 2/1 3/1", "f 1 x 2"])
def test_faces_of_what_is_not_there_are_refused(tmp_path, face):
    with pytest.warns(RuntimeWarning, match="damaged|number"):
        assert read(tmp_path / "m.obj", f"{SQUARE}{TEXCOORDS}{face}\n") is None


def test_parts_have_their_names_and_materials(tmp_path, stage):
    (tmp_path / "two words.mtl").write_text(
        "newmtl deep red\nKd 0.9 0.1 0.1\nKs 0 0 0\n\nnewmtl glass\nKd 0 0 1\nd 0.5\n"
    )
    text = (
        "mtllib two words.mtl\nv -1 0 -1\nv 0 0 -1\nv 0 0 1\nv -1 0 1\nv 1 0 -1\nv 1 0 1\n"
        "o left side\nusemtl deep red\nf 1 2 3 4\no right\nusemtl glass\nf 2 5 6 3\n"
    )
    model = read(tmp_path / "m.obj", text)
    assert [model.getChild(i).getName() for i in range(model.getNumChildren())] == ["left side", "right"]
    picture = colors(stage, model)
    left, right = picture[32, 24], picture[32, 40]
    assert left[0] > 3 * left[1] and left[0] > 60
    stage.decorator.setBackgroundColor(hyx.Vec3(0, 1, 0))
    through = colors(stage, model)[32, 40]
    stage.decorator.setBackgroundColor(hyx.Vec3(0, 0, 0))
    assert through[1] - right[1] == pytest.approx(128, abs=12), "half of what is behind"


def test_edges_are_sharp_and_rounds_are_smooth(tmp_path):
    def spread(angle):
        """How far apart the normals are at the edge of two squares that meet under an angle."""
        y, z = math.sin(math.radians(angle)), math.cos(math.radians(angle))
        text = f"v 0 0 0\nv 1 0 0\nv 1 0 -1\nv 0 0 -1\nv 1 {y} {z}\nv 0 {y} {z}\nf 1 2 3 4\nf 2 1 6 5\n"
        mesh = read(tmp_path / "m.obj", text).getChild(0).getDrawable(0).asGeometry()
        return mesh.vertices.shape[0]

    assert spread(90) == 8 and spread(20) == 6


@pytest.mark.parametrize("kind", ["obj", "ply s t", "ply texture_u texture_v"])
def test_pictures_are_laid_on_by_their_coordinates(tmp_path, stage, kind):
    picture_files.one_colour(tmp_path / "skin.png", 1, 0, 0, size=4)
    if kind == "obj":
        (tmp_path / "m.mtl").write_text("newmtl skin\nKd 1 1 1\nmap_Kd -s 1 1 1 skin.png\n")
        model = read(tmp_path / "m.obj", f"mtllib m.mtl\n{SQUARE}{TEXCOORDS}usemtl skin\nf 1/1 2/2 3/3 4/4\n")
    else:
        u, v = kind.split()[1:]
        properties = "".join(f"property float {name}\n" for name in ("x", "y", "z", u, v))
        model = read(
            tmp_path / "m.ply",
            f"ply\nformat ascii 1.0\ncomment TextureFile skin.png\nelement vertex 4\n{properties}"
            "element face 1\nproperty list uchar int vertex_indices\nend_header\n"
            "-1 0 -1 0 0\n1 0 -1 1 0\n1 0 1 1 1\n-1 0 1 0 1\n4 0 1 2 3\n",
        )
    red, green, blue = colors(stage, model)[32, 32]
    assert red > 60 and green == blue == 0


def test_pictures_elsewhere_stay_unread(tmp_path, stage):
    picture_files.one_colour(tmp_path / "skin.png", 1, 0, 0, size=4)
    inner = tmp_path / "inner"
    inner.mkdir()
    (inner / "m.mtl").write_text("newmtl skin\nKd 1 1 1\nmap_Kd ../skin.png\n")
    model = read(inner / "m.obj", f"mtllib m.mtl\n{SQUARE}{TEXCOORDS}usemtl skin\nf 1/1 2/2 3/3 4/4\n")
    assert colors(stage, model)[32, 32][1] > 60


def test_off_files_have_their_faces(tmp_path):
    text = "OFF # a square\n\n4 1 4\n-1 0 -1\n1 0 -1\n1 0 1 \n# between\n-1 0 1\n4 0 1 2 3 0.5 0.5 0.5\n"
    assert area(read(tmp_path / "m.off", text)) == pytest.approx((4, 2))
    for wrong in (
        text.replace("OFF", "COFF"),
        text.replace("4 0 1 2 3", "4 0 1 2 4"),
        text.replace("4 1 4", "4 99999 4"),
    ):
        with pytest.warns(RuntimeWarning):
            assert read(tmp_path / "m.off", wrong) is None


READ = """
import resource
import sys
import time

import hyxOSG

def peak():
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
before, start = peak(), time.process_time()
node = hyxOSG.readNodeFile(sys.argv[1], False)
print(time.process_time() - start, (peak() - before) / 1024)
start = time.process_time()
mesh = hyxOSG.createTrimesh(node)
print(time.process_time() - start, mesh.getNumTriangles())
"""


@weighs_memory
def test_a_million_triangles_are_read_in_a_moment_and_little_memory(tmp_path):
    """In the time of the processor: machines are busy."""
    side = 708
    x, y = numpy.meshgrid(numpy.linspace(0, 10, side), numpy.linspace(0, 10, side))
    corner = (numpy.arange(side - 1)[:, None] * side + numpy.arange(side - 1)).ravel() + 1
    faces = [
        numpy.stack(f, 1) for f in ((corner, corner + 1, corner + side), (corner + 1, corner + side + 1, corner + side))
    ]
    places = numpy.stack([x.ravel(), y.ravel(), (numpy.sin(x) * numpy.cos(y)).ravel()], 1)
    with open(tmp_path / "large.obj", "w") as file:
        file.writelines("v %.6f %.6f %.6f\n" % tuple(row) for row in places.tolist())
        file.writelines("f %d %d %d\n" % tuple(row) for half in faces for row in half.tolist())
    result = run_python("-c", READ, str(tmp_path / "large.obj"))
    assert result.returncode == 0, result.stderr
    seconds, megabytes, gathering, triangles = map(float, result.stdout.split())
    assert triangles == 2 * (side - 1) ** 2
    assert seconds < 1.5 and megabytes < 250 and gathering < 2.5
