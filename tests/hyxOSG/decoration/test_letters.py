"""Letters of texts: in every script that an installed font has, sharp in every size, read as they were written."""

import math
import resource
import sys

import hyx
import hyxCollide
import hyxOSG
import numpy
import osg
import osgText
import pytest
from off_screen import OffScreen
from PIL import Image, ImageDraw, ImageFont
from subprocesses import run_python

WIDTH, HEIGHT, DISTANCE = 600, 450, 4.0
PIXEL = 2 * DISTANCE * math.tan(math.radians(45 / 2)) / HEIGHT  # metres at the middle of the view
WHITE = hyx.Vec4f(1, 1, 1, 1)


class Screen(OffScreen):
    def __init__(self):
        super().__init__(WIDTH, HEIGHT)
        self.scene = osg.Group()
        self.clear()

    def clear(self):
        self.decorator.resetHUD()
        self.root.removeChild(self.scene)
        self.scene = osg.Group()
        self.root.addChild(self.scene)

    def view(self, distance=DISTANCE):
        """How light the pixels are, 0 to 1."""
        self.look_from(hyx.Vec3(0, -distance, 0))
        return self.app.render()[..., :3].max(axis=2) / 255

    def write(self, road, text, pixels):
        """Draws a text alone, by one of the roads."""
        self.clear()
        road(self, text, pixels)
        return self.view()


@pytest.fixture(scope="module")
def screen():
    made = Screen()
    yield made
    made.app.close()


def row(screen, text, pixels):
    screen.decorator.setFontSize(pixels)
    screen.decorator.setText(0, text, WHITE)


def on_the_screen(screen, text, pixels):
    letters = hyxOSG.Text(text, hyx.Vec3(20, 60, 0))
    letters.setAxisAlignment(hyxOSG.Text.XY_PLANE)
    letters.setCharacterSize(pixels)
    screen.decorator.getHud().addChild(letters)


def in_the_scene(screen, text, pixels):
    letters = hyxOSG.Text(text, hyx.Vec3(-0.3 * WIDTH * PIXEL, 0, -0.3 * HEIGHT * PIXEL))
    letters.setCharacterSize(pixels * PIXEL)
    screen.scene.addChild(letters)


def label(screen, text, pixels):
    screen.scene.addChild(hyxOSG.createText(text, hyx.Vec3(0, 0, -0.3 * HEIGHT * PIXEL), WHITE, pixels * PIXEL))


ROADS = (row, on_the_screen, in_the_scene, label)


def widest_edge(picture):
    """Pixels between dark and light, at most, where a line a quarter below the letters' upper edge crosses stems."""
    rows = numpy.nonzero(picture.max(axis=1) > 0.5)[0]
    line = picture[rows[0] + (rows[-1] - rows[0]) // 4]
    level = line / line.max()
    widest, between = 0, 0
    for value in level:
        between = between + 1 if 0.1 < value < 0.9 else 0
        widest = max(widest, between)
    return widest


@pytest.mark.parametrize("road", ROADS)
@pytest.mark.parametrize("pixels", [24, 100, 300])
def test_edges_of_letters_are_sharp(screen, road, pixels):
    picture = screen.write(road, "I", pixels)
    rows = numpy.nonzero(picture.max(axis=1) > 0.5)[0]
    assert math.isclose(len(rows), 0.729 * pixels, rel_tol=0.1), "as high as the font's capitals"
    assert widest_edge(picture) <= (2 if pixels > 24 else 3)  # a stem of two pixels may stand between them


@pytest.mark.parametrize("road", ROADS)
def test_small_letters_are_told_apart(screen, road):
    """At eight pixels the stems of an H are light, and between them it is dark."""
    picture = screen.write(road, "HHHH", 8)
    assert picture.max() > 0.55
    rows = numpy.nonzero(picture.max(axis=1) > 0.4)[0]
    line = picture[rows[0]]
    across = line[numpy.nonzero(line > 0.3)[0][0] : numpy.nonzero(line > 0.3)[0][-1] + 1]
    assert across.min() < 0.4 * across.max()


@pytest.mark.parametrize("pixels", [40, 150, 300])
def test_outlines_are_equally_wide_all_round(screen, pixels):
    screen.clear()
    screen.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1))
    letter = hyxOSG.Text("I", hyx.Vec3(200, 60, 0), hyx.Vec4(0, 1, 0, 1))
    letter.setAxisAlignment(hyxOSG.Text.XY_PLANE)
    letter.setCharacterSize(pixels)
    letter.setBackdropType(hyxOSG.Text.OUTLINE)
    screen.decorator.getHud().addChild(letter)
    screen.look_from(hyx.Vec3(0, -DISTANCE, 0))
    picture = screen.app.render()[..., :3].astype(float)
    screen.decorator.setBackgroundColor(hyx.Vec3(0, 0, 0))
    rows, columns = numpy.nonzero((picture[..., 1] > 128) & (picture[..., 0] < 128))
    top, left = rows.min(), columns.min()
    black = picture.max(axis=2) < 128
    beside, above = black[(top + rows.max()) // 2, :left].sum(), black[:top, (left + columns.max()) // 2].sum()
    assert abs(beside - above) <= 1 and 0.03 * pixels < beside < 0.07 * pixels
    corner = black[:top, :left].sum() / (math.pi / 4 * beside**2)
    assert 0.8 < corner < 1.25, "a quarter of a disk"


def test_letters_that_are_gone_take_no_memory(screen):
    def resident():
        with open("/proc/self/statm") as pages:
            return int(pages.read().split()[1]) * resource.getpagesize() / 2**20

    screen.write(label, "Hamburg", 400)
    before = resident()
    for pixels in range(100, 420, 4):
        screen.write(label, "Hamburg", pixels)
        screen.write(row, "Hamburg", pixels)
    assert resident() - before < 60, "MB; each of the 162 has a page of more than 2"


def test_a_label_is_sharp_from_the_first_picture_nearby(screen):
    def draw(distance):
        screen.clear()
        screen.scene.addChild(hyxOSG.createText("I", hyx.Vec3(0, 0, -10 * PIXEL), WHITE, 20 * PIXEL))
        return screen.view(distance)

    away = draw(DISTANCE)
    near = screen.view(DISTANCE / 10)
    assert widest_edge(near) <= 2
    assert numpy.abs(screen.view() - away).max() < 0.02, "and again as it was far away"
    assert numpy.abs(draw(DISTANCE / 10) - near).max() < 0.02


@pytest.mark.parametrize("mode", [hyxOSG.Text.TEXT, hyxOSG.Text.TEXT | hyxOSG.Text.BOUNDINGBOX])
def test_nothing_is_left_of_a_text_that_becomes_empty(screen, mode):
    screen.clear()
    letters = hyxOSG.Text("H")
    letters.setDrawMode(mode)
    screen.scene.addChild(letters)
    assert screen.view().max() > 0.9
    letters.setText("")
    assert screen.view().max() == 0
    letters.setText("H")
    assert screen.view().max() > 0.9


HEBREW, ARABIC = "שלום abc", "سلام\n12"


@pytest.mark.filterwarnings("ignore:no installed font")
@pytest.mark.parametrize("written", ["plain", HEBREW, ARABIC, "日本 ก", ""])
def test_texts_are_read_as_they_were_written(written):
    text = osgText.Text()
    text.setText(written)
    assert text.getText() == written
    root, geometry = osg.Group(), hyxCollide.Geometry(hyxCollide.Sphere(0.2))
    hyxOSG.createVisual(geometry, root)
    hyxOSG.addText(geometry, root, written)
    found = hyxOSG.findText(geometry, root)
    assert found.getText() == written
    found.setText(HEBREW)
    assert found.getText() == HEBREW


NOTO = "/usr/share/fonts/truetype/noto/NotoSans{}-Regular.ttf"
WRITTEN = {
    "Devanagari": "नमस्ते क्षेत्र हिन्दी",
    "Thai": "สวัสดี น้ำ ที่นี่",
    "Arabic": "السلام عليكم",
    "Hebrew": "שָׁלוֹם עוֹלָם",
    "Tamil": "வணக்கம் கௌ",
    "Bengali": "বাংলা ভাষা ক্ষ",
    "Khmer": "ភាសាខ្មែរ",
    "Myanmar": "မြန်မာ ဘာသာ",
}


def ink(light):
    rows, columns = numpy.nonzero(light > 0.3)
    return light[rows.min() : rows.max() + 1, columns.min() : columns.max() + 1] > 0.4


def share_near(picture, other, pixels=2):
    """Of the ink of a picture, the share that has ink of the other one at most so far away."""
    height, width = numpy.maximum(picture.shape, other.shape)
    near = numpy.zeros((height + 2 * pixels, width + 2 * pixels), bool)
    for down in range(2 * pixels + 1):
        for right in range(2 * pixels + 1):
            near[down : down + other.shape[0], right : right + other.shape[1]] |= other
    rows, columns = numpy.nonzero(picture)
    return near[rows + pixels, columns + pixels].mean()


def alike(picture, other):
    return min(share_near(picture, other), share_near(other, picture))


def drawn_elsewhere(text, font, pixels, engine):
    picture = Image.new("L", (WIDTH, HEIGHT))
    other = ImageFont.truetype(font, pixels, layout_engine=engine)
    ImageDraw.Draw(picture).text((20, 100), text, 255, other)
    return ink(numpy.asarray(picture) / 255)


@pytest.mark.parametrize("script", WRITTEN)
def test_scripts_are_set_as_another_program_sets_them(screen, script):
    """Letters join, stack and change places; marks stand over and under them."""
    font, text, pixels = NOTO.format(script), WRITTEN[script], 40
    shaped, unshaped = (drawn_elsewhere(text, font, pixels, engine) for engine in reversed(ImageFont.Layout))
    screen.decorator.setFontName(font)
    seen = ink(screen.write(row, text, pixels))
    screen.decorator.setFontName("DejaVuSans")
    assert alike(seen, shaped) > 0.97
    assert alike(seen, unshaped) < 0.9
    if script not in ("Arabic", "Hebrew"):  # the usual font has these itself
        assert alike(ink(screen.write(label, text, pixels)), shaped) > 0.97, "from a font that is found"


def make_font(folder, letters):
    """A font of full squares."""
    builders = pytest.importorskip("fontTools.fontBuilder")
    pens = pytest.importorskip("fontTools.pens.ttGlyphPen")
    pen = pens.TTGlyphPen(None)
    for corner in ((0, 0), (0, 1000), (1000, 1000), (1000, 0)):
        (pen.lineTo if corner != (0, 0) else pen.moveTo)(corner)
    pen.closePath()
    square, empty = pen.glyph(), pens.TTGlyphPen(None).glyph()
    builder = builders.FontBuilder(1000, isTTF=True)
    builder.setupGlyphOrder([".notdef", "square"])
    builder.setupCharacterMap({ord(letter): "square" for letter in letters})
    builder.setupGlyf({".notdef": empty, "square": square})
    builder.setupHorizontalMetrics({".notdef": (1000, 0), "square": (1100, 0)})
    builder.setupHorizontalHeader(ascent=1000, descent=0)
    builder.setupNameTable({"familyName": "Squares", "styleName": "Regular"})
    builder.setupOS2()
    builder.setupPost()
    builder.save(folder / "squares.ttf")


def font_list(folder):
    """The usual fonts and those of a folder."""
    file = folder / "fonts.conf"
    file.write_text(
        '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig>'
        f"<dir>/usr/share/fonts/truetype/dejavu</dir><dir>{folder}</dir><cachedir>{folder}/cache</cachedir>"
        "</fontconfig>"
    )
    return str(file)


FULL = """
import sys, warnings
sys.path[:0] = {path!r}
import numpy, test_letters

screen = test_letters.Screen()
for road in test_letters.ROADS:
    with warnings.catch_warnings(record=True) as told:
        warnings.simplefilter("always")
        light = screen.write(road, "H" + {letter!r}, 60)
    rows, columns = numpy.nonzero(light > 0.5)
    last = light[rows.min() : rows.max() + 1, columns.max() - 25 : columns.max() - 4]  # inside the second letter
    print(road.__name__, (last[20:-20] > 0.5).mean(), *(str(warning.message) for warning in told), sep="\\t")
"""


def drawn(folder, letter):
    """By road: how full the picture of a letter is, and what was told."""
    result = run_python(FULL.format(path=sys.path, letter=letter), FONTCONFIG_FILE=font_list(folder))
    assert result.returncode == 0, result.stderr
    return {
        name: (float(full), told) for name, full, *told in (line.split("\t") for line in result.stdout.splitlines())
    }


@pytest.mark.parametrize(
    "letter, package", [("ก", "fonts-noto-core"), ("日", "fonts-noto-cjk"), ("한", "fonts-nanum"), ("\ue123", None)]
)
def test_letters_come_from_a_font_that_has_them(tmp_path, letter, package):
    lacking, having = tmp_path / "lacking", tmp_path / "having"
    for folder, letters in ((lacking, ""), (having, letter)):
        folder.mkdir()
        make_font(folder, letters)
    roads = drawn(lacking, letter).values()
    assert all(full < 0.9 for full, _ in roads)
    told = [notice for _, notices in roads for notice in notices]
    assert len(told) == 1 and f"(U+{ord(letter):X})" in told[0]
    assert f"the package {package} has one" in told[0] if package else "package" not in told[0]
    for road, (full, told) in drawn(having, letter).items():
        assert full == 1 and not told, road
