"""Input that cannot be meant is refused or does nothing, and the next frame is drawn as the one before."""

import hyx
import hyxCollide
import hyxOSG
import hyxRender
import hyxSDK
import osg
import pytest

SINGLE, DOUBLE = hyx.Vec4f(1, 0, 0, 1), hyx.Vec4(1, 0, 0, 1)
DRAWABLE = hyxOSG.ParticleSystemDrawable


@pytest.fixture
def scene(studio):
    """A body in the picture, with its visual and two files that are no pictures."""
    studio.body = hyx.RigidBody(hyxCollide.Geometry(hyxCollide.Box(0.6, 0.6, 0.6)))
    studio.geometry = studio.body.getGeometries()[0]
    studio.visual = hyxOSG.createVisual(studio.body, studio.root)
    studio.missing = str(studio.folder / "missing.png")
    broken = studio.folder / "broken.png"
    broken.write_bytes(b"\x89PNG\r\n\x1a\n" + b"\0" * 40)
    studio.broken = str(broken)
    return studio


WRONG_TYPES = {
    "double colour for a material": lambda s: hyxOSG.setDiffuseColor(s.visual, DOUBLE),
    "double ambient": lambda s: hyxOSG.setAmbientColor(s.visual, DOUBLE),
    "double specular": lambda s: hyxOSG.setSpecularColor(s.visual, DOUBLE),
    "no colour for a body": lambda s: hyxOSG.setDiffuseColor(s.body, None, s.root),
    "single colour for a ball": lambda s: hyxOSG.createSphere(hyx.Vec3(), SINGLE, 1.0),
    "single colour for a cylinder": lambda s: hyxOSG.createCylinder(hyx.AffineMatrix4x4(), SINGLE, 1.0, 1.0),
    "single colour for a line": lambda s: hyxOSG.createLine(hyx.Vec3(), hyx.Vec3(1, 0, 0), SINGLE, 1.0),
    "vector as outline colour": lambda s: hyxOSG.setEnableOutline(s.visual, True, SINGLE),
    "mixed background": lambda s: s.decorator.setBackgroundColor(SINGLE, hyx.Vec3()),
    "double text colour": lambda s: hyxOSG.createText("x", hyx.Vec3(), DOUBLE),
    "text as alpha": lambda s: hyxOSG.setAlpha(s.visual, "half"),
    "number as node": lambda s: hyxOSG.toggleWireFrameMode(1),
    "float vectors in a double grid": lambda s: hyxOSG.createGrid(
        2, 2, osg.Vec3(), osg.Vec3(1, 0, 0), hyx.Vec3(0, 1, 0), s.root
    ),
}

REFUSED = {
    "unknown texture mode": lambda s: hyxOSG.setTexture(s.visual, s.broken, False, 9),
    "unknown rendering mode": lambda s: hyxOSG.createVisual(hyx.ParticleSystem(), s.root, 7),
    "unknown shader mode": lambda s: hyxOSG.createVisual(hyx.ParticleSystem(), s.root, 0, -1),
    "unknown allowed mode": lambda s: DRAWABLE.setAllowedRenderMode(3),
    "unknown shadow method": lambda s: s.decorator.setShadowMethod(12),
    "unknown logo place": lambda s: s.decorator.setLogoLocation(0),
    "unknown render child": lambda s: hyxOSG.GeometryNode().selectRenderChild(4),
    "no outline width": lambda s: hyxOSG.setEnableOutline(s.visual, True, hyxRender.Color(1, 0, 0, 1), float("nan")),
    "crease beyond a half turn": lambda s: hyxOSG.smoothNormals(s.visual, 4.0),
    "no detail": lambda s: hyxOSG.createVisual(s.geometry, s.root, 0.0),
    "no letters": lambda s: hyxOSG.createText("x", hyx.Vec3(), SINGLE, 0.0),
    "endless grid": lambda s: hyxOSG.createGrid(10**6, 10**6, hyx.Vec3(), hyx.Vec3(1, 0, 0), hyx.Vec3(0, 1, 0), s.root),
    "axes of no length": lambda s: hyxOSG.createAxes(1.0, float("inf")),
    "row above the first": lambda s: s.decorator.setText(-1, "x"),
    "no sky": lambda s: hyxOSG.SkyBox("sky", s.missing, ".png"),
    "no normal": lambda s: hyxOSG.ClipPlane(hyx.Vec3(), hyx.Vec3()),
}

# What they give; in the picture they do nothing.
NOTHING = {
    "missing texture": (False, lambda s: hyxOSG.setTexture(s.visual, s.missing)),
    "broken texture": (False, lambda s: hyxOSG.setTexture(s.visual, s.broken)),
    "folder as texture": (None, lambda s: hyxOSG.createTexture(str(s.folder))),
    "missing cube map": (False, lambda s: hyxOSG.setCubeMapTexture(s.visual, s.missing)),
    "broken logo": (False, lambda s: s.decorator.setLogoFile(s.broken)),
    "broken base texture": (False, lambda s: s.decorator.setBaseTexture(s.broken)),
    "missing model": (None, lambda s: hyxOSG.readNodeFile(s.missing)),
    "missing scene": (False, lambda s: hyxOSG.readFile(s.missing, s.simulation, s.root)),
    "no node to texture": (False, lambda s: hyxOSG.setCubeMapTexture(None, s.broken)),
    "no node to outline": (False, lambda s: hyxOSG.setEnableOutline(None, True)),
    "no outline to ask for": (False, lambda s: hyxOSG.getEnableOutline(None)),
    "no node to wire": (False, lambda s: hyxOSG.setEnableWireFrameMode(None, True)),
    "no node to force": (False, lambda s: hyxOSG.forceWireFrameModeOn(None)),
    "no node to smooth": (0, lambda s: hyxOSG.smoothNormals(None)),
    "no node to light": (None, lambda s: hyxOSG.setEnableLight(True, 0, None)),
    "no node for a uniform": (None, lambda s: hyxOSG.setUniformFloat(None, "u", 1.0)),
    "no node for a number": (None, lambda s: hyxOSG.setUniformInt(None, "u", 1)),
    "no node to reflect": (None, lambda s: hyxOSG.setEnvMapReflectionCoefficient(None, 1.0)),
    "no mesh": (None, lambda s: hyxOSG.createTrimesh(None)),
    "no root to search": (None, lambda s: hyxOSG.findGeometryNode(s.geometry, None)),
    "text on nothing": (False, lambda s: hyxOSG.addText(s.geometry, None, "x")),
    "text never added": (False, lambda s: hyxOSG.removeText(s.geometry, s.root, 3)),
    "no child": (False, lambda s: s.decorator.addChild(None)),
    "no update": (None, lambda s: hyxOSG.createVisualUpdater(None, None)),
    "no assembly cache": (None, lambda s: hyxOSG.createVisualTemplateCaching(hyxSDK.Assembly(), None, None)),
    "axes nowhere": (None, lambda s: hyxOSG.createAxes(hyx.AffineMatrix4x4(), None)),
}


def check_next_frame(studio, before):
    after = studio.picture()
    assert before.lit() > 1000 and after.difference(before) == 0


@pytest.mark.parametrize("name", WRONG_TYPES)
def test_wrong_types_are_refused(scene, name):
    before = scene.picture()
    with pytest.raises(TypeError):
        WRONG_TYPES[name](scene)
    check_next_frame(scene, before)


@pytest.mark.parametrize("name", REFUSED)
def test_values_without_meaning_are_refused(scene, name):
    before = scene.picture()
    with pytest.raises(RuntimeError):
        REFUSED[name](scene)
    check_next_frame(scene, before)


@pytest.mark.parametrize("name", NOTHING)
def test_nothing_comes_of_nothing(scene, name):
    before = scene.picture()
    expected, call = NOTHING[name]
    assert call(scene) == expected
    check_next_frame(scene, before)


def test_materials_of_no_node_are_a_warning(scene):
    with pytest.warns(RuntimeWarning, match="no node") as warnings:
        for call in (hyxOSG.setDiffuseColor, hyxOSG.setAmbientColor, hyxOSG.setSpecularColor):
            call(None, SINGLE, True)
        for call in (hyxOSG.setShininess, hyxOSG.setAlpha):
            call(None, 0.5)
    assert len(warnings) == 5
    with pytest.warns(RuntimeWarning, match="under that root"):
        hyxOSG.setDiffuseColor(scene.geometry, SINGLE, osg.Group())
    with pytest.warns(RuntimeWarning, match="under that root"):
        hyxOSG.setDiffuseColor(hyx.RigidBody("bare"), SINGLE, scene.root)
