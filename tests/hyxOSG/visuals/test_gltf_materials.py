"""Models of glTF as their makers meant them: upright, of metal or plastic, glowing, see-through, cut out, two-sided."""

import base64
import itertools
import json
import struct

import hyx
import hyxOSG
import pytest
from studio import blue, red

# A square in the plane of X and Y, which are right and up in these files.
CORNERS = [(-0.9, -0.9, 0), (0.9, -0.9, 0), (0.9, 0.9, 0), (-0.9, 0.9, 0)]


def plate(path, material, corners=CORNERS, tint=None):
    """A file with the square of a material; `tint`: the colour of its vertices."""
    data = b"".join(struct.pack("<3f", *corner) for corner in corners)
    data += (
        struct.pack("<3f", 0, 0, 1) * 4
        + struct.pack("<8f", 0, 0, 1, 0, 1, 1, 0, 1)
        + struct.pack("<6H", 0, 1, 2, 0, 2, 3)
        + struct.pack("<4f", *(tint or (1, 1, 1, 1))) * 4
    )
    uri = "data:application/octet-stream;base64," + base64.b64encode(data).decode()
    parts = [
        (0, 48, 5126, 4, "VEC3"),
        (48, 48, 5126, 4, "VEC3"),
        (96, 32, 5126, 4, "VEC2"),
        (128, 12, 5123, 6, "SCALAR"),
    ]
    if tint:
        parts.append((140, 64, 5126, 4, "VEC4"))
    accessors = [{"bufferView": i, "componentType": p[2], "count": p[3], "type": p[4]} for i, p in enumerate(parts)]
    accessors[0].update(
        min=[min(c[i] for c in corners) for i in range(3)], max=[max(c[i] for c in corners) for i in range(3)]
    )
    attributes = {"POSITION": 0, "NORMAL": 1, "TEXCOORD_0": 2, **({"COLOR_0": 4} if tint else {})}
    primitive = {"attributes": attributes, "indices": 3, "material": 0}
    path.write_text(
        json.dumps(
            {
                "asset": {"version": "2.0"},
                "scene": 0,
                "scenes": [{"nodes": [0]}],
                "nodes": [{"mesh": 0}],
                "meshes": [{"primitives": [primitive]}],
                "materials": [material],
                "buffers": [{"byteLength": len(data), "uri": uri}],
                "bufferViews": [{"buffer": 0, "byteOffset": p[0], "byteLength": p[1]} for p in parts],
                "accessors": accessors,
            }
        )
    )
    return str(path)


def colored(*color, metal=0.0, roughness=1.0, **more):
    look = {"baseColorFactor": list(color), "metallicFactor": metal, "roughnessFactor": roughness}
    return {"pbrMetallicRoughness": look, **more}


@pytest.fixture
def show(studio, tmp_path):
    """Shows a plate of a material, lit at each pixel, and gives its picture."""
    studio.decorator.setEnableShaderState(True)
    numbers = itertools.count()

    def shown(material, corners=CORNERS, tint=None):
        studio.clear()
        file = tmp_path / f"plate{next(numbers)}.gltf"  # a file that was read is not read again
        studio.root.addChild(hyxOSG.readNodeFile(plate(file, material, corners, tint)))
        return studio.picture()

    yield shown
    studio.decorator.setEnableShaderState(False)
    studio.decorator.setBackgroundColor(hyx.Vec3(0, 0, 0))


def test_what_is_up_in_the_file_is_up_in_the_scene(show):
    upper = [(x, y + 0.45 * (y < 0) + 0.2, z) for x, y, z in CORNERS]
    picture = show(colored(1, 0, 0, 1), upper)
    assert picture.count(red) > 1000
    assert red(*picture.pixel(64, 100)) and not red(*picture.pixel(64, 28))


def test_a_metal_mirrors_the_sky_in_its_colour_and_plastic_does_not(studio, show):
    studio.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1))
    metal = show(colored(1, 0.6, 0.1, 1, metal=1.0, roughness=0.5)).center()
    plastic = show(colored(1, 0.6, 0.1, 1, metal=0.0, roughness=0.5)).center()
    assert max(abs(a - b) for a, b in zip(metal, plastic)) > 20
    assert metal[0] > metal[1] > 2 * metal[2]


def on_screen(light):
    """Of sRGB: factors of glTF are shares of light."""
    return 12.92 * light if light <= 0.0031308 else 1.055 * light ** (1 / 2.4) - 0.055


@pytest.fixture
def even_sky(studio):
    """No light but that of a white sky all around, in which what sends back all light is white."""
    studio.decorator.setEnableLights(0)
    studio.decorator.setEnableSkyLight(True)
    studio.decorator.setBackgroundColor(hyx.Vec3(1, 1, 1))
    yield
    studio.decorator.setEnableSkyLight(False)
    studio.decorator.setEnableLights(studio.decorator.LIGHT0)


@pytest.mark.parametrize("roughness", [0, 0.3, 0.6, 1])
@pytest.mark.parametrize("color", [(1, 1, 1), (0.9, 0.5, 0.1)])
def test_metal_in_an_even_sky_has_its_own_colour(show, even_sky, color, roughness):
    """Of a microfacet surface without loss; many bounces of a rough one make its colour a little deeper."""
    center = show(colored(*color, 1, metal=1.0, roughness=roughness)).center()
    expected = [255 * on_screen(share) for share in color]
    assert max(center[i] - expected[i] for i in range(3)) < 4
    assert all(center[i] > expected[i] - (4 if color[i] == 1 else 4 + 30 * roughness) for i in range(3))


@pytest.mark.parametrize("color", [(1, 1, 1), (0.6, 0.2, 0.05)])
def test_matt_plastic_in_an_even_sky_has_its_own_colour_and_some_white(show, even_sky, color):
    center = show(colored(*color, 1, metal=0.0, roughness=1.0)).center()
    # A fiftieth to a twentieth of the light is mirrored.
    least, most = ([255 * on_screen(0.98 * share + white) for share in color] for white in (0, 0.05))
    assert all(low - 5 < value < min(high, 255) + 5 for low, value, high in zip(least, center, most))


@pytest.mark.parametrize("metal", [0.0, 1.0])
def test_colours_of_vertices_are_shares_of_light_too(show, even_sky, metal):
    factor, tint = (0.9, 0.7, 0.3, 1), (0.6, 0.2, 0.9, 1)
    product = [a * b for a, b in zip(factor, tint)]
    meant = show(colored(*product, metal=metal, roughness=0.3)).center()
    center = show(colored(*factor, metal=metal, roughness=0.3), tint=tint).center()
    assert center == pytest.approx(meant, abs=1)
    if metal:
        assert center == pytest.approx([255 * on_screen(share) for share in product[:3]], abs=12)


@pytest.mark.parametrize("mode, seen", [("OPAQUE", False), ("BLEND", True)])
def test_alpha_of_vertices_counts_where_the_material_lets_it(studio, show, mode, seen):
    studio.decorator.setBackgroundColor(hyx.Vec3(0, 0, 1))
    color = show(colored(1, 0, 0, 0.6, alphaMode=mode), tint=(1, 1, 1, 0.5)).center()
    assert (color[2] > 120) == seen


def test_a_glow_needs_no_light(studio, show):
    studio.decorator.setEnableLights(0)
    glowing = show(colored(0, 0, 0, 1, emissiveFactor=[0, 0, 0.6])).center()
    dark = show(colored(0, 0, 0, 1)).center()
    studio.decorator.setEnableLights(studio.decorator.LIGHT0)
    assert glowing[2] - dark[2] == pytest.approx(255 * on_screen(0.6), abs=3) and glowing[0] == dark[0]


@pytest.mark.parametrize("mode", ["OPAQUE", "BLEND", "MASK"])
def test_the_mode_of_alpha_decides_what_is_seen_through(studio, show, mode):
    studio.decorator.setBackgroundColor(hyx.Vec3(0, 0, 1))
    color = show(colored(1, 0, 0, 0.3, alphaMode=mode)).center()
    seen = {"OPAQUE": color[2] < 60, "BLEND": color[0] > 20 and color[2] > 120, "MASK": blue(*color)}
    assert seen[mode]


def test_glass_hides_nothing_drawn_behind_it(studio, show, tmp_path):
    near = [(x, y, 0.5) for x, y, _ in CORNERS]
    show(colored(1, 0, 0, 0.3, alphaMode="BLEND"), near)
    studio.root.addChild(hyxOSG.readNodeFile(plate(tmp_path / "far.gltf", colored(0, 0, 1, 0.5, alphaMode="BLEND"))))
    both = studio.picture().center()
    assert both[0] > 20 and both[2] > 20


@pytest.mark.parametrize("two_sided", [False, True])
def test_the_back_is_drawn_where_the_file_says_so(studio, show, two_sided):
    show(colored(1, 0, 0, 1, doubleSided=two_sided))
    studio.look_from(hyx.Vec3(0, 4, 0))
    assert (studio.picture().count(red) > 1000) == two_sided
