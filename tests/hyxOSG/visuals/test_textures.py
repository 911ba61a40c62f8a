"""Textures, cube maps, sky spheres and reflections."""

import hyx
import hyxCollide
import hyxOSG
import osg
import picture_files
import pytest
from studio import blue, green, red

MODES = {
    name: getattr(hyxOSG, name)
    for name in (
        "DIFFUSE_TEXTURE",
        "SHADOW_TEXTURE",
        "SHADOW_JITTER_TEXTURE",
        "NORMALMAP_TEXTURE",
        "HEIGHTMAP_TEXTURE",
        "SPECULARMAP_TEXTURE",
        "SPHEREMAP_TEXTURE",
    )
}


@pytest.fixture
def box(studio):
    """A box that fills the picture, white, with its geometry."""
    geometry = hyxCollide.Geometry(hyxCollide.Box(0.9, 0.9, 0.9))
    node = hyxOSG.createVisual(geometry, studio.root)
    hyxOSG.setDiffuseColor(node, hyx.Vec4f(1, 1, 1, 1))
    hyxOSG.setAmbientColor(node, hyx.Vec4f(1, 1, 1, 1))
    return geometry, node


def test_a_diffuse_texture_gives_the_surface_its_picture(studio, box, tmp_path):
    file = picture_files.one_colour(tmp_path / "red.png", 1, 0, 0)
    assert studio.picture().count(red) == 0
    assert hyxOSG.setTexture(box[1], file) is True
    assert studio.picture().count(red) > 1000


@pytest.mark.parametrize("form", ["geometry", "body", "file", "texture", "handle"])
def test_every_form_of_setting_a_texture_is_seen(studio, tmp_path, form):
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.9, 0.9, 0.9)))
    geometry = body.getGeometries()[0]
    hyxOSG.createVisual(body, studio.root)
    node = hyxOSG.findGeometryNode(geometry, studio.root)
    hyxOSG.setAmbientColor(node, hyx.Vec4f(1, 1, 1, 1))
    file = picture_files.one_colour(tmp_path / "green.png", 0, 1, 0)
    texture = hyxOSG.createTexture(file)
    handle = hyxOSG.Texture2D(texture)
    assert {
        "geometry": lambda: hyxOSG.setTexture(geometry, studio.root, file, True, 0),
        "body": lambda: hyxOSG.setTexture(body, studio.root, file),
        "file": lambda: hyxOSG.setTexture(node, file, True),
        "texture": lambda: hyxOSG.setTexture(node, texture, True, 0, 2.0),
        "handle": lambda: hyxOSG.setTexture(node, handle, True, 0, 2.0, 2.0),
    }[form]() is True
    assert studio.picture().count(green) > 1000


def test_a_body_without_a_visual_there_is_told(tmp_path):
    file = picture_files.one_colour(tmp_path / "green.png", 0, 1, 0)
    body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(1, 1, 1)))
    with pytest.warns(RuntimeWarning, match="no visual of the geometry is under that root"):
        assert not hyxOSG.setTexture(body, osg.Group(), file)


def test_scales_repeat_the_picture(studio, box, tmp_path):
    file = picture_files.write(tmp_path / "half.png", lambda x, y: (1, 0, 0) if x < 16 else (0, 0, 1))
    hyxOSG.setTexture(box[1], file, True)

    def changes():
        picture = studio.picture()
        row = [red(*picture.pixel(x, 64)) for x in range(10, 118)]
        return sum(a != b for a, b in zip(row, row[1:]))

    once = changes()
    hyxOSG.setTexture(box[1], file, True, 0, 4.0, 1.0)
    assert changes() >= 3 * once > 0


def test_without_repetition_the_edge_is_drawn_out(studio, box, tmp_path):
    file = picture_files.write(tmp_path / "edge.png", lambda x, y: (1, 0, 0) if x < 30 else (0, 0, 1))
    hyxOSG.setTexture(box[1], file, False, 0, 4.0, 1.0)
    drawn_out = studio.picture()
    assert drawn_out.count(blue) > drawn_out.count(red)
    hyxOSG.setTexture(box[1], file, True, 0, 4.0, 1.0)
    tiled = studio.picture()
    assert tiled.count(red) > tiled.count(blue)


@pytest.mark.parametrize("mode", [name for name in MODES if name != "SHADOW_JITTER_TEXTURE"])
def test_every_mode_changes_the_picture_in_its_own_way(studio, box, tmp_path, mode):
    pictures = {
        "DIFFUSE_TEXTURE": lambda x, y: (1, 0.3, 0.3),
        "SHADOW_TEXTURE": lambda x, y: (0, 0, 0),
        "NORMALMAP_TEXTURE": lambda x, y: (0.9, 0.5, 0.7) if x // 8 % 2 else (0.1, 0.5, 0.7),
        "HEIGHTMAP_TEXTURE": lambda x, y: (x % 8 / 8,) * 3,
        "SPECULARMAP_TEXTURE": lambda x, y: (0, 0, 0),
        "SPHEREMAP_TEXTURE": lambda x, y: (0, 0, 1),
    }
    light = studio.app.getSceneDecorator().getLightSource(hyxOSG.SceneDecorator.LIGHT0)
    light.setSpecular(hyx.Vec4f(1, 1, 1, 1))
    light.setPosition(hyx.Vec4(1, -8, 2, 1))
    studio.app.getSceneDecorator().setEnableCalculateLightPositions(hyxOSG.SceneDecorator.LIGHT0, False)
    node = box[1]
    hyxOSG.setDiffuseColor(node, hyx.Vec4f(0.5, 0.5, 0.5, 1))
    hyxOSG.setAmbientColor(node, hyx.Vec4f(0, 0, 0, 1))
    hyxOSG.setSpecularColor(node, hyx.Vec4f(0.5, 0.5, 0.5, 1))
    hyxOSG.setShininess(node, 4.0)
    before = studio.picture()
    assert hyxOSG.setTexture(node, picture_files.write(tmp_path / "map.png", pictures[mode]), True, MODES[mode])
    after = studio.picture()
    assert after.difference(before) > 800
    if mode in ("SHADOW_TEXTURE", "SPECULARMAP_TEXTURE"):
        assert sum(after.center()) < sum(before.center())
    if mode == "SPHEREMAP_TEXTURE":
        assert after.center()[2] > after.center()[0] + 40
    if mode in ("NORMALMAP_TEXTURE", "HEIGHTMAP_TEXTURE"):
        row = [after.pixel(x, 64)[0] for x in range(20, 108)]
        assert max(row) - min(row) > 30


def test_a_flat_normal_map_leaves_the_light_as_it_is(studio, box, tmp_path):
    hyxOSG.setAmbientColor(box[1], hyx.Vec4f(0.2, 0.2, 0.2, 1))
    before = studio.picture()
    flat = picture_files.one_colour(tmp_path / "flat.png", 0.5, 0.5, 1)
    hyxOSG.setTexture(box[1], flat, True, MODES["NORMALMAP_TEXTURE"])
    assert studio.picture().difference(before) == 0
    hyxOSG.setEnableLight(False, 0, box[1])
    assert sum(studio.picture().center()) < sum(before.center())


def test_jitter_breaks_up_the_edge_of_a_shadow_texture(studio, box, tmp_path):
    edge = picture_files.write(tmp_path / "edge.png", lambda x, y: (1, 1, 1) if x < 16 else (0, 0, 0))
    noise = picture_files.write(tmp_path / "noise.png", lambda x, y: (x * 7 % 5 / 4, y * 3 % 4 / 3, 0))
    hyxOSG.setTexture(box[1], edge, True, MODES["SHADOW_TEXTURE"])
    sharp = studio.picture()
    hyxOSG.setTexture(box[1], noise, True, MODES["SHADOW_JITTER_TEXTURE"])
    assert 5 < studio.picture().difference(sharp) < 3000


def test_what_cannot_be_read_changes_nothing(studio, box, tmp_path):
    before = studio.picture()
    whole = picture_files.one_colour(tmp_path / "whole.png", 1, 0, 0)
    broken = tmp_path / "broken.png"
    broken.write_bytes(open(whole, "rb").read()[:40])
    text = tmp_path / "text.png"
    text.write_text("no picture")
    for file in (tmp_path / "missing.png", broken, text, tmp_path):
        assert hyxOSG.setTexture(box[1], str(file)) is False
        assert hyxOSG.createTexture(str(file)) is None
    assert hyxOSG.setTexture(box[1], hyxOSG.Texture2D(None)) is False
    assert hyxOSG.setTexture(box[1], whole, False, 0, 0.0) is False
    for mode in (-1, 7):
        with pytest.raises(RuntimeError, match="texture mode"):
            hyxOSG.setTexture(box[1], whole, False, mode)
    assert hyxOSG.setTexture(hyxCollide.Geometry(hyxCollide.Sphere(1)), studio.root, whole) is False
    assert studio.picture().difference(before) == 0


def test_one_file_is_one_texture_as_long_as_it_is_held(tmp_path):
    file = picture_files.one_colour(tmp_path / "a.png", 1, 1, 0)
    texture = hyxOSG.createTexture(file)
    holder = hyxOSG.Texture2D(texture)
    assert hyxOSG.createTexture(file) == texture == holder.getTexture()
    assert texture.getImage().s() == 32


def test_cube_map_images_are_read_in_place_or_not_at_all(tmp_path):
    prefix = picture_files.cube_map(tmp_path)
    images = osg.ImageVector()
    assert hyxOSG.loadCubeMapImages(prefix, ".png", images) is True and len(images) == 6
    assert list(images[0].getColor(0, 0))[:3] == [1, 0, 0] and list(images[5].getColor(0, 0))[:3] == [1, 0, 1]
    texture = hyxOSG.createTextureCubeMap(images)
    assert list(texture.getImage(2).getColor(1, 1))[:3] == [0, 0, 1]
    assert hyxOSG.createTextureCubeMap(prefix, "png") is not None
    picture_files.one_colour(tmp_path / "sky_negy.png", 0, 0, 0, size=16)
    assert hyxOSG.loadCubeMapImages(prefix, "png", images) is False and len(images) == 0
    assert hyxOSG.createTextureCubeMap(images) is None
    assert hyxOSG.createTextureCubeMap("/nowhere/", "png") is None
    with pytest.raises(TypeError, match="loadCubeMapImages.. argument 3 .* not None"):
        hyxOSG.loadCubeMapImages(prefix, "png", None)


def test_a_sky_sphere_shows_each_side_where_it_belongs(studio, tmp_path):
    images = osg.ImageVector()
    hyxOSG.loadCubeMapImages(picture_files.cube_map(tmp_path), "png", images)
    sky = hyxOSG.createSkySphere("sky", images, 50.0, 1.0)
    assert sky.getName() == "sky" and sky.getDrawable(0).getBoundingBox().upper().z == pytest.approx(50)
    studio.root.addChild(sky)
    for direction, colour in (
        ((1, 0, 0), (1, 0, 0)),
        ((-1, 0, 0), (0, 1, 1)),
        ((0, 1, 0), (1, 0, 1)),
        ((0, -1, 0), (0, 1, 0)),
        ((0.01, 0, 1), (0, 0, 1)),
    ):
        studio.look_from(hyx.Vec3(), hyx.Vec3(*direction))
        assert [part > 128 for part in studio.picture().center()] == [bool(part) for part in colour], direction
    images.clear()
    assert hyxOSG.createSkySphere("sky", images, 50.0) is None
    with pytest.raises(RuntimeError, match="radius"):
        hyxOSG.createSkySphere("sky", images, 0.0)


def test_a_mirror_shows_what_is_behind_the_camera(studio, box, tmp_path):
    node = box[1]
    assert hyxOSG.setCubeMapTexture(node, picture_files.cube_map(tmp_path)) is True
    hyxOSG.setEnvMapReflectionCoefficient(node, 1.0)
    assert studio.picture().center() == (0, 255, 0)  # the camera looks along +y, so the face mirrors -y: posz
    hyxOSG.setEnvMapReflectionCoefficient(node, 0.0)
    r, g, b = studio.picture().center()
    assert abs(r - g) < 4 and abs(g - b) < 4
    assert hyxOSG.setCubeMapTexture(node, "/nowhere/sky_", ".png") is False
    assert hyxOSG.setCubeMapTexture(None, "/nowhere/") is False
    with pytest.raises(RuntimeError, match="0 to 1"):
        hyxOSG.setEnvMapReflectionCoefficient(node, float("nan"))
    hyxOSG.setEnvMapReflectionCoefficient(None, 0.5)
